// The mark of the link with an assist tool: filled while the tool's reports pay for casts, else a
// ring. Its tooltip says which tool it is.
#pragma once

#include <QWidget>

namespace spellwick {

class LinkMark : public QWidget {
    Q_OBJECT

  public:
    explicit LinkMark(QWidget* parent);

    void SetLink(const QString& text, bool pays);
    bool IsFilled() const { return m_pays; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool m_pays = false;
};

}  // namespace spellwick
