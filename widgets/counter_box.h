// An edit for a number or a change of it (+5, -3): takes digits and signs, and reports every other
// key as dropped.
#pragma once

#include <QFont>
#include <optional>

#include "widgets/entry_box.h"

namespace spellwick {

class CounterBox : public EntryBox {
    Q_OBJECT

  public:
    explicit CounterBox(QWidget* parent);

    // Sets the font; a number too long for it gets a smaller one, so that every digit shows.
    void SetNumberFont(const QFont& font);

  signals:
    void KeyDropped();
    void Stepped(int step);  // up or down arrow key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitNumber();

    std::optional<QFont> m_numberFont;
};

}  // namespace spellwick
