// How entries on the Skills tab are read, and which cells they go to.
#include "tests/settings_dialog/skills_tab_fixture.h"

namespace spellwick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct NumberRow {
    const char* text;
    i16 value;
};
// What the key filter lets through, and what a paste inserts.
constexpr NumberRow kNumbers[] = {
    {"80", 80},         {"", 0},         {"-", 0},     {"+", 0},     {"-5", -5},
    {"+7", 7},          {"abc", 0},      {"12.5", 12}, {"13.5", 14}, {"1234567890", 125},
    {"0012999999", 12}, {"-9999", -999}, {"125", 125}, {"126", 125}, {" 99", 99}};

TEST_F(SkillsTabTest, MinimumInt_OfTheCharacter) {
    OpenTab();
    for (const NumberRow& row : kNumbers) {
        Paste(Named<QLineEdit>("MinimumInt", kCharacter), QStringLiteral("1"));
        TakeLog();
        Paste(Named<QLineEdit>("MinimumInt", kCharacter), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.Intelligence, row.value) << row.text;
        EXPECT_THAT(TakeLog(), ElementsAre("update chances")) << row.text;
    }
}

TEST_F(SkillsTabTest, MinimumInt_OfTheCharacter_IsRewrittenWhenTheBoxIsLeft) {
    OpenTab();
    Enter("MinimumInt", kCharacter, "150");
    EXPECT_EQ(Text("MinimumInt", kCharacter), "150");
    EXPECT_EQ(m_state.Intelligence, 125);
    Leave();
    EXPECT_EQ(Text("MinimumInt", kCharacter), "125");
    Enter("MinimumInt", kCharacter, "");
    Leave();
    EXPECT_EQ(Text("MinimumInt", kCharacter), "0");
    EXPECT_EQ(m_state.Intelligence, 0);
    EXPECT_EQ(Ground("TextChance", 0), "#ff0000");
}

TEST_F(SkillsTabTest, MinimumInt_OfACircle_GoesToItsEightSpells) {
    OpenTab();
    for (int line = 0; line < 8; ++line) {
        SetAll(&SpellRecord::Mana, 4);
        Enter("MinimumInt", line, "77");
        EXPECT_EQ(RowsWith(&SpellRecord::Mana, 77), Circle(line));
        Leave();
        EXPECT_EQ(Text("MinimumInt", line), "77");
    }
}

TEST_F(SkillsTabTest, MinimumInt_OfAPage_GoesToItsFirstSpellWhicheverLine) {
    OpenTab();
    for (int group = 1; group < 5; ++group) {
        ShowGroup(group);
        for (const int line : {0, 1, 2}) {
            SetAll(&SpellRecord::Mana, 4);
            Paste(Named<QLineEdit>("MinimumInt", line), QStringLiteral("88"));
            EXPECT_EQ(RowsWith(&SpellRecord::Mana, 88),
                      std::vector<i32>{kGroupRows[group].firstRow});
            Paste(Named<QLineEdit>("MinimumInt", line), QStringLiteral("4"));
        }
    }
}

TEST_F(SkillsTabTest, MinimumSkill_OfTheCharacter_GoesToTheSkillOfTheGroup) {
    OpenTab();
    for (int group = 0; group < 5; ++group) {
        ShowGroup(group);
        m_state.Magery = m_state.Necro = m_state.Chivalry = 1;
        Form().RefreshDialog();
        TakeLog();
        Enter("MinimumSkill", kCharacter, "9");
        EXPECT_EQ(m_state.Magery, group == 0 ? 9 : 1);
        EXPECT_EQ(m_state.Necro, group == 1 || group == 2 ? 9 : 1);
        EXPECT_EQ(m_state.Chivalry, group >= 3 ? 9 : 1);
        EXPECT_THAT(TakeLog(), Each(std::string("update chances")));
    }
}

TEST_F(SkillsTabTest, MinimumSkill_OfTheCharacter_EveryEntry) {
    OpenTab();
    for (const NumberRow& row : kNumbers) {
        Paste(Named<QLineEdit>("MinimumSkill", kCharacter), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.Magery, row.value) << row.text;
        Leave();
        EXPECT_EQ(Text("MinimumSkill", kCharacter), row.text) << "the box keeps it";
    }
}

TEST_F(SkillsTabTest, MinimumSkill_130_CountsAs125AndStays) {
    OpenTab();
    Enter("MinimumSkill", kCharacter, "130");
    Leave();
    EXPECT_EQ(m_state.Magery, 125);
    EXPECT_EQ(Text("MinimumSkill", kCharacter), "130");
    Enter("MinimumSkill", kCharacter, "12345");
    EXPECT_EQ(m_state.Magery, 125);
}

TEST_F(SkillsTabTest, MinimumSkill_NegativeSkill_HasItsChance) {
    OpenTab();
    m_state.Spells(0).MinimumSkill = -20;
    m_state.Spells(0).MaximumSkill = 20;
    Enter("MinimumSkill", kCharacter, "-5");
    EXPECT_EQ(m_state.Magery, -5);
    EXPECT_EQ(Text("TextChance", 0), "37");
}

