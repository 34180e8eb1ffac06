// The first step of the conversion: the one set of data of the oldest versions, and the question
// about it.
#include "tests/store/conversion_fixture.h"

namespace spellwick {
namespace {

TEST_F(ConversionTest, OldBagOf99_CountsAsNoOldData) {
    Mark("Done 1.0");
    store.Put(kGlobalSection, "CurrentReagentBag", "99");
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_EQ(Mark(), "Done 5.0");
}

TEST_F(ConversionTest, OldBagThatIsNoNumber_EndsTheConversion) {
    Mark("Done 1.0");
    store.Put(kGlobalSection, "CurrentReagentBag", "red");
    EXPECT_EQ(Convert(), FailureKind::kTypeMismatch);
    EXPECT_EQ(Mark(), "Done 1.0");
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ConversionTest, OldData_AsksOnceWithAllLinesOfTheText) {
    PutOldData();
    Convert();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].icon, BoxIcon::kQuestion);
    EXPECT_EQ(boxes.shown[0].buttons, BoxButtons::kYesNo);
    EXPECT_EQ(
        boxes.shown[0].text,
        "This version of the Spellwick can manage settings for multiple players. \n"
        "Each player will have a personal spellbook, reagent bags, amount of reagents, user "
        "spells, spell texts, INT stat and magery skill. \n"
        "To make this possible a conversion of previously saved data is needed. \n"
        "If you want to copy the old data to all 10 player slots click on YES. \n"
        "If you want to copy the old data to player slot 1 and initialize the other 9 slots click "
        "on NO. \n"
        "No matter what option you choose, no previously entered data will be lost. All global "
        "settings like reagent price, player names and macro setup will stay the same.\n");
}

// covers ODDITY(conversion-first-step)
TEST_F(ConversionTest, OldData_Oddity_StopsAtTheFirstLoadAndAsksAtEachStart) {
    PutOldData();
    EXPECT_EQ(Convert(), FailureKind::kSubscript);
    EXPECT_TRUE(store.Batches().empty());
    EXPECT_EQ(Mark(), "Done 1.1");
    EXPECT_TRUE(progress.Converting);
    EXPECT_TRUE(progress.ConvertToAllSlots);
    EXPECT_EQ(wait.notes, (std::vector<std::string>{"show", "events"}));
    EXPECT_EQ(Convert(), FailureKind::kSubscript);
    EXPECT_EQ(boxes.shown.size(), 2U);
    // A player that is loaded from now on gets the old data.
    FillSpellTable();
    SettingsIo io(state, store, view);
    io.Progress() = progress;
    state.Magery = 0;
    io.LoadPlayerSettings("Ultima Online - Somebody (Atlantic)");
    EXPECT_EQ(state.Magery, 77);
}

// covers ODDITY(conversion-answer-no)
TEST_F(ConversionTest, AnswerNo_Oddity_StartsAllTenSlotsAnew) {
    PutOldData();
    FillSpellTable();
    boxes.answer = BoxAnswer::kNo;
    Convert();
    for (int slot = 1; slot <= 10; ++slot) {
        EXPECT_EQ(Value("Magery", std::to_string(slot)), "0") << slot;
        EXPECT_EQ(Value("MR 0", std::to_string(slot)), "0") << slot;
        EXPECT_EQ(Value("Bag 0", std::to_string(slot)), "Red Backpack") << slot;
    }
}

TEST_F(ConversionTest, AnswerYes_WithASpellTable_CopiesToAllSlotsAndRemovesTheOldKeys) {
    PutOldData();
    FillSpellTable();
    EXPECT_EQ(Convert(), std::nullopt);
    for (int slot = 1; slot <= 10; ++slot) {
        const std::string section = std::to_string(slot);
        EXPECT_EQ(Value("Magery", section), "77");
        EXPECT_EQ(Value("MR 0", section), "17");
        EXPECT_EQ(Value("Bag 0", section), "Sack");
        EXPECT_EQ(Value("Spellbook 63", section), "0");
        EXPECT_EQ(Value("User16", section), "9");
        EXPECT_EQ(Value("SpellText 7 7", section), "Boo");
    }
    for (const char* gone : {"CurrentReagentBag", "MR 0", "Bag 0", "Magery", "Spellbook 63",
                             "User16", "SpellText 7 7"}) {
        EXPECT_EQ(Value(gone), "(none)") << gone;
    }
    for (const char* kept : {"NC 0", "EvalInt", "Spellbook 64", "SpellText 8 0"}) {
        EXPECT_NE(Value(kept), "(none)") << kept;
    }
    EXPECT_EQ(wait.notes, (std::vector<std::string>{
                              "show", "events", "10", "events", "20",  "events", "30",   "events",
                              "40",   "events", "50", "events", "60",  "events", "70",   "events",
                              "80",   "events", "90", "events", "100", "events", "close"}));
    EXPECT_FALSE(progress.Converting);
    EXPECT_EQ(Mark(), "Done 7.13");
}

TEST_F(ConversionTest, FirstStep_RemovesExactlyTheOldKeys) {
    PutOldData();
    FillSpellTable();
    std::vector<std::string> old{"CurrentReagentBag", "Magery", "Intelligence", "Dexterity",
                                 "TargetInt"};
    for (int b = 0; b < 10; ++b) {
        for (const char* key : {"Bag", "MR", "SA", "BM", "SS", "GA", "BP", "NI", "GI"}) {
            old.push_back(std::string(key) + " " + std::to_string(b));
        }
    }
    for (int n = 1; n <= 16; ++n) {
        old.push_back("User" + std::to_string(n));
    }
    for (int n = 0; n < 64; ++n) {
        old.push_back("Spellbook " + std::to_string(n));
        old.push_back("SpellText " + std::to_string(n / 8) + " " + std::to_string(n % 8));
    }
    EXPECT_EQ(old.size(), std::size_t{5 + 90 + 16 + 128});
    for (const std::string& key : old) {
        store.Put(kGlobalSection, key, "1");
    }
    Convert();
    for (const std::string& key : old) {
        EXPECT_EQ(Value(key), "(none)") << key;
    }
}

TEST_F(ConversionTest, FirstStep_ARemovalThatFailsCountsForNothing) {
    PutOldData();
    FillSpellTable();
    KeepingStore keeping(store);
    EXPECT_EQ(ConvertOn(keeping), std::nullopt);
    EXPECT_EQ(Value("CurrentReagentBag"), "2");
    EXPECT_EQ(wait.notes.back(), "close");
    EXPECT_EQ(Mark(), "Done 7.13");
}

}  // namespace
}  // namespace spellwick
