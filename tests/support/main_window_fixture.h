// The real main window on recording parts, used by mouse and keyboard as a user would.
#pragma once

#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "main_window/form_main.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/recording_key_sender.h"
#include "tests/support/recording_message_boxes.h"

namespace spellwick {

inline constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";
inline constexpr const char* kBran = "Ultima Online - Bran (Oak Hill)";
inline constexpr WindowHandle kClient = 7;

// What the window asks of the rest of the program, written down in the order of the calls. A call
// that is told to fails.
class RecordingParts : public AssistLink,
                       public SettingsPort,
                       public SpellInfoPort,
                       public OldDataConversion,
                       public TimersPort,
                       public ProcessEnd {
  public:
    explicit RecordingParts(std::vector<std::string>& log) : m_log(log) {}

    void FindAssist() override { Note("find assist"); }
    void HookWindow() override { Note("hook"); }
    void UnhookWindow() override { Note("unhook"); }
    void RequestCount() override { Note("request count"); }
    void Load() override { Note("load settings"); }
    void ShowModal() override { Note("show settings"); }
    void UpdateChance() override { Note("update chance"); }
    void ShowMinimumSkill(const std::string& text) override { Note("skill " + text); }
    void ShowMinimumInt(const std::string& text) override { Note("int " + text); }
    StoreResult Unload() override {
        Note("unload settings");
        return {};
    }
    void DisplayInfo(i32 row) override { Note("info " + std::to_string(row)); }
    void ConvertOldData() override { Note("convert"); }
    void StartTimer(i32 row) override { Note("timer " + std::to_string(row)); }
    void Update() override { Note("refresh timers"); }
    WindowPlaces::Place TimerPlace() override { return {.top = 300.0F, .left = 450.0F}; }
    void EndProcess(int exitCode) override { Note("end " + std::to_string(exitCode)); }

    // The call that fails, each time, and the one that runs something more.
    std::string failing;
    std::string hooked;
    std::function<void()> hook;

  private:
    void Note(const std::string& line);

    std::vector<std::string>& m_log;
};

struct UncaughtFailure {
    FailureKind kind = FailureKind::kOverflow;
    std::string action;

    bool operator==(const UncaughtFailure&) const = default;
};

void PrintTo(const UncaughtFailure& failure, std::ostream* out);
void PrintTo(const Box& box, std::ostream* out);

class MainWindowFixture : public testing::Test, public FailureSink {
  protected:
    MainWindowFixture();
    ~MainWindowFixture() override;

    // A failure, a box or a warning of the toolkit that the test did not ask for fails it.
    void TearDown() override;

    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override;

    // A saved player: skills and intelligence of 100, all spells in the book, 50 of each reagent in
    // bag 0 and 20 in bag 1, 500 tithing points; made the current one.
    void SavePlayer(const std::string& title);
    void SetSaved(const std::string& section, const std::string& key, const std::string& value);
    std::string Saved(const std::string& section, const std::string& key) const;

    // A client window with this title, alone on the desktop; none for an empty title.
    void OpenClient(const std::string& title);

    // Makes the window with the parts as they stand.
    FormMain& Make();
    // The same, loaded and shown, with Mira in the client; the log is empty after it. The watch
    // ticks only when the test says so.
    FormMain& StartWithMira();
    // Loads and shows what Make made.
    void Start();

    FormMain& Form() { return *m_form; }
    SharedState& State() { return m_state; }

    // One tick of Timer1(index).
    void Tick(int index);
    // Runs something once in the next pause of a cast, as soon as the pause serves events.
    void InThePause(std::function<void()> happens);

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
    QLineEdit& Reagent(int index) { return Named<QLineEdit>("Reagent", index); }
    QLabel& LabelAmount(int slot) { return Named<QLabel>("LabelAmount", slot); }
    QLabel& LabelChance(int slot) { return Named<QLabel>("LabelChance", slot); }
    std::string Text(const char* name);
    std::string Text(const char* name, int index);
    Colour AmountGround(int slot) { return Named<CellLabel>("LabelAmount", slot).CellGround(); }
    Colour ChanceGroundOf(int slot) { return Named<CellLabel>("LabelChance", slot).CellGround(); }

    // Mouse and keys as the window system would bring them.
    void Click(QWidget& control, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Click(const char* name, int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void DoubleClick(QWidget& control, Qt::MouseButton button = Qt::LeftButton);
    void MoveTo(QWidget& control);
    void MoveTo(QPoint place);
    void Type(const std::string& text);
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Replaces the text of a counter by typing, without leaving it.
    void Enter(QLineEdit& box, const std::string& text);
    // Moves the focus to somewhere that commits entries and does nothing else.
    void Leave();
    void ClickSpell(int slot, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void ShowPage(int button);
    std::string FocusName() const;

    std::vector<std::string> TakeLog();
    std::vector<Box> TakeBoxes();
    std::vector<UncaughtFailure> TakeFailures();

    QTemporaryDir m_folder;
    std::vector<std::string> m_log;
    MemorySettingsStore m_store;
    RecordingClientWindows m_clients{&m_log};
    RecordingKeySender m_keys{&m_log};
    RecordingDesktop m_desktop{&m_log};
    RecordingMessageBoxes m_boxes{&m_log};
    RecordingParts m_parts{m_log};
    AssistLink* m_assist = &m_parts;  // set before Make
    SharedState m_state;
    std::unique_ptr<FormMain> m_form;
    std::vector<UncaughtFailure> m_failures;
};

// Warnings of the toolkit since the last call; installed by the tests' main.
std::vector<std::string> TakeWarnings();
void CollectWarnings();

}  // namespace spellwick
