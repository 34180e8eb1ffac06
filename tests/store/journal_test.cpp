#include "store/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/journal_lines.h"
#include "store/journalled_store.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/memory_journal_file.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/set_clock.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const kMira = "Ultima Online - Mira Talon (Atlantic)";
const char* const kBran = "Ultima Online - Bran (Oak Hill)";

class JournalTest : public testing::Test {
  protected:
    JournalTest() { m_state = StartedState(); }

    void Begin(const std::string& player) { m_journal.Begin(PlayerChanges(m_state, player)); }
    void Note(const std::string& player) { m_journal.Note(PlayerChanges(m_state, player)); }
    void Count(i16 count) { m_state.ReagentStock(1, 0) = count; }

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const JournalEntry& entry : ReadJournal(m_file.content)) {
            lines.push_back(entry.key + "=" + entry.value);
        }
        return lines;
    }
    StoreResult SavePlayer(const std::string& player) {
        return m_saving.Apply(PlayerChanges(m_state, player));
    }
    std::string Saved(const std::string& player, const std::string& key) const {
        return m_store.Read(player, key).value_or("(none)");
    }

    SharedState m_state;
    SetClock m_clock;
    MemoryJournalFile m_file;
    Journal m_journal{&m_file, m_clock};
    MemorySettingsStore m_store;
    JournalledStore m_saving{m_store, m_journal, m_clock};
};

TEST_F(JournalTest, NothingChanged_WritesNothing) {
    Begin(kMira);
    for (int i = 0; i < 20; ++i) {
        Note(kMira);
    }
    EXPECT_EQ(m_file.writes, 0);
    EXPECT_EQ(m_file.syncs, 0);
}

