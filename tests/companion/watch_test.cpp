// The watch on the client's window and the switch of the player that follows its title.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kThirdDawn = "Ultima Online Third Dawn";

class WatchTest : public CompanionFixture {
  protected:
    void SeeClient(const std::string& title) {
        OpenClient(title);
        Tick(1);
    }
    std::string Caption() const { return Shown().caption; }
};

TEST_F(WatchTest, Tick_SearchesBothClassesInOrder) {
    struct Row {
        const char* name = nullptr;
        std::vector<RecordingClientWindows::Window> windows;
        WindowHandle found = 0;
        std::vector<std::string> log;
    };
    StartWithMira();
    for (const Row& row :
         {Row{"the first class",
              {{7, "Ultima Online", kMira}},
              7,
              {"find Ultima Online", "find assist"}},
          Row{"the second class",
              {{8, kThirdDawn, kMira}},
              8,
              {"find Ultima Online", "find Ultima Online Third Dawn", "find assist"}},
          Row{"both",
              {{8, kThirdDawn, kMira}, {7, "Ultima Online", kMira}},
              7,
              {"find Ultima Online", "find assist"}},
          Row{"two of the first class",
              {{9, "Ultima Online", kMira}, {7, "Ultima Online", kBran}},
              9,
              {"find Ultima Online", "find assist"}},
          Row{"a class in other letters",
              {{7, "ultima online", kMira}},
              0,
              {"find Ultima Online", "find Ultima Online Third Dawn", "find assist"}},
          Row{"none",
              {},
              0,
              {"find Ultima Online", "find Ultima Online Third Dawn", "find assist"}}}) {
        SCOPED_TRACE(row.name);
        m_clients.windows = row.windows;
        TakeLog();
        Tick(1);
        EXPECT_EQ(State().ClientWindow, row.found);
        EXPECT_EQ(TakeLog(), row.log);
    }
}

TEST_F(WatchTest, Tick_SameTitle_TouchesNoProfile) {
    StartWithMira();
    const std::size_t reads = m_store.SectionsRead().size();
    Program().TypeCounter(1, "7");
    Tick(1);
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    EXPECT_EQ(m_store.SectionsRead().size(), reads);
    EXPECT_EQ(Text("Reagent", 1), "7");
}

TEST_F(WatchTest, Tick_NewTitle_SavesTheFormerPlayerBeforeItReadsTheNext) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "MR 0", "9");
    SetSaved(kBran, "Bag 0", "Sack");
    EnterCounter(1, "44");
    Leave();
    const std::size_t reads = m_store.SectionsRead().size();
    TakeLog();
    SeeClient(kBran);
    // Mira's stock is in the store, and Bran's section is read once, after it.
    ASSERT_THAT(m_store.Batches(), SizeIs(1));
    EXPECT_THAT(m_store.Batches()[0], Each(Field(&SettingChange::section, kMira)));
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    ASSERT_EQ(m_store.SectionsRead().size(), reads + 1);
    EXPECT_EQ(m_store.SectionsRead().back(), kBran);
    EXPECT_EQ(Text("Reagent", 1), "9");
    EXPECT_EQ(Shown().bags.at(0), "Sack");
    EXPECT_EQ(Shown().selectedBag, 0);
    EXPECT_EQ(State().CurrentPlayerName, kBran);
    EXPECT_EQ(Caption(), CaptionText("Bran", "Oak Hill"));
    EXPECT_THAT(TakeLog(), ElementsAre("find Ultima Online", "update chance", "find assist"));
}

TEST_F(WatchTest, Tick_NewTitleFirstPlayerEver_SavesNothing) {
    Make();
    Start();
    SeeClient(kMira);
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    // The defaults of a title never seen.
    EXPECT_EQ(State().BagName(0), "Red Backpack");
    EXPECT_EQ(State().Spellbook(0), 1);
    EXPECT_EQ(State().SendSpellText, 1);
    EXPECT_EQ(State().SpellTextSuffix, "... Alakazam ...");
    EXPECT_EQ(State().RightReagentBag, 1);
    EXPECT_EQ(Text("LabelTithes"), "0");
}

TEST_F(WatchTest, Tick_TitlesThatDifferInCase_AreTwoPlayers) {
    StartWithMira();
    SeeClient("Ultima Online - mira talon (Atlantic)");
    EXPECT_EQ(State().CurrentPlayerName, "Ultima Online - mira talon (Atlantic)");
    EXPECT_THAT(m_store.Batches(), SizeIs(1));
}

TEST_F(WatchTest, Tick_ClientGone_KeepsThePlayerAndSavesNothing) {
    StartWithMira();
    SeeClient("");
    EXPECT_EQ(State().ClientTitle, "Ultima Online - ? (?)");
    EXPECT_EQ(State().CharacterName, "?");
    EXPECT_EQ(State().ServerName, "?");
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    // The same client comes back: no reload.
    Program().TypeCounter(1, "7");
    SeeClient(kMira);
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    EXPECT_EQ(State().ServerName, "Atlantic");
}

TEST_F(WatchTest, Tick_AtTheLoginScreenTheFormerPlayerIsSavedAtEachTick) {
    StartWithMira();
    SeeClient("");
    m_store.ForgetBatches();
    OpenClient("Ultima Online");
    for (std::size_t tick = 1; tick <= 3; ++tick) {
        Tick(1);
        EXPECT_THAT(m_store.Batches(), SizeIs(tick));
        EXPECT_EQ(State().CurrentPlayerName, kMira);
    }
    SeeClient(kMira);
    EXPECT_THAT(m_store.Batches(), SizeIs(3));
}

