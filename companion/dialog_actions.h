// What the settings dialog asks of the rest of the program.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/settings_store.h"
#include "store/setting_changes.h"
#include "text/number_types.h"

namespace spellwick {

class DialogActions {
  public:
    virtual ~DialogActions() = default;

    virtual void LayoutVertical() = 0;
    virtual void LayoutHorizontal() = 0;
    // Arranges the main window one way or the other, and saves which.
    void ChooseArrangement(bool vertical);
    virtual void UpdatePage() = 0;
    virtual void UpdateAmounts() = 0;
    // Shows the count of a reagent, 1 to 13, in the bag in use.
    virtual void ShowCounter(i32 reagent) = 0;
    // Calculates all chances and shows them, in the dialog too.
    virtual void UpdateChances() = 0;
    // The group that the skills tab shows, 0 to 4: a report of Magery goes to its skill.
    virtual void ShowSkillGroup(i32 group) = 0;
    // Character and server from ClientTitle, with the caption.
    virtual void ParseClientTitle() = 0;
    // The character that a client's window shows as logged in; empty without one.
    [[nodiscard]] virtual std::string CharacterInGame() const { return {}; }
    // Where the client keeps the files of CurrentPlayerName's character, as far as a client's
    // window has told since the start; empty otherwise.
    [[nodiscard]] virtual std::filesystem::path CharacterFolder() { return {}; }
    // Stores how running timers are shown, and shows them so.
    virtual void SetTimerMode(i32 mode) = 0;

    // The data of CurrentPlayerName.
    virtual void SavePlayer() = 0;
    virtual void LoadPlayer() = 0;

    // The global keys and the player.
    virtual void SaveAll() = 0;
    // One key of the global section.
    virtual void SaveOption(std::string_view key, const std::string& value) = 0;
    // The macro codes, and the dialog's place if it has one. Shows no message box.
    [[nodiscard]] virtual StoreResult SaveMacros(
        const std::optional<WindowPlaces::Place>& dialog) = 0;
    // The state of the link with the assist tool, in lines.
    virtual std::string LinkReport() const = 0;
    // Tells the user of a save that failed, once for one trouble.
    virtual void ReportSave(const StoreResult& result) = 0;
};

}  // namespace spellwick
