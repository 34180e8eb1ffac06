// Starts and ends: what must be present, the message when it is not, and what is kept.
#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"
#include "tests/support/file_bytes.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

using StartAndEnd = PlayerDesk;

// The keys whose values differ, with both values.
std::vector<std::string> Differences(const SectionValues& before, const SectionValues& after) {
    const auto text = [](const SectionValues& values, const std::string& key) {
        const auto found = values.find(key);
        return found == values.end() ? std::string("nothing")
                                     : testing::PrintToString(found->second);
    };
    SectionValues all = before;
    all.insert(after.begin(), after.end());
    std::vector<std::string> found;
    for (const auto& entry : all) {
        const std::string& key = entry.first;
        if (text(before, key) != text(after, key)) {
            std::ostringstream words;
            words << key << ": " << text(before, key) << " became " << text(after, key);
            found.push_back(words.str());
        }
    }
    return found;
}

TEST_F(StartAndEnd, CloseAndStart_FindsEverythingAsItWas) {
    PrepareMage(kMira, 10);
    // A macro without a key is written as three characters, and read back with a blank as its key;
    // here it has already been read once.
    for (int number = 91; number <= 95; ++number) {
        Prepare(kGlobal, {{"Macro " + std::to_string(number), "--- "}});
    }
    StartBoth();
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}));
    const Picture before = QuietPicture(kHeal);
    const Area placeBefore = m_desk->AreaOf(Window());
    ASSERT_EQ(CloseSpellwick(), 0);
    const SectionValues global = StoredSection(kGlobal);
    const SectionValues mira = StoredSection(kMira);
    EXPECT_EQ(mira.at("SS 0"), "9");

    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    EXPECT_EQ(m_desk->AreaOf(Window()), placeBefore);
    const Picture after = QuietPicture(kHeal);
    EXPECT_TRUE(before == after) << "the window looks different after the start";
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(Differences(global, StoredSection(kGlobal)), IsEmpty());
    EXPECT_THAT(Differences(mira, StoredSection(kMira)), IsEmpty());
}

TEST_F(StartAndEnd, EndSignals_SaveAsARegularEnd) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    int silk = 10;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        StartSpellwick();
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
        m_desk->RestingPicture(Window());
        const std::size_t typed = Typed().size();
        ClickSpell(kHeal);
        ASSERT_TRUE(WaitUntil([&] { return Typed().size() == typed + 3; }));
        m_desk->RestingPicture(Window());
        Spellwick().Signal(signal);
        EXPECT_EQ(Spellwick().WaitForEnd(10s), 0) << signal;
        EXPECT_EQ(Stored(kMira, "SS 0"), std::to_string(--silk)) << signal;
    }
}

TEST_F(StartAndEnd, EntryInACounter_IsTakenByTheCloseButtonAndBySignals) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
    int garlic = 10;
    for (const int signal : {0, SIGTERM, SIGINT, SIGHUP}) {
        StartSpellwick();
        m_desk->Click(Window(), Counter(5));
        m_desk->RestingPicture(Window());
        m_desk->Type("+10");
        m_desk->RestingPicture(Window());
        if (signal == 0) {
            EXPECT_EQ(CloseSpellwick(), 0);
        } else {
            Spellwick().Signal(signal);
            EXPECT_EQ(Spellwick().WaitForEnd(10s), 0) << signal;
        }
        garlic += 10;
        EXPECT_EQ(Stored(kMira, "GA 0"), std::to_string(garlic)) << signal;
    }
}

// Kills the program at different points of its final save, from before it to after it.
TEST_F(StartAndEnd, KillDuringTheSave_LeavesTheOldOrTheNewState) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
    for (int round = 0; round < 12; ++round) {
        StartSpellwick();
        // What the start has recovered is saved already.
        const int before = std::stoi(Stored(kMira, "SS 0"));
        Credit(kHeal);
        Spellwick().Signal(SIGTERM);
        std::this_thread::sleep_for(std::chrono::microseconds(round * 2500));
        Spellwick().Signal(SIGKILL);
        ASSERT_TRUE(Spellwick().WaitForEnd(5s));
        const SectionValues mira = StoredSection(kMira);
        EXPECT_THAT(mira.at("SS 0"),
                    testing::AnyOf(std::to_string(before), std::to_string(before + 1)));
        EXPECT_EQ(mira.at("GA 0"), mira.at("SS 0"));
        EXPECT_EQ(mira.at("GI 0"), mira.at("SS 0"));
    }
}

TEST_F(StartAndEnd, UnreadableStore_IsKeptAsideAndTheUserIsTold) {
    const std::string noise(5000, 'x');
    std::filesystem::remove_all(StoreFile().parent_path());
    std::filesystem::create_directories(StoreFile().parent_path());
    std::ofstream(StoreFile()) << noise;
    const auto program = m_desk->Session().Spawn({(Programs() / "spellwick").string()});
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U) << program->Output();
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    const xcb_window_t window = m_desk->WaitWindow(CaptionStart());
    ASSERT_NE(window, 0U) << program->Output();
    m_desk->RestingPicture(window);
    m_desk->AskToClose(m_desk->WaitWindow(CaptionStart()));
    EXPECT_EQ(program->WaitForEnd(10s), 0);

    EXPECT_FALSE(StoredSection(kGlobal).empty());
    int aside = 0;
    for (const auto& entry : std::filesystem::directory_iterator(StoreFile().parent_path())) {
        aside += entry.path() != StoreFile() && BytesOf(entry.path()) == noise ? 1 : 0;
    }
    EXPECT_EQ(aside, 1);
}

