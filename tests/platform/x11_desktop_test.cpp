// The desktop's openers, and what a desktop without a display refuses.
#include "platform/linux/x11_desktop.h"

#include <csignal>
#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/file_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/x_session.h"

namespace spellwick {
namespace {

using testing::HasSubstr;
using testing_support::WaitUntil;

// A folder of programs as the only one on the path, with an opener in it or not.
class Opener : public testing::Test {
  protected:
    void SetUp() override {
        m_path = std::getenv("PATH");
        std::filesystem::create_directory(Programs());
        for (const char* program : {"sh", "mv"}) {
            std::filesystem::create_symlink("/bin/" + std::string(program), Programs() / program);
        }
        setenv("PATH", Programs().c_str(), 1);
    }
    void TearDown() override { setenv("PATH", m_path.c_str(), 1); }

    std::filesystem::path Programs() const { return m_folder.Path() / "programs"; }
    std::filesystem::path Mark() const { return m_folder.Path() / "mark"; }

    void Install(const std::string& script) const {
        const std::filesystem::path program = Programs() / "xdg-open";
        std::ofstream(program) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    // An opener that writes its argument to the mark.
    void InstallWitness() const {
        const std::string part = Mark().string() + ".part";
        Install("echo \"<$1>\" > " + part + "; mv " + part + " " + Mark().string() + "\n");
    }
    std::string Seen() const {
        WaitUntil([this] { return std::filesystem::exists(Mark()); });
        return BytesOf(Mark());
    }

    TemporaryFolder m_folder;
    std::string m_path;
    X11Desktop m_desktop{"no display"};
};

TEST_F(Opener, Document_IsHandedOverByItsPath) {
    InstallWitness();
    const std::filesystem::path file = m_folder.Path() / "a $HOME \"help\" \u0141 100%.wri";
    std::ofstream(file) << "help";
    EXPECT_TRUE(m_desktop.OpenDocument(file));
    EXPECT_THAT(Seen(), HasSubstr("<" + file.string() + ">\n"));
}

TEST_F(Opener, WebPage_IsHandedOverAsItIsWritten) {
    InstallWitness();
    const std::string address = "http://example.org/a b?c='d'&e=%zz;echo";
    EXPECT_TRUE(m_desktop.OpenWebPage(address));
    EXPECT_THAT(Seen(), HasSubstr("<" + address + ">\n"));
}

TEST_F(Opener, SignalsThatThisProcessBlocks_AreTheOpenersOwn) {
    // Not a shell, which may unblock signals itself. It copies its own status, then this file.
    const std::filesystem::path taken = m_folder.Path() / "taken";
    std::filesystem::create_directory(taken);
    const std::filesystem::path program = Programs() / "xdg-open";
    std::ofstream(program) << "#!/bin/cp /proc/self/status\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigprocmask(SIG_BLOCK, &blocked, &before);
    EXPECT_TRUE(m_desktop.OpenWebPage(taken.string()));
    sigprocmask(SIG_SETMASK, &before, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(taken / "xdg-open"); }));
    EXPECT_THAT(BytesOf(taken / "status"), HasSubstr("SigBlk:\t0000000000000000\n"));
}

TEST_F(Opener, OpenerThatFails_HasBeenStartedAllTheSame) {
    Install("exit 4\n");
    EXPECT_TRUE(m_desktop.OpenWebPage("http://example.org/"));
}

TEST_F(Opener, WithoutAnOpener_NothingIsOpened) {
    std::ofstream(Mark()) << "a file";
    EXPECT_FALSE(m_desktop.OpenDocument(Mark()));
    EXPECT_FALSE(m_desktop.OpenWebPage("http://example.org/"));
    // A browser is no program for documents.
    Install("exit 0\n");
    std::filesystem::rename(Programs() / "xdg-open", Programs() / "firefox");
    EXPECT_FALSE(m_desktop.OpenDocument(Mark()));
}

TEST_F(Opener, ProgramForADocument_IsWhatTheDesktopSays) {
    const std::filesystem::path file = m_folder.Path() / "it's a \"help\".wri";
    std::ofstream(file) << "x";
    // Without the tool for kinds of files nothing is known.
    EXPECT_TRUE(m_desktop.HasProgramFor(file));
    struct Row {
        const char* name;
        const char* script;
        bool has;
    };
    for (const Row& row :
         {Row{"a program", "[ $2 = filetype ] && echo text/$3x || echo writer.desktop", true},
          Row{"none for the kind", "[ $2 = filetype ] && echo text/rtf", false},
          Row{"no kind", "[ $2 = default ] && echo writer.desktop", false},
          Row{"the tool fails", "exit 2", false}}) {
        Install(std::string(row.script) + "\n");
        std::filesystem::rename(Programs() / "xdg-open", Programs() / "xdg-mime");
        EXPECT_EQ(m_desktop.HasProgramFor(file), row.has) << row.name;
    }
    // It is asked about this very file.
    Install("[ $2 = default ] && echo writer.desktop; [ -e \"$3\" ] && echo text/rtf\n");
    std::filesystem::rename(Programs() / "xdg-open", Programs() / "xdg-mime");
    EXPECT_TRUE(m_desktop.HasProgramFor(file));
    EXPECT_FALSE(m_desktop.HasProgramFor(m_folder.Path() / "missing"));
}

TEST_F(Opener, DocumentThatIsNotThere_IsNotOpened) {
    Install("exit 0\n");
    EXPECT_FALSE(m_desktop.OpenDocument(m_folder.Path() / "missing.wri"));
    EXPECT_FALSE(m_desktop.OpenDocument(m_folder.Path()));
    EXPECT_FALSE(m_desktop.OpenDocument({}));
}

TEST_F(Opener, WithoutADisplay_WindowStatesAreRefused) {
    m_desktop.Beep();
    EXPECT_FALSE(m_desktop.SetTopMost(1, true));
    EXPECT_FALSE(m_desktop.LeaveTaskList(1));
    EXPECT_FALSE(m_desktop.Activate(1));
}

}  // namespace
}  // namespace spellwick
