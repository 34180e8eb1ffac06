// The tab of the character's skills and what the spells require.
#include <QLabel>
#include <QToolButton>
#include <algorithm>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kCharacter = 8;
constexpr const char* kCircles[] = {"First Circle",   "Second Circle", "Third Circle",
                                    "Fourth Circle",  "Fifth Circle",  "Sixth Circle",
                                    "Seventh Circle", "Eighth Circle"};

struct GroupRow {
    const char* caption;
    const char* title;
    const char* colour;
    int firstRow;  // of a page; the first group has circles
};
constexpr GroupRow kGroupRows[] = {{"Magery Skills", "Magery", "#c00000", 0},
                                   {"Necromancy Skills", "Necromancy", "#008000", 64},
                                   {"Paladin Skills", "Necromancy", "#008000", 72},
                                   {"Paladin Skills", "Chivalry", "#0000ff", 80},
                                   {"Paladin Skills", "Chivalry", "#0000ff", 88}};

struct NumberRow {
    const char* text;
    i16 value;
};
// What the key filter lets through, and what a paste brings.
constexpr NumberRow kNumbers[] = {
    {"80", 80},         {"", 0},         {"-", 0},     {"+", 0},     {"-5", -5},
    {"+7", 7},          {"abc", 0},      {"12.5", 12}, {"13.5", 14}, {"1234567890", 125},
    {"0012999999", 12}, {"-9999", -999}, {"125", 125}, {"126", 125}, {" 99", 99}};

class SkillsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() {
        Open();
        m_state.Magery = 50;
        m_state.Necro = 60;
        m_state.Chivalry = 70;
        m_state.Intelligence = 100;
        ShowTab(3);
        Leave();
        m_mainWindow.UpdateChances();
        Form().RefreshDialog();
        TakeLog();
        return Form();
    }
    void ShowGroup(int group) {
        Click("SkillType", group);
        TakeLog();
    }
    static int RowOf(int group, int line) {
        return group == 0 ? line * 8 : kGroupRows[group].firstRow + line;
    }
    i16 SkillOf(int group) const {
        const i16 skills[] = {m_state.Magery, m_state.Necro, m_state.Necro, m_state.Chivalry,
                              m_state.Chivalry};
        return skills[group];
    }
    std::string Ground(const char* name, int line) {
        return Named(name, line).palette().color(QPalette::Base).name().toStdString();
    }
    // Rows of the table whose cell has the value.
    std::vector<i32> RowsWith(i16 SpellRecord::*cell, i16 value) {
        std::vector<i32> rows;
        for (i32 row = 0; row <= 95; ++row) {
            if (m_state.Spells(row).*cell == value) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    static std::vector<i32> Circle(int line) {
        std::vector<i32> rows;
        for (int slot = 0; slot < 8; ++slot) {
            rows.push_back(line * 8 + slot);
        }
        return rows;
    }
    // Sets a cell of all rows, so that a changed one stands out.
    void SetAll(i16 SpellRecord::*cell, i16 value) {
        for (i32 row = 0; row <= 95; ++row) {
            m_state.Spells(row).*cell = value;
        }
    }
};

TEST_F(SkillsTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("Label1", 34), "INT required");
    EXPECT_EQ(Text("Label1", 37), "% Chance at current skill");
    EXPECT_EQ(Text("Label1", 38), "Characters current values");
    EXPECT_EQ(Text("CommandLHWS"), "Go to Lorehall website for more info");
}

// covers ODDITY(paladin-caption)
TEST_F(SkillsTabTest, Groups_Oddity_TheThirdSaysPaladinAndOpensNecromancy) {
    OpenTab();
    EXPECT_TRUE(Named<QToolButton>("SkillType", 0).isChecked());
    for (int group = 0; group < 5; ++group) {
        EXPECT_EQ(Text("SkillType", group), kGroupRows[group].caption);
        EXPECT_FALSE(Named<QToolButton>("SkillType", group).icon().isNull());
    }
    ShowGroup(2);
    EXPECT_EQ(Text("lblSkillType"), "Necromancy");
    EXPECT_EQ(Text("lblSkillCircles", 1), m_state.Spells(72).Name);
}