TEST_F(StartAndEnd, MissingOrBadSpellTable_IsABoxAndExitCode2) {
    struct Row {
        const char* name;
        const char* content;  // null for no file
        const char* title;
    };
    const std::filesystem::path folder = m_desk->Session().Folder() / "elsewhere";
    for (const Row& row :
         {Row{"missing", nullptr, "Missing File!"}, Row{"empty", "", "Missing File"},
          Row{"one row too few", "\"a\", 88\n1, x\n", "Missing File"},
          Row{"a count of two thousand million", "\"a\", 2000000000\n", "Missing File"}}) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        std::filesystem::copy_file(Programs() / "spellwick", folder / "spellwick");
        if (row.content != nullptr) {
            std::ofstream(folder / "SpellData.txt") << row.content;
        }
        const auto program = m_desk->Session().Spawn({(folder / "spellwick").string()});
        const xcb_window_t box = m_desk->Session().WaitForWindow(row.title);
        ASSERT_NE(box, 0U) << row.name << ": " << program->Output();
        m_desk->RestingPicture(box);
        m_desk->Tap(XKB_KEY_Return);
        EXPECT_EQ(program->WaitForEnd(10s), 2) << row.name;
    }
}

TEST_F(StartAndEnd, OwnSpellTable_IsReadInsteadAndNamedIfItIsBad) {
    const std::filesystem::path own = StoreFile().parent_path() / "SpellData.txt";
    std::filesystem::create_directories(own.parent_path());
    // Enough of it to tell that it was read: the program beside it has no table at all.
    const std::filesystem::path folder = m_desk->Session().Folder() / "elsewhere";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(Programs() / "spellwick", folder / "spellwick");
    const std::string command = (folder / "spellwick").string();
    std::filesystem::copy_file(Programs() / "SpellData.txt", own);
    {
        const auto program = m_desk->Session().Spawn({command});
        EXPECT_NE(m_desk->WaitWindow(CaptionStart()), 0U) << program->Output();
        program->Signal(SIGTERM);
        EXPECT_EQ(program->WaitForEnd(10s), 0);
    }
    std::ofstream(own) << "\"a\", 88\n1, x\n";
    const auto program = m_desk->Session().Spawn({command});
    const xcb_window_t box = m_desk->Session().WaitForWindow("Missing File");
    ASSERT_NE(box, 0U) << program->Output();
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    EXPECT_EQ(program->WaitForEnd(10s), 2);
}

TEST_F(StartAndEnd, StartedThroughALink_FindsItsTable) {
    const std::filesystem::path link = m_desk->Session().Folder() / "link-to-spellwick";
    std::filesystem::create_symlink(Programs() / "spellwick", link);
    const auto program = m_desk->Session().Spawn({link.string()});
    EXPECT_NE(m_desk->WaitWindow(CaptionStart()), 0U) << program->Output();
}

TEST_F(StartAndEnd, NoDisplay_IsOneSentenceAndExitCode2) {
    m_desk.reset();
    // No server has a number above 59535; that of the one just ended may be another's by now.
    for (const std::string display : {"", ":60000"}) {
        const RunResult result =
            RunToEnd({(Programs() / "spellwick").string()},
                     {{"DISPLAY", display}, {"WAYLAND_DISPLAY", ""}, {"XDG_RUNTIME_DIR", ""}});
        EXPECT_EQ(result.exitCode, 2) << display;
        EXPECT_THAT(result.output, StartsWith("spellwick: "));
        EXPECT_THAT(result.output, EndsWith(".\n"));
        EXPECT_EQ(std::ranges::count(result.output, '\n'), 1) << result.output;
    }
}

TEST_F(StartAndEnd, NoDisplay_VersionAndHelpAreAnsweredAndAWrongOptionIsRefused) {
    m_desk.reset();
    const Environment noDisplay{{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"XDG_RUNTIME_DIR", ""}};
    const std::string program = (Programs() / "spellwick").string();
    for (const char* option : {"--version", "--help"}) {
        const RunResult answered = RunToEnd({program, option}, noDisplay);
        EXPECT_EQ(answered.exitCode, 0) << option;
        EXPECT_THAT(answered.output, testing::HasSubstr("pellwick")) << option;
    }
    const RunResult refused = RunToEnd({program, "--verison"}, noDisplay);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.output, "spellwick: There is no option \"--verison\"; --help lists them.\n");
    const RunResult noLog = RunToEnd({program, "--log", "/nowhere/log.txt"}, noDisplay);
    EXPECT_EQ(noLog.exitCode, 2);
    EXPECT_THAT(noLog.output, StartsWith("spellwick: The log cannot be written: "));
}

}  // namespace
}  // namespace spellwick::testing_support