TEST_F(JournalTest, EachChange_IsOneLineWithItsTime) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    m_clock.time += 60;
    Count(48);
    m_state.CurrentTithing = 300;
    m_state.Spellbook(5) = 0;
    m_state.BagName(3) = "Trip";
    m_state.Spells(13).SpellText = "Hello";
    m_state.Magery = 99;
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49", "MR 0=48", "Bag 3=Trip", "CurrentTithing= 300",
                                     "Spellbook 5=0", "Magery=99", "SpellText 1 5=Hello"));
    const auto entries = ReadJournal(m_file.content);
    EXPECT_EQ(entries.front(), (JournalEntry{1'000'000'000, kMira, "MR 0", "49"}));
    EXPECT_EQ(entries.back().time, 1'000'000'060);
    EXPECT_EQ(m_file.writes, 2);
}

TEST_F(JournalTest, PlayerWhoseLoadDidNotBeginHere_IsNotNoted) {
    Begin(kMira);
    Count(49);
    Note(kBran);
    m_journal.Pause();
    Note(kMira);
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(JournalTest, ChangedFile_IsSyncedWithinFiveSecondsAndNoMoreAtRest) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    int notes = 0;
    while (m_file.syncs == 0 && notes < 100) {
        Note(kMira);
        ++notes;
    }
    EXPECT_LE(notes, 9) << "of half a second each";
    for (int i = 0; i < 50; ++i) {
        Note(kMira);
    }
    EXPECT_EQ(m_file.syncs, 1);
}

// Syncs in the background, and is done when the test says so.
class UnhurriedJournalFile : public MemoryJournalFile {
  public:
    bool SyncByAndBy() override {
        ++asked;
        return done;
    }

    bool done = false;
    int asked = 0;
};

TEST_F(JournalTest, FileThatSyncsInTheBackground_IsAskedUntilItIsDoneAndWaitedForAtTheEnd) {
    UnhurriedJournalFile file;
    Journal journal(&file, m_clock);
    journal.Begin(PlayerChanges(m_state, kMira));
    Count(49);
    const auto note = [&](int notes) {
        for (int i = 0; i < notes; ++i) {
            journal.Note(PlayerChanges(m_state, kMira));
        }
    };
    note(9);
    EXPECT_EQ(file.asked, 1);
    note(80);
    EXPECT_EQ(file.asked, 11) << "every four seconds";
    EXPECT_EQ(file.syncs, 0);
    journal.Sync();
    EXPECT_EQ(file.syncs, 1);
    note(80);
    EXPECT_EQ(file.asked, 11) << "all is on the disk";
    Count(48);
    file.done = true;
    note(80);
    EXPECT_EQ(file.asked, 12);
}

TEST_F(JournalTest, SaveThatWorked_EmptiesTheFileAndBeginsAnew) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    Count(48);
    ASSERT_TRUE(SavePlayer(kMira).ok);
    EXPECT_EQ(m_file.content, "");
    Note(kMira);
    EXPECT_EQ(m_file.content, "") << "48 is saved";
    Count(47);
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=47"));
}

TEST_F(JournalTest, OptionSaved_WritesThatKeyAloneAndKeepsTheJournal) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    m_store.ForgetBatches();
    ASSERT_TRUE(m_saving.Apply({{"Settings", "Pictures", "1"}}).ok);
    ASSERT_EQ(m_store.Batches().size(), 1U);
    EXPECT_EQ(m_store.Batches().front(), (SettingChanges{{"Settings", "Pictures", "1"}}));
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49"));
}

TEST_F(JournalTest, FailedSave_IsKeptThroughAChangeOfPlayerAndGoesOutWithTheNext) {
    Begin(kMira);
    Count(49);
    m_store.FailWith("The disk is full.");
    EXPECT_FALSE(SavePlayer(kMira).ok);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49"));
    Count(10);
    Begin(kBran);
    EXPECT_EQ(Saved(kMira, "MR 0"), "(none)");
    EXPECT_EQ(m_saving.ReadSection(kMira).at("MR 0"), "49") << "loaded again before it is saved";
    EXPECT_EQ(m_saving.Read(kMira, "MR 0"), "49");
    m_store.FailWith("");
    Count(11);
    Note(kBran);
    ASSERT_TRUE(SavePlayer(kBran).ok);
    EXPECT_EQ(Saved(kMira, "MR 0"), "49");
    EXPECT_EQ(Saved(kBran, "MR 0"), "11");
    EXPECT_EQ(m_file.content, "");
    EXPECT_THAT(m_journal.Unsaved(), IsEmpty());
}

TEST_F(JournalTest, TwoFailedSavesOfOnePlayer_KeepTheLatestValues) {
    Begin(kMira);
    Count(49);
    m_store.FailWith("The disk is full.");
    EXPECT_FALSE(SavePlayer(kMira).ok);
    Count(48);
    EXPECT_FALSE(SavePlayer(kMira).ok);
    m_store.FailWith("");
    ASSERT_TRUE(m_saving.SaveDue().ok);
    EXPECT_EQ(Saved(kMira, "MR 0"), "48");
    EXPECT_EQ(m_file.content, "");
}

TEST_F(JournalTest, NothingDue_SaveDueWritesNothing) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    m_store.ForgetBatches();
    EXPECT_TRUE(m_saving.SaveDue().ok);
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(JournalTest, Recovered_CountsTheValuesThatDifferAndSavesThem) {
    m_store.Put(kMira, "MR 0", "50");
    m_store.Put(kMira, "SA 0", "7");
    m_file.content =
        std::string(kJournalHead) + JournalLine({100, kMira, "MR 0", "49"}) +
        JournalLine({200, kMira, "MR 0", "48"}) + JournalLine({300, kBran, "Magery", "80"}) +
        JournalLine({400, kMira, "SA 0", "7"}) + JournalLine({500, kMira, "Bag 1", "x\ty"});
    const auto found = m_saving.Recover();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].section, kBran);
    EXPECT_EQ(found[0].count, 1);
    EXPECT_EQ(found[1].section, kMira);
    EXPECT_EQ(found[1].count, 2) << "MR 0 and Bag 1";
    EXPECT_EQ(found[1].time, 500);
    EXPECT_EQ(m_saving.ReadSection(kMira).at("MR 0"), "48");
    ASSERT_TRUE(m_saving.SaveDue().ok);
    EXPECT_EQ(Saved(kMira, "MR 0"), "48");
    EXPECT_EQ(Saved(kMira, "Bag 1"), "x\ty");
    EXPECT_EQ(Saved(kBran, "Magery"), "80");
    EXPECT_EQ(m_file.content, "");
}

TEST_F(JournalTest, RecoveredAndNotSavedYet_StaysInTheFileThroughOtherChanges) {
    m_file.content = std::string(kJournalHead) + JournalLine({100, kMira, "MR 0", "49"}) + "cut";
    m_store.FailWith("The disk is full.");
    ASSERT_EQ(m_saving.Recover().size(), 1U);
    EXPECT_FALSE(m_saving.SaveDue().ok);
    Begin(kBran);
    Count(3);
    Note(kBran);
    Count(2);
    Note(kBran);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49", "MR 0=3", "MR 0=2"));
}

