// All data to a file and back, a character removed, and a copy for each version.
#include "companion/player_data.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companion/version_copy.h"
#include "store/catalogue.h"
#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PlayerDataTest : public CompanionFixture {
  protected:
    PlayerData& Data() { return *Program().Data(); }
    std::filesystem::path File() const { return m_folder.Path() / "all.spellwick"; }
    // Mira is loaded, and the game is gone.
    void StartWithMiraAlone() {
        StartWithMira();
        OpenClient("");
        Tick(1);
        TakeLog();
    }
    AllSettings Exported() {
        EXPECT_EQ(Data().Export(File()), "");
        ReadSettings read = Data().Open(File());
        EXPECT_EQ(read.trouble, "");
        return read.sections;
    }
    std::vector<std::string> Written() const {
        std::vector<std::string> sections;
        for (const std::string& section : m_store.Sections()) {
            sections.push_back(section);
        }
        return sections;
    }
};

TEST_F(PlayerDataTest, Export_HasWhatIsInMemoryAndEveryCharacter) {
    SavePlayer(kBran);
    StartWithMiraAlone();
    State().ReagentStock(1, 0) = 33;
    const AllSettings all = Exported();
    EXPECT_THAT(PlayerData::Characters(all), ElementsAre(kBran, kMira));
    EXPECT_EQ(all.at(kMira).at(StockKey(1, 0)), "33");
    EXPECT_TRUE(all.contains("Settings"));
}

TEST_F(PlayerDataTest, Export_CannotSaveOrWrite_SaysWhy) {
    StartWithMiraAlone();
    EXPECT_THAT(Data().Export(m_folder.Path() / "none" / "x"), HasSubstr("cannot be written"));
    m_store.FailWith("The disk is full.");
    EXPECT_EQ(Data().Export(File()), "The disk is full.");
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(PlayerDataTest, ImportAll_IsLoadedAndNoSaveUndoesIt) {
    StartWithMiraAlone();
    AllSettings all = Exported();
    all.at(kMira)[StockKey(1, 0)] = "7";
    all.at("Settings")["RegYellow"] = "9";
    all[kBran] = all.at(kMira);
    State().ReagentStock(1, 0) = 44;
    Program().NoteChanges();
    EXPECT_EQ(Data().Import(all, std::nullopt), "");
    EXPECT_EQ(State().ReagentStock(1, 0), 7);
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_EQ(State().RegYellow, 9);
    EXPECT_THAT(Written(), Contains(kBran));
    // The copy has what was in memory.
    ASSERT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_store.Copies()[0].at(kMira).at(StockKey(1, 0)), "44");
    EXPECT_THAT(TakeLog(), Contains("load settings"));
    Program().NoteChanges();
    Program().End(EndCause::kUser);
    EXPECT_EQ(Saved(kMira, StockKey(1, 0)), "7");
    EXPECT_EQ(Saved("Settings", "RegYellow"), "9");
}

TEST_F(PlayerDataTest, ImportOne_LeavesAllOthers) {
    SavePlayer(kBran);
    StartWithMiraAlone();
    AllSettings all = Exported();
    all.at(kBran)[StockKey(1, 0)] = "7";
    all.at(kMira)[StockKey(1, 0)] = "8";
    all.at("Settings")["RegYellow"] = "9";
    EXPECT_EQ(Data().Import(all, kBran), "");
    EXPECT_EQ(Saved(kBran, StockKey(1, 0)), "7");
    EXPECT_EQ(Saved(kMira, StockKey(1, 0)), "50");
    EXPECT_NE(Saved("Settings", "RegYellow"), "9");
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_EQ(State().ReagentStock(1, 0), 50);
}

TEST_F(PlayerDataTest, Import_KeysThatTheFileLacks_Go) {
    StartWithMiraAlone();
    AllSettings all = Exported();
    SetSaved(kMira, "Some old key", "1");
    EXPECT_EQ(Data().Import(all, kMira), "");
    EXPECT_EQ(m_store.Read(kMira, "Some old key"), std::nullopt);
}

