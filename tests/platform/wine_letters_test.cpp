// Letters that the layout lacks, typed into a program under Wine: its own editor, which writes down
// what has arrived.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/platform/x11_typing_fixture.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::RunToEnd;
using testing_support::WaitUntil;
using testing_support::XSession;

constexpr const char* kWine = "/usr/lib/wine/wine64";
constexpr const char* kWineServer = "/usr/lib/wine/wineserver";
constexpr const char* kFile = "letters.txt";

class WindowTarget : public KeyTarget {
  public:
    WindowTarget(ClientWindows& windows, WindowHandle window)
        : m_windows(windows), m_window(window) {}

    bool MayType() override { return m_windows.HasKeyboard(m_window); }
    bool HasRead(std::chrono::milliseconds patience) override {
        return m_windows.WaitUntilRead(m_window, patience);
    }
    bool FollowsKeyMapLate() override { return m_windows.FollowsKeyMapLate(m_window); }

  private:
    ClientWindows& m_windows;
    WindowHandle m_window;
};

class WineLetters : public testing::Test {
  protected:
    void SetUp() override {
        if (const std::string missing = XSession::WhatIsMissing(); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        if (!std::filesystem::exists(kWine)) {
            GTEST_SKIP() << "not installed: wine64";
        }
        session = XSession::Start();
        ASSERT_TRUE(session);
        variables = session->Variables();
        variables["WINEPREFIX"] = session->Folder() / "prefix";
        const auto filled = RunToEnd({kUnderWine, "wineboot", "-i"}, variables, 120s);
        ASSERT_EQ(filled.exitCode, 0) << filled.output;
        // The mark makes the editor keep the file in UTF-8.
        std::ofstream(session->Folder() / kFile) << "\xEF\xBB\xBF";
        editor = testing_support::ChildProcess::Start(
            {kUnderWine, "notepad", "Z:" + (session->Folder() / kFile).string()}, variables);
        ASSERT_TRUE(editor);
        std::string error;
        windows = X11ClientWindows::Open(session->Display(), error);
        ASSERT_TRUE(windows) << error;
        keyboard = X11Keyboard::Open(session->Display(), error);
        ASSERT_TRUE(keyboard) << error;
        ASSERT_TRUE(WaitUntil([&] { return Editor() != 0; }, 60s)) << editor->Output();
    }

    void TearDown() override {
        if (!variables.empty()) {
            RunToEnd({kWineServer, "-k"}, variables);
            // Wine names a server after its prefix's inode, which the next prefix may get: it would
            // take one that is still ending for its own.
            RunToEnd({kWineServer, "-w"}, variables);
        }
    }

    WindowHandle Editor() { return windows->FindWindowByClass(kFile); }

    std::string Written() const {
        std::string text = BytesOf(session->Folder() / kFile);
        std::erase(text, '\r');
        return text.substr(std::min<std::size_t>(3, text.size()));
    }

    // Types each line, saves the file, and expects it to hold the lines.
    void ExpectWritten(const std::vector<std::string>& lines) {
        const WindowHandle window = Editor();
        ASSERT_TRUE(windows->SetForegroundWindow(window));
        ASSERT_TRUE(WaitUntil([&] { return windows->HasKeyboard(window); }));
        WindowTarget target(*windows, window);
        KeystrokeSender sender(*keyboard);
        std::string expected;
        for (const std::string& line : lines) {
            const SendResult result = sender.SendKeys(line + "{ENTER}", true, target);
            EXPECT_TRUE(result.Ok()) << result.error;
            expected += line + "\n";
        }
        ASSERT_TRUE(windows->WaitUntilRead(window, 5s));
        EXPECT_TRUE(sender.SendKeys("^s", true, target).Ok());
        EXPECT_TRUE(WaitUntil([&] { return Written() == expected; })) << Written();
    }

    static constexpr const char* kUnderWine = SPELLWICK_UNDER_WINE;
    std::unique_ptr<XSession> session;
    testing_support::Environment variables;
    std::unique_ptr<testing_support::ChildProcess> editor;
    std::unique_ptr<X11ClientWindows> windows;
    std::unique_ptr<X11Keyboard> keyboard;
};

TEST_F(WineLetters, LettersThatTheLayoutLacks_ArriveWhole) {
    ASSERT_TRUE(session->SetLayout("us"));
    ExpectWritten(
        {"a \u00e4\u00f6\u00fc\u00df and \u00c4\u00d6\u00dc",
         "\u00e9\u00e8\u00e0\u00e7\u00f1\u00f8\u00e5\u00e6 \u20ac \u00e9\u00e8\u00e0\u00e7",
         "\u0142\u015b\u017c\u017a\u0107\u0144\u0119\u0105",
         "\u0439\u0446\u0443\u043a\u0435\u043d \u0433\u0448\u0449\u0437"});
}

TEST_F(WineLetters, LettersOfAnotherGroup_ArriveWhole) {
    ASSERT_TRUE(session->SetLayout("us,ru"));
    ExpectWritten({"a \u0439\u0446\u0443\u043a\u0435\u043d b \u0433\u0448\u0449\u0437",
                   "\u0424\u042b\u0412\u0430\u043f\u0440 abc \u043e\u043b\u0434", "plain"});
}

}  // namespace
}  // namespace spellwick
