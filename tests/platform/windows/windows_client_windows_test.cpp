#include "platform/windows/windows_client_windows.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "link/translated_windows.h"
#include "tests/platform/windows/peer_process.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::PeerProcess;
using testing_support::WaitUntil;

constexpr UINT kHang = 1;
constexpr UINT kTitleOfLength = 2;
constexpr UINT kChangeTitles = 3;

constexpr const wchar_t* kTitle =
    L"Ultima Online - Mira \u0141\u00e4 \u05e9 \xd83e\xddd9 (Atlantic)";
constexpr const char* kTitleUtf8 = "Ultima Online - Mira \u0141\u00e4 \u05e9 \U0001f9d9 (Atlantic)";

class ClientOnWindows : public testing::Test {
  protected:
    std::unique_ptr<PeerProcess> Start(const std::wstring& windowClass, const std::wstring& title) {
        const std::wstring journal =
            (m_folder.Path() / (std::to_string(++m_journals) + ".txt")).wstring();
        return std::make_unique<PeerProcess>(
            L"client_window", std::vector<std::wstring>{windowClass, title, journal}, title);
    }

    template <typename Work>
    std::chrono::milliseconds TimeOf(const Work& work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - start);
    }

    WindowsClientWindows m_windows;
    TemporaryFolder m_folder;
    int m_journals = 0;
};

TEST_F(ClientOnWindows, NoClient_IsNoWindow) {
    EXPECT_EQ(m_windows.FindWindowByClass("Ultima Online"), 0U);
    EXPECT_EQ(m_windows.FindWindowByClass(""), 0U);
    EXPECT_EQ(m_windows.FindWindowByClass("\xff\xfe"), 0U);
    EXPECT_EQ(m_windows.WindowTitle(0), "");
    EXPECT_EQ(m_windows.WindowTitle(0x12345678), "");
    EXPECT_FALSE(m_windows.SetForegroundWindow(0));
    EXPECT_FALSE(m_windows.SetForegroundWindow(0x12345678));
    EXPECT_FALSE(m_windows.IsForegroundWindow(0));
    EXPECT_FALSE(m_windows.IsForegroundWindow(0x12345678));
    EXPECT_FALSE(m_windows.SetFocus(0));
    EXPECT_FALSE(m_windows.SetFocus(0x12345678));
}

TEST_F(ClientOnWindows, Client_IsFoundByEachOfItsClasses_AndByNoOther) {
    for (const char* name : {"Ultima Online", "Ultima Online Third Dawn"}) {
        const auto client = Start(WideFromUtf8(name), kTitle);
        EXPECT_EQ(m_windows.FindWindowByClass(name), client->Handle()) << name;
        EXPECT_EQ(m_windows.FindWindowByClass("Ultima"), 0U);
        EXPECT_EQ(m_windows.FindWindowByClass(kTitleUtf8), 0U);
        client->End();
        EXPECT_TRUE(WaitUntil([&] { return m_windows.FindWindowByClass(name) == 0; }));
    }
}

TEST_F(ClientOnWindows, Title_IsReadWholeInEveryScript) {
    const auto client = Start(L"Ultima Online", kTitle);
    EXPECT_EQ(m_windows.WindowTitle(client->Handle()), kTitleUtf8);
    for (const WPARAM length : {0U, 1U, 255U, 256U, 5000U}) {
        client->Ask(kTitleOfLength, length, 0x20ac);
        std::string expected;
        for (WPARAM i = 0; i < length; ++i) {
            expected += "\u20ac";
        }
        EXPECT_EQ(m_windows.WindowTitle(client->Handle()), expected) << length;
    }
    client->End();
    EXPECT_TRUE(WaitUntil([&] { return m_windows.WindowTitle(client->Handle()).empty(); }));
}

TEST_F(ClientOnWindows, TitleThatChangesWhileItIsRead_IsOneOfItsTitles) {
    const auto client = Start(L"Ultima Online", kTitle);
    client->Tell(kChangeTitles, 600);
    int reads = 0;
    const auto end = std::chrono::steady_clock::now() + 500ms;
    for (; std::chrono::steady_clock::now() < end; ++reads) {
        const std::string title = m_windows.WindowTitle(client->Handle());
        ASSERT_TRUE(title == kTitleUtf8 || title == std::string(title.size(), 'x')) << title;
    }
    EXPECT_GT(reads, 10);
}

TEST_F(ClientOnWindows, Activation_BringsTheClientToTheFrontWithTheKeyboard) {
    const auto client = Start(L"Ultima Online", kTitle);
    const auto other = Start(L"Another", L"another window");
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(m_windows.SetForegroundWindow(other->Handle()));
        EXPECT_EQ(GetForegroundWindow(), other->Window());
        EXPECT_FALSE(m_windows.SetFocus(client->Handle()));
        EXPECT_FALSE(m_windows.IsForegroundWindow(client->Handle()));
        ASSERT_TRUE(m_windows.SetForegroundWindow(client->Handle()));
        EXPECT_EQ(GetForegroundWindow(), client->Window());
        EXPECT_TRUE(m_windows.IsForegroundWindow(client->Handle()));
        EXPECT_TRUE(m_windows.SetFocus(client->Handle()));
    }
}

