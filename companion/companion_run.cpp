// Start and end of the program.
#include "companion/companion.h"
#include "companion/own_table.h"
#include "model/spell_data.h"
#include "text/log.h"

namespace spellwick {

namespace {

// The settings, which tell of the own table, are out of reach.
std::string WhatToDoWith(const std::filesystem::path& ownTable) {
    return "\n\nThis is your own table:\n" + ownTable.string() +
           "\n\nPut it right, or move it away to use the table that is delivered.";
}

}  // namespace

LoadOutcome Companion::Load() {
    Forms& forms = m_display.TheForms();
    const SpellTableFile table(m_services.folder, m_services.settingsFolder);
    const bool own = table.HasOwn();
    const std::filesystem::path spellData = table.Path();
    std::error_code trouble;
    if (!std::filesystem::exists(spellData, trouble)) {
        m_services.boxes.Show({.text = "Cannot find support file: SpellData.txt",
                               .icon = BoxIcon::kCritical,
                               .title = "Missing File!"});
        return LoadOutcome::kMissingSpellData;
    }
    const auto step = [this](auto&& work) { IgnoreFailure([&] { m_display.Act(work); }); };
    step([&] {
        m_state.MainWindowHandle = forms.MakeMainWindow();
        m_state.AssistLinked = false;
        m_state.AssistRegistered = false;
    });
    step([&] { m_services.assist.FindAssist(); });
    step([&] { m_services.assist.HookWindow(); });
    step([&] { m_page.InitCircleButtons(); });
    step([&] { m_page.ClearSpellLabels(); });
    // Before anything is written.
    step([&] { m_firstStart = m_player.Store().Sections().empty(); });
    step([&] {
        Conversion({.state = m_state,
                    .store = m_player.Store(),
                    .io = m_player.Io(),
                    .boxes = m_services.boxes,
                    .wait = m_services.wait})
            .ConvertOldData();
    });
    step([&] { InitReagentTables(m_state); });
    if (!LoadSpellData(m_state, spellData)) {
        // Reports that came while the message box is open would work on half a table, and a failure
        // of theirs would save settings that were never loaded.
        step([&] { m_services.assist.UnhookWindow(); });
        m_services.boxes.Show(
            {.text = "Unable to load spell data file" + (own ? WhatToDoWith(spellData) : ""),
             .icon = BoxIcon::kCritical,
             .title = "Missing File"});
        return LoadOutcome::kBadSpellData;
    }
    step([&] { m_state.Spellbook.Fill(1); });
    step([&] { m_player.LoadAtStart(); });
    forms.ShowMainWindow();
    step([&] { m_page.Update(); });
    step([&] { forms.LoadSettings(); });
    step([&] { m_page.UpdateAmounts(); });
    step([&] { ShowLink(); });
    step([&] {
        if (m_services.wineTools != nullptr && m_state.FindWineTools) {
            m_services.wineTools->Start();
        }
    });
    m_ready = true;
    return LoadOutcome::kReady;
}

void Companion::RefreshAtFirstActivation() {
    IgnoreFailure([&] { UpdatePage(); });
    IgnoreFailure([&] {
        if (m_state.CurrentReagentBag >= 0) {
            m_display.Act([&] { m_purse.ShowStock(); });
        }
    });
    IgnoreFailure([&] { UpdateAmounts(); });
}

void Companion::ShowStartHints() {
    for (const std::string& hint : m_player.TakeStartHints()) {
        m_display.TheForms().ShowHint(hint);
    }
    if (m_firstStart) {
        m_display.TheForms().ShowWay(FirstStartHint());
    }
}

void Companion::NoteChanges() {
    if (m_ready) {
        m_player.NoteChanges();
    }
}

void Companion::End(EndCause cause) {
    constexpr int kNotSaved = 3;
    Forms& forms = m_display.TheForms();
    if (m_asking && cause == EndCause::kSystem) {
        // Nobody answers the box any more; what it asks about is in the journal.
        m_player.KeepChanges();
        forms.EndProcess(kNotSaved);
        return;
    }
    if (m_ending) {
        return;
    }
    m_ending = true;
    if (!m_ready) {
        forms.EndProcess(0);
        m_ending = false;
        return;
    }
    // An entry that fails is dropped: a report would hold up the end, and all else is still
    // unsaved.
    IgnoreFailure([&] { m_display.Act([&] { m_purse.CommitAtEnd(cause == EndCause::kUser); }); });
    IgnoreFailure([&] { m_display.Act([&] { m_tithes.Commit(); }); });
    // Read before the window goes: a hidden window has lost its frame.
    const WindowPlaces places = AllPlaces();
    // What the tool has reported counts, though the request to close may have overtaken it.
    m_services.assist.TakeReports();
    m_services.assist.UnhookWindow();
    IgnoreFailure([&] { m_display.Act([&] { PayForReports(true); }); });
    forms.HideMainWindow();
    forms.ServeEvents();
    StoreResult result = SaveAtEnd(places);
    while (!result.ok && cause == EndCause::kUser && AsksToSaveAgain(result)) {
        result = SaveAtEnd(places);
    }
    if (!result.ok) {
        m_player.KeepChanges();
        LogLine("the program ends without saving; the recovery journal has the changes: " +
                result.trouble);
    }
    forms.EndProcess(result.ok ? 0 : kNotSaved);
    m_ending = false;
    m_saved = false;
}

void Companion::SaveForLogOff() {
    if (!m_ready || m_ending) {
        return;
    }
    IgnoreFailure([&] { m_display.Act([&] { PayForReports(true); }); });
    const StoreResult macros = m_player.Io().SaveMacros(std::nullopt);
    const StoreResult all = m_player.Io().SaveGlobalSettings(AllPlaces());
    if (!macros.ok || !all.ok) {
        m_player.KeepChanges();
        LogLine(macros.ok ? all.trouble : macros.trouble);
    }
}

StoreResult Companion::SaveWhatIsInMemory() {
    m_display.Act([&] { PayForReports(true); });
    const StoreResult macros = m_player.Io().SaveMacros(std::nullopt);
    return macros.ok ? m_player.Io().SaveGlobalSettings(AllPlaces()) : macros;
}

void Companion::ReloadAll() {
    m_display.Act([&] {
        m_player.Reload();
        // The macros, which the dialog takes in.
        m_display.TheForms().LoadSettings();
        m_page.Update();
        m_page.UpdateAmounts();
        m_page.UpdateChances();
        m_display.changes.layout = true;
    });
}

// What can be saved of the macros and of all the rest; the trouble of the first that could not.
StoreResult Companion::SaveAtEnd(const WindowPlaces& places) {
    StoreResult macros = m_display.TheForms().UnloadSettings();
    StoreResult all = m_player.Io().SaveGlobalSettings(places);
    m_saved = macros.ok && all.ok;
    return macros.ok ? all : macros;
}

bool Companion::AsksToSaveAgain(const StoreResult& result) {
    m_player.KeepChanges();
    m_asking = true;
    const BoxAnswer answer = m_services.boxes.Show({.text = result.trouble,
                                                    .icon = BoxIcon::kExclamation,
                                                    .buttons = BoxButtons::kTryAgainOrEnd});
    m_asking = false;
    return answer == BoxAnswer::kTryAgain;
}

void Companion::SaveWithoutDisplay() noexcept {
    if (!m_ready || m_saved) {
        return;
    }
    m_ending = true;
    const auto step = [](auto&& work) {
        try {
            work();
        } catch (const std::exception& failure) {
            LogLine(std::string("saving without a display: ") + failure.what());
        }
    };
    // Nothing is drawn: there is no display to draw on.
    step([&] { PayForReports(true); });
    WindowPlaces places;
    step([&] { places = m_display.TheForms().MainPlace(); });
    StoreResult result;
    step([&] { result = m_player.Io().SaveMacros(std::nullopt); });
    step([&] { result = m_player.Io().SaveGlobalSettings(places); });
    step([&] {
        if (!result.ok) {
            m_player.KeepChanges();
            LogLine(result.trouble);
        }
    });
}

bool Companion::SaveAfterFailure() {
    bool saved = true;
    m_ending = true;
    const auto step = [&saved](auto&& work) {
        try {
            work();
        } catch (const std::exception&) {
            saved = false;
        }
    };
    Forms& forms = m_display.TheForms();
    SettingsIo& io = m_player.Io();
    WindowPlaces places;
    step([&] { places = forms.MainPlace(); });
    step([&] { places.timer = forms.TimerPlace(); });
    step([&] { m_services.assist.UnhookWindow(); });
    step([&] { PayForReports(true); });
    step([&] { forms.HideMainWindow(); });
    step([&] { saved = forms.UnloadSettings().ok && saved; });
    step([&] { saved = io.SavePlayerSettings(m_state.CurrentPlayerName).ok && saved; });
    step([&] { saved = io.SaveGlobalKeys(places).ok && saved; });
    return saved;
}

WindowPlaces Companion::AllPlaces() {
    WindowPlaces places = m_display.TheForms().MainPlace();
    places.timer = m_display.TheForms().TimerPlace();
    return places;
}

}  // namespace spellwick
