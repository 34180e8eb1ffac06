// The window of the practice game: the scene, the journal, and the characters to choose from.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>

#include "practice/commands.h"
#include "practice/journal.h"
#include "practice/roster.h"
#include "practice/scene.h"

namespace spellwick::practice {

// The client that is played.
struct Play {
    Client client = Client::kClassic;
    KeyRules keys{};
};

class GameWindow : public QWidget {
    Q_OBJECT

  public:
    // Every entry goes to `record` as well as to the journal on the window.
    explicit GameWindow(std::function<void(const JournalEntry&)> record, Play play = {});

    // Handles every command but kQuit, which is left to the caller.
    void Obey(const GameCommand& command);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // To the game, Tab is a key like any other.
    bool focusNextPrevChild(bool /*next*/) override { return false; }

  private:
    // `character` counts from 1; 0 is the login screen.
    void EnterAs(int character);
    void SetTitle(const QString& title);
    // A hit point more or less, in the title alone.
    void ChangeStatistics();
    void Add(const JournalEntry& entry);
    void ShowSpeech();

    std::function<void(const JournalEntry&)> m_record;
    Client m_client;
    SpeechLine m_speech;
    int m_character = 0;
    int m_hits = 100;
    QString m_speaker;
    Scene* m_scene;
    QListWidget* m_journal;
    QLabel* m_line;
    std::array<QPushButton*, kRoster.size()> m_characters{};
    QPushButton* m_logout;
};

}  // namespace spellwick::practice
