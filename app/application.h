// The composition root: makes the state, the platform's parts, the companion and the forms, and
// wires them.
#pragma once

#include <memory>

#include "app/qt_dialogs.h"
#include "app/qt_message_boxes.h"
#include "app/unexpected_exit.h"
#include "companion/companion.h"
#include "companion/game_choice.h"
#include "companion/run_end.h"
#include "link/assist_search.h"
#include "link/keystroke_sender.h"
#include "link/translated_assist.h"
#include "link/translated_windows.h"
#include "main_window/form_main.h"
#include "main_window/wait_notice.h"
#include "platform/system.h"
#include "settings_dialog/form_settings.h"
#include "spell_info/form_info.h"
#include "timers/timers_host.h"
#include "widgets/hint.h"

namespace spellwick {

class Application : private Forms {
  public:
    explicit Application(System system);

    // Starts the program. Returns the exit code if the start ended it, else nothing.
    std::optional<int> Start();

  private:
    // Forms
    void Show(const Changes& changes) override;
    WindowHandle MakeMainWindow() override { return m_main->MakeHandle(); }
    void ShowMainWindow() override;
    void LoadSettings() override;
    void FocusPage() override { m_main->FocusPage(); }
    void FocusCounter(i32 reagent) override { m_main->FocusCounter(reagent); }
    void FocusHelp() override { m_main->FocusHelp(); }
    void ShowHint(const std::string& text, const Target& target) override;
    bool ShowHelp() override;
    void ServeEvents() override;
    void Pause() override { m_main->Pause(); }
    WindowPlaces MainPlace() override { return m_main->Places(); }
    WindowPlaces::Place TimerPlace() override { return m_timers.TimerPlace(); }
    void HideMainWindow() override { m_main->hide(); }
    StoreResult UnloadSettings() override;
    void EndProcess(int exitCode) override { m_runEnd.EndProcess(exitCode); }

    CompanionServices Services();
    void MakeSettings();
    void ShowSettings();
    // Goes where a hint leads.
    void Follow(const Target& target);
    QWidget* ControlFor(const Target& target);
    // The game's window on the screen; empty where it cannot be told.
    QRect GameRect();
    void ShowInfo(i32 row);
    void ConnectAssist();
    std::string About() const;
    std::string Details();
    void WatchForEnd();

    System m_system;
    TranslatedWindows m_clients{*m_system.clients, {}};
    SharedState m_state;
    GameChoice m_game;
    const SpellTableFile m_spellTable;
    QtMessageBoxes m_boxes;
    RunEnd m_runEnd{m_boxes};
    CastPayment m_payment{m_state};
    TranslatedAssist m_tools;
    AssistSearch m_assist{m_state, m_tools};
    std::unique_ptr<KeySender> m_keys;
    WaitNotice m_wait;
    QtDialogs m_dialogs;
    Companion m_companion;
    TimersHost m_timers;
    std::unique_ptr<FormMain> m_main;
    Hints* m_hints = nullptr;                          // the main window owns them
    std::optional<SettingsAtStart> m_settingsAtStart;  // nothing before it is loaded
    std::unique_ptr<FormSettings> m_settings;          // null until it is wanted
    std::unique_ptr<FormInfo> m_info;
    UnexpectedExit m_lostDisplay{[this] { m_companion.SaveWithoutDisplay(); }};
};

}  // namespace spellwick
