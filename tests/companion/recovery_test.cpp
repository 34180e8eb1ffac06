// What the program keeps when it is killed, when a save fails, and when a value cannot be read.
#include "store/journal_lines.h"
#include "tests/support/companion_fixture.h"
#include "tests/support/memory_journal_file.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RecoveryTest : public CompanionFixture {
  protected:
    RecoveryTest() { m_journal = &m_journalFile; }

    // The program after a kill: nothing of it is left but store and journal.
    void StartAgain() {
        m_state = SharedState();
        TakeHints();
        Make();
        Start();
        Program().ShowStartHints();
    }
    void Note() {
        Guarded("noting what has changed", [&] { Program().NoteChanges(); });
    }
    void SetCounter(int reagent, const std::string& text) {
        EnterCounter(reagent, text);
        Leave();
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const JournalEntry& entry : ReadJournal(m_journalFile.content)) {
            lines.push_back(entry.key + "=" + entry.value);
        }
        return lines;
    }
    // The title of the client changes, and the watch sees it.
    void SwitchTo(const char* title) {
        OpenClient(title);
        Tick(1);
    }

    MemoryJournalFile m_journalFile;
};

const Box kFullDisk{.text = "The disk is full.",
                    .icon = BoxIcon::kExclamation,
                    .buttons = BoxButtons::kTryAgainOrClose};
const Box kFullDiskAtTheEnd{.text = "The disk is full.",
                            .icon = BoxIcon::kExclamation,
                            .buttons = BoxButtons::kTryAgainOrEnd};

TEST_F(RecoveryTest, Killed_TheNextStartHasTheCountersSaysSoAndSaves) {
    StartWithMira();
    m_clock.time = 1'000'071'600;  // 21:40
    SetCounter(1, "44");
    Note();
    m_clock.time += 3600;
    StartAgain();
    EXPECT_EQ(Text("Reagent", 1), "44");
    EXPECT_THAT(TakeHints(), ElementsAre("Recovered 1 change of Mira Talon from 21:40"));
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    EXPECT_EQ(m_journalFile.content, "");
    StartAgain();
    EXPECT_THAT(TakeHints(), IsEmpty()) << "said once";
}

TEST_F(RecoveryTest, KilledYesterday_TheHintHasTheDate) {
    StartWithMira();
    m_clock.time = 1'000'071'600;
    SetCounter(1, "44");
    SetCounter(2, "43");
    Note();
    m_clock.time += 86400;
    StartAgain();
    EXPECT_THAT(TakeHints(),
                ElementsAre("Recovered 2 changes of Mira Talon from 2001-09-09 21:40"));
}

TEST_F(RecoveryTest, KilledWithAnotherCharacterThanTheSavedOne_RecoversThatCharacter) {
    StartWithMira();
    SwitchTo(kBran);
    SetCounter(1, "12");
    Note();
    StartAgain();
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_THAT(TakeHints(), ElementsAre(HasSubstr("of Bran from")));
    EXPECT_EQ(Saved(kBran, "MR 0"), "12");
    SwitchTo(kBran);
    EXPECT_EQ(Text("Reagent", 1), "12");
}

TEST_F(RecoveryTest, RegularEnd_LeavesAnEmptyJournal) {
    StartWithMira();
    SetCounter(1, "44");
    Note();
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
    Program().End(EndCause::kUser);
    EXPECT_EQ(m_journalFile.content, "");
    EXPECT_EQ(TakeLog().back(), "end 0");
}

TEST_F(RecoveryTest, NothingIsNotedBeforeTheStartIsOver) {
    SavePlayer(kMira);
    Make();
    Note();
    EXPECT_EQ(m_journalFile.writes, 0);
}

TEST_F(RecoveryTest, SaveThatFailsAtASwitch_IsNotForgotten) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    SwitchTo(kBran);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kFullDisk));
    EXPECT_EQ(State().CurrentPlayerName, kBran);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
    m_store.FailWith("");
    SwitchTo(kMira);
    EXPECT_EQ(Saved(kMira, "MR 0"), "44") << "it went out with Bran's save";
    EXPECT_EQ(Text("Reagent", 1), "44");
    EXPECT_EQ(m_journalFile.content, "");
}

TEST_F(RecoveryTest, TryAgainAtASwitch_SavesTheCharacterThatLeft) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    m_boxes.answers = {BoxAnswer::kTryAgain, BoxAnswer::kTryAgain};
    m_boxes.whileStanding = [&] {
        // The watch goes on behind the box and changes the character.
        Tick(1);
        m_boxes.whileStanding = [&] { m_store.FailWith(""); };
    };
    SwitchTo(kBran);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kFullDisk, kFullDisk));
    EXPECT_EQ(State().CurrentPlayerName, kBran);
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    EXPECT_EQ(Saved(kBran, "MR 0"), "(none)") << "Bran's turn has not come";
}

TEST_F(RecoveryTest, EndThatCannotSave_AsksUntilItCan) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    m_boxes.answers = {BoxAnswer::kTryAgain, BoxAnswer::kTryAgain};
    m_boxes.whileStanding = [&] { m_boxes.whileStanding = [&] { m_store.FailWith(""); }; };
    Program().End(EndCause::kUser);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kFullDiskAtTheEnd, kFullDiskAtTheEnd));
    EXPECT_EQ(TakeLog().back(), "end 0");
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
}

TEST_F(RecoveryTest, EndWithoutSaving_KeepsTheJournalAndSaysSoByItsCode) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    Program().End(EndCause::kUser);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kFullDiskAtTheEnd));
    EXPECT_EQ(TakeLog().back(), "end 3");
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
    EXPECT_GT(m_journalFile.syncs, 0);
    m_store.FailWith("");
    StartAgain();
    EXPECT_EQ(Text("Reagent", 1), "44");
    EXPECT_EQ(TakeHints().size(), 1U);
}

