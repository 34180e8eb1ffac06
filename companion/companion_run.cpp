// Start and end of the program.
#include "companion/companion.h"
#include "model/spell_data.h"

namespace spellwick {

LoadOutcome Companion::Load() {
    Forms& forms = m_display.TheForms();
    const std::filesystem::path spellData = m_services.folder / kSpellDataFile;
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
    step([&] {
        Conversion({.state = m_state,
                    .store = m_services.store,
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
        m_services.boxes.Show({.text = "Unable to load spell data file",
                               .icon = BoxIcon::kCritical,
                               .title = "Missing File"});
        return LoadOutcome::kBadSpellData;
    }
    step([&] { m_state.Spellbook.Fill(1); });
    step([&] { m_player.Io().LoadGlobalSettings(); });
    step([&] { m_page.Update(); });
    step([&] { forms.LoadSettings(); });
    step([&] { m_page.UpdateAmounts(); });
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

void Companion::End() {
    if (m_ending) {
        return;
    }
    m_ending = true;
    Forms& forms = m_display.TheForms();
    // Read before the window goes: a hidden window has lost its frame.
    const WindowPlaces places = AllPlaces();
    m_services.assist.UnhookWindow();
    forms.HideMainWindow();
    forms.ServeEvents();
    ReportSave(forms.UnloadSettings());
    SaveGlobalSettings(places);
    forms.EndProcess(0);
    m_ending = false;
}

void Companion::SaveGlobalSettings(const WindowPlaces& places) {
    m_display.Act([&] { m_player.SaveAll(places); });
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
