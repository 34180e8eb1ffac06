// How long the settings dialog takes to load, to open, to change its page, and to take over a large
// macro file.
#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <fstream>

#include <benchmark/benchmark.h>

#include "model/chances.h"
#include "model/spell_data.h"
#include "settings_dialog/form_settings.h"
#include "store/macro_file.h"
#include "store/settings_io.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/recording_dialogs.h"
#include "tests/support/recording_installation.h"
#include "tests/support/recording_message_boxes.h"

namespace spellwick {
namespace {

class QuietCompanion : public DialogActions {
  public:
    explicit QuietCompanion(SharedState& state) : m_state(state) {}

    std::string LinkReport() const override { return {}; }
    void LayoutVertical() override {}
    void LayoutHorizontal() override {}
    void UpdatePage() override {}
    void UpdateAmounts() override {}
    void ShowCounter(i32 /*reagent*/) override {}
    void UpdateChances() override { CalculateChances(m_state); }
    void ShowSkillGroup(i32 /*group*/) override {}
    void ParseClientTitle() override {}
    void SetTimerMode(i32 /*mode*/) override {}
    void SavePlayer() override {}
    void LoadPlayer() override {}
    void SaveAll() override {}
    void SaveOption(std::string_view /*key*/, const std::string& /*value*/) override {}
    StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& /*dialog*/) override {
        return {};
    }
    void ReportSave(const StoreResult& /*result*/) override {}

  private:
    SharedState& m_state;
};

// A failure in a bench ends it.
class Abort : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& /*failure*/,
                           std::string_view /*action*/) override {
        std::abort();
    }
};

class Dialog {
  public:
    Dialog() {
        InitReagentTables(m_state);
        if (!LoadSpellData(m_state, SPELLWICK_SPELL_DATA)) {
            std::abort();
        }
        SettingsIo(m_state, m_store, [](PlayerPart) {}).LoadGlobalSettings();
    }

    void Make() {
        m_form = std::make_unique<FormSettings>(
            SettingsServices{.state = m_state,
                             .store = m_store,
                             .desktop = m_desktop,
                             .boxes = m_boxes,
                             .dialogs = m_dialogs,
                             .installation = m_installation,
                             .failures = m_failures,
                             .companion = m_companion,
                             .game = m_game,
                             .spellTable = m_spellTable,
                             .pictures = m_pictures,
                             .atStart = TakeInSettings(m_state, m_store)},
            nullptr);
        m_form->Form_Load();
    }

    void Open() {
        m_form->show();
        QCoreApplication::processEvents();
        // What stands on the screen is painted, whatever the platform puts off.
        benchmark::DoNotOptimize(m_form->grab());
    }

    FormSettings& Form() { return *m_form; }

  private:
    SharedState m_state;
    MemorySettingsStore m_store;
    RecordingDesktop m_desktop;
    RecordingMessageBoxes m_boxes;
    RecordingDialogs m_dialogs;
    RecordingInstallation m_installation;
    RecordingClientWindows m_clients;
    TranslatedWindows m_translated{m_clients, {}};
    GameChoice m_game{m_state, m_translated, {}};
    SpellTableFile m_spellTable{{}, {}};
    Abort m_failures;
    QuietCompanion m_companion{m_state};
    Pictures m_pictures{1.0};
    std::unique_ptr<FormSettings> m_form;
};

// The part of the program's start that the hidden dialog takes.
void Load(benchmark::State& state) {
    Dialog dialog;
    for (auto _ : state) {
        dialog.Make();
    }
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

// Bound: 150 ms.
void FirstOpening(benchmark::State& state) {
    Dialog dialog;
    for (auto _ : state) {
        state.PauseTiming();
        dialog.Make();
        state.ResumeTiming();
        dialog.Open();
    }
}
BENCHMARK(FirstOpening)->Unit(benchmark::kMillisecond)->Iterations(20);

// Bound: 30 ms.
void LaterOpening(benchmark::State& state) {
    Dialog dialog;
    dialog.Make();
    dialog.Open();
    for (auto _ : state) {
        state.PauseTiming();
        dialog.Form().hide();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        dialog.Open();
    }
}
BENCHMARK(LaterOpening)->Unit(benchmark::kMillisecond)->Iterations(50);

// Bound: 5 ms.
void SpellPage(benchmark::State& state) {
    Dialog dialog;
    dialog.Make();
    dialog.Open();
    int page = 0;
    for (auto _ : state) {
        page = (page + 1) % kPageCount;
        dialog.Form().Spells().ComboSpellLevel->setCurrentIndex(page);
        dialog.Form().Spells().ClickSpellLevel();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(SpellPage)->Unit(benchmark::kMillisecond);

// Ten megabytes of nothing but blocks that cast a spell of the table. Bound: 1 s.
void MergeMacros(benchmark::State& state) {
    constexpr std::size_t kFileSize = 10'000'000;
    SharedState tables;
    if (!LoadSpellData(tables, SPELLWICK_SPELL_DATA)) {
        std::abort();
    }
    const QTemporaryDir folder;
    const std::filesystem::path file = folder.filePath(QStringLiteral("macros.txt")).toStdString();
    std::ofstream output(file, std::ios::binary);
    for (std::size_t block = 0, size = 0; size < kFileSize; ++block) {
        const std::string lines = "F1 0 1 0\r\nCastSpell " +
                                  tables.Spells(static_cast<i32>(block % 64)).Name +
                                  "\r\n########\r\n";
        output << lines;
        size += lines.size();
    }
    output.close();
    for (auto _ : state) {
        MacroLoad load;
        MergeMacroFile(file, tables, load);
    }
}
BENCHMARK(MergeMacros)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace spellwick

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication toolkit(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
