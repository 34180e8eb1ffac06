// All that Spellwick does, without its windows: the forms pass events in, and draw the screen when
// they are told what has changed. A failure of an action is left to the caller, as RuntimeFailure.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/casting.h"
#include "companion/dialog_actions.h"
#include "companion/display.h"
#include "companion/page.h"
#include "companion/player.h"
#include "companion/player_data.h"
#include "companion/purse.h"
#include "companion/running_timers.h"
#include "companion/services.h"
#include "companion/tithes.h"
#include "link/assist_dispatcher.h"
#include "link/assist_view.h"

namespace spellwick {

enum class LoadOutcome { kReady, kMissingSpellData, kBadSpellData };

// Who ends the program: the user, who can answer a message box, or the system, which does not wait.
enum class EndCause { kUser, kSystem };

class Companion : public DialogActions, private AssistView {
  public:
    // `services` is copied; what it refers to outlives the companion.
    explicit Companion(const CompanionServices& services);

    // Before anything else; outlives the companion's work.
    void SetForms(Forms& forms) { m_display.SetForms(forms); }

    SharedState& State() { return m_state; }
    const Screen& Shown() const { return m_display.screen; }

    // The start-up sequence. Failures of a step are ignored; only a missing or bad spell data file
    // ends the start, after its message box.
    LoadOutcome Load();
    // What the first activation refreshes, each step on its own.
    void RefreshAtFirstActivation();
    // Shows what the start has to tell, once the window is there.
    void ShowStartHints();
    // The end of the program: with exit code 0, with 3 when the data could not be saved. A start
    // that is not over yet has nothing to save.
    void End(EndCause cause);
    // Saves everything and goes on: a log-off can still be called off.
    void SaveForLogOff();
    // Saves as at a regular end when the display has gone. Shows nothing, and lets no failure out.
    void SaveWithoutDisplay() noexcept;
    // Saves as at a regular end, each step on its own; for the end after a failure. True when all
    // of it was saved.
    bool SaveAfterFailure();

    // Ticks of Timer1(1) and Timer1(2).
    void WatchTick();
    void MeditationTick();
    // Twice a second: notes in the recovery journal what has changed.
    void NoteChanges();

    // The page. Buttons are 0 to 13, slots 0 to 7.
    void ChoosePage(i32 button);
    void UpdatePage() override;
    void UpdateChances() override;
    void UpdateAmounts() override;
    i32 SpellAtSlot(i32 slot) const { return m_page.SpellAtSlot(slot); }
    void HoverSlot(i32 slot);
    // The mouse is over no slot.
    void LeaveSlots();
    // Keeps button and modifiers; the row that the right button asks the info window for.
    std::optional<i32> PressSlot(i32 slot, i16 button, i16 shift);
    void ClickSlot(i32 slot);
    const LastCast& TheLastCast() const { return m_casting.Last(); }

    // Counters, 1 to 13.
    void EnterCounter(i32 reagent) { m_display.screen.focusedReagent = reagent; }
    void TypeCounter(i32 reagent, const std::string& text);
    // Its arrows have written it.
    void StepCounter(i32 reagent);
    void LeaveCounter(i32 reagent);
    void ShowCounter(i32 reagent) override;
    // Moves the focus to the counter to fill before a spell can be cast; row 0 to 96.
    void FocusStock(i32 row);
    i32 CounterFor(i32 row) const { return CounterToFill(m_state.Spells(row), m_display.screen); }
    // Enter: commits the entry and leaves the focus in the counter.
    void CommitByEnter();

    void TypeBagName(const std::string& name);
    void ClickBag(i32 bag);
    void LeaveBags();

    void EditTithes();
    void TypeTithes(const std::string& text) { m_display.screen.tithesEdit = text; }
    void LeaveTithes();

    RunningTimers& Timers() { return m_timers; }

    // Buttons.
    void Undo();
    void OpenHelp();
    void Count();
    void Meditate();

    // The caption of the moment; the window shows it at each painting.
    void ShowCaption();
    void ParseClientTitle() override;
    [[nodiscard]] std::string CharacterInGame() const override;
    [[nodiscard]] std::filesystem::path CharacterFolder() override;
    // The two arrangements of the main window.
    void LayoutVertical() override { Arrange(true); }
    void LayoutHorizontal() override { Arrange(false); }
    void ShowSkillGroup(i32 group) override { m_display.screen.skillGroup = group; }
    void SetTimerMode(i32 mode) override;

    // Load and save.
    void SavePlayer() override;
    void LoadPlayer() override;
    void SaveAll() override;
    void SaveOption(std::string_view key, const std::string& value) override;
    [[nodiscard]] StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& dialog) override;
    void ReportSave(const StoreResult& result) override;
    SettingsIo& Io() { return m_player.Io(); }
    // Null where the data cannot be taken in or out.
    PlayerData* Data() { return m_data ? &*m_data : nullptr; }

    // Takes the assist tool's reports.
    MessageReceiver& Reports() { return m_dispatcher; }
    void EnableCount(bool enabled) override;
    std::string LinkReport() const override;

  private:
    // AssistView
    void ShowCounter(i32 reagent, i32 count) override;
    void ShowTithes(i32 points) override { m_tithes.Show(points); }
    void ShowCurrentMana() override { m_page.ShowCurrentMana(); }
    void ShowAmounts() override { m_page.UpdateAmounts(); }
    void ShowChances() override { m_page.UpdateChances(); }
    void DebitSpell(i32 row) override;
    void StartTimer(i32 row) override;
    void CaptionCount(const std::string& caption) override;
    void ArmMeditation() override;
    void ShowReportedMagery(i32 points) override;
    void ShowReportedIntelligence(i32 points) override;
    void ShowBox(const std::string& text) override;
    void YieldEvents() override;
    void EndReport() override;

    // Takes the debits of reported casts that no report of stock has made up for.
    void PayForReports(bool all);
    void ShowLink();

    void ColourAnew();
    void Arrange(bool vertical);
    WindowPlaces AllPlaces();
    StoreResult SaveWhatIsInMemory();
    void ReloadAll();
    StoreResult SaveAtEnd(const WindowPlaces& places);
    bool AsksToSaveAgain(const StoreResult& result);

    CompanionServices m_services;
    SharedState& m_state;
    Display m_display;
    Page m_page{m_state, m_display};
    Purse m_purse{m_state, m_display, m_page, m_services.boxes};
    Tithes m_tithes{m_state, m_display, m_page};
    RunningTimers m_timers;
    Player m_player;
    Casting m_casting;
    AssistDispatcher m_dispatcher;
    std::optional<PlayerData> m_data;
    std::vector<std::filesystem::path> m_clientFolders;  // of the last client that told them
    bool m_firstStart = false;                           // there were no settings yet
    bool m_ready = false;                                // all is loaded
    bool m_ending = false;
    bool m_asking = false;  // whether to save again, at the end
    bool m_saved = false;   // at the end
};

}  // namespace spellwick