TEST_F(SkillsTabTest, MinimumSkill_OfALine_GoesToTheCircleOfItsNumberInEveryGroup) {
    OpenTab();
    for (int group = 0; group < 5; ++group) {
        ShowGroup(group);
        for (const int line : {0, 1, 2}) {
            SetAll(&SpellRecord::MinimumSkill, 4);
            Paste(Named<QLineEdit>("MinimumSkill", line), QStringLiteral("66"));
            EXPECT_EQ(RowsWith(&SpellRecord::MinimumSkill, 66), Circle(line)) << group;
            Paste(Named<QLineEdit>("MinimumSkill", line), QStringLiteral("4"));
        }
    }
    EXPECT_THAT(TakeLog(), Each(std::string("update chances")));
}

TEST_F(SkillsTabTest, MaximumSkill_OfACircle_GoesToItsEightSpellsAndCountsWhenLeft) {
    OpenTab();
    SetAll(&SpellRecord::MaximumSkill, 4);
    m_companion.UpdateChances();
    TakeLog();
    Enter("MaximumSkill", 2, "99");
    EXPECT_EQ(RowsWith(&SpellRecord::MaximumSkill, 99), Circle(2));
    EXPECT_NE(Ground("MaximumSkill", 2), "#ffff00");
    Leave();
    EXPECT_EQ(Ground("MaximumSkill", 2), "#ffff00");
    EXPECT_EQ(Text("MaximumSkill", 2), "99");
    EXPECT_THAT(TakeLog(), IsEmpty()) << "the chances are not calculated anew";
}

TEST_F(SkillsTabTest, MaximumSkill_HasNoKeyFilter_LettersReadAsZero) {
    OpenTab();
    Enter("MaximumSkill", 0, "lots");
    EXPECT_EQ(Text("MaximumSkill", 0), "lots");
    EXPECT_EQ(m_state.Spells(0).MaximumSkill, 0);
    EXPECT_EQ(m_desktop.beeps, 0);
    Leave();
    EXPECT_EQ(Text("MaximumSkill", 0), "0");
    for (const NumberRow& row : kNumbers) {
        Paste(Named<QLineEdit>("MaximumSkill", 1), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.Spells(15).MaximumSkill, row.value) << row.text;
        Leave();
        EXPECT_EQ(Text("MaximumSkill", 1), std::to_string(row.value)) << row.text;
    }
}

// covers ODDITY(safe-skill-of-circle)
TEST_F(SkillsTabTest, MaximumSkill_Oddity_OfAPage_TurnsIntoThatOfTheCircleWhenLeft) {
    OpenTab();
    ShowGroup(1);
    m_state.Spells(64).MaximumSkill = 91;
    m_state.Spells(0).MaximumSkill = 17;
    Form().RefreshDialog();
    Enter("MaximumSkill", 0, "111");
    EXPECT_THAT(RowsWith(&SpellRecord::MaximumSkill, 111), IsEmpty());
    Leave();
    EXPECT_EQ(Text("MaximumSkill", 0), "17");
    EXPECT_EQ(m_state.Spells(64).MaximumSkill, 91);
    EXPECT_EQ(m_state.Spells(0).MaximumSkill, 17);
    ShowGroup(0);
    ShowGroup(1);
    EXPECT_EQ(Text("MaximumSkill", 0), "91");
}

TEST_F(SkillsTabTest, EveryBox_TakesANovel) {
    OpenTab();
    const QString novel = QStringLiteral("7 dwarfs, 1 apple and a mirror ").repeated(20000);
    for (const int line : {0, kCharacter}) {
        Paste(Named<QLineEdit>("MinimumInt", line), novel);
        Paste(Named<QLineEdit>("MinimumSkill", line), novel);
    }
    Paste(Named<QLineEdit>("MaximumSkill", 0), novel);
    EXPECT_EQ(m_state.Intelligence, 7);
    EXPECT_EQ(m_state.Magery, 7);
    EXPECT_EQ(m_state.Spells(3).Mana, 7);
    EXPECT_EQ(m_state.Spells(3).MinimumSkill, 7);
    EXPECT_EQ(m_state.Spells(3).MaximumSkill, 7);
}

TEST_F(SkillsTabTest, EveryBox_FarBelowNought_EndsTheProgramWithTheOldValue) {
    OpenTab();
    const i16 mana = m_state.Spells(0).Mana;
    Paste(Named<QLineEdit>("MinimumInt", 0), QStringLiteral("-9e9"));
    Paste(Named<QLineEdit>("MinimumSkill", kCharacter), QStringLiteral("-9e9"));
    EXPECT_EQ(m_state.Spells(0).Mana, mana);
    EXPECT_EQ(m_state.Magery, 50);
    EXPECT_THAT(TakeFailures(), Each(UncaughtFailure{FailureKind::kOverflow, "changing a skill"}));
}

}  // namespace
}  // namespace spellwick
