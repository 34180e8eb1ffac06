// The picture above the journal of the practice game: a hill at night, the character on it, and the
// character's last words overhead.
#pragma once

#include <QString>
#include <QWidget>

namespace spellwick::practice {

class Scene : public QWidget {
    Q_OBJECT

  public:
    explicit Scene(QWidget* parent);

    // With an empty name the hill is shown without a character.
    void ShowCharacter(const QString& name, const QString& server);
    // Shows a line over the character's head; `magic` makes the staff glow.
    void ShowWords(const QString& words, bool magic);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_name;
    QString m_server;
    QString m_words;
    bool m_magic = false;
};

}  // namespace spellwick::practice
