// The companion on recording parts, with plain data in place of its windows. A test tells it what
// a user does and reads what its screen shows.
#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companion/companion.h"
#include "store/text_settings_file.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/recording_key_sender.h"
#include "tests/support/recording_message_boxes.h"
#include "tests/support/recording_wine_tools.h"
#include "tests/support/set_clock.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {

inline constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";
inline constexpr const char* kBran = "Ultima Online - Bran (Oak Hill)";
inline constexpr WindowHandle kClient = 7;

// What the companion asks of the rest of the program, written down in the order of the calls. A
// call that is told to fails.
class RecordingParts : public AssistLink, public WaitWindow {
  public:
    explicit RecordingParts(std::vector<std::string>& log) : m_log(log) {}

    void FindAssist() override { Note("find assist"); }
    void HookWindow() override { Note("hook"); }
    void UnhookWindow() override { Note("unhook"); }
    void TakeReports() override { Note("take reports"); }
    void RequestCount() override { Note("request count"); }
    void ShowWait() override { Note("wait"); }
    void ShowPercent(i32 /*percent*/) override {}
    void CloseWait() override {}
    void ServeEvents() override {}

    void Note(const std::string& line);

    // The call that fails, each time, and the one that runs something more.
    std::string failing;
    std::string hooked;
    std::function<void()> hook;

  private:
    std::vector<std::string>& m_log;
};

// Notes "convert" when the conversion of old data looks how far it has come.
class NotingStore : public MemorySettingsStore {
  public:
    explicit NotingStore(RecordingParts& parts) : m_parts(parts) {}

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    StoreResult Apply(const std::vector<SettingChange>& changes) override;

    // Notes "load" and "save" with their sections too.
    bool notes = false;

  private:
    RecordingParts& m_parts;
};

struct UncaughtFailure {
    FailureKind kind = FailureKind::kOverflow;
    std::string action;

    bool operator==(const UncaughtFailure&) const = default;
};

void PrintTo(const UncaughtFailure& failure, std::ostream* out);
void PrintTo(const Box& box, std::ostream* out);

class CompanionFixture : public testing::Test, public FailureSink, protected Forms {
  protected:
    CompanionFixture();
    ~CompanionFixture() override;

    // What the companion is made of: the parts as they stand.
    CompanionServices Services();

    // With the player's own tables; not there until a test makes it.
    std::filesystem::path SettingsFolder() const { return m_folder.Path() / "settings"; }

    // A failure, a message box or a hint that the test did not ask for fails it.
    void TearDown() override;

    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override;

    // A saved player: skills and intelligence of 100, all spells in the book, 50 of each reagent in
    // bag 0 and 20 in bag 1, 500 tithing points; made the current one.
    void SavePlayer(const std::string& title);
    void SetSaved(const std::string& section, const std::string& key, const std::string& value);
    std::string Saved(const std::string& section, const std::string& key) const;

    // A client window with this title, alone on the desktop; none for an empty title.
    void OpenClient(const std::string& title);

    // Makes the companion with the parts as they stand.
    Companion& Make();
    // The same, loaded, with Mira in the client; the log is empty after it.
    virtual void StartWithMira();
    // Loads what Make made, and activates it.
    virtual void Start();

    Companion& Program() { return *m_companion; }
    const Screen& Shown() const { return m_companion->Shown(); }
    SharedState& State() { return m_state; }

    // One tick of Timer1(index): 1 the watch, 2 the meditation.
    virtual void Tick(int index);
    // Runs something once in the next pause of a cast.
    virtual void InThePause(std::function<void()> happens);

    // What a control shows, by its name; std::logic_error for a name that is none.
    virtual std::string Text(const char* name);
    virtual std::string Text(const char* name, int index);

    // What a user does. A failure goes to the sink, as from the windows.
    virtual void ClickSpell(int slot, i16 shift = 0);
    virtual void ShowPage(int button);
    virtual void ClickCommand(int index);
    // Replaces the text of a counter by typing, without leaving it.
    virtual void EnterCounter(int reagent, const std::string& text);
    // Moves the focus to somewhere that commits entries and does nothing else.
    virtual void Leave();
    // Runs an action through the guard.
    void Guarded(const char* action, const std::function<void()>& step);

    std::vector<std::string> TakeLog() { return std::exchange(m_log, {}); }
    std::vector<Box> TakeBoxes() { return std::exchange(m_boxes.shown, {}); }
    std::vector<UncaughtFailure> TakeFailures() { return std::exchange(m_failures, {}); }
    std::vector<std::string> TakeHints() { return std::exchange(m_hints, {}); }
    // Hints that lead somewhere; those that a test does not ask for are ignored.
    std::vector<WayHint> TakeWays() { return std::exchange(m_ways, {}); }
    std::vector<Changes> TakeChanges() { return std::exchange(m_changes, {}); }

    // Forms
    void Show(const Changes& changes) override;
    WindowHandle MakeMainWindow() override { return 70; }
    void ShowMainWindow() override {
        if (m_atShow) {
            m_atShow();
        }
    }
    void LoadSettings() override { m_parts.Note("load settings"); }
    void FocusPage() override;
    void FocusCounter(i32 reagent) override;
    void FocusHelp() override { m_focus = "Command(1)"; }
    void ShowHint(const std::string& text, const Target& target) override {
        if (target.way == Way::kNone) {
            m_hints.push_back(text);
        } else {
            m_ways.push_back({text, target});
        }
    }
    bool ShowHelp() override {
        m_parts.Note("show help");
        return m_showsHelp;
    }
    void ServeEvents() override;
    void Pause() override;
    WindowPlaces MainPlace() override {
        return {.main = WindowPlaces::Place{.top = 1500.0F, .left = 3000.0F}, .timer = {}};
    }
    WindowPlaces::Place TimerPlace() override { return {.top = 300.0F, .left = 450.0F}; }
    void HideMainWindow() override { m_parts.Note("hide"); }
    StoreResult UnloadSettings() override;
    void EndProcess(int exitCode) override { m_parts.Note("end " + std::to_string(exitCode)); }

    TemporaryFolder m_folder;
    std::vector<std::string> m_log;
    RecordingParts m_parts{m_log};
    NotingStore m_store{m_parts};
    RecordingClientWindows m_clients{&m_log};
    bool m_showsHelp = false;
    RecordingKeySender m_keys{&m_log};
    RecordingDesktop m_desktop{&m_log};
    RecordingMessageBoxes m_boxes{&m_log};
    SetClock m_clock;
    RecordingWineTools m_wineTools{&m_log};
    TextSettingsFile m_files;
    AssistLink* m_assist = &m_parts;       // set before Make
    JournalFile* m_journal = nullptr;      // set before Make
    TranslatedWindows* m_games = nullptr;  // set before Make
    SharedState m_state;
    CastPayment::Time m_now{};  // of the payment
    CastPayment m_payment{m_state, [this] { return m_now; }};
    LinkStatus m_noLink;
    const LinkStatus* m_link = &m_noLink;  // set before Make
    std::unique_ptr<Companion> m_companion;
    std::vector<UncaughtFailure> m_failures;
    std::string m_focus;
    std::function<void()> m_atShow;  // when the main window may come up

  private:
    std::vector<Changes> m_changes;
    std::vector<std::string> m_hints;
    std::vector<WayHint> m_ways;
    std::deque<std::function<void()>> m_inThePause;
};

}  // namespace spellwick
