#include "tests/end_to_end/player_desk.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "link/client_watch.h"
#include "platform/linux/sqlite_settings_store.h"
#include "platform/linux/x11_connection.h"

namespace spellwick::testing_support {

using namespace std::chrono_literals;

namespace {

// The width of the command buttons depends on the font; everything to their right has a fixed
// width.
constexpr int kWidthFromFirstSpell = 539;
constexpr int kSlotPitch = 44;

constexpr const char* kStockKeys[] = {"MR", "SA", "BM", "SS", "GA", "BP", "NI",
                                      "GI", "BW", "DB", "GD", "NC", "PI"};

}  // namespace

std::string CaptionStart() {
    return std::string(kApplicationName) + " " + kVersion;
}

void PlayerDesk::SetUp() {
    if (const std::string missing = XSession::WhatIsMissing(); !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    auto session = XSession::Start();
    ASSERT_TRUE(session);
    ASSERT_TRUE(session->SetLayout("us"));
    m_keyboardBefore = session->Keyboard();
    m_desk = std::make_unique<Desk>(std::move(session));
    Prepare(kGlobal, {{"WindowLeft", "600"}, {"WindowTop", "600"}});
}

void PlayerDesk::TearDown() {
    if (m_desk) {
        EXPECT_TRUE(WaitUntil([&] { return m_desk->Session().Keyboard() == m_keyboardBefore; }))
            << "a key is down, or a lock or the key map has changed";
        if (HasFailure() && m_spellwick) {
            ADD_FAILURE() << "Spellwick wrote: " << m_spellwick->Output();
        }
    }
    m_spellwick.reset();
    m_game.reset();
    if (m_gameInput >= 0) {
        close(m_gameInput);
    }
}

std::filesystem::path PlayerDesk::Programs() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::filesystem::path PlayerDesk::StoreFile() const {
    return m_desk->Session().DataHome() / "spellwick" / "settings.db";
}

void PlayerDesk::Prepare(const std::string& section,
                         const std::map<std::string, std::string>& values) {
    std::filesystem::create_directories(StoreFile().parent_path());
    SqliteSettingsStore store(StoreFile());
    ASSERT_EQ(store.Connect(), StoreState::kReady);
    std::vector<SettingChange> changes;
    changes.reserve(values.size());
    for (const auto& [key, value] : values) {
        changes.push_back({section, key, value});
    }
    ASSERT_TRUE(store.Apply(changes).ok);
}

void PlayerDesk::PrepareMage(const std::string& title, int stock) {
    std::map<std::string, std::string> values{
        {"Magery", "100"}, {"Intelligence", "100"}, {"SendSpellText", "0"}};
    for (int row = 0; row < 97; ++row) {
        values["Spellbook " + std::to_string(row)] = "0";
    }
    for (const char* key : kStockKeys) {
        values[std::string(key) + " 0"] = std::to_string(stock);
    }
    Prepare(title, values);
}

SectionValues PlayerDesk::StoredSection(const std::string& section) const {
    SqliteSettingsStore store(StoreFile());
    EXPECT_EQ(store.Connect(), StoreState::kReady) << store.Reason();
    return store.ReadSection(section);
}

std::string PlayerDesk::Stored(const std::string& section, const std::string& key) const {
    const SectionValues values = StoredSection(section);
    const auto found = values.find(key);
    return found == values.end() ? "" : found->second;
}

void PlayerDesk::StartGame(const std::string& options, std::string_view title) {
    const std::filesystem::path folder = m_desk->Session().Folder();
    const std::filesystem::path input = folder / "game-input";
    if (m_gameInput < 0) {
        ASSERT_EQ(mkfifo(input.c_str(), 0600), 0);
        m_gameInput = open(input.c_str(), O_RDWR | O_CLOEXEC);
    }
    m_game = m_desk->Session().Spawn(
        {"sh", "-c",
         "exec \"$0\" --journal \"$1\" -qwindowgeometry +200+300 " + options + " <\"$2\"",
         (Programs() / "spellwick-practice-game").string(), (folder / "journal").string(),
         input.string()});
    ASSERT_TRUE(m_game);
    ASSERT_NE(m_desk->WaitWindow(title), 0U) << m_game->Output();
}

void PlayerDesk::TellGame(const std::string& command) {
    const std::string line = command + "\n";
    ASSERT_EQ(write(m_gameInput, line.data(), line.size()), static_cast<ssize_t>(line.size()));
}

std::vector<std::string> PlayerDesk::Typed() const {
    std::ifstream journal(m_desk->Session().Folder() / "journal");
    std::vector<std::string> lines;
    for (std::string line; std::getline(journal, line);) {
        if (!line.starts_with("title ")) {
            lines.push_back(line);
        }
    }
    return lines;
}

bool PlayerDesk::WaitTyped(const std::vector<std::string>& lines) {
    return WaitUntil([&] { return Typed() == lines; });
}

void PlayerDesk::EndGame(int signal) {
    m_game->Signal(signal);
    m_game->WaitForEnd(5s);
}

void PlayerDesk::StartSpellwick() {
    BeginSpellwick();
    AwaitSpellwick();
}

void PlayerDesk::BeginSpellwick() {
    m_spellwick = m_desk->Session().Spawn({(Programs() / "spellwick").string()});
    ASSERT_TRUE(m_spellwick);
}

void PlayerDesk::StartSpellwickOverBox() {
    BeginSpellwick();
    const xcb_window_t box = m_desk->WaitWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    AwaitSpellwick();
}

void PlayerDesk::AwaitSpellwick() {
    m_window = m_desk->WaitWindow(CaptionStart());
    ASSERT_NE(m_window, 0U) << m_spellwick->Output();
    m_desk->RestingPicture(m_window);
    m_window = m_desk->WaitWindow(CaptionStart());
    ASSERT_GT(m_desk->AreaOf(m_window).width, kWidthFromFirstSpell);
}

bool PlayerDesk::WaitCharacter(const std::string& name) const {
    return WaitUntil(
        [&] { return m_desk->Session().WindowName(m_window).starts_with(CaptionText(name, "")); });
}

std::vector<xcb_window_t> PlayerDesk::Hints() const {
    xcb_connection_t* x = m_desk->Session().Connection();
    const auto tree =
        OwnReply(xcb_query_tree_reply(x, xcb_query_tree(x, m_desk->Session().Root()), nullptr));
    std::vector<xcb_window_t> hints;
    if (tree == nullptr) {
        return hints;
    }
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    for (const xcb_window_t window : children) {
        const auto looks = OwnReply(
            xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
        if (looks && looks->override_redirect != 0 && looks->map_state == XCB_MAP_STATE_VIEWABLE &&
            m_desk->Session().WindowName(window) == "spellwick") {
            hints.push_back(window);
        }
    }
    std::ranges::sort(hints, {}, [&](xcb_window_t hint) { return m_desk->AreaOf(hint).y; });
    return hints;
}

std::optional<int> PlayerDesk::CloseSpellwick() {
    m_desk->AskToClose(m_window);
    return m_spellwick->WaitForEnd(10s);
}

void PlayerDesk::StartBoth() {
    StartGame();
    TellGame("login 1");
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    m_desk->RestingPicture(m_window);
}

Place PlayerDesk::Spell(int slot) const {
    return {m_desk->AreaOf(m_window).width - kWidthFromFirstSpell + slot * kSlotPitch + 22, 40};
}

Place PlayerDesk::Counter(int reagent) {
    constexpr int kLefts[] = {30, 111, 189};
    return {kLefts[(reagent - 1) / 5] + 12, (reagent - 1) % 5 * 15 + 9};
}

Place PlayerDesk::Command(int index) {
    constexpr int kTops[] = {10, 10, 28, 46, 64};
    return {248, kTops[index]};
}

void PlayerDesk::Credit(int slot) {
    m_desk->Hold(XKB_KEY_Control_L, true);
    ClickSpell(slot);
    m_desk->RestingPicture(m_window);
    m_desk->Hold(XKB_KEY_Control_L, false);
}

Picture PlayerDesk::QuietPicture(int slot) {
    m_desk->MoveMouse(m_window, Spell(slot));
    m_desk->RestingPicture(m_window);
    m_desk->MoveMouse({1200, 1000});
    TellGame("raise");
    const xcb_window_t game = m_desk->WaitWindow("Ultima Online");
    EXPECT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == game; }));
    return m_desk->RestingPicture(m_window);
}

}  // namespace spellwick::testing_support