TEST_F(WatchTest, Tick_LogoutMakesTheBareTitleAPlayer) {
    // With a server from before, the login screen's title gets a profile of its own.
    StartWithMira();
    SeeClient("Ultima Online");
    EXPECT_EQ(State().CurrentPlayerName, "Ultima Online");
    EXPECT_EQ(State().CharacterName, "Mira Talon");
    EXPECT_EQ(State().ServerName, "Atlantic");
    EXPECT_EQ(Text("Reagent", 1), "0");
    EXPECT_THAT(m_store.Batches(), SizeIs(1));
    SeeClient(kMira);
    EXPECT_EQ(Text("Reagent", 1), "50");
}

TEST_F(WatchTest, Tick_FirstSixteenCharactersAreSkippedUnread) {
    StartWithMira();
    SeeClient("Quite another, aYsolde (Oak Hill)");
    EXPECT_EQ(State().CharacterName, "Ysolde");
    EXPECT_EQ(State().ServerName, "Oak Hill");
    EXPECT_EQ(State().CurrentPlayerName, "Quite another, aYsolde (Oak Hill)");
}

TEST_F(WatchTest, Tick_Titles_AreTakenApart) {
    struct Row {
        const char* name = nullptr;
        std::string title;
        std::string character;
        std::string server;
    };
    StartWithMira();
    for (const Row& row : {
             Row{"blanks in either part", "Ultima Online - Mira van Oak (Oak Hill)", "Mira van Oak",
                 "Oak Hill"},
             Row{"no blank before the bracket", "Ultima Online - Bran(Atlantic)", "Bra",
                 "Atlantic"},
             Row{"bracket in second place", "Ultima Online - x(Atlantic)", "", "Atlantic"},
             Row{"no closing bracket", "Ultima Online - Bran (Atlantic, east", "Bran",
                 "Atlantic, east"},
             Row{"text behind the bracket", "Ultima Online - Bran (Atlantic) more (x)", "Bran",
                 "Atlantic"},
             Row{"an umlaut is one character", "Ultima Online - Jörg (Zürich)", "Jörg", "Zürich"},
             Row{"right to left", "Ultima Online - מירה (אטלנטי)", "מירה", "אטלנטי"},
             Row{"emoji", "Ultima Online - 🧙 (🌊)", "🧙", "🌊"},
             Row{"300 characters", "Ultima Online - " + std::string(280, 'M') + " (S)",
                 std::string(280, 'M'), "S"},
             Row{"5000 characters", "Ultima Online - " + std::string(5000, 'M') + " (S)",
                 std::string(5000, 'M'), "S"},
         }) {
        SCOPED_TRACE(row.name);
        SeeClient(row.title);
        EXPECT_EQ(State().ClientTitle, row.title);
        EXPECT_EQ(State().CharacterName, row.character);
        EXPECT_EQ(State().ServerName, row.server);
        EXPECT_EQ(State().CurrentPlayerName, row.title);
        EXPECT_EQ(Caption(), CaptionText(row.character, row.server));
    }
}

TEST_F(WatchTest, Tick_NoServerOrAQuestionMark_DoesNotSwitch) {
    StartWithMira();
    for (const char* title : {"Ultima Online - Bran ()", "Ultima Online - Bran (?)"}) {
        SeeClient(title);
        EXPECT_EQ(State().CurrentPlayerName, kMira) << title;
    }
}

TEST_F(WatchTest, Tick_BracketInPlaceOfTheCharacter_IsAnUncaughtFailure) {
    for (const char* title : {"Ultima Online - (Atlantic)", "Ultima Online - ("}) {
        StartWithMira();
        SeeClient(title);
        EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kInvalidCall,
                                                                "watching the game client"}));
        EXPECT_EQ(State().CurrentPlayerName, kMira);
    }
}

TEST_F(WatchTest, Tick_ShortAndEmptyTitles_KeepTheNames) {
    StartWithMira();
    for (const char* title : {"Ultima Online", "()", "Ultima Online - "}) {
        SeeClient(title);
        EXPECT_EQ(State().CharacterName, "Mira Talon") << title;
    }
}

TEST_F(WatchTest, Tick_SavedNumberOfTheNewPlayerIsNone_IsAnUncaughtFailure) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "Magery", "much");
    SeeClient(kBran);
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kTypeMismatch,
                                                            "watching the game client"}));
}

TEST_F(WatchTest, Tick_SaveFails_OneBoxForOneTrouble) {
    StartWithMira();
    SeeClient("");
    m_store.FailWith("The settings cannot be saved: the disk is full.");
    OpenClient("Ultima Online");
    for (int tick = 0; tick < 3; ++tick) {
        Tick(1);
    }
    const Box box{.text = "The settings cannot be saved: the disk is full.",
                  .icon = BoxIcon::kExclamation,
                  .buttons = BoxButtons::kTryAgainOrClose};
    EXPECT_THAT(TakeBoxes(), ElementsAre(box));
    // It works again and fails anew: a new trouble.
    m_store.FailWith("");
    Tick(1);
    m_store.FailWith("The settings cannot be saved: the disk is full.");
    Tick(1);
    EXPECT_THAT(TakeBoxes(), ElementsAre(box));
    EXPECT_EQ(State().CurrentPlayerName, kMira);
}

TEST_F(WatchTest, Tick_FallsIntoTheSwitchOfAnotherTick_EndsWithTheLastTitle) {
    StartWithMira();
    m_parts.hooked = "update chance";
    m_parts.hook = [&] {
        m_parts.hooked.clear();
        SeeClient("Ultima Online - Ysolde (Oak Hill)");
    };
    SeeClient(kBran);
    EXPECT_EQ(State().CurrentPlayerName, "Ultima Online - Ysolde (Oak Hill)");
}

}  // namespace
}  // namespace spellwick
