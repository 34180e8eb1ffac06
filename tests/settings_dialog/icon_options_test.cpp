// The options of the icons on the Game tab.
#include "settings_dialog/icon_options.h"

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IconOptionsTest : public SettingsFixture {
  protected:
    void OpenTab() { OpenAt(8); }
    bool IsOn(const char* option) { return Named<QCheckBox>(QLatin1String(option)).isChecked(); }
};

TEST_F(IconOptionsTest, Open_IsOffAtFirst_WithTheTimersAsIcons) {
    OpenTab();
    EXPECT_EQ(Text("CheckKeysOnIcons"), "Keys on the icons");
    EXPECT_EQ(Text("CheckSecondsOnIcons"), "Seconds on the icons");
    EXPECT_FALSE(IsOn("CheckKeysOnIcons"));
    EXPECT_FALSE(IsOn("CheckSecondsOnIcons"));
    auto& timers = Named<QComboBox>(QStringLiteral("ComboTimers"));
    EXPECT_EQ(timers.currentText(), QStringLiteral("Graphic"));
    EXPECT_EQ(timers.itemText(0), QStringLiteral("Off"));
    EXPECT_EQ(timers.itemText(1), QStringLiteral("Text"));
}

TEST_F(IconOptionsTest, Open_ShowsWhatIsSavedAndSavesNothing) {
    SetSaved("Settings", "KeysOnIcons", "True");
    SetSaved("Settings", "SecondsOnIcons", "True");
    SetSaved("Settings", "SpellTimerMode", "1");
    Open();
    TakeLog();
    ShowTab(8);
    EXPECT_TRUE(IsOn("CheckKeysOnIcons"));
    EXPECT_TRUE(IsOn("CheckSecondsOnIcons"));
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboTimers")).currentIndex(), 1);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(IconOptionsTest, Keys_ClickSavesAndRefreshesThePage) {
    OpenTab();
    Click("CheckKeysOnIcons");
    EXPECT_TRUE(m_state.KeysOnIcons);
    EXPECT_THAT(TakeLog(), ElementsAre("option KeysOnIcons True", "update page"));
    Click("CheckKeysOnIcons");
    EXPECT_FALSE(m_state.KeysOnIcons);
    EXPECT_EQ(Saved("Settings", "KeysOnIcons"), "False");
}

TEST_F(IconOptionsTest, Seconds_ClickSavesAndDrawsTheTimersAnew) {
    OpenTab();
    Click("CheckSecondsOnIcons");
    EXPECT_TRUE(m_state.SecondsOnIcons);
    EXPECT_THAT(TakeLog(), ElementsAre("option SecondsOnIcons True", "timer mode 2"));
}

TEST_F(IconOptionsTest, Timers_ChoiceIsSetAndSaved) {
    OpenTab();
    auto& timers = Named<QComboBox>(QStringLiteral("ComboTimers"));
    for (const int mode : {0, 1, 2}) {
        Pick(timers, mode);
        EXPECT_EQ(m_state.SpellTimerMode, mode);
        EXPECT_THAT(TakeLog(), ElementsAre("timer mode " + std::to_string(mode),
                                           "option SpellTimerMode " + std::to_string(mode)));
    }
}

}  // namespace
}  // namespace spellwick
