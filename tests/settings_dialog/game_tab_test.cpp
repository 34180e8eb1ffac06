// The Game tab.
#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class GameTabTest : public SettingsFixture {
  protected:
    void OpenTab() {
        Open();
        ShowTab(8);
        TakeLog();
    }
    bool IsTicked() { return Named<QCheckBox>("CheckFront").isChecked(); }
};

TEST_F(GameTabTest, Front_HasItsCaption) {
    OpenTab();
    EXPECT_EQ(Text("CheckFront"), "Type only while the game is in front");
    EXPECT_TRUE(Named("CheckFront").isVisible());
}

TEST_F(GameTabTest, Front_ShowsWhatIsSaved) {
    OpenTab();
    EXPECT_TRUE(IsTicked()) << "on until it is switched off";
    SetSaved("Settings", "TypeOnlyInFront", "False");
    OpenTab();
    EXPECT_FALSE(IsTicked());
}

TEST_F(GameTabTest, Front_ClickStoresAndSavesAtOnce) {
    OpenTab();
    Click("CheckFront");
    EXPECT_FALSE(m_state.CheckFront);
    EXPECT_THAT(TakeLog(), ElementsAre("option TypeOnlyInFront False"));
    EXPECT_EQ(Saved("Settings", "TypeOnlyInFront"), "False");
    Click("CheckFront");
    EXPECT_TRUE(m_state.CheckFront);
    EXPECT_THAT(TakeLog(), ElementsAre("option TypeOnlyInFront True"));
    EXPECT_EQ(Saved("Settings", "TypeOnlyInFront"), "True");
}

}  // namespace
}  // namespace spellwick
