// The picture over the journal of the practice game: a hill at night, the character on it, and
// the last words over the character's head.
#pragma once

#include <QString>
#include <QWidget>

namespace spellwick::practice {

class Scene : public QWidget {
    Q_OBJECT

  public:
    explicit Scene(QWidget* parent);

    // An empty name shows the hill without a character.
    void ShowCharacter(const QString& name, const QString& server);
    // A line over the character's head; `magic` lets the staff glow with it.
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
