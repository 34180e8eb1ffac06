#include "practice/assist_server.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/practice/tool_client.h"

namespace spellwick::practice {
namespace {

using testing::ElementsAre;

class AssistServerTest : public testing::Test {
  protected:
    AssistServerTest() { m_server.SetTitle(QStringLiteral("UOAssist")); }

    QTemporaryDir m_place;
    QString m_folder = m_place.path() + QStringLiteral("/spellwick/assist");
    std::vector<ToolMessage> m_received;
    int m_answer = 1;
    AssistServer m_server{m_folder, QStringLiteral("tool"),
                          [this](int, const ToolMessage& message) {
                              m_received.push_back(message);
                              return m_answer;
                          }};
};

TEST_F(AssistServerTest, Open_MakesTheFolderForThisUserAlone) {
    ASSERT_TRUE(m_server.Open()) << m_server.Trouble().toStdString();
    for (const QString& folder : {m_folder, QFileInfo(m_folder).path()}) {
        struct stat facts {};
        ASSERT_EQ(stat(QFile::encodeName(folder).constData(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, 0700U) << folder.toStdString();
    }
    EXPECT_TRUE(QFileInfo::exists(m_folder + QStringLiteral("/tool.sock")));
}

TEST_F(AssistServerTest, FolderOpenToOthers_IsClosedToThem) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    chmod(QFile::encodeName(m_folder).constData(), 0777);
    ASSERT_TRUE(m_server.Open());
    struct stat facts {};
    stat(QFile::encodeName(m_folder).constData(), &facts);
    EXPECT_EQ(facts.st_mode & 07777, 0700U);
}

TEST_F(AssistServerTest, FolderThatIsALink_IsNotUsed) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_folder).path()));
    ASSERT_TRUE(QFile::link(m_place.path(), m_folder));
    EXPECT_FALSE(m_server.Open());
    EXPECT_FALSE(m_server.Trouble().isEmpty());
}

TEST_F(AssistServerTest, LongPath_IsNoHindrance) {
    const QString deep = m_place.path() + u'/' + QString(120, u'x');
    ASSERT_TRUE(QDir().mkpath(deep));
    AssistServer server(deep + QStringLiteral("/assist"), QStringLiteral("tool"),
                        [](int, const ToolMessage&) { return 0; });
    EXPECT_TRUE(server.Open()) << server.Trouble().toStdString();
}

TEST_F(AssistServerTest, SocketThatNobodyListensOn_IsReplaced) {
    {
        AssistServer first(m_folder, QStringLiteral("tool"),
                           [](int, const ToolMessage&) { return 0; });
        ASSERT_TRUE(first.Open());
        // A killed tool leaves this behind.
        QFile::rename(first.Path(), first.Path() + QStringLiteral(".kept"));
    }
    ASSERT_TRUE(QFile::rename(m_server.Path() + QStringLiteral(".kept"), m_server.Path()));
    EXPECT_TRUE(m_server.Open()) << m_server.Trouble().toStdString();
    ToolClient client(m_server.Path());
    EXPECT_TRUE(client.WaitLines(1));
}

TEST_F(AssistServerTest, SocketOfALivingTool_IsLeftAlone) {
    ASSERT_TRUE(m_server.Open());
    AssistServer second(m_folder, QStringLiteral("tool"),
                        [](int, const ToolMessage&) { return 0; });
    EXPECT_FALSE(second.Open());
    ToolClient client(m_server.Path());
    EXPECT_TRUE(client.WaitLines(1));
}

TEST_F(AssistServerTest, EachProgram_IsGreetedAndAnswered) {
    ASSERT_TRUE(m_server.Open());
    ToolClient first(m_server.Path());
    ToolClient second(m_server.Path());
    first.Write("send 1224 7 0");
    second.Write("send 1125 0 12");
    ASSERT_TRUE(first.WaitLines(2));
    ASSERT_TRUE(second.WaitLines(2));
    EXPECT_THAT(first.Lines(), ElementsAre("title UOAssist", "result 1"));
    EXPECT_THAT(second.Lines(), ElementsAre("title UOAssist", "result 1"));
    EXPECT_THAT(m_received,
                testing::UnorderedElementsAre(ToolMessage{1224, 7, 0}, ToolMessage{1125, 0, 12}));
}

TEST_F(AssistServerTest, Send_CountsAsUnansweredUntilItsResult) {
    ASSERT_TRUE(m_server.Open());
    ToolClient client(m_server.Path());
    ASSERT_TRUE(client.WaitLines(1));
    EXPECT_TRUE(m_server.Send(1, {1325, 1, 80}));
    EXPECT_TRUE(m_server.Send(1, {1325, 2, 120}));
    EXPECT_EQ(m_server.Unanswered(), 2);
    // While it owes the answers it sends messages of its own, and they are answered.
    client.Write("send 1125 0 0");
    ASSERT_TRUE(client.WaitLines(4));
    EXPECT_THAT(client.Lines(),
                ElementsAre("title UOAssist", "send 1325 1 80", "send 1325 2 120", "result 1"));
    client.Write("result 0");
    EXPECT_TRUE(ServeUntil([&] { return m_server.Unanswered() == 1; }));
    client.Write("result 0");
    EXPECT_TRUE(ServeUntil([&] { return m_server.Unanswered() == 0; }));
    EXPECT_FALSE(m_server.Send(99, {1325, 1, 80}));
}

TEST_F(AssistServerTest, ProgramThatBreaksTheForm_IsDroppedAndTheOthersStay) {
    for (const std::string& line :
         {std::string("hello"), std::string("send 1 2"),
          std::string("send 1 2 ") + std::string(1, '\0'), std::string(512, 'x')}) {
        ASSERT_TRUE(m_server.Open());
        ToolClient good(m_server.Path());
        ToolClient bad(m_server.Path());
        ASSERT_TRUE(good.WaitLines(1));
        ASSERT_TRUE(bad.WaitLines(1));
        bad.Write(line);
        EXPECT_TRUE(bad.WaitGone()) << line;
        good.Write("send 1125 0 0");
        EXPECT_TRUE(good.WaitLines(2)) << line;
    }
}

TEST_F(AssistServerTest, LinesInPieces_AreJoined) {
    ASSERT_TRUE(m_server.Open());
    QLocalSocket socket;
    socket.connectToServer(m_server.Path());
    for (const char byte : QByteArrayLiteral("send 1224 7 0\nsend 1125 0 0\n")) {
        socket.write(&byte, 1);
        socket.flush();
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(ServeUntil([&] { return m_received.size() == 2; }));
}

TEST_F(AssistServerTest, Close_EndsConnectionsAndTakesTheSocketAway) {
    ASSERT_TRUE(m_server.Open());
    ToolClient client(m_server.Path());
    ASSERT_TRUE(client.WaitLines(1));
    m_server.Close();
    EXPECT_TRUE(client.WaitGone());
    EXPECT_FALSE(QFileInfo::exists(m_server.Path()));
    EXPECT_EQ(m_server.Connections(), 0);
    ASSERT_TRUE(m_server.Open()) << "and comes back";
    ToolClient later(m_server.Path());
    EXPECT_TRUE(later.WaitLines(1));
}

}  // namespace
}  // namespace spellwick::practice