TEST_F(RecoveryTest, SignalWhileTheEndAsks_EndsWithoutAnAnswer) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    std::vector<std::string> behindTheBox;
    m_boxes.whileStanding = [&] {
        TakeLog();
        Program().End(EndCause::kSystem);
        behindTheBox = TakeLog();
    };
    Program().End(EndCause::kUser);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(behindTheBox, ElementsAre("end 3"));
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
}

TEST_F(RecoveryTest, RecoveredInAStoreThatCannotBeWritten_CountsAndStaysInTheJournal) {
    StartWithMira();
    SetCounter(1, "44");
    Note();
    m_store.FailWith("The disk is full.");
    StartAgain();
    EXPECT_EQ(TakeHints().size(), 1U);
    EXPECT_EQ(Text("Reagent", 1), "44");
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
}

TEST_F(RecoveryTest, EndBySignalThatCannotSave_AsksNothing) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    testing::internal::CaptureStderr();
    Program().End(EndCause::kSystem);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_THAT(log, HasSubstr("The disk is full."));
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_EQ(TakeLog().back(), "end 3");
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
}

TEST_F(RecoveryTest, EndBeforeTheStartIsOver_SavesNothing) {
    SavePlayer(kMira);
    Make();
    Program().End(EndCause::kSystem);
    EXPECT_EQ(TakeLog().back(), "end 0");
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(RecoveryTest, LogOff_SavesAndGoesOn) {
    StartWithMira();
    SetCounter(1, "44");
    Program().SaveForLogOff();
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    EXPECT_EQ(Saved("Settings", "WindowTop"), "1500");
    EXPECT_THAT(TakeLog(), IsEmpty()) << "the window stays";
    SetCounter(1, "43");
    m_store.FailWith("The disk is full.");
    Program().SaveForLogOff();
    EXPECT_THAT(TakeBoxes(), IsEmpty()) << "nobody would answer";
    EXPECT_THAT(Lines(), ElementsAre("MR 0=43"));
}

TEST_F(RecoveryTest, DisplayLost_SavesAtOnce) {
    StartWithMira();
    SetCounter(1, "44");
    Program().SaveWithoutDisplay();
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    EXPECT_EQ(Saved("Settings", "CurrentPlayerName"), kMira);
    EXPECT_THAT(TakeLog(), IsEmpty()) << "nothing is asked of the windows but their place";
}

TEST_F(RecoveryTest, DisplayAndStoreLost_KeepsTheJournal) {
    StartWithMira();
    SetCounter(1, "44");
    m_store.FailWith("The disk is full.");
    Program().SaveWithoutDisplay();
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44"));
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(RecoveryTest, LoadThatDidNotEnd_IsNeverWritten) {
    StartWithMira();
    SetCounter(1, "44");
    SavePlayer(kBran);
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kBran, "User1", "abc");
    SwitchTo(kBran);
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kTypeMismatch,
                                                            "watching the game client"}));
    Note();
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_TRUE(Program().SaveAfterFailure());
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
    EXPECT_EQ(Saved(kBran, "Magery"), "100") << "Mira's and the loaded values are not mixed";
    EXPECT_EQ(Saved(kBran, "User1"), "abc");
    EXPECT_EQ(Saved(kBran, "User2"), "(none)");
    Program().End(EndCause::kUser);
    EXPECT_EQ(Saved(kBran, "User1"), "abc");
    EXPECT_EQ(Saved(kBran, "MR 0"), "50");
}

TEST_F(RecoveryTest, ValueThatCannotBeReadAtTheStart_IsNamedAndTheStoreCopiedBeforeItsSave) {
    SavePlayer(kMira);
    SetSaved(kMira, "User3", "abc");
    StartAgain();
    EXPECT_THAT(TakeHints(),
                ElementsAre("The saved value \"User3\" of Mira Talon cannot be read, nor "
                            "is what comes after it. The settings are copied before they "
                            "are saved again."));
    EXPECT_THAT(m_store.Copies(), IsEmpty()) << "nothing was saved yet";
    SetCounter(1, "44");
    Note();
    EXPECT_THAT(Lines(), ElementsAre("MR 0=44")) << "counted all the same";
    Program().End(EndCause::kUser);
    ASSERT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_store.Copies()[0].at(kMira).at("Magery"), "100");
    EXPECT_EQ(m_store.Copies()[0].at(kMira).at("User3"), "abc");
    EXPECT_EQ(Saved(kMira, "Magery"), "0");
}

TEST_F(RecoveryTest, GlobalValueThatCannotBeRead_IsNamedWithoutACharacter) {
    SavePlayer(kMira);
    SetSaved("Settings", "BM price", "abc");
    StartAgain();
    EXPECT_THAT(TakeHints(), ElementsAre(HasSubstr("The saved value \"BM price\" cannot be read")));
    Program().End(EndCause::kUser);
    ASSERT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_store.Copies()[0].at("Settings").at("BM price"), "abc");
}

TEST_F(RecoveryTest, RecoveredBehindAnUnreadableValue_IsSavedBeforeTheCopy) {
    SavePlayer(kMira);
    SetSaved(kMira, "User3", "abc");
    m_journalFile.content = std::string(kJournalHead) + JournalLine({1, kMira, "Magery", "98"});
    StartAgain();
    EXPECT_EQ(Saved(kMira, "Magery"), "98");
    EXPECT_EQ(TakeHints().size(), 2U);
    Program().End(EndCause::kUser);
    ASSERT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_store.Copies()[0].at(kMira).at("Magery"), "98");
}

}  // namespace
}  // namespace spellwick
