// The player's own table of spells: which file the start reads, the copy, and what is said of a bad
// one.
#include "companion/own_table.h"

#include <fstream>

#include <gmock/gmock.h>

#include "tests/support/companion_fixture.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class SpellTableFileTest : public testing::Test {
  protected:
    SpellTableFileTest() {
        fs::create_directory(m_program);
        Write(m_program, "delivered");
    }
    static void Write(const fs::path& folder, const std::string& text) {
        fs::create_directories(folder);
        std::ofstream(folder / "SpellData.txt", std::ios::binary) << text;
    }

    TemporaryFolder m_folder;
    const fs::path m_program = m_folder.Path() / "program";
    const fs::path m_settings = m_folder.Path() / "not made yet" / "settings";
    const SpellTableFile m_table{m_program, m_settings};
};

TEST_F(SpellTableFileTest, WithoutAnOwnTable_TheDeliveredOneIsRead) {
    EXPECT_FALSE(m_table.HasOwn());
    EXPECT_EQ(m_table.Path(), m_program / "SpellData.txt");
    EXPECT_EQ(m_table.Own(), m_settings / "SpellData.txt");
}

TEST_F(SpellTableFileTest, OwnTable_IsReadInstead) {
    Write(m_settings, "mine");
    EXPECT_TRUE(m_table.HasOwn());
    EXPECT_EQ(m_table.Path(), m_settings / "SpellData.txt");
    fs::remove(m_settings / "SpellData.txt");
    EXPECT_EQ(m_table.Path(), m_program / "SpellData.txt");
}

TEST_F(SpellTableFileTest, MakeOwn_CopiesTheDeliveredTableByteByByte) {
    const std::string text = "a\r\n\xEF\xBB\xBF\x80 b\n";
    Write(m_program, text);
    EXPECT_EQ(m_table.MakeOwn(), "");
    EXPECT_EQ(BytesOf(m_settings / "SpellData.txt"), text);
    EXPECT_EQ(BytesOf(m_program / "SpellData.txt"), text);
    EXPECT_FALSE(fs::exists(m_settings / "SpellData.txt.new"));
}

TEST_F(SpellTableFileTest, MakeOwn_LeavesTheOwnTableThatIsThere) {
    Write(m_settings, "mine");
    EXPECT_EQ(m_table.MakeOwn(), "");
    EXPECT_EQ(BytesOf(m_settings / "SpellData.txt"), "mine");
}

TEST_F(SpellTableFileTest, MakeOwn_SaysWhatKeepsItFrom) {
    const SpellTableFile nowhere(m_program, {});
    EXPECT_EQ(nowhere.MakeOwn(), "There is no folder for the settings.");
    EXPECT_FALSE(nowhere.HasOwn());
    EXPECT_EQ(nowhere.Path(), m_program / "SpellData.txt");

    std::ofstream(m_folder.Path() / "not made yet") << "a file where the folder should be";
    EXPECT_EQ(m_table.MakeOwn(), NotWritten(m_settings / "SpellData.txt"));

    fs::remove(m_program / "SpellData.txt");
    EXPECT_THAT(m_table.MakeOwn(), testing::StartsWith((m_program / "SpellData.txt").string()));
}

class OwnSpellTableTest : public CompanionFixture {
  protected:
    fs::path Own() const { return SettingsFolder() / "SpellData.txt"; }
    void WriteOwn(const std::string& text) {
        fs::create_directories(SettingsFolder());
        std::ofstream(Own(), std::ios::binary) << text;
    }
    // The delivered table with another name for the first spell.
    static std::string Changed() {
        std::string text = BytesOf(SPELLWICK_SOURCE_FOLDER "/data/SpellData.txt");
        const std::string name = "Clumsy";
        return text.replace(text.find(name), name.size(), "Stumble");
    }
};

TEST_F(OwnSpellTableTest, Load_TakesTheOwnTable) {
    WriteOwn(Changed());
    Make();
    EXPECT_EQ(Program().Load(), LoadOutcome::kReady);
    EXPECT_EQ(State().Spells(0).Name, "Stumble");
}

TEST_F(OwnSpellTableTest, Load_NeedsNoDeliveredTableBesideIt) {
    WriteOwn(Changed());
    fs::remove(m_folder.Path() / "SpellData.txt");
    Make();
    EXPECT_EQ(Program().Load(), LoadOutcome::kReady);
    EXPECT_EQ(State().Spells(0).Name, "Stumble");
}

TEST_F(OwnSpellTableTest, Load_BadOwnTable_EndsTheStartAndNamesTheFile) {
    const std::string text =
        "Unable to load spell data file\n\nThis is your own table:\n" + Own().string() +
        "\n\nPut it right, or move it away to use the table that is delivered.";
    for (const char* content : {"", "Spells, 96\n", "Spells, many\n"}) {
        WriteOwn(content);
        Make();
        EXPECT_EQ(Program().Load(), LoadOutcome::kBadSpellData);
        EXPECT_THAT(
            TakeBoxes(),
            ElementsAre(Box{.text = text, .icon = BoxIcon::kCritical, .title = "Missing File"}));
    }
    fs::remove(Own());
    fs::create_directory(Own());
    Make();
    EXPECT_EQ(Program().Load(), LoadOutcome::kBadSpellData) << "a folder is no table either";
    EXPECT_EQ(TakeBoxes().size(), 1U);
}

}  // namespace
}  // namespace spellwick