TEST_F(ClientOnWindows, MinimisedClient_IsRestored) {
    const auto client = Start(L"Ultima Online", kTitle);
    ShowWindow(client->Window(), SW_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsIconic(client->Window()) != FALSE; }));
    // The window manager hears of it later than the window, and would otherwise still hide it.
    std::this_thread::sleep_for(1s);
    EXPECT_TRUE(m_windows.SetForegroundWindow(client->Handle()));
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(client->Window()) == FALSE; }));
}

TEST_F(ClientOnWindows, HiddenOrDisabledClient_GetsNoKeyboard) {
    const auto client = Start(L"Ultima Online", kTitle);
    ASSERT_TRUE(m_windows.SetForegroundWindow(client->Handle()));
    EnableWindow(client->Window(), FALSE);
    EXPECT_FALSE(m_windows.SetFocus(client->Handle()));
    EnableWindow(client->Window(), TRUE);
    ShowWindow(client->Window(), SW_HIDE);
    EXPECT_FALSE(m_windows.SetForegroundWindow(client->Handle()));
    EXPECT_FALSE(m_windows.SetFocus(client->Handle()));
}

TEST_F(ClientOnWindows, HungClient_HoldsNoCallUp) {
    const auto client = Start(L"Ultima Online", kTitle);
    client->Tell(kHang, 3000);
    std::this_thread::sleep_for(100ms);
    EXPECT_LT(TimeOf([&] {
                  EXPECT_EQ(m_windows.FindWindowByClass("Ultima Online"), client->Handle());
                  EXPECT_EQ(m_windows.WindowTitle(client->Handle()), kTitleUtf8);
              }),
              200ms);
    EXPECT_LT(TimeOf([&] { m_windows.SetForegroundWindow(client->Handle()); }), 1000ms);
    EXPECT_LT(TimeOf([&] { m_windows.SetFocus(client->Handle()); }), 500ms);
}

TEST_F(ClientOnWindows, TitleOfARealWindow_GivesCharacterAndServer) {
    const auto client = Start(L"Ultima Online", kTitle);
    const auto names = ParseTitle(m_windows.WindowTitle(client->Handle()));
    EXPECT_EQ(names, (TitleNames{"Mira \u0141\u00e4 \u05e9 \U0001f9d9", "Atlantic"}));
}

TEST_F(ClientOnWindows, AllWindows_AreThoseOfOtherPrograms) {
    const HWND ours = CreateWindowExW(0, L"STATIC", L"ours", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10,
                                      10, 100, 100, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(ours, nullptr);
    const auto client = Start(L"SDL_app", L"Mine");
    const std::vector<TopLevelWindow> listed = m_windows.AllWindows();
    EXPECT_NE(std::ranges::find(listed, client->Handle(), &TopLevelWindow::handle), listed.end());
    EXPECT_EQ(std::ranges::find(listed, HandleOf(ours), &TopLevelWindow::handle), listed.end());
    DestroyWindow(ours);
}

TEST_F(ClientOnWindows, TodaysClients_AreFoundWithNameAndShard) {
    TranslatedWindows windows(m_windows, LoadGameClients().rows);
    SharedState state;
    ClientWatch watch(state, windows);
    const struct {
        const wchar_t* windowClass;
        const wchar_t* title;
        const char* shown;
    } rows[] = {
        {L"Ultima Online", L"Ultima Online - Mira (Oak Hill)", "Ultima Online - Mira (Oak Hill)"},
        {L"Orion UO Client", L"Ultima Online - Bran (Oak)", "Ultima Online - Bran (Oak)"},
        {L"Orion UO Client", L"Ultima Online - account(Oak)", "Ultima Online - ? (?)"},
        {L"SDL_app", L"Ultima Online - Zoe (Oak)", "Ultima Online - Zoe (Oak)"},
        {L"SDL_app", L"Lady Miranda of Trinsic - ClassicUO - 1.0",
         "Ultima Online - Lady Miranda of Trinsic (ClassicUO)"},
        {L"SDL_app", L"Bran (Oak Hill) - ClassicUO - 1.0", "Ultima Online - Bran (Oak Hill)"},
        {L"SDL_app", L"UO - Bran - ClassicUO - 1.0", "Ultima Online - Bran (ClassicUO)"},
        {L"SDL_app", L"Bran - ClassicUO [dev] - 1.0", "Ultima Online - Bran (ClassicUO)"},
        {L"SDL_app", L"Ash - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.1]",
         "Ultima Online - Ash (TazUO)"},
        {L"SDL_app", L"[TazUO 4.1]", "Ultima Online - ? (?)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.shown);
        const auto client = Start(row.windowClass, row.title);
        // The folders of a client are read once a second at most, and so is its shard.
        EXPECT_TRUE(WaitUntil([&] { return watch.ReadClient() && state.ClientTitle == row.shown; }))
            << state.ClientTitle;
        EXPECT_EQ(state.ClientWindow, client->Handle());
        EXPECT_FALSE(m_windows.ProgramFolders(client->Handle()).empty());
        client->End();
        EXPECT_TRUE(WaitUntil([&] { return !watch.FindClient(); }));
    }
    const auto other = Start(L"SDL_app", L"Some other game");
    EXPECT_FALSE(watch.ReadClient());
}

}  // namespace
}  // namespace spellwick
