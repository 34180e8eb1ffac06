// The file of the log: its lines, and what goes into it.
#include "app/event_log.h"

#include <QLoggingCategory>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/file_bytes.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

class EventLogTest : public testing::Test {
  protected:
    std::filesystem::path File() const { return m_folder.Path() / "log.txt"; }
    std::string Text() const { return BytesOf(File()); }
    std::string LastLine() const {
        std::istringstream text(Text());
        std::string line;
        std::string last;
        while (std::getline(text, line)) {
            last = line;
        }
        return last;
    }

    TemporaryFolder m_folder;
};

TEST_F(EventLogTest, Event_IsALineWithTimeAndTopic) {
    const EventLog log(File(), false);
    EXPECT_EQ(log.Trouble(), "");
    LogEvent(LogTopic::kTyped, [] { return "Alt+1"; });
    EXPECT_THAT(LastLine(), MatchesRegex("[0-9]+-[0-9]+-[0-9]+ [0-9]+:[0-9]+:[0-9]+[.][0-9]+ "
                                         "spellwick[.]typed: Alt[+]1"));
}

TEST_F(EventLogTest, EveryTopic_HasItsCategory) {
    const EventLog log(File(), false);
    const std::pair<LogTopic, const char*> rows[] = {
        {LogTopic::kTrouble, "spellwick.trouble: x"}, {LogTopic::kFound, "spellwick.found: x"},
        {LogTopic::kLinked, "spellwick.linked: x"},   {LogTopic::kTyped, "spellwick.typed: x"},
        {LogTopic::kRefused, "spellwick.refused: x"}, {LogTopic::kDropped, "spellwick.dropped: x"},
    };
    for (const auto& [topic, end] : rows) {
        LogEvent(topic, [] { return "x"; });
        EXPECT_THAT(LastLine(), testing::EndsWith(end));
    }
}

TEST_F(EventLogTest, LinesOfABox_AreOneLine) {
    const EventLog log(File(), false);
    LogEvent(LogTopic::kRefused, [] { return "box: one\n\ntwo"; });
    EXPECT_THAT(LastLine(), testing::EndsWith("box: one two"));
}

TEST_F(EventLogTest, Details_AreWrittenOnRequestAlone) {
    {
        const EventLog log(File(), false);
        LogDetail(LogTopic::kLinked, [] { return "report 1"; });
    }
    EXPECT_THAT(Text(), Not(HasSubstr("report")));
    const EventLog log(File(), true);
    LogDetail(LogTopic::kLinked, [] { return "report 2"; });
    EXPECT_THAT(Text(), HasSubstr("report 2"));
}

TEST_F(EventLogTest, FileWithText_IsKeptAndGoesOn) {
    std::ofstream(File()) << "before\n";
    { const EventLog log(File(), false); }
    EXPECT_THAT(Text(), AllOf(StartsWith("before\n"), HasSubstr("spellwick: Spellwick ")));
}

TEST_F(EventLogTest, WarningsOfTheToolkit_AreInIt) {
    const EventLog log(File(), false);
    qInstallMessageHandler(qInstallMessageHandler(nullptr));  // unchanged
    qWarning("the toolkit complains");
    EXPECT_THAT(LastLine(), testing::EndsWith("default: the toolkit complains"));
}

TEST_F(EventLogTest, NoSuchFolder_IsOneSentence) {
    const EventLog log(m_folder.Path() / "none" / "log.txt", false);
    EXPECT_THAT(log.Trouble(), StartsWith("The log cannot be written: "));
    EXPECT_EQ(CurrentLog(), nullptr);
}

TEST_F(EventLogTest, Closed_NobodyListens) {
    { const EventLog log(File(), false); }
    EXPECT_EQ(CurrentLog(), nullptr);
    const std::string before = Text();
    LogEvent(LogTopic::kTyped, [] { return "Alt+1"; });
    EXPECT_EQ(Text(), before);
}

}  // namespace
}  // namespace spellwick
