// The group "Your data" of the tab Game: its buttons, questions and boxes.
#include "settings_dialog/your_data.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kNobody = "Ultima Online - Nell (Atlantic)";

class YourDataTest : public SettingsFixture {
  protected:
    void OpenTab() {
        SetSaved("Settings", "CurrentPlayerName", kNobody);
        SetSaved(kNobody, "Magery", "70");
        OpenAt(8);
    }
    std::filesystem::path File() const { return m_folder.Path() / "all.spellwick"; }
    std::string OnlyBox() {
        const std::vector<Box> boxes = TakeBoxes();
        EXPECT_EQ(boxes.size(), 1U);
        return boxes.empty() ? "" : boxes[0].text;
    }
};

TEST_F(YourDataTest, Captions) {
    OpenTab();
    EXPECT_EQ(Text("CommandExport"), "Save all to a file...");
    EXPECT_EQ(Text("CommandImport"), "Load from a file...");
    EXPECT_EQ(Text("CommandRemove"), "Remove this character");
}

TEST_F(YourDataTest, Export_WritesTheFileThatWasChosenAndSaysSo) {
    OpenTab();
    m_dialogs.files = {File()};
    Click("CommandExport");
    EXPECT_THAT(OnlyBox(), HasSubstr(File().string()));
    EXPECT_TRUE(std::filesystem::exists(File()));
    ASSERT_EQ(m_dialogs.saves.size(), 1U);
    EXPECT_EQ(m_dialogs.saves[0].defaultExtension, ".spellwick");
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(YourDataTest, Export_OverAFile_Asks) {
    OpenTab();
    std::ofstream(File()) << "mine";
    m_dialogs.files = {File()};
    m_boxes.answers = {BoxAnswer::kNo};
    Click("CommandExport");
    EXPECT_THAT(OnlyBox(), HasSubstr("Replace it ?"));
    EXPECT_EQ(std::filesystem::file_size(File()), 4U);
    m_dialogs.files = {File()};
    m_boxes.answers = {BoxAnswer::kYes};
    Click("CommandExport");
    EXPECT_EQ(TakeBoxes().size(), 2U);
    EXPECT_GT(std::filesystem::file_size(File()), 4U);
}

TEST_F(YourDataTest, Cancelled_NothingHappens) {
    OpenTab();
    Click("CommandExport");
    Click("CommandImport");
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    EXPECT_TRUE(m_store.Copies().empty());
}

TEST_F(YourDataTest, Import_OffersAllAndEachCharacterAndClosesTheDialog) {
    OpenTab();
    m_dialogs.files = {File()};
    Click("CommandExport");
    TakeBoxes();
    SetSaved(kNobody, "Magery", "10");
    m_dialogs.files = {File()};
    m_dialogs.pick = 1;
    Click("CommandImport");
    EXPECT_THAT(m_dialogs.offered, ElementsAre("All characters and the settings", kNobody));
    EXPECT_EQ(Saved(kNobody, "Magery"), "70");
    EXPECT_THAT(OnlyBox(), HasSubstr("A copy of your settings of before is kept."));
    EXPECT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_reloads, 1);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_TRUE(Form().IsOutdated());
}

TEST_F(YourDataTest, Import_NothingChosenOfIt_ChangesNothing) {
    OpenTab();
    m_dialogs.files = {File(), File()};
    Click("CommandExport");
    TakeBoxes();
    Click("CommandImport");
    EXPECT_EQ(m_reloads, 0);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_FALSE(Form().IsOutdated());
}

TEST_F(YourDataTest, Import_ForeignFile_IsABoxAndNothingElse) {
    OpenTab();
    std::ofstream(File()) << "a picture";
    m_dialogs.files = {File()};
    Click("CommandImport");
    EXPECT_THAT(OnlyBox(),
                HasSubstr("is not a file of Spellwick's settings. Nothing was changed."));
    EXPECT_THAT(m_dialogs.offered, IsEmpty());
    EXPECT_EQ(m_reloads, 0);
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(YourDataTest, Remove_AsksAndClosesTheDialog) {
    OpenTab();
    m_boxes.answers = {BoxAnswer::kNo};
    Click("CommandRemove");
    EXPECT_THAT(OnlyBox(), HasSubstr(kNobody));
    EXPECT_EQ(Saved(kNobody, "Magery"), "70");
    m_boxes.answers = {BoxAnswer::kYes};
    Click("CommandRemove");
    TakeBoxes();
    EXPECT_EQ(Saved(kNobody, "Magery"), "(none)");
    EXPECT_EQ(m_reloads, 1);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(YourDataTest, Remove_WithoutACharacter_SaysSo) {
    Open();
    ShowTab(8);
    Click("CommandRemove");
    EXPECT_EQ(OnlyBox(), "There is no character to remove.");
}

}  // namespace
}  // namespace spellwick
