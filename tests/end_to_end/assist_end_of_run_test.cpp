// Reports that end the run, and reports that arrive when the start fails.
#include <chrono>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

using testing::HasSubstr;

// Each of these reports ends a run; the next run starts with what was counted.
class AssistToolEndsTheRun : public ToolDesk {
  protected:
    struct Row {
        const char* fault = "";
        const char* failure = "";
        bool hasBoxBefore = false;
    };

    void Expect(const Row& row) {
        SCOPED_TRACE(row.fault);
        StartSpellwickLinked();
        TellTool("gain 104 1");
        ASSERT_TRUE(WaitQuiet());
        ++m_ironGained;
        TellTool(row.fault);
        if (row.hasBoxBefore) {
            GainIronWhileABoxStands();
            AnswerBox(XKB_KEY_Return);
        }
        GainIronWhileABoxStands();
        AnswerBox(XKB_KEY_Return);
        EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 1);
        EXPECT_THAT(Spellwick().Output(), HasSubstr(row.failure));
        EXPECT_THAT(Spellwick().Output(), HasSubstr("handling a report of the assist tool"));
        EXPECT_EQ(Stored(kMira, "PI 0"), std::to_string(25 + m_ironGained));
        EXPECT_EQ(Stored(kMira, "BM 0"), "10");
        EXPECT_EQ(Stored(kGlobal, "CurrentPlayerName"), kMira);
    }

    // Arrives while another report is still being handled, because the message box is open.
    void GainIronWhileABoxStands() {
        ASSERT_NE(m_desk->Session().WaitForWindow("Spellwick"), 0U);
        const std::size_t before = CountTold("in result");
        TellTool("gain 104 1");
        ASSERT_TRUE(WaitTold("in result", before + 1));
        ++m_ironGained;
    }

    void StartOthers() {
        PrepareMage(kMira, 10);
        StartGame();
        TellGame("login 1");
        StartTool();
    }

    int m_ironGained = 0;
};

TEST_F(AssistToolEndsTheRun, ValuesThatDoNotFit) {
    StartOthers();
    for (const Row& row : {
             Row{"fault big-stock", "Overflow"},
             Row{"fault big-magery", "Overflow"},
             Row{"fault big-intelligence", "Overflow"},
             Row{"fault big-mana", "Overflow"},
             Row{"fault big-skill", "Overflow"},
         }) {
        Expect(row);
    }
}

TEST_F(AssistToolEndsTheRun, NumbersThatAreNoSpells) {
    StartOthers();
    for (const Row& row : {
             Row{"fault cast-0", "Subscript"},
             Row{"fault cast-118", "Subscript", true},
             Row{"fault cast-211", "Subscript", true},
         }) {
        Expect(row);
    }
}

// No settings have been read yet when the message box appears, so none may be saved.
TEST_F(AssistToolEndsTheRun, NoReportWhileTheBoxOfABadSpellTableStands) {
    StartOthers();
    Prepare(kGlobal, {{"CurrentPlayerName", kMira}, {"MeditateLevel", "44"}});
    const std::filesystem::path folder = m_desk->Session().Folder() / "elsewhere";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(Programs() / "spellwick", folder / "spellwick");
    const std::filesystem::path table = folder / "SpellData.txt";
    std::filesystem::copy_file(Programs() / "SpellData.txt", table);
    std::filesystem::resize_file(table, std::filesystem::file_size(table) / 2);
    const auto program = m_desk->Session().Spawn({(folder / "spellwick").string()});
    const xcb_window_t box = m_desk->Session().WaitForWindow("Missing File");
    ASSERT_NE(box, 0U) << program->Output();
    // The tool reports everything about the character to a program that has just registered.
    ASSERT_TRUE(WaitTold("out result 1"));
    ASSERT_TRUE(WaitQuiet());
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    EXPECT_EQ(program->WaitForEnd(std::chrono::seconds(10)), 2) << program->Output();
    EXPECT_EQ(Stored(kGlobal, "CurrentPlayerName"), kMira);
    EXPECT_EQ(Stored(kGlobal, "MeditateLevel"), "44");
    EXPECT_EQ(Stored(kMira, "SS 0"), "10");
}

}  // namespace
}  // namespace spellwick::testing_support
