// What a peer does with the lines that the other side does not read.
#include "platform/linux/assist_peer.h"

#include <array>

#include <gtest/gtest.h>
#include <sys/socket.h>

#include "tests/support/recording_log.h"

namespace spellwick {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20U;

class UnreadPeer : public testing::Test {
  protected:
    UnreadPeer() {
        std::array<int, 2> ends{-1, -1};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        m_other = FileDescriptor(ends[0]);
        m_peer = std::make_unique<AssistPeer>("a.sock", 1, FileDescriptor(ends[1]));
    }
    void WriteMegabytes(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            m_peer->Write(m_text);
        }
    }

    const std::string m_text = std::string(kMegabyte, '1');
    FileDescriptor m_other;
    std::unique_ptr<AssistPeer> m_peer;
};

TEST_F(UnreadPeer, UpToSixteenMegabytes_AreKeptForIt) {
    WriteMegabytes(16);
    EXPECT_FALSE(m_peer->Ended());
    EXPECT_TRUE(m_peer->WantsToWrite());
    // It gets all of them in the end.
    std::size_t got = 0;
    std::string bytes(kMegabyte, ' ');
    while (got < 16 * kMegabyte) {
        m_peer->Flush();
        const ssize_t count = recv(m_other.Number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        ASSERT_GT(count, 0) << got;
        got += static_cast<std::size_t>(count);
    }
    EXPECT_FALSE(m_peer->WantsToWrite());
}

// A tool that sends and never reads does not eat the memory.
TEST_F(UnreadPeer, More_EndsIt) {
    const RecordingLog log;
    WriteMegabytes(20);  // the system holds less than four of them
    EXPECT_TRUE(m_peer->Ended());
    WriteMegabytes(1);
    EXPECT_TRUE(m_peer->Ended());
    ASSERT_EQ(log.lines.size(), 1U);
    EXPECT_EQ(log.lines[0].first, LogTopic::kDropped);
    EXPECT_EQ(log.lines[0].second, "the assist tool a.sock: it leaves too much unread");
}

TEST_F(UnreadPeer, LineOfNoForm_EndsItAndIsInTheLog) {
    const RecordingLog log;
    ASSERT_EQ(send(m_other.Number(), "hello\n", 6, MSG_NOSIGNAL), 6);
    m_peer->Read();
    EXPECT_FALSE(m_peer->TakeLine());
    EXPECT_TRUE(m_peer->Ended());
    ASSERT_EQ(log.lines.size(), 1U);
    EXPECT_EQ(log.lines[0].second,
              "the assist tool a.sock: a line is not of the form, or the title "
              "is not the first");
}

}  // namespace
}  // namespace spellwick
