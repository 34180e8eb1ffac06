// The page of eight spells: buttons, pictures and figures.
#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/main_window/page_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PageTest, PageButton_WindowNotActive_StillShowsWhichPageItIs) {
    StartWithMira();
    QPalette colours;
    colours.setColor(QPalette::Highlight, Qt::blue);
    // As on Windows: an inactive window does not highlight.
    colours.setColor(QPalette::Inactive, QPalette::Highlight, colours.color(QPalette::Button));
    Form().setPalette(colours);
    const WindowInFront game;
    const auto ground = [this](int button) {
        return Named("CheckCircle", button).grab().toImage().pixelColor(5, 5);
    };
    ASSERT_EQ(PressedButtons(), std::vector{2});
    EXPECT_EQ(ground(2), QColor(Qt::blue));
    EXPECT_NE(ground(3), QColor(Qt::blue));
}

TEST_F(PageTest, CheckCircle_CaptionsAndPages) {
    struct Row {
        const char* caption = nullptr;
        std::vector<i32> rows;
    };
    StartWithMira();
    for (int cell = 0; cell < 16; ++cell) {
        State().UserSpells(cell) = static_cast<i16>(95 - cell * 3);
    }
    const std::vector<Row> rows{
        {"U1", {95, 92, 89, 86, 83, 80, 77, 74}}, {"U2", {71, 68, 65, 62, 59, 56, 53, 50}},
        {"1", {0, 1, 2, 3, 4, 5, 6, 7}},          {"2", {8, 9, 10, 11, 12, 13, 14, 15}},
        {"3", {16, 17, 18, 19, 20, 21, 22, 23}},  {"4", {24, 25, 26, 27, 28, 29, 30, 31}},
        {"5", {32, 33, 34, 35, 36, 37, 38, 39}},  {"6", {40, 41, 42, 43, 44, 45, 46, 47}},
        {"7", {48, 49, 50, 51, 52, 53, 54, 55}},  {"8", {56, 57, 58, 59, 60, 61, 62, 63}},
        {"1", {64, 65, 66, 67, 68, 69, 70, 71}},  {"2", {72, 73, 74, 75, 76, 77, 78, 79}},
        {"1", {80, 81, 82, 83, 84, 85, 86, 87}},  {"2", {88, 89, 90, 91, 92, 93, 94, 95}}};
    for (int button = 0; button < 14; ++button) {
        SCOPED_TRACE(button);
        ShowPage(button);
        const Row& row = rows[static_cast<std::size_t>(button)];
        EXPECT_EQ(Text("CheckCircle", button), row.caption);
        EXPECT_THAT(PressedButtons(), ElementsAre(button));
        EXPECT_EQ(Rows(), row.rows);
        for (int slot = 0; slot < 8; ++slot) {
            const i32 spell = row.rows[static_cast<std::size_t>(slot)];
            EXPECT_TRUE(Alike(ShownIcon(slot), Picture(spell))) << spell;
        }
    }
}

TEST_F(PageTest, CheckCircle_ClickOnThePressedOne_StaysPressed) {
    StartWithMira();
    ShowPage(5);
    ShowPage(5);
    EXPECT_THAT(PressedButtons(), ElementsAre(5));
    Press(Qt::Key_Space);
    EXPECT_THAT(PressedButtons(), ElementsAre(5));
}

TEST_F(PageTest, CheckCircle_ByKeyboard_TurnsThePage) {
    StartWithMira();
    Named("CheckCircle", 7).setFocus(Qt::TabFocusReason);
    Press(Qt::Key_Space);
    EXPECT_THAT(PressedButtons(), ElementsAre(7));
    EXPECT_EQ(Rows().front(), 40);
}

TEST_F(PageTest, CheckCircle_WhileUpdating_DoesNothing) {
    StartWithMira();
    State().Updating = true;
    Program().ChoosePage(5);
    State().Updating = false;
    EXPECT_THAT(PressedButtons(), ElementsAre(2));
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(PageTest, CheckCircle_RefreshesChancesThenAmounts) {
    StartWithMira();
    ShowPage(3);
    EXPECT_THAT(TakeLog(), ElementsAre("update chance"));
    EXPECT_FALSE(State().Updating);
}

TEST_F(PageTest, Image1_IsAShortCut) {
    struct Row {
        int image;
        int button;
        i32 first;
    };
    StartWithMira();
    for (const Row& row : {Row{0, 10, 64}, Row{1, 12, 80}}) {
        QWidget& image = Named("Image1", row.image);
        // Click the edge: the small buttons cover the middle.
        const QPoint edge = image.mapTo(&Form(), QPoint(3, 24));
        QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, {}, edge);
        EXPECT_THAT(PressedButtons(), ElementsAre(row.button));
        EXPECT_EQ(Rows().front(), row.first);
        EXPECT_EQ(Rows().back(), row.first + 7);
    }
}

