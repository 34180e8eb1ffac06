// Stores with every mark: as a start leaves them, and as it would if the spell table existed in
// time.
#include "store/conversion.h"

#include <gtest/gtest.h>

#include "store/section_name.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/failures.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {
namespace {

class AnsweringBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& box) override {
        shown.push_back(box);
        return answer;
    }
    std::vector<Box> shown;
    BoxAnswer answer = BoxAnswer::kYes;
};

class NotingWait final : public WaitWindow {
  public:
    void ShowWait() override { notes.emplace_back("show"); }
    void ShowPercent(i32 percent) override { notes.push_back(std::to_string(percent)); }
    void CloseWait() override { notes.emplace_back("close"); }
    void ServeEvents() override { notes.emplace_back("events"); }
    std::vector<std::string> notes;
};

// A store from which nothing can be removed.
class KeepingStore final : public SettingsStore {
  public:
    explicit KeepingStore(MemorySettingsStore& inner) : m_inner(inner) {}
    std::optional<std::string> Read(std::string_view section, std::string_view key) const override {
        return m_inner.Read(section, key);
    }
    SectionValues ReadSection(std::string_view section) const override {
        return m_inner.ReadSection(section);
    }
    StoreResult Apply(const std::vector<SettingChange>& changes) override {
        for (const SettingChange& change : changes) {
            if (!change.value) {
                return {false, "no"};
            }
        }
        return m_inner.Apply(changes);
    }
    StoreResult RemoveSection(std::string_view /*section*/) override { return {false, "no"}; }
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override {
        return m_inner.KeepCopy(now);
    }
    std::vector<std::string> Sections() const override { return m_inner.Sections(); }

  private:
    MemorySettingsStore& m_inner;
};

class ConversionTest : public testing::Test {
  protected:
    // Converts as the start does; returns the failure that ends it, if any.
    std::optional<FailureKind> Convert() { return ConvertOn(store); }
    std::optional<FailureKind> ConvertOn(SettingsStore& on) {
        SettingsIo io(state, on, view);
        io.Progress() = progress;
        Conversion conversion(
            {.state = state, .store = on, .io = io, .boxes = boxes, .wait = wait});
        const std::optional<FailureKind> failure = FailureOf([&] { conversion.ConvertOldData(); });
        progress = io.Progress();
        return failure;
    }
    void FillSpellTable() { state.Spells.GrowTo(104); }

    void Mark(std::string_view mark) { store.Put(kGlobalSection, "Conversion", mark); }
    std::string Mark() { return Value("Conversion"); }
    std::string Value(std::string_view key, std::string_view section = kGlobalSection) {
        return store.Read(section, key).value_or("(none)");
    }
    // One player's data in the form of the oldest versions.
    void PutOldData() {
        Mark("Done 1.1");
        store.Put(kGlobalSection, "CurrentReagentBag", "2");
        store.Put(kGlobalSection, "MR 0", "17");
        store.Put(kGlobalSection, "NC 0", "5");
        store.Put(kGlobalSection, "Bag 0", "Sack");
        store.Put(kGlobalSection, "Magery", "77");
        store.Put(kGlobalSection, "EvalInt", "66");
        store.Put(kGlobalSection, "Spellbook 63", "0");
        store.Put(kGlobalSection, "Spellbook 64", "0");
        store.Put(kGlobalSection, "User16", "9");
        store.Put(kGlobalSection, "SpellText 7 7", "Boo");
        store.Put(kGlobalSection, "SpellText 8 0", "Far");
        store.Put(kGlobalSection, "Macro 14", "A--X");
    }

    SharedState state;
    ConversionProgress progress;  // as the last Convert left it
    MemorySettingsStore store;
    RecordingView view;
    AnsweringBoxes boxes;
    NotingWait wait;
};

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
