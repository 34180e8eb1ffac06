// Stores with every mark: as a start leaves them, and as it would if the spell table existed in
// time.
#include "tests/store/conversion_fixture.h"

namespace spellwick {
namespace {

TEST_F(ConversionTest, NoMark_DoesNothingAndWritesNone) {
    store.Put(kGlobalSection, "CurrentReagentBag", "2");
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_EQ(Mark(), "(none)");
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_TRUE(store.Batches().empty());
}

TEST_F(ConversionTest, CurrentMark_DoesNothing) {
    Mark("Done 7.13");
    store.Put(kGlobalSection, "SpellRegs 1", "1");
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_TRUE(store.Batches().empty());
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ConversionTest, EachStart_BeginsOutsideAConversion) {
    progress.Converting = true;
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_FALSE(progress.Converting);
}

TEST_F(ConversionTest, Done50_RemovesSpellRegs1To64AndMovesTheMark) {
    Mark("Done 5.0");
    for (int n = 1; n <= 65; ++n) {
        store.Put(kGlobalSection, "SpellRegs " + std::to_string(n), "100000000000000");
    }
    EXPECT_EQ(Convert(), std::nullopt);
    for (int n = 1; n <= 64; ++n) {
        EXPECT_EQ(Value("SpellRegs " + std::to_string(n)), "(none)");
    }
    EXPECT_EQ(Value("SpellRegs 65"), "100000000000000");
    EXPECT_EQ(Mark(), "Done 7.13");
}

// covers ODDITY(conversion-second-start)
TEST_F(ConversionTest, UnknownMarkWithoutOldData_Oddity_TakesTwoStarts) {
    for (const char* mark : {"Done 1.0", "x", " ", "done 5.0", "Done 7.14"}) {
        Mark(mark);
        store.Put(kGlobalSection, "SpellRegs 1", "100000000000000");
        EXPECT_EQ(Convert(), std::nullopt);
        EXPECT_EQ(Mark(), "Done 5.0") << mark;
        EXPECT_EQ(Value("SpellRegs 1"), "100000000000000");
        EXPECT_TRUE(boxes.shown.empty());
        EXPECT_EQ(Convert(), std::nullopt);
        EXPECT_EQ(Mark(), "Done 7.13");
        EXPECT_EQ(Value("SpellRegs 1"), "(none)");
    }
}

// covers ODDITY(conversion-test-name)
TEST_F(ConversionTest, Done23_Oddity_StopsAtTheFirstName) {
    for (const char* name : {"", "Ultima Online - Mira Talon (Atlantic)", "12", "Somebody"}) {
        Mark("Done 2.3");
        store.Put(kGlobalSection, "Player 1", name);
        store.ForgetBatches();
        EXPECT_EQ(Convert(), FailureKind::kTypeMismatch) << name;
        EXPECT_EQ(Mark(), "Done 2.3");
        EXPECT_EQ(Value("Player 1"), name);
        EXPECT_TRUE(store.Batches().empty());
    }
}

// covers ODDITY(conversion-swap)
TEST_F(ConversionTest, Done40_Oddity_CrossesTwoMacrosAtEachStart) {
    Mark("Done 4.0");
    store.Put(kGlobalSection, "Macro 14", "A--X");
    store.Put(kGlobalSection, "InTown 14", "1");
    store.Put("Player 1", "SpellText 1 5", "five");
    for (const char* there : {"(swapped)", "(back)"}) {
        SCOPED_TRACE(there);
        const bool swapped = std::string_view(there) == "(swapped)";
        EXPECT_EQ(Convert(), FailureKind::kSubscript);
        EXPECT_EQ(Value("Macro 15"), swapped ? "A--X" : "---AA");
        EXPECT_EQ(Value("Macro 14"), swapped ? "---AA" : "A--X");
        EXPECT_EQ(Value("SpellRegs 14"), "011000000000000");
        EXPECT_EQ(Value("SpellRegs 15"), "010010010000000");
        EXPECT_EQ(Value("InTown 14"), "1");
        EXPECT_EQ(Value("InTown 13"), "(none)");
        EXPECT_EQ(Value("SpellText 1 5", "Player 1"), "five");
        EXPECT_EQ(Mark(), "Done 4.0");
    }
}

TEST_F(ConversionTest, Done40_WithASpellTable_CrossesAllKeysOfTheTwoRows) {
    Mark("Done 4.0");
    FillSpellTable();
    store.Put(kGlobalSection, "InTown 14", "1");
    for (const char* section : {"Player 1", "Player 10"}) {
        store.Put(section, "SpellText 1 5", "five");
        store.Put(section, "User1", "13");
        store.Put(section, "User2", "14");
        store.Put(section, "User16", "15");
        store.Put(section, "Spellbook 14", "1");
    }
    // Without names the next step would remove the slots.
    store.Put(kGlobalSection, "Player 1", "first");
    store.Put(kGlobalSection, "Player 10", "tenth");
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_EQ(Value("InTown 13"), "1");
    EXPECT_EQ(Value("InTown 14"), "0");
    EXPECT_EQ(progress.ConvertPlayer, 11);
    for (const char* section : {"first", "tenth"}) {
        EXPECT_EQ(Value("SpellText 1 5", section), "") << section;
        EXPECT_EQ(Value("SpellText 1 6", section), "five") << section;
        EXPECT_EQ(Value("User1", section), "14") << section;
        EXPECT_EQ(Value("User2", section), "13") << section;
        EXPECT_EQ(Value("User16", section), "15") << section;
        EXPECT_EQ(Value("Spellbook 13", section), "1") << section;
        EXPECT_EQ(Value("Spellbook 14", section), "0") << section;
    }
    EXPECT_EQ(Mark(), "Done 7.13");
}

// covers ODDITY(conversion-titles)
TEST_F(ConversionTest, Done44_Oddity_StopsAtTheFirstSlot) {
    Mark("Done 4.4");
    store.Put(kGlobalSection, "Player 1", "Ultima Online - Somebody (Atlantic)");
    store.Put("Player 1", "Magery", "50");
    EXPECT_EQ(Convert(), FailureKind::kSubscript);
    EXPECT_TRUE(store.Batches().empty());
    EXPECT_EQ(Value("Magery", "Player 1"), "50");
    EXPECT_EQ(Value("Player 1"), "Ultima Online - Somebody (Atlantic)");
    EXPECT_EQ(Mark(), "Done 4.4");
}

TEST_F(ConversionTest, Done44_WithASpellTable_MovesSlotsToTheirTitles) {
    Mark("Done 4.4");
    FillSpellTable();
    store.Put(kGlobalSection, "Player 3", "Ultima Online - Somebody (Atlantic)");
    store.Put("Player 3", "Magery", "50");
    store.Put("Player 4", "Magery", "60");  // a slot without a name
    EXPECT_EQ(Convert(), std::nullopt);
    EXPECT_EQ(Value("Magery", "Ultima Online - Somebody (Atlantic)"), "50");
    EXPECT_EQ(store.Sections(),
              (std::vector<std::string>{"Settings", "Ultima Online - Somebody (Atlantic)"}));
    for (int slot = 1; slot <= 10; ++slot) {
        EXPECT_EQ(Value("Player " + std::to_string(slot)), "");
    }
    EXPECT_EQ(Mark(), "Done 7.13");
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ConversionTest, Done44_SectionThatStays_IsToldAndTheChainGoesOn) {
    Mark("Done 4.4");
    FillSpellTable();
    KeepingStore keeping(store);
    EXPECT_EQ(ConvertOn(keeping), FailureKind::kFile);  // the last step cannot remove its keys
    ASSERT_EQ(boxes.shown.size(), 10U);
    EXPECT_EQ(boxes.shown[0], (Box{.text = "Can't open key Player 1"}));
    EXPECT_EQ(boxes.shown[9].text, "Can't open key Player 10");
    EXPECT_EQ(Mark(), "Done 5.0");
}

TEST_F(ConversionTest, StoreThatCannotBeWritten_EndsTheConversionAndKeepsTheMark) {
    Mark("Done 5.0");
    store.FailWith("disk full");
    EXPECT_EQ(Convert(), FailureKind::kFile);
    EXPECT_EQ(Mark(), "Done 5.0");
}

}  // namespace
}  // namespace spellwick
