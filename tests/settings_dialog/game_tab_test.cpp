// The Game tab.
#include <QAccessible>
#include <QTreeWidget>
#include <fstream>

#include "link/client_watch.h"
#include "tests/support/settings_fixture.h"
#include "widgets/texts.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class GameTabTest : public SettingsFixture {
  protected:
    void OpenTab() { OpenAt(8); }
    void ShowWindows() {
        m_game.LoadTable();
        m_clients.windows = {
            {.handle = 8, .windowClass = "ClassicUO", .title = "Bran - My Server 2"},
            {.handle = 9, .windowClass = "XTerm", .title = "a shell"}};
    }
    void Choose(int row) {
        auto& list = Named<QTreeWidget>("ListWindows");
        ClickSpot(*list.viewport(), list.visualItemRect(list.topLevelItem(row)).center());
    }
    std::string SpokenName(const char* label) {
        return ToText(
            QAccessible::queryAccessibleInterface(&Named(label))->text(QAccessible::Name));
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

TEST_F(GameTabTest, Tool_SaysWhatTheLinkDoes) {
    OpenTab();
    EXPECT_EQ(Text("LabelTool"), "No assist tool is running.");
    EXPECT_TRUE(Named("LabelTool").isVisible());
}

TEST_F(GameTabTest, Windows_AreListedWithClassAndTitle) {
    ShowWindows();
    OpenTab();
    auto& list = Named<QTreeWidget>("ListWindows");
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(0), "ClassicUO");
    EXPECT_EQ(list.topLevelItem(0)->text(1), "Bran - My Server 2");
    EXPECT_EQ(FocusName(), "ListWindows");
    EXPECT_EQ(Text("LabelGame"),
              "No game is found. 1 window of class ClassicUO, its title of no known form.");
    EXPECT_FALSE(Named("LabelNotice").isVisible());
    EXPECT_FALSE(Named("CommandMyGame").isEnabled());
    m_clients.windows.clear();
    Click("CommandLook");
    EXPECT_EQ(list.topLevelItemCount(), 0);
    EXPECT_EQ(Text("LabelGame"), "No game is found. No window is of a known client's class.");
    EXPECT_EQ(SpokenName("LabelGame"), Text("LabelGame"));
    EXPECT_EQ(SpokenName("LabelTool"), Text("LabelTool"));
}

TEST_F(GameTabTest, ChosenWindow_ProposesARow_WhichIsWrittenAsItIsEdited) {
    ShowWindows();
    OpenTab();
    Choose(0);
    EXPECT_EQ(Text("TextRowName"), "My game");
    EXPECT_EQ(Text("TextRowClass"), "ClassicUO");
    EXPECT_EQ(Text("TextRowTitle"), "{name} - My Server {any}");
    EXPECT_FALSE(Named<QCheckBox>("CheckRowEnter").isChecked());
    Enter(Named<QLineEdit>("TextRowShard"), "Oak Hill");
    Click("CommandMyGame");
    ASSERT_EQ(m_translated.Clients().size(), 5U);
    EXPECT_EQ(m_translated.Clients()[0].name, "My game");
    EXPECT_EQ(m_translated.Clients()[0].shard, "Oak Hill");
    EXPECT_FALSE(m_translated.Clients()[0].enterBehindMacro);
    EXPECT_FALSE(Named("CommandMyGame").isEnabled()) << "no window is chosen any more";
}

TEST_F(GameTabTest, RowWithAFault_IsToldAndNotWritten) {
    ShowWindows();
    OpenTab();
    Choose(0);
    Enter(Named<QLineEdit>("TextRowTitle"), "no field");
    Click("CommandMyGame");
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(testing::Field(&Box::text, testing::HasSubstr("there is no {name}"))));
    EXPECT_EQ(m_translated.Clients().size(), 4U);
    EXPECT_EQ(Text("TextRowTitle"), "no field") << "to be put right";
}

TEST_F(GameTabTest, Table_IsMadeAndOpened) {
    OpenTab();
    m_log.clear();
    Click("CommandTable");
    EXPECT_TRUE(std::filesystem::exists(*m_game.OwnTable()));
    EXPECT_THAT(TakeLog(), testing::Contains(testing::HasSubstr("GameClients.txt")));
}

