// A player's desktop, ready for a test: Spellwick, the practice game, and a separate store.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/settings_store.h"
#include "tests/end_to_end/desk.h"

namespace spellwick::testing_support {

inline constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";
inline constexpr const char* kBran = "Ultima Online - Bran Oakley (Atlantic)";
inline constexpr const char* kGlobal = "Settings";

// Slots of spells on the first page.
inline constexpr int kClumsy = 0;  // one Bloodmoss, one Nightshade
inline constexpr int kHeal = 3;    // one Spider Silk, one Garlic, one Ginseng
inline constexpr int kWeaken = 7;  // one Garlic, one Nightshade

inline constexpr int kRight = 3;  // the mouse button

// What the caption of the main window starts with, and no other window's title.
std::string CaptionStart();

class PlayerDesk : public testing::Test {
  protected:
    void SetUp() override;
    // Checks that no key is down and that locks and keymap are as before.
    void TearDown() override;

    // The folder of this test program and the others.
    static std::filesystem::path Programs();

    // Puts a mage with every spell in the spellbook and `stock` of each reagent into the store,
    // before the start.
    void PrepareMage(const std::string& title, int stock);
    void Prepare(const std::string& section, const std::map<std::string, std::string>& values);
    std::filesystem::path StoreFile() const;
    // The value as another process sees it now; "" if it is missing.
    std::string Stored(const std::string& section, const std::string& key) const;
    // The stock of the thirteen reagents in the first bag, by their keys in the store.
    SectionValues StoredSection(const std::string& section) const;

    // With more options of the practice game, and the start of its window's title then.
    void StartGame(const std::string& options = "", std::string_view title = "Ultima Online");
    // Sends the game a command, for example "login 1".
    void TellGame(const std::string& command);
    // The game's journal, without the titles.
    std::vector<std::string> Typed() const;
    bool WaitTyped(const std::vector<std::string>& lines);
    ChildProcess& Game() { return *m_game; }
    void EndGame(int signal);

    // Starts Spellwick and waits until its window has its place.
    void StartSpellwick();
    // The two halves of it, for a start that shows a box.
    void BeginSpellwick();
    void AwaitSpellwick();
    // Closes the one box that the start shows.
    void StartSpellwickOverBox();
    ChildProcess& Spellwick() { return *m_spellwick; }
    xcb_window_t Window() const { return m_window; }
    // Its visible windows that the window manager does not manage, in the order of their tops.
    std::vector<xcb_window_t> Hints() const;
    bool WaitCharacter(const std::string& name) const;
    // Closes the window as its close button does; returns the exit code.
    std::optional<int> CloseSpellwick();
    // Starts the game and Spellwick, and logs in the first character (Mira).
    void StartBoth();

    // Positions in the wide arrangement. Slots 0 to 7, reagents 1 to 13, commands 0 to 4.
    Place Spell(int slot) const;
    static Place Counter(int reagent);
    static Place Command(int index);
    void ClickSpell(int slot) { m_desk->Click(m_window, Spell(slot)); }
    // Gives the cost of the spell in a slot back, as Ctrl and a click do, and waits for the
    // counter.
    void Credit(int slot);
    // The window's picture after the mouse has left a spell, without mouse or focus on it.
    Picture QuietPicture(int slot);

    std::unique_ptr<Desk> m_desk;

  private:
    KeyboardState m_keyboardBefore;
    int m_gameInput = -1;
    std::unique_ptr<ChildProcess> m_game;
    std::unique_ptr<ChildProcess> m_spellwick;
    xcb_window_t m_window = 0;
};

}  // namespace spellwick::testing_support
