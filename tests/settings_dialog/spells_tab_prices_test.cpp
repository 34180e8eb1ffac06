// The prices of reagents on the tab of spells, and the costs that follow.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/settings_dialog/spells_tab_fixture.h"

namespace spellwick {
namespace {

// covers ODDITY(cost-overflow)
TEST_F(SpellsTabTest, Costs_Oddity_BeyondTheirBoundEndTheProgram) {
    Open();
    SetPrice(0, "999");
    Enter("Reagent", Cell(0, 0), "99");
    Leave();
    ASSERT_FALSE(m_failures.empty());
    EXPECT_EQ(TakeFailures().front().kind, FailureKind::kOverflow);
}

TEST_F(SpellsTabTest, Costs_BeyondTheirBound_AreNotSavedAndTheSettingsOpenAgain) {
    const struct {
        const char* name;
        const char* price;
        const char* amount;
        std::string lastEntry;
        i16 priceKept;
        int amountKept;
    } rows[] = {{"amount", "999", "99", "amount", 999, 0}, {"price", "9999", "9", "price", 3, 9}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        m_form.reset();
        m_state = SharedState{};
        m_store = MemorySettingsStore();
        Open();
        const auto enterPrice = [&] { SetPrice(0, row.price); };
        const auto enterAmount = [&] { Enter("Reagent", Cell(0, 0), row.amount); };
        if (row.lastEntry == "price") {
            enterAmount();
            enterPrice();
        } else {
            enterPrice();
            enterAmount();
        }
        Leave();
        ASSERT_FALSE(m_failures.empty());
        EXPECT_EQ(TakeFailures().front().kind, FailureKind::kOverflow);
        EXPECT_EQ(m_state.RegPrice(1), row.priceKept);
        EXPECT_EQ(m_state.Spells(0).Reagents(1), row.amountKept);
        EXPECT_TRUE(m_companion.io.SaveGlobalKeys({}).ok);
        m_form.reset();
        m_state = SharedState{};
        Open();
        EXPECT_THAT(m_failures, testing::IsEmpty());
        EXPECT_EQ(m_state.RegPrice(1), row.priceKept);
        EXPECT_EQ(m_state.Spells(0).Reagents(1), row.amountKept);
    }
}

TEST_F(SpellsTabTest, Costs_PriceTypedWhenAnotherWindowComes_IsTakenBackToo) {
    Open();
    Enter("Reagent", Cell(0, 0), "9");
    SetPrice(0, "9999");
    EXPECT_THROW(Form().RefreshDialog(), RuntimeFailure);
    EXPECT_EQ(m_state.RegPrice(1), 3);
}

TEST_F(SpellsTabTest, Price_Change_StoresAtOnceAndCostsFollowWhenTheBoxIsLeft) {
    Open();
    const i16 before = m_state.Spells(1).Cost;
    ASSERT_EQ(m_state.Spells(1).Reagents(1), 1);
    SetPrice(0, "13");
    EXPECT_EQ(m_state.RegPrice(1), 13);
    EXPECT_EQ(Text("SpellPrice", 1), " " + std::to_string(before));
    Leave();
    EXPECT_EQ(Text("SpellPrice", 1), " " + std::to_string(before + 10));
    EXPECT_EQ(Text("RegPrice", 0), " 13");
}

TEST_F(SpellsTabTest, Price_EveryBoxWritesItsReagent) {
    Open();
    for (const int page : {0, 9, 10}) {
        ShowPage(page);
        for (int column = 0; column < (page < 8 ? 8 : 6); ++column) {
            SetPrice(column, std::to_string(20 + column));
            EXPECT_EQ(m_state.RegPrice(column + (page < 8 ? 1 : 9)), 20 + column);
        }
    }
    EXPECT_EQ(m_state.RegPrice(14), 25);
}

TEST_F(SpellsTabTest, Price_ReadsTheNumberInItsFirstFourCharacters) {
    Open();
    struct PriceRow {
        const char* text;
        i16 value;
    };
    for (const PriceRow& row : std::initializer_list<PriceRow>{{"", 0},
                                                               {"-", 0},
                                                               {"+", 0},
                                                               {"-7", -7},
                                                               {"+8", 8},
                                                               {"abc", 0},
                                                               {"1234567890", 1234},
                                                               {"2.5", 2},
                                                               {" 99", 99}}) {
        Paste(Named<QLineEdit>("RegPrice", 0), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.RegPrice(1), row.value) << row.text;
    }
    Paste(Named<QLineEdit>("RegPrice", 0), QStringLiteral("5 golden rings ").repeated(50000));
    EXPECT_EQ(m_state.RegPrice(1), 5);
}

TEST_F(SpellsTabTest, Price_KeyFilter_DropsAllButDigitsAndSignsWithABeep) {
    Open();
    SetPrice(0, "1a2.b-+ 3");
    EXPECT_EQ(Text("RegPrice", 0), "12-+3");
    EXPECT_EQ(m_desktop.beeps, 4);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Text("RegPrice", 0), "12-+");
    EXPECT_EQ(m_desktop.beeps, 4);
}

TEST_F(SpellsTabTest, Price_GotFocus_SelectsTheWholeText) {
    Open();
    Click("RegPrice", 2);
    EXPECT_EQ(Named<QLineEdit>("RegPrice", 2).selectedText(), QStringLiteral(" 6"));
}

// covers ODDITY(price-digit)
TEST_F(SpellsTabTest, Price_Oddity_FourDigitsLoseTheLastAtTheNextRefresh) {
    Open();
    SetPrice(5, "1000");
    EXPECT_EQ(m_state.RegPrice(6), 1000);
    Leave();
    EXPECT_EQ(m_state.RegPrice(6), 100);
    EXPECT_EQ(Text("RegPrice", 5), " 1000");
    Form().RefreshDialog();
    EXPECT_EQ(m_state.RegPrice(6), 100);
    EXPECT_EQ(Text("RegPrice", 5), " 100");
}

// covers ODDITY(tithes-price)
TEST_F(SpellsTabTest, Price_Oddity_ThatOfTheTithesIsOneAgainWhenItsBoxIsLeft) {
    Open();
    ShowPage(10);
    SetPrice(5, "25");
    EXPECT_EQ(m_state.RegPrice(14), 25);
    Leave();
    EXPECT_EQ(m_state.RegPrice(14), 1);
    EXPECT_EQ(Text("RegPrice", 5), " 1");
}

TEST_F(SpellsTabTest, SpellPrice_TypingHasNoEffect) {
    Open();
    const i16 cost = m_state.Spells(0).Cost;
    Enter("SpellPrice", 0, "5");
    Leave();
    EXPECT_EQ(m_state.Spells(0).Cost, cost);
    EXPECT_EQ(Text("SpellPrice", 0), " " + std::to_string(cost));
}

}  // namespace
}  // namespace spellwick