TEST_F(PageTest, Image1_LetGoOutside_IsNoClick) {
    StartWithMira();
    QWidget& image = Named("Image1", 1);
    QWindow* window = Form().windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, image.mapTo(&Form(), QPoint(3, 24)));
    QTest::mouseRelease(window, Qt::LeftButton, {}, BareForm());
    EXPECT_THAT(PressedButtons(), ElementsAre(2));
}

TEST_F(PageTest, UpdatePage_SpellOutOfTheBook_TurnsGreyAtTheNextUpdate) {
    StartWithMira();
    State().UserSpells(3) = 9;
    for (const int button : {3, 0}) {
        SCOPED_TRACE(button);
        const int slot = button == 3 ? 1 : 3;
        State().Spellbook(9) = 0;
        ShowPage(button);
        const QImage colour = Icon(slot).grab().toImage();
        State().Spellbook(9) = 1;
        EXPECT_EQ(Icon(slot).grab().toImage(), colour);
        Program().UpdatePage();
        const QImage grey = Icon(slot).grab().toImage();
        EXPECT_NE(grey, colour);
        bool isGrey = true;
        for (int x = 3; x < 39; ++x) {
            const QColor dot = grey.pixelColor(x, x);
            isGrey = isGrey && std::abs(dot.red() - dot.blue()) < 12;
        }
        EXPECT_TRUE(isGrey);
    }
}

TEST_F(PageTest, UpdatePage_GroundOfTheChance_FollowsInTownAndNotTheChance) {
    struct Row {
        unsigned char inTown;
        i16 magery;
        Colour ground;
    };
    StartWithMira();
    for (const Row& row : {Row{1, 100, 0xFFFF80}, Row{1, 0, 0xFFFF80}, Row{0, 100, 0x8080FF},
                           Row{0, 0, 0x8080FF}, Row{2, 100, 0x8080FF}}) {
        State().Spells(0).InTown = row.inTown;
        State().Magery = row.magery;
        Program().UpdatePage();
        EXPECT_EQ(ChanceGroundOf(0), row.ground);
    }
}

TEST_F(PageTest, UpdateChances_PlainNumbersOfThePage) {
    StartWithMira();
    State().Magery = 31;
    State().Spells(9).MinimumSkill = 30;
    State().Spells(9).MaximumSkill = 70;
    State().UserSpells(0) = 9;
    State().UserSpells(15) = 9;
    for (const auto& [button, slot] : {std::pair{3, 1}, std::pair{0, 0}, std::pair{1, 7}}) {
        ShowPage(button);
        EXPECT_EQ(Text("LabelChance", slot), "2") << button;
    }
    State().Magery = 100;
    Program().UpdateChances();
    EXPECT_EQ(Text("LabelChance", 7), "99");
}

TEST_F(PageTest, UpdateChances_CurrentMana_CountsWithTheLinkOnly) {
    StartWithMira();
    State().Spells(0).Mana = 40;
    State().Intelligence = 80;
    State().CurrentMana = 39;
    Program().UpdateChances();
    EXPECT_EQ(Text("LabelChance", 0), "99");
    State().AssistLinked = true;
    Program().UpdateChances();
    EXPECT_EQ(Text("LabelChance", 0), "0");
    EXPECT_EQ(State().SkillChance(0), 99);
    State().Intelligence = 39;
    Program().UpdateChances();
    EXPECT_EQ(State().SkillChance(0), 0);
}

TEST_F(PageTest, UpdateAmounts_ColoursAndForm) {
    struct Row {
        const char* stock;
        const char* amount;
        Colour ground;
    };
    StartWithMira();
    State().RegYellow = 10;
    State().ColorWarn = 0x123456;
    for (const Row& row :
         {Row{"11", " 11", 0x00FF00}, Row{"10", " 10", 0x123456}, Row{"1", " 1", 0x123456},
          Row{"0", " 0", 0x0000FF}, Row{"", " 0", 0x0000FF}, Row{"-5", " 0", 0x0000FF},
          Row{"32767", " 32767", 0x00FF00}}) {
        Reagent(3).setText(QLatin1String(row.stock));
        Reagent(7).setText(QStringLiteral("32767"));
        Program().UpdateAmounts();
        EXPECT_EQ(Text("LabelAmount", 0), row.amount);
        EXPECT_EQ(AmountGround(0), row.ground) << row.stock;
    }
}

