// What the log says of a cast, of the game and of the assist tool.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/casting_fixture.h"
#include "tests/support/recording_log.h"

namespace spellwick {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

TEST_F(CastingTest, Log_Cast_NamesTheKeysAndNeverTheSpokenText) {
    StartWithMira();
    State().SendSpellText = 1;
    State().Spells(0).SpellText = "my own secret words";
    const RecordingLog log;
    Cast(0);
    EXPECT_THAT(log.lines, Contains(Pair(LogTopic::kTyped, "Alt+1, Enter, with a spoken text")));
    EXPECT_THAT(log.lines, Each(Pair(testing::_, Not(HasSubstr("secret")))));
}

TEST_F(CastingTest, Log_Cast_WithoutTexts_IsTheKeysAlone) {
    StartWithMira();
    const RecordingLog log;
    Cast(0);
    EXPECT_THAT(log.lines, Contains(Pair(LogTopic::kTyped, "Alt+1, Enter")));
}

TEST_F(CastingTest, Log_CastWithoutTheKeyboard_SaysThatNothingWasTyped) {
    StartWithMira();
    m_clients.keyboardIsElsewhere = true;
    const RecordingLog log;
    Cast(0);
    EXPECT_THAT(log.lines,
                Contains(Pair(LogTopic::kTyped,
                              "not typed, the game does not have the keyboard: Alt+1, Enter")));
    EXPECT_EQ(TakeHints().size(), 1U);
}

TEST_F(CastingTest, Log_Game_IsNamedOnceForEachTitle) {
    StartWithMira();
    const RecordingLog log;
    Tick(1);
    ASSERT_THAT(log.lines, Contains(Pair(LogTopic::kFound,
                                         AllOf(HasSubstr("window 7"), HasSubstr("Mira Talon")))));
    const std::size_t count = log.lines.size();
    Tick(1);
    EXPECT_EQ(log.lines.size(), count);
}

}  // namespace
}  // namespace spellwick
