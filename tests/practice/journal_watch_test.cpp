#include "practice/journal_watch.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/practice/tool_client.h"

namespace spellwick::practice {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class JournalWatchTest : public testing::Test {
  protected:
    JournalWatchTest() {
        QObject::connect(&m_watch, &JournalWatch::Line,
                         [this](const QString& line) { m_lines.push_back(line.toStdString()); });
    }

    void Append(const char* text) {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(text);
    }

    QTemporaryDir m_place;
    QString m_path = m_place.path() + QStringLiteral("/journal");
    std::vector<std::string> m_lines;
    JournalWatch m_watch;
};

TEST_F(JournalWatchTest, FileThatIsNotThere_IsMadeAndFollowed) {
    ASSERT_TRUE(m_watch.Follow(m_path));
    Append("key Alt+4\ncast Heal\n");
    EXPECT_TRUE(ServeUntil([&] { return m_lines.size() == 2; }));
    Append("cast Clumsy\n");
    EXPECT_TRUE(ServeUntil([&] { return m_lines.size() == 3; }));
    EXPECT_THAT(m_lines, ElementsAre("key Alt+4", "cast Heal", "cast Clumsy"));
}

TEST_F(JournalWatchTest, WhatWasThereBefore_IsPassedOver) {
    Append("cast Heal\n");
    ASSERT_TRUE(m_watch.Follow(m_path));
    Append("cast Cure\n");
    EXPECT_TRUE(ServeUntil([&] { return !m_lines.empty(); }));
    EXPECT_THAT(m_lines, ElementsAre("cast Cure"));
}

TEST_F(JournalWatchTest, HalfALine_WaitsForTheRest) {
    ASSERT_TRUE(m_watch.Follow(m_path));
    Append("cast He");
    for (int round = 0; round < 20; ++round) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    EXPECT_THAT(m_lines, IsEmpty());
    Append("al\n");
    EXPECT_TRUE(ServeUntil([&] { return !m_lines.empty(); }));
    EXPECT_THAT(m_lines, ElementsAre("cast Heal"));
}

TEST_F(JournalWatchTest, FileThatIsTakenAway_IsFollowedAnew) {
    ASSERT_TRUE(m_watch.Follow(m_path));
    Append("cast Heal\n");
    ASSERT_TRUE(ServeUntil([&] { return m_lines.size() == 1; }));
    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_TRUE(ServeUntil([&] { return QFile::exists(m_path); }));
    Append("cast Cure\n");
    EXPECT_TRUE(ServeUntil([&] { return m_lines.size() == 2; }));
    EXPECT_THAT(m_lines, ElementsAre("cast Heal", "cast Cure"));
}

TEST_F(JournalWatchTest, FileThatIsCutOff_IsReadFromItsStart) {
    ASSERT_TRUE(m_watch.Follow(m_path));
    Append("cast Heal\n");
    ASSERT_TRUE(ServeUntil([&] { return m_lines.size() == 1; }));
    ASSERT_TRUE(QFile::resize(m_path, 0));
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    Append("cast Cure\n");
    EXPECT_TRUE(ServeUntil([&] { return m_lines.size() == 2; }));
    EXPECT_THAT(m_lines, ElementsAre("cast Heal", "cast Cure"));
}

TEST_F(JournalWatchTest, FileThatCannotBe_SaysSo) {
    EXPECT_FALSE(m_watch.Follow(m_place.path() + QStringLiteral("/none/journal")));
}

}  // namespace
}  // namespace spellwick::practice
