// What each save writes.
#include "tests/store/settings_io_fixture.h"

namespace spellwick {
namespace {

TEST_F(SettingsIoTest, WithoutASpellTable_NothingIsSaved) {
    state.Spells.Clear();
    state.CurrentPlayerName = "Mira";
    EXPECT_EQ(FailureOf([this] { (void)io.SavePlayerSettings("Mira"); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([this] { (void)io.SaveGlobalSettings({}); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([this] { (void)io.SaveGlobalKeys({}); }), FailureKind::kSubscript);
    EXPECT_TRUE(store.Batches().empty());
}

TEST_F(SettingsIoTest, PlaceThatIsNotGiven_IsNotWritten) {
    store.Put("Settings", "WindowTop", "100");
    ASSERT_TRUE(io.SaveGlobalSettings({std::nullopt, {{1.0F, 2.0F}}}).ok);
    ASSERT_TRUE(io.SaveMacros({}).ok);
    EXPECT_EQ(store.Read("Settings", "WindowTop"), "100");
    EXPECT_FALSE(store.Read("Settings", "WindowLeft").has_value());
    EXPECT_FALSE(store.Read("Settings", "SettingsTop").has_value());
    EXPECT_EQ(store.Read("Settings", "TimerTop"), "1");
    EXPECT_EQ(store.Read("Settings", "TimerLeft"), "2");
}

TEST_F(SettingsIoTest, SaveGlobalKeys_LeavesThePlayerAlone) {
    state.CurrentPlayerName = "Mira";
    ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
    store.ForgetBatches();
    ASSERT_TRUE(io.SaveGlobalKeys({}).ok);
    ASSERT_EQ(store.Batches().size(), 1U);
    EXPECT_EQ(store.Batches()[0].size(), 1U + 13 + 96 + 97 + 3);
    for (const SettingChange& change : store.Batches()[0]) {
        EXPECT_EQ(change.section, "Settings");
    }
}

TEST_F(SettingsIoTest, SavePlayer_IsOneBatchOfItsSectionAlone) {
    ASSERT_TRUE(io.SavePlayerSettings("Mira").ok);
    ASSERT_EQ(store.Batches().size(), 1U);
    EXPECT_EQ(store.Batches()[0].size(), 365U);
    for (const SettingChange& change : store.Batches()[0]) {
        EXPECT_EQ(change.section, "Mira");
    }
}

TEST_F(SettingsIoTest, SaveThatFails_SaysSoAndTheNextIsTriedAnew) {
    store.FailWith("The disk is full.");
    EXPECT_FALSE(io.SavePlayerSettings("Mira").ok);
    EXPECT_EQ(io.SaveOption("Meditate", "True").trouble, "The disk is full.");
    EXPECT_FALSE(io.SaveMacros({}).ok);
    EXPECT_TRUE(store.Sections().empty());
    store.FailWith("");
    EXPECT_TRUE(io.SaveOption("Meditate", "True").ok);
    EXPECT_EQ(store.Read("Settings", "Meditate"), "True");
}

}  // namespace
}  // namespace spellwick