TEST_F(SkillsTabTest, EveryGroup_TitlesValuesAndRows) {
    OpenTab();
    for (const int group : {0, 1, 2, 3, 4, 0}) {
        Click("SkillType", group);
        const GroupRow& expected = kGroupRows[group];
        EXPECT_EQ(Form().Skills().SelectedSkillGroup(), group);
        EXPECT_EQ(Form().Skills().SelectedSkillValue(), SkillOf(group));
        EXPECT_EQ(Text("lblSkillType"), expected.title);
        EXPECT_EQ(Named("lblSkillType").palette().color(QPalette::WindowText).name().toStdString(),
                  expected.colour);
        EXPECT_EQ(Text("Label1", 35), std::string(expected.title) + " required");
        EXPECT_EQ(Text("Label1", 36), std::string(expected.title) + " for 95% success");
        EXPECT_EQ(Text("MinimumSkill", kCharacter), std::to_string(SkillOf(group)));
        EXPECT_EQ(Text("MinimumInt", kCharacter), "100");
        for (int line = 0; line < 8; ++line) {
            const int row = RowOf(group, line);
            const SpellRecord& spell = m_state.Spells(row);
            EXPECT_EQ(Text("lblSkillCircles", line + 1), group == 0 ? kCircles[line] : spell.Name);
            for (const char* name : {"MinimumInt", "MinimumSkill", "MaximumSkill", "TextChance"}) {
                EXPECT_EQ(Named(name, line).isVisible(), spell.School != 0) << name << row;
            }
            if (spell.School != 0) {
                EXPECT_EQ(Text("MinimumInt", line), std::to_string(spell.Mana));
                EXPECT_EQ(Text("MinimumSkill", line), std::to_string(spell.MinimumSkill));
                EXPECT_EQ(Text("MaximumSkill", line), std::to_string(spell.MaximumSkill));
                EXPECT_EQ(Text("TextChance", line), std::to_string(m_state.SkillChance(row)));
            }
        }
        EXPECT_FALSE(m_state.Updating);
        EXPECT_THAT(TakeLog(), IsEmpty()) << "no change handler runs";
    }
}

TEST_F(SkillsTabTest, LastPage_RowsWithoutASpellAreHiddenAndHaveNoTitle) {
    OpenTab();
    ShowGroup(4);
    for (int line = 3; line < 7; ++line) {
        ASSERT_EQ(m_state.Spells(88 + line).School, 0);
        EXPECT_FALSE(Named("MinimumInt", line).isVisible());
        EXPECT_FALSE(Named("TextChance", line).isVisible());
        EXPECT_EQ(Text("lblSkillCircles", line + 1), "");
    }
    EXPECT_TRUE(Named("MinimumInt", 0).isVisible());
    ShowGroup(0);
    EXPECT_TRUE(Named("MinimumInt", 5).isVisible());
}

TEST_F(SkillsTabTest, NoOptionOn_CountsAsTheLastGroup) {
    OpenTab();
    for (int group = 0; group < 5; ++group) {
        auto& option = Named<QToolButton>("SkillType", group);
        option.setAutoExclusive(false);
        option.setChecked(group == 4);
    }
    EXPECT_EQ(Form().Skills().SelectedSkillGroup(), 4);
}

// covers ODDITY(equal-circles)
TEST_F(SkillsTabTest, Load_Oddity_TheFirstSpellSpeaksForItsCircle) {
    Load();
    for (i32 row = 0; row <= 95; ++row) {
        const SpellRecord& first = m_state.Spells(row < 64 ? row / 8 * 8 : row);
        EXPECT_EQ(m_state.Spells(row).Mana, first.Mana) << row;
        EXPECT_EQ(m_state.Spells(row).MinimumSkill, first.MinimumSkill) << row;
        EXPECT_EQ(m_state.Spells(row).MaximumSkill, first.MaximumSkill) << row;
    }
    m_form.reset();
    for (i32 row = 0; row <= 95; ++row) {
        m_state.Spells(row).Mana = m_state.Spells(row).MinimumSkill =
            m_state.Spells(row).MaximumSkill = static_cast<i16>(row);
    }
    m_form = std::make_unique<FormSettings>(Services(), nullptr);
    m_form->Form_Load();
    for (i32 row = 0; row <= 95; ++row) {
        const i32 from = row < 64 ? row / 8 * 8 : row;
        EXPECT_EQ(m_state.Spells(row).Mana, from);
        EXPECT_EQ(m_state.Spells(row).MinimumSkill, from);
        EXPECT_EQ(m_state.Spells(row).MaximumSkill, from);
    }
}

TEST_F(SkillsTabTest, Load_CalculatesTheChancesOnce) {
    Load();
    EXPECT_EQ(std::ranges::count(m_log, "update chances"), 1);
    Show();
}