TEST_F(JournalTest, ValuesThatNoLoadTakes_ArePassedOver) {
    m_file.content =
        std::string(kJournalHead) + JournalLine({1, kMira, "User1", "abc"}) +
        JournalLine({1, kMira, "MR 0", "99999"}) + JournalLine({1, kMira, "Unknown", "1"}) +
        JournalLine({1, "Settings", "Magery", "1"}) + JournalLine({1, "", "Magery", "1"}) +
        JournalLine({1, kMira, "CurrentTithing", "99999999999"}) +
        JournalLine({1, kMira, "User2", "4"});
    const auto found = m_saving.Recover();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].count, 1);
    EXPECT_THAT(m_journal.Unsaved(), ElementsAre(SettingChange{kMira, "User2", "4"}));
}

TEST_F(JournalTest, FileThatHoldsNothingOfUse_ChangesNothing) {
    for (const std::string content : {"", "foreign", "spellwick journal 9\nx\n"}) {
        m_file.content = content;
        EXPECT_THAT(m_saving.Recover(), IsEmpty());
        EXPECT_TRUE(m_saving.SaveDue().ok);
        EXPECT_EQ(m_file.content, content);
    }
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    Begin(kMira);
    Count(49);
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49")) << "the next change is not behind the fault";
}

TEST_F(JournalTest, AppendThatFailed_IsWrittenAnewByTheNextNote) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    m_file.fails = true;
    Count(48);
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49")) << "and half a line";
    m_file.fails = false;
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=48"));
    Count(47);
    Note(kMira);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=48", "MR 0=47"));
}

TEST_F(JournalTest, FileThatCouldNotBeEmptied_IsEmptiedByTheNextSave) {
    Begin(kMira);
    Count(49);
    Note(kMira);
    m_file.fails = true;
    ASSERT_TRUE(SavePlayer(kMira).ok);
    EXPECT_THAT(Lines(), ElementsAre("MR 0=49"));
    m_file.fails = false;
    ASSERT_TRUE(SavePlayer(kMira).ok);
    EXPECT_EQ(m_file.content, "");
}

TEST_F(JournalTest, LongFile_IsWrittenAnewWithTheLatestValues) {
    Begin(kMira);
    std::size_t longest = 0;
    for (int i = 0; i < 200; ++i) {
        m_state.SpellTextSuffix = std::string(20'000, static_cast<char>('a' + i % 20));
        Note(kMira);
        longest = std::max(longest, m_file.content.size());
    }
    EXPECT_LT(longest, 1'100'000U);
    EXPECT_EQ(ReadJournal(m_file.content).back().value, m_state.SpellTextSuffix);
}

TEST_F(JournalTest, StoreThatDoesNotLast_HasNoFile) {
    Journal journal(nullptr, m_clock);
    JournalledStore saving(m_store, journal, m_clock);
    EXPECT_THAT(saving.Recover(), IsEmpty());
    journal.Begin(PlayerChanges(m_state, kMira));
    Count(49);
    m_store.FailWith("The disk is full.");
    EXPECT_FALSE(saving.Apply(PlayerChanges(m_state, kMira)).ok);
    EXPECT_EQ(saving.ReadSection(kMira).at("MR 0"), "49");
}

TEST_F(JournalTest, CopyBeforeWriting_CopiesOnceBeforeTheFirstWrite) {
    m_store.Put(kMira, "MR 0", "50");
    m_saving.CopyBeforeWriting();
    EXPECT_TRUE(m_saving.SaveDue().ok);
    EXPECT_THAT(m_store.Copies(), IsEmpty()) << "nothing was written";
    m_store.FailCopiesWith("The disk is full.");
    EXPECT_EQ(SavePlayer(kMira).trouble, "The disk is full.");
    EXPECT_EQ(Saved(kMira, "MR 0"), "50") << "nothing is written without the copy";
    m_store.FailCopiesWith("");
    ASSERT_TRUE(SavePlayer(kMira).ok);
    ASSERT_TRUE(SavePlayer(kMira).ok);
    ASSERT_EQ(m_store.Copies().size(), 1U);
    EXPECT_EQ(m_store.Copies()[0].at(kMira).at("MR 0"), "50");
    EXPECT_EQ(Saved(kMira, "MR 0"), "0");
}

}  // namespace
}  // namespace spellwick
