// The folder of the assist tools: its owner, its permissions, its place.
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>

#include "platform/linux/assist_folder.h"
#include "tests/platform/socket_assist_fixture.h"

namespace spellwick {
namespace {

using testing::IsEmpty;
using testing_support::ToolSocket;

struct ModeRow {
    const char* name;
    mode_t parent;
    mode_t folder;
    bool trusted;
};

TEST_F(SocketAssist, Folder_MustBeForThisUserAlone) {
    const ModeRow rows[] = {
        {"as it should be", 0700, 0700, true},
        {"readable by the group", 0700, 0750, false},
        {"readable by others", 0700, 0704, false},
        {"open to all", 0700, 0777, false},
        {"parent writable by the group", 0770, 0700, false},
        {"parent writable by others", 0702, 0700, false},
        {"parent readable by others", 0755, 0700, true},
    };
    for (const ModeRow& row : rows) {
        chmod(m_folder.parent_path().c_str(), row.parent);
        chmod(m_folder.c_str(), row.folder);
        EXPECT_EQ(static_cast<bool>(OpenAssistFolder(m_folder)), row.trusted) << row.name;
    }
}

TEST_F(SocketAssist, FolderBehindALink_IsNotTrusted) {
    const auto real = m_top / "real";
    for (const auto& folder : {m_folder, m_folder.parent_path()}) {
        std::filesystem::rename(folder, real);
        std::filesystem::create_directory_symlink(real, folder);
        EXPECT_FALSE(OpenAssistFolder(m_folder)) << folder;
        std::filesystem::remove(folder);
        std::filesystem::rename(real, folder);
        EXPECT_TRUE(OpenAssistFolder(m_folder)) << folder;
    }
}

TEST_F(SocketAssist, FolderOfAnotherUser_IsNotTrusted) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "Only root can give a folder away.";
    }
    constexpr uid_t kNobody = 65534;
    for (const auto& folder : {m_folder, m_folder.parent_path()}) {
        ASSERT_EQ(chown(folder.c_str(), kNobody, kNobody), 0);
        EXPECT_FALSE(OpenAssistFolder(m_folder)) << folder;
        ASSERT_EQ(chown(folder.c_str(), 0, 0), 0);
    }
    EXPECT_TRUE(OpenAssistFolder(m_folder));
}

TEST_F(SocketAssist, Folder_ComesFromTheEnvironment) {
    const char* const before = std::getenv("XDG_RUNTIME_DIR");
    const std::string kept = before == nullptr ? "" : before;
    const std::string fallback = "/tmp/spellwick-" + std::to_string(geteuid()) + "/assist";
    setenv("XDG_RUNTIME_DIR", "/run/user/5", 1);
    EXPECT_EQ(AssistFolder(), "/run/user/5/spellwick/assist");
    setenv("XDG_RUNTIME_DIR", "", 1);
    EXPECT_EQ(AssistFolder(), fallback);
    setenv("XDG_RUNTIME_DIR", "run/user", 1);
    EXPECT_EQ(AssistFolder(), fallback);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(AssistFolder(), fallback);
    if (before != nullptr) {
        setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
    }
}

TEST_F(SocketAssist, ListenerOfAnotherUser_IsNotTalkedTo) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "Only root can listen as another user.";
    }
    chmod(m_top.c_str(), 0755);
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t other = fork();
    if (other == 0) {
        ToolSocket tool(m_folder, "unused.sock");
        const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (m_folder / "a.sock").c_str(), sizeof address.sun_path - 1);
        bool ok = bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        ok = ok && seteuid(65534) == 0 && listen(listener, 4) == 0;
        static_cast<void>(write(ready[1], ok ? "y" : "n", 1));
        pollfd connection{listener, POLLIN, 0};
        poll(&connection, 1, 3000);
        const int accepted = accept(listener, nullptr, nullptr);
        static_cast<void>(send(accepted, "title UOAssist\n", 15, MSG_NOSIGNAL));
        usleep(300000);
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    ASSERT_EQ(answer, 'y');
    std::filesystem::remove(m_folder / "unused.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_THAT(Titles(), IsEmpty());
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
}

}  // namespace
}  // namespace spellwick