TEST_F(SkillsTabTest, Refresh_ShowsTheOpenGroupAndTheCharacterWithoutAStore) {
    OpenTab();
    ShowGroup(3);
    m_state.Intelligence = 33;
    m_state.Chivalry = 44;
    Form().RefreshDialog();
    EXPECT_EQ(Text("MinimumInt", kCharacter), "33");
    EXPECT_EQ(Text("MinimumSkill", kCharacter), "44");
    EXPECT_EQ(Text("lblSkillType"), "Chivalry");
    EXPECT_EQ(m_state.Intelligence, 33);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(SkillsTabTest, Colours_RedKeepsASpellFromWorkingYellowLetsItFail) {
    OpenTab();
    SpellRecord& spell = m_state.Spells(0);
    spell.Mana = 40;
    spell.MinimumSkill = 30;
    spell.MaximumSkill = 70;
    const std::string plain =
        Form().palette().color(QPalette::Active, QPalette::Base).name().toStdString();
    const struct {
        const char* name;
        i16 intelligence;
        i16 skill;
        const char* chance;
        std::string grounds[4];
    } rows[] = {
        {"all well", 40, 71, "99", {plain, plain, plain, plain}},
        {"at the upper end", 40, 70, "99", {plain, plain, plain, plain}},
        {"can fail", 40, 31, "2", {plain, plain, "#ffff00", plain}},
        {"at the lower end", 40, 30, "0", {plain, plain, "#ffff00", "#ff0000"}},
        {"no skill", 40, 29, "0", {plain, "#ff0000", "#ffff00", "#ff0000"}},
        {"no wits", 39, 71, "0", {"#ff0000", plain, plain, "#ff0000"}},
    };
    for (const auto& row : rows) {
        m_state.Intelligence = row.intelligence;
        m_state.Magery = row.skill;
        m_mainWindow.UpdateChances();
        EXPECT_EQ(Text("TextChance", 0), row.chance) << row.name;
        int box = 0;
        for (const char* name : {"MinimumInt", "MinimumSkill", "MaximumSkill", "TextChance"}) {
            EXPECT_EQ(Ground(name, 0), row.grounds[box++]) << row.name << " " << name;
        }
    }
}

TEST_F(SkillsTabTest, Chance_ShowsTheSkillsEvenWithoutTheMana) {
    OpenTab();
    m_state.AssistLinked = true;
    m_state.CurrentMana = 0;
    m_mainWindow.UpdateChances();
    EXPECT_EQ(m_state.Chance(0), 0);
    EXPECT_NE(m_state.SkillChance(0), 0);
    EXPECT_EQ(Text("TextChance", 0), std::to_string(m_state.SkillChance(0)));
}

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
    m_mainWindow.UpdateChances();
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

TEST_F(SkillsTabTest, WhileUpdating_NoChangeIsTaken) {
    OpenTab();
    m_state.Updating = true;
    Named<QLineEdit>("MinimumInt", kCharacter).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumInt", 0).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumSkill", kCharacter).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumSkill", 0).setText(QStringLiteral("11"));
    Named<QLineEdit>("MaximumSkill", 0).setText(QStringLiteral("11"));
    m_state.Updating = false;
    EXPECT_EQ(m_state.Intelligence, 100);
    EXPECT_EQ(m_state.Magery, 50);
    EXPECT_NE(m_state.Spells(0).Mana, 11);
    EXPECT_NE(m_state.Spells(0).MinimumSkill, 11);
    EXPECT_NE(m_state.Spells(0).MaximumSkill, 11);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

// The main window is asked first, and what the dialog shows is older at that time, or it is newer.
TEST_F(SkillsTabTest, LostFocus_OrderOfTheRefreshes) {
    OpenTab();
    std::vector<std::string> shown;
    m_mainWindow.updateChance = [&] { shown.push_back(Text("TextChance", 0)); };
    const auto leave = [&](const char* box, int line) {
        m_state.SkillChance(0) = 10;
        Form().UpdateChance();
        Click(box, line);
        m_state.SkillChance(0) = 55;
        shown.clear();
        Leave();
        return shown;
    };
    EXPECT_THAT(leave("MinimumInt", 2), ElementsAre("10"));
    EXPECT_THAT(leave("MinimumInt", kCharacter), ElementsAre("10"));
    EXPECT_THAT(leave("MinimumSkill", 2), ElementsAre("55"));
    EXPECT_THAT(leave("MinimumSkill", kCharacter), ElementsAre("55"));
    EXPECT_THAT(leave("MaximumSkill", 2), IsEmpty());
    EXPECT_EQ(Text("TextChance", 0), "55");
}

TEST_F(SkillsTabTest, MinimumSkill_LostFocus_StoresNothing) {
    OpenTab();
    Click("MinimumSkill", 0);
    SetAll(&SpellRecord::MinimumSkill, 3);
    m_state.Magery = 44;
    Leave();
    EXPECT_THAT(RowsWith(&SpellRecord::MinimumSkill, 3), SizeIs(96));
    Click("MinimumSkill", kCharacter);
    m_state.Magery = 45;
    Leave();
    EXPECT_EQ(m_state.Magery, 45);
}

TEST_F(SkillsTabTest, Boxes_GotFocus_SelectTheWholeText) {
    OpenTab();
    for (const char* name : {"MinimumInt(0)", "MinimumInt(8)", "MinimumSkill(0)", "MinimumSkill(8)",
                             "MaximumSkill(7)"}) {
        auto& box = Named<QLineEdit>(QLatin1String(name));
        Click(box);
        EXPECT_EQ(box.selectedText(), box.text()) << name;
        EXPECT_FALSE(box.text().isEmpty()) << name;
    }
}

TEST_F(SkillsTabTest, TextChance_GivesTheFocusToOk) {
    OpenTab();
    for (int line = 0; line < 8; ++line) {
        const std::string before = Text("TextChance", line);
        Click("TextChance", line);
        EXPECT_EQ(FocusName(), "Command1");
        Type("5");
        EXPECT_EQ(Text("TextChance", line), before);
    }
}

TEST_F(SkillsTabTest, KeyFilter_DropsAllButDigitsAndSignsWithABeep) {
    OpenTab();
    for (const char* name : {"MinimumInt", "MinimumSkill"}) {
        for (const int line : {0, kCharacter}) {
            m_desktop.beeps = 0;
            Enter(name, line, "1a.b-+ 3");
            EXPECT_EQ(Text(name, line), "1-+3");
            EXPECT_EQ(m_desktop.beeps, 4);
            Press(Qt::Key_Backspace);
            EXPECT_EQ(Text(name, line), "1-+");
            EXPECT_EQ(m_desktop.beeps, 4);
        }
    }
}

TEST_F(SkillsTabTest, Spins_StepTheirBoxWithinTheirRange) {
    OpenTab();
    const struct {
        const char* box;
        UpDown* spin;
        int most;
        i16 SharedState::*cell;
    } rows[] = {
        {"MinimumInt", Form().Skills().UpDownInt, 150, &SharedState::Intelligence},
        {"MinimumSkill", Form().Skills().UpDownSkill, 120, &SharedState::Magery},
    };
    for (const auto& row : rows) {
        auto& box = Named<QLineEdit>(row.box, kCharacter);
        Paste(box, QStringLiteral("1"));
        row.spin->Step(-1);
        row.spin->Step(-1);
        EXPECT_EQ(box.text(), QStringLiteral("0"));
        EXPECT_EQ(m_state.*row.cell, 0);
        row.spin->Step(1);
        EXPECT_EQ(m_state.*row.cell, 1);
        Paste(box, QString::number(row.most - 1));
        row.spin->Step(1);
        row.spin->Step(1);
        EXPECT_EQ(box.text(), QString::number(row.most));
        EXPECT_EQ(m_state.*row.cell, std::min(row.most, 125));
    }
}

TEST_F(SkillsTabTest, Spin_OfTheIntelligence_ShowsMoreThanCounts) {
    OpenTab();
    Paste(Named<QLineEdit>("MinimumInt", kCharacter), QStringLiteral("125"));
    Form().Skills().UpDownInt->Step(1);
    EXPECT_EQ(Text("MinimumInt", kCharacter), "126");
    EXPECT_EQ(m_state.Intelligence, 125);
}

TEST_F(SkillsTabTest, Spin_ByMouseAndByArrowKeys) {
    OpenTab();
    QWidget& spin = *Form().Skills().UpDownSkill;
    QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier, QPoint(spin.width() / 2, 2));
    EXPECT_EQ(m_state.Magery, 51);
    QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier,
                      QPoint(spin.width() / 2, spin.height() - 2));
    EXPECT_EQ(m_state.Magery, 50);
    Click("MinimumSkill", kCharacter);
    Press(Qt::Key_Up);
    EXPECT_EQ(m_state.Magery, 51);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_state.Magery, 50);
    EXPECT_THAT(TakeLog(), Each(std::string("update chances")));
}

TEST_F(SkillsTabTest, GroupChange_AnUnfinishedEntryCountsForTheOldGroup) {
    OpenTab();
    Enter("MinimumSkill", kCharacter, "33");
    Click("SkillType", 3);
    EXPECT_EQ(m_state.Magery, 33);
    EXPECT_EQ(m_state.Chivalry, 70);
    EXPECT_EQ(Text("MinimumSkill", kCharacter), "70");
}

TEST_F(SkillsTabTest, Edits_ReachTheStoreAsThePlayersData) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "Magery", "90");
    Open();
    ShowTab(3);
    Enter("MinimumSkill", kCharacter, "77");
    Enter("MinimumInt", kCharacter, "88");
    Click("Command1");
    m_mainWindow.SavePlayer();
    EXPECT_EQ(Saved(kMira, "Magery"), "77");
    EXPECT_EQ(Saved(kMira, "Intelligence"), "88");
}

TEST_F(SkillsTabTest, Website_OpensTheAddressOfTheStore) {
    SetSaved("Settings", "URL LHWS", "https://example.org/hall");
    OpenTab();
    Click("CommandLHWS");
    EXPECT_THAT(m_desktop.browsed, ElementsAre("https://example.org/hall"));
}

}  // namespace
}  // namespace spellwick
