// The clients that Spellwick knows, for the player to look at and to add to: the table in use, what
// is found with it, and why nothing is.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "link/translated_windows.h"
#include "model/shared_state.h"

namespace spellwick {

class GameChoice {
  public:
    struct Place {
        std::optional<std::filesystem::path> folder;  // of the settings; nothing if there is none
        bool wayland = false;                         // the session can hide windows from us
    };

    // Both references outlive it.
    GameChoice(const SharedState& state, TranslatedWindows& windows, Place place)
        : m_state(state), m_windows(windows), m_place(std::move(place)) {}

    // Takes the player's own table if there is one, else the delivered one. Where the own one has a
    // fault, the classic client alone is known. The fault as a sentence; empty without one.
    std::string LoadTable();

    // The client that is found now: its row's name, its window's title, and who is logged in. Else
    // why none is found.
    [[nodiscard]] std::string FoundText();

    // What more there is to know: a Wine desktop, a session that hides windows; else empty.
    [[nodiscard]] std::string NoticeText();

    // Every window that could be the game, topmost first.
    [[nodiscard]] std::vector<TopLevelWindow> Windows();

    [[nodiscard]] WindowClassKind ClassKind() const { return m_windows.ClassKind(); }

    [[nodiscard]] TableRow Propose(const TopLevelWindow& window) const;

    // The file of the player's own table, whether it is there or not; nothing without a folder.
    [[nodiscard]] std::optional<std::filesystem::path> OwnTable() const;

    // Puts a row before all others of the player's own table, which begins as a copy of the
    // delivered one, and takes it into use. Why not, as a sentence; empty if it is done.
    [[nodiscard]] std::string AddRow(const TableRow& row);

    // Makes the player's own table if it is not there. Why not, as a sentence.
    [[nodiscard]] std::string MakeOwnTable();

  private:
    const SharedState& m_state;
    TranslatedWindows& m_windows;
    Place m_place;
    std::string m_fault;
};

}  // namespace spellwick