TEST_F(PageTest, UpdateAmounts_TithesOfTheAbility) {
    struct Row {
        i32 tithing;
        const char* amount;
    };
    StartWithMira();
    State().Spells(80).Reagents(kTithes) = 20;
    ShowPage(12);
    for (const Row& row : {Row{19, " 0"}, Row{20, " 1"}, Row{39, " 1"}, Row{40, " 2"}}) {
        State().CurrentTithing = row.tithing;
        Program().UpdateAmounts();
        EXPECT_EQ(Text("LabelAmount", 0), row.amount);
    }
}

TEST_F(PageTest, UpdateAmounts_LastSlotOfAUserPage_GoesByReagents) {
    StartWithMira();
    State().UserSpells(6) = 88;
    State().UserSpells(7) = 88;
    State().Spells(88).Reagents(kTithes) = 10;
    State().Spells(88).Reagents(1) = 1;
    ShowPage(0);
    EXPECT_EQ(Text("LabelAmount", 6), " 50");
    Reagent(1).setText(QStringLiteral("7"));
    Program().UpdateAmounts();
    EXPECT_EQ(Text("LabelAmount", 7), " 7");
    EXPECT_EQ(Text("LabelAmount", 6), " 50");
}

TEST_F(PageTest, UpdateAmounts_FigureBeyond16Bits_IsAnUncaughtFailure) {
    StartWithMira();
    State().Spells(80).Reagents(kTithes) = 1;
    State().CurrentTithing = 32768;
    ShowPage(12);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "choosing a page"}));
}

TEST_F(PageTest, UpdatePage_UserCellOutsideTheTable_IsAnUncaughtFailure) {
    StartWithMira();
    for (const i16 row : {i16{-1}, i16{97}, i16{3000}}) {
        State().UserSpells(2) = row;
        ShowPage(0);
        EXPECT_THAT(TakeFailures(),
                    ElementsAre(UncaughtFailure{FailureKind::kSubscript, "choosing a page"}));
    }
}

TEST_F(PageTest, UpdatePage_RowBeyondThePages_ShowsAnEmptyTile) {
    StartWithMira();
    State().UserSpells(2) = 96;
    ShowPage(0);
    EXPECT_TRUE(Alike(ShownIcon(2), Picture(94)));
    EXPECT_EQ(Text("LabelAmount", 2), " 0");
    EXPECT_EQ(Icon(2).accessibleName(), QStringLiteral("No spell"));
}

TEST_F(PageTest, ShowCurrentMana_PutsItInBrackets) {
    StartWithMira();
    Program().Reports().OnMessage({kAssistStats, 100, 42});
    EXPECT_EQ(Text("LabelCurrentMana"), "(42)");
}

TEST_F(PageTest, ToolTips_AsTold) {
    StartWithMira();
    for (int slot = 0; slot < 8; ++slot) {
        EXPECT_EQ(LabelAmount(slot).toolTip(), QStringLiteral("Amount castable"));
        EXPECT_EQ(LabelChance(slot).toolTip(), QStringLiteral("% chance of success"));
    }
    for (const char* name : {"LabelTithes", "ImageAnkh"}) {
        EXPECT_EQ(Named(QLatin1String(name)).toolTip(),
                  QStringLiteral("Tithe points, used for Paladin abilities"));
    }
    EXPECT_EQ(Named(QStringLiteral("ComboReagent")).toolTip(), QStringLiteral("Select Bag"));
}

TEST_F(PageTest, DarkGround_PicturesHaveALightRim) {
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    StartWithMira();
    const auto lightest = [this](QPoint from, int count) {
        const QImage shown = Form().grab().toImage();
        int most = 0;
        for (int x = 0; x < count; ++x) {
            most = std::max(most, QColor(shown.pixel(from + QPoint(x, 0))).lightness());
        }
        return most;
    };
    // The middle of an icon's upper edge, and the row through the black pearl.
    const QPoint edge = Icon(0).pos() + QPoint(15, 0);
    Form().setPalette(dark);
    EXPECT_GT(lightest(edge, 10), 90);
    QWidget& pearl = Named("imgReg", 5);
    EXPECT_GT(lightest(pearl.pos() + QPoint(0, pearl.height() / 2), pearl.width()), 120);
}

}  // namespace
}  // namespace spellwick