TEST_F(PlayerDataTest, Import_NoCopyOrNoWrite_ChangesNothing) {
    StartWithMiraAlone();
    AllSettings all = Exported();
    all.at(kMira)[StockKey(1, 0)] = "7";
    m_store.FailCopiesWith("No room for a copy.");
    EXPECT_EQ(Data().Import(all, std::nullopt), "No room for a copy.");
    m_store.FailCopiesWith("");
    m_store.FailWith("The disk is full.");
    EXPECT_EQ(Data().Import(all, std::nullopt), "The disk is full.");
    m_store.FailWith("");
    EXPECT_EQ(Saved(kMira, StockKey(1, 0)), "50");
    EXPECT_EQ(State().ReagentStock(1, 0), 50);
}

TEST_F(PlayerDataTest, Open_ValueThatNoLoadTakes_IsNamed) {
    StartWithMiraAlone();
    AllSettings all = Exported();
    all.at(kMira)["Magery"] = "seven";
    ASSERT_TRUE(TextSettingsFile().Write(File(), all).ok);
    const ReadSettings read = Data().Open(File());
    EXPECT_EQ(read.trouble, "The value \"Magery\" of \"" + std::string(kMira) +
                                "\" in the file cannot be read. Nothing was changed.");
    EXPECT_TRUE(read.sections.empty());
    EXPECT_EQ(State().CurrentPlayerName, kMira);
}

TEST_F(PlayerDataTest, Remove_TheSaveAtTheEndDoesNotBringItBack) {
    SavePlayer(kBran);
    StartWithMiraAlone();
    ASSERT_EQ(Data().Current(), kMira);
    EXPECT_EQ(Data().RemoveCurrent(), "");
    EXPECT_EQ(State().CurrentPlayerName, "");
    EXPECT_EQ(Text("Reagent", 1), "0");
    EXPECT_THAT(Written(), testing::Not(Contains(kMira)));
    EXPECT_EQ(m_store.Copies().size(), 1U);
    Program().NoteChanges();
    Tick(1);
    Program().SaveAll();
    Program().End(EndCause::kUser);
    EXPECT_THAT(Written(), testing::Not(Contains(kMira)));
    EXPECT_THAT(Written(), Contains(kBran));
    EXPECT_EQ(Saved("Settings", "CurrentPlayerName"), "");
}

TEST_F(PlayerDataTest, Remove_PlayedAgain_IsANewCharacter) {
    StartWithMiraAlone();
    EXPECT_EQ(Data().RemoveCurrent(), "");
    OpenClient(kMira);
    Tick(1);
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_EQ(State().ReagentStock(1, 0), 0);
    Program().SaveAll();
    EXPECT_EQ(Saved(kMira, StockKey(1, 0)), "0");
}

TEST_F(PlayerDataTest, Remove_InTheGameOrNobody_IsRefused) {
    StartWithMira();
    EXPECT_EQ(Data().RemoveCurrent(), "This character is in the game. Log it out first.");
    EXPECT_EQ(Saved(kMira, StockKey(1, 0)), "50");
    State().CurrentPlayerName.clear();
    EXPECT_EQ(Data().RemoveCurrent(), "There is no character to remove.");
    EXPECT_THAT(m_store.Copies(), IsEmpty());
}

TEST_F(PlayerDataTest, NewVersion_CopiesTheStoreOnce) {
    const auto now = std::chrono::system_clock::now();
    const auto copies = [this] { return m_store.Copies().size(); };
    // Nothing to copy yet.
    CopyForNewVersion(m_store, m_folder.Path() / "new", "7.5", now);
    EXPECT_EQ(copies(), 0U);
    SavePlayer(kMira);
    CopyForNewVersion(m_store, m_folder.Path() / "new", "7.5", now);
    EXPECT_EQ(copies(), 0U);
    CopyForNewVersion(m_store, m_folder.Path() / "new", "7.6", now);
    CopyForNewVersion(m_store, m_folder.Path() / "new", "7.6", now);
    EXPECT_EQ(copies(), 1U);
    // A store from before the versions were noted.
    CopyForNewVersion(m_store, m_folder.Path() / "old", "7.6", now);
    EXPECT_EQ(copies(), 2U);
}

TEST_F(PlayerDataTest, NewVersion_CopyFails_TriesAgain) {
    SavePlayer(kMira);
    m_store.FailCopiesWith("No room for a copy.");
    CopyForNewVersion(m_store, m_folder.Path(), "7.6", {});
    m_store.FailCopiesWith("");
    CopyForNewVersion(m_store, m_folder.Path(), "7.6", {});
    EXPECT_EQ(m_store.Copies().size(), 1U);
}

}  // namespace
}  // namespace spellwick