TEST_F(GameTabTest, SpellTable_OwnCopyIsMadeOnceAndOpened) {
    const std::filesystem::path own = *m_spellTable.Own();
    OpenTab();
    EXPECT_EQ(Text("CommandSpellTable"), "Make a spell table of my own");
    EXPECT_EQ(Text("LabelSpellTable"),
              "The delivered table of spells is read. A copy of your own is read instead from the "
              "next start on.");
    EXPECT_FALSE(std::filesystem::exists(own)) << "before the click";
    Click("CommandSpellTable");
    EXPECT_THAT(TakeLog(), ElementsAre("open SpellData.txt"));
    EXPECT_THAT(m_desktop.opened, ElementsAre(own));
    EXPECT_EQ(m_spellTable.Path(), own);
    EXPECT_EQ(Text("CommandSpellTable"), "Open my spell table");
    EXPECT_EQ(Text("LabelSpellTable"),
              "Each start reads your own table of spells. Without the file it reads the delivered "
              "one.");
    std::ofstream(own) << "edited";
    Click("CommandSpellTable");
    EXPECT_THAT(TakeLog(), ElementsAre("open SpellData.txt"));
    EXPECT_EQ(std::filesystem::file_size(own), 6U) << "what the player has written stands";
}

TEST_F(GameTabTest, SpellTable_TellsWhatIsThereWhenTheTabIsShown) {
    OpenTab();
    std::ofstream(*m_spellTable.Own()) << "made outside";
    ShowTab(0);
    ShowTab(8);
    EXPECT_EQ(Text("CommandSpellTable"), "Open my spell table");
}

TEST_F(GameTabTest, SpellTable_ThatCannotBeOpenedOrMade_IsABox) {
    OpenTab();
    m_desktop.opens = false;
    Click("CommandSpellTable");
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(testing::Field(&Box::text, NotOpened(*m_spellTable.Own()))));
    m_spellTable = SpellTableFile(m_folder.Path() / "nowhere", m_folder.Path() / "settings");
    Click("CommandSpellTable");
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(testing::Field(&Box::text, testing::HasSubstr("SpellData.txt: "))));
}

TEST_F(GameTabTest, SpellTable_WithoutAFolderForTheSettings_HasADeadButton) {
    m_spellTable = SpellTableFile(SPELLWICK_SOURCE_FOLDER "/data", {});
    OpenTab();
    EXPECT_FALSE(Named("CommandSpellTable").isEnabled());
}

TEST_F(GameTabTest, Found_IsSaidAnewWhileTheTabIsShown) {
    m_game.LoadTable();
    OpenTab();
    m_clients.windows = {
        {.handle = 8, .windowClass = "ClassicUO", .title = "Bran - ClassicUO - 1"}};
    ClientWatch watch(m_state, m_translated);
    ASSERT_TRUE(watch.ReadClient());
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return Text("LabelGame") ==
               "ClassicUO\nTitle: Bran - ClassicUO - 1\nCharacter: Bran   Shard: ClassicUO";
    }));
}

TEST_F(GameTabTest, WineTools_NamesWhatItDoes) {
    OpenTab();
    EXPECT_EQ(Text("CheckWineTools"), "Look for assist tools in Wine");
    EXPECT_EQ(Text("LabelWineTools"),
              "Starts spellwick-bridge, which finds the assist tools that run in Wine and carries "
              "their messages to Spellwick and back.");
    EXPECT_TRUE(Named("CheckWineTools").isVisible() && Named("LabelWineTools").isVisible());
}

TEST_F(GameTabTest, WineTools_IsOffUntilItIsSwitchedOn) {
    OpenTab();
    EXPECT_FALSE(Named<QCheckBox>("CheckWineTools").isChecked());
    SetSaved("Settings", "FindWineTools", "True");
    OpenTab();
    EXPECT_TRUE(Named<QCheckBox>("CheckWineTools").isChecked());
    EXPECT_THAT(TakeLog(), ElementsAre())
        << "the start of the program begins the search, not the tab";
}

TEST_F(GameTabTest, WineTools_ClickSavesAndBeginsOrEndsTheSearch) {
    OpenTab();
    Click("CheckWineTools");
    EXPECT_TRUE(m_state.FindWineTools);
    EXPECT_THAT(TakeLog(), ElementsAre("option FindWineTools True", "start wine tools"));
    EXPECT_EQ(Saved("Settings", "FindWineTools"), "True");
    Click("CheckWineTools");
    EXPECT_FALSE(m_state.FindWineTools);
    EXPECT_THAT(TakeLog(), ElementsAre("option FindWineTools False", "stop wine tools"));
    EXPECT_EQ(Saved("Settings", "FindWineTools"), "False");
}

TEST_F(GameTabTest, WineTools_SearchThatFails_SaysWhy) {
    OpenTab();
    m_wineTools.trouble = "spellwick-bridge is not installed.";
    Click("CheckWineTools");
    EXPECT_THAT(Text("LabelWineTools"), testing::EndsWith("\nspellwick-bridge is not installed."));
    // One that fails later is noticed while the tab is open.
    m_wineTools.trouble = "spellwick-bridge has ended.";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Text("LabelWineTools").ends_with("\nspellwick-bridge has ended."); }));
    m_wineTools.trouble.clear();
    Click("CheckWineTools");
    EXPECT_THAT(Text("LabelWineTools"), testing::EndsWith("and back."));
}

}  // namespace
}  // namespace spellwick
