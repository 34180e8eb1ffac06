// Who gets a line of the log, and what is made of it when nobody does.
#include "text/log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_log.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(LogTest, Event_NobodyListens_IsNotEvenMade) {
    int made = 0;
    const auto make = [&] {
        ++made;
        return std::string("x");
    };
    LogEvent(LogTopic::kTyped, make);
    LogDetail(LogTopic::kTyped, make);
    EXPECT_EQ(made, 0);
    const RecordingLog log;
    LogDetail(LogTopic::kTyped, make);
    EXPECT_EQ(made, 0);
    LogEvent(LogTopic::kTyped, make);
    EXPECT_EQ(made, 1);
    EXPECT_THAT(log.lines, ElementsAre(Pair(LogTopic::kTyped, "x")));
}

TEST(LogTest, Detail_IsWrittenForWhoWantsIt) {
    const RecordingLog log(true);
    LogDetail(LogTopic::kLinked, [] { return "report 1"; });
    EXPECT_THAT(log.lines, ElementsAre(Pair(LogTopic::kLinked, "report 1")));
}

TEST(LogTest, Line_GoesToStandardErrorAndIntoTheLog) {
    const RecordingLog log;
    testing::internal::CaptureStderr();
    LogLine("the disk is full");
    LogLine("a report was not taken", LogTopic::kDropped);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "spellwick: the disk is full\nspellwick: a report was not taken\n");
    EXPECT_THAT(log.lines, ElementsAre(Pair(LogTopic::kTrouble, "the disk is full"),
                                       Pair(LogTopic::kDropped, "a report was not taken")));
}

TEST(LogTest, LogThatIsGone_GetsNothing) {
    { const RecordingLog log; }
    EXPECT_EQ(CurrentLog(), nullptr);
}

}  // namespace
}  // namespace spellwick
