// The real settings dialog on recording parts, used by mouse and keyboard as a user would.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companion/game_choice.h"
#include "settings_dialog/form_settings.h"
#include "store/settings_io.h"
#include "store/text_settings_file.h"
#include "tests/support/main_window_fixture.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/recording_dialogs.h"
#include "tests/support/recording_installation.h"
#include "tests/support/recording_message_boxes.h"
#include "tests/support/recording_wine_tools.h"
#include "tests/support/set_clock.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {

// A companion that writes down what is asked of it, saves and loads, and calculates chances.
class RecordingCompanion : public DialogActions {
  public:
    RecordingCompanion(SharedState& state, SettingsStore& store, std::vector<std::string>& log)
        : io(state, store, [](PlayerPart) {}), m_state(state), m_log(log) {}

    std::string LinkReport() const override { return "No assist tool is running."; }
    void LayoutVertical() override;
    void LayoutHorizontal() override;
    void UpdatePage() override { Note("update page"); }
    void UpdateAmounts() override { Note("update amounts"); }
    void ShowCounter(i32 reagent) override { Note("counter " + std::to_string(reagent)); }
    void UpdateChances() override;
    void ShowSkillGroup(i32 group) override { skillGroup = group; }
    void ParseClientTitle() override { Note("parse title"); }
    std::string CharacterInGame() const override { return inGame; }
    std::filesystem::path CharacterFolder() override { return characterFolder; }
    void SetTimerMode(i32 mode) override {
        m_state.SpellTimerMode = mode;
        Note("timer mode " + std::to_string(mode));
    }
    void SavePlayer() override;
    void LoadPlayer() override;
    void SaveAll() override;
    void SaveOption(std::string_view key, const std::string& value) override;
    StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& dialog) override;
    void ReportSave(const StoreResult& result) override;

    SettingsIo io;
    // Runs at the end of UpdateChances.
    std::function<void()> updateChance = [] {};
    // The call that fails, each time.
    std::string failing;
    i32 skillGroup = 0;
    std::string inGame;
    std::filesystem::path characterFolder;

  private:
    void Note(const std::string& line);

    SharedState& m_state;
    std::vector<std::string>& m_log;
};

class SettingsFixture : public testing::Test, public FailureSink {
  protected:
    SettingsFixture();
    ~SettingsFixture() override;

    // A failure, a box or a warning of the toolkit that the test did not ask for fails it.
    void TearDown() override;

    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override;

    // Takes the settings in, as the start does.
    SettingsServices Services();

    // Reads the spell table and the store, makes the dialog and loads it, as the start does.
    FormSettings& Load();
    // The same, and shows it; the log is empty after it.
    FormSettings& Open();
    // The same with one of the tabs, 0 to 8, in front.
    FormSettings& OpenAt(int tab);
    // Shows what Load made and waits until it is active.
    void Show();
    // Shows it again after it was hidden.
    void Reopen();
    // Another window of the program takes the activation and gives it back, as a box does.
    void LeaveAndComeBack();

    FormSettings& Form() { return *m_form; }

    template <typename Control = QWidget>
    Control& Named(const QString& name) {
        auto* control = m_form->findChild<Control*>(name);
        if (control == nullptr) {
            throw std::logic_error("no control " + name.toStdString());
        }
        return *control;
    }
    template <typename Control = QWidget>
    Control& Named(const char* name, int index) {
        return Named<Control>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
    }
    std::string Text(const char* name);
    std::string Text(const char* name, int index);

    // Mouse and keys as the window system would bring them.
    void Click(QWidget& control);
    void Click(const char* name);
    void Click(const char* name, int index);
    // A click on a spot of a control, or on what lies there within it.
    void ClickSpot(QWidget& control, QPoint spot);
    void Type(const std::string& text);
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Replaces the text of a box by typing, without leaving it.
    void Enter(QLineEdit& box, const std::string& text);
    void Enter(const char* name, int index, const std::string& text);
    // Puts a text in as a paste does.
    void Paste(QLineEdit& box, const QString& text);
    // Moves the focus to the button of the tab that is shown.
    void Leave();
    // Chooses an entry of a list, as the list's pop-up does.
    void Pick(QComboBox& list, int index);
    void ShowTab(int tab) { Click("CheckTab", tab); }
    std::string FocusName() const;

    std::vector<std::string> TakeLog() { return std::exchange(m_log, {}); }
    std::vector<Box> TakeBoxes() { return std::exchange(m_boxes.shown, {}); }
    std::vector<UncaughtFailure> TakeFailures() { return std::exchange(m_failures, {}); }
    std::string Saved(const std::string& section, const std::string& key) const;
    void SetSaved(const std::string& section, const std::string& key, const std::string& value);

    std::vector<std::string> m_log;
    MemorySettingsStore m_store;
    RecordingDesktop m_desktop{&m_log};
    RecordingMessageBoxes m_boxes{&m_log};
    RecordingDialogs m_dialogs;
    RecordingInstallation m_installation;
    RecordingWineTools m_wineTools{&m_log};
    SharedState m_state;
    RecordingCompanion m_companion{m_state, m_store, m_log};
    TemporaryFolder m_folder;
    SetClock m_clock;
    Journal m_journal{nullptr, m_clock};
    JournalledStore m_journalled{m_store, m_journal, m_clock};
    TextSettingsFile m_files;
    int m_reloads = 0;
    PlayerData m_data{{.state = m_state,
                       .store = m_journalled,
                       .clock = m_clock,
                       .files = m_files,
                       .saveAll = [] { return StoreResult(); },
                       .reload = [this] { ++m_reloads; }}};
    RecordingClientWindows m_clients;
    TranslatedWindows m_translated{m_clients, {}};
    GameChoice m_game{m_state, m_translated, {.folder = m_folder.Path(), .wayland = false}};
    SpellTableFile m_spellTable{SPELLWICK_SOURCE_FOLDER "/data", m_folder.Path()};
    Pictures m_pictures{1.0};
    std::unique_ptr<FormSettings> m_form;
    std::vector<UncaughtFailure> m_failures;
};

}  // namespace spellwick
