// The composition root: makes the state, the platform's parts and the forms, and wires them.
#pragma once

#include <memory>

#include "app/qt_dialogs.h"
#include "app/qt_message_boxes.h"
#include "app/run_end.h"
#include "app/settings_host.h"
#include "app/timers_host.h"
#include "app/wait_notice.h"
#include "link/assist_dispatcher.h"
#include "link/assist_search.h"
#include "link/keystroke_sender.h"
#include "main_window/assist_reports.h"
#include "main_window/form_main.h"
#include "platform/system.h"
#include "settings_dialog/form_settings.h"
#include "spell_info/form_info.h"

namespace spellwick {

class Application : private SettingsPort, private SpellInfoPort, private OldDataConversion {
  public:
    explicit Application(System system);

    // Starts the program; the exit code if the start ended it, or nothing to go on.
    std::optional<int> Start();

    FormMain& MainWindow() { return *m_main; }

  private:
    // SettingsPort
    void Load() override;
    void ShowModal() override;
    void UpdateChance() override;
    void ShowMinimumSkill(const std::string& text) override;
    void ShowMinimumInt(const std::string& text) override;
    StoreResult Unload() override;
    // SpellInfoPort
    void DisplayInfo(i32 row) override;
    // OldDataConversion
    void ConvertOldData() override;

    MainWindowServices Services();
    void MakeSettings();
    void WithSettings(const std::function<void()>& show);
    void ConnectAssist();
    void WatchForEnd();

    System m_system;
    SharedState m_state;
    QtMessageBoxes m_boxes;
    RunEnd m_runEnd{m_boxes};
    AssistSearch m_assist{m_state, *m_system.assist};
    std::unique_ptr<KeySender> m_keys;
    RunningTimers m_running{m_state, *m_system.clock};
    TimersHost m_timers;
    WaitNotice m_wait;
    std::unique_ptr<FormMain> m_main;
    QtDialogs m_dialogs;
    std::unique_ptr<SettingsHost> m_settingsHost;
    std::unique_ptr<AssistReports> m_reports;
    std::unique_ptr<AssistDispatcher> m_dispatcher;
    std::unique_ptr<FormSettings> m_settings;
    std::unique_ptr<FormInfo> m_info;
};

}  // namespace spellwick
