// Other clients in front of the watch: found by the classic client's classes, read in its form.
#include "link/translated_windows.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";

class TranslatedWindowsTest : public testing::Test {
  protected:
    void Show(WindowHandle handle, const std::string& windowClass, const std::string& title) {
        m_real.windows.push_back({.handle = handle, .windowClass = windowClass, .title = title});
    }

    // One reading of the watch; the client's title as all the rest sees it.
    std::string Tick() {
        m_watch.ReadClient();
        return m_state.ClientTitle;
    }

    std::string CurrentName() const {
        return m_windows.Current() == nullptr ? "" : m_windows.Current()->name;
    }

    std::vector<std::string> m_log;
    RecordingClientWindows m_real{&m_log};
    std::chrono::steady_clock::time_point m_now{std::chrono::hours(1)};
    TranslatedWindows m_windows{m_real, LoadGameClients().rows, [this] { return m_now; }};
    SharedState m_state;
    ClientWatch m_watch{m_state, m_windows};
};

TEST_F(TranslatedWindowsTest, ClassicClient_IsFirstAndUntouched) {
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    Show(7, "Ultima Online", "Ultima Online - Mira (x) (Atlantic) - ClassicUO - 1");
    m_real.foreground = 8;
    EXPECT_EQ(Tick(), "Ultima Online - Mira (x) (Atlantic) - ClassicUO - 1");
    EXPECT_EQ(m_state.ClientWindow, 7U);
    EXPECT_EQ(m_windows.Current(), nullptr);
    EXPECT_THAT(m_log, ElementsAre("find Ultima Online"));
}

TEST_F(TranslatedWindowsTest, ThirdDawn_IsBeforeTheKnownClients) {
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    Show(7, "Ultima Online Third Dawn", kMira);
    EXPECT_EQ(Tick(), kMira);
    EXPECT_EQ(m_windows.Current(), nullptr);
}

TEST_F(TranslatedWindowsTest, KnownClient_IsFoundAndReadInTheCommonForm) {
    Show(8, "ClassicUO", "Lady Miranda of Trinsic - ClassicUO - 1.0");
    EXPECT_EQ(Tick(), "Ultima Online - Lady Miranda of Trinsic (ClassicUO)");
    EXPECT_EQ(m_state.ClientWindow, 8U);
    EXPECT_EQ(CurrentName(), "ClassicUO");
}

TEST_F(TranslatedWindowsTest, Statistics_ChangeNoTitle) {
    Show(8, "ClassicUO", "");
    for (int points = 0; points < 100; ++points) {
        m_real.windows[0].title =
            "Bran - HP " + std::to_string(points) + "/100, MP 1/2, SP 3/4 - [TazUO 4]";
        ASSERT_EQ(Tick(), "Ultima Online - Bran (TazUO)");
    }
}

TEST_F(TranslatedWindowsTest, Login_IsAClientWithoutACharacter) {
    for (const char* title : {"ClassicUO - 1.0", "[TazUO 4]", "TazUO - 4"}) {
        m_real.windows.clear();
        Show(8, "ClassicUO", title);
        EXPECT_EQ(Tick(), "Ultima Online - ? (?)") << title;
        EXPECT_EQ(m_state.ClientWindow, 8U);
    }
}

TEST_F(TranslatedWindowsTest, OtherPrograms_AreNoClient) {
    Show(8, "SDL_app", "Bran - ClassicUO - 1");
    Show(9, "ClassicUO", "About");
    EXPECT_EQ(Tick(), "Ultima Online - ? (?)");
    EXPECT_EQ(m_state.ClientWindow, 0U);
    EXPECT_EQ(m_windows.Current(), nullptr);
    EXPECT_THAT(m_log, ElementsAre("find Ultima Online", "find Ultima Online Third Dawn"));
}

TEST_F(TranslatedWindowsTest, ClientThatCloses_IsGone) {
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    Tick();
    m_real.windows.clear();
    Tick();
    EXPECT_EQ(m_state.ClientWindow, 0U);
    EXPECT_EQ(m_windows.Current(), nullptr);
    EXPECT_EQ(m_windows.WindowTitle(8), "");
}

TEST_F(TranslatedWindowsTest, SeveralClients_TheOneInFrontLast) {
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    Show(9, "crossuo", "Ultima Online - Mira (Oak)");
    EXPECT_EQ(Tick(), "Ultima Online - Bran (ClassicUO)") << "the topmost";
    m_real.foreground = 9;
    EXPECT_EQ(Tick(), "Ultima Online - Mira (Oak)");
    m_real.foreground = 70;
    EXPECT_EQ(Tick(), "Ultima Online - Mira (Oak)") << "another program has come to the front";
    EXPECT_EQ(CurrentName(), "CrossUO");
    m_real.foreground = 8;
    EXPECT_EQ(Tick(), "Ultima Online - Bran (ClassicUO)");
    EXPECT_EQ(CurrentName(), "ClassicUO");
}

TEST_F(TranslatedWindowsTest, ShardThatTheTitleLacks_IsThatOfTheNewestProfile) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "Data/Profiles/account/Oak Hill/Bran");
    m_real.programFolders = {folder.Path()};
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    EXPECT_EQ(Tick(), "Ultima Online - Bran (Oak Hill)");
    m_real.windows[0].title = "Bran (Atlantic) - ClassicUO - 1";
    EXPECT_EQ(Tick(), "Ultima Online - Bran (Atlantic)") << "the title's own goes first";
}

TEST_F(TranslatedWindowsTest, Folders_AreReadAtAChangeOfTitleAndOnceASecondAtMost) {
    const auto reads = [&] { return std::ranges::count(m_log, "folders of 8"); };
    Show(8, "ClassicUO", "ClassicUO - 1");
    Tick();
    EXPECT_EQ(reads(), 0) << "nobody is logged in";
    m_real.windows[0].title = "Bran - ClassicUO - 1";
    for (int tick = 0; tick < 5; ++tick) {
        EXPECT_EQ(Tick(), "Ultima Online - Bran (ClassicUO)");
        m_now += std::chrono::seconds(1);
    }
    EXPECT_EQ(reads(), 1);
    m_real.windows[0].title = "Mira - ClassicUO - 1";
    EXPECT_EQ(Tick(), "Ultima Online - Mira (ClassicUO)");
    m_real.windows[0].title = "Zoe - ClassicUO - 1";
    EXPECT_EQ(Tick(), "Ultima Online - ? (?)") << "too early to look again";
    EXPECT_EQ(reads(), 2);
    m_now += std::chrono::seconds(1);
    EXPECT_EQ(Tick(), "Ultima Online - Zoe (ClassicUO)");
    EXPECT_EQ(reads(), 3);
}

// Wine's programs are found by their titles too.
class ByTitle : public RecordingClientWindows {
  public:
    WindowHandle FindWindowByClass(std::string_view windowClass) override {
        for (const Window& window : windows) {
            if (window.title.starts_with(windowClass)) {
                return window.handle;
            }
        }
        return 0;
    }
};

TEST_F(TranslatedWindowsTest, WineClient_ThatTheTitleFinds_IsKnownByItsRow) {
    ByTitle real;
    TranslatedWindows windows(real, LoadGameClients().rows);
    ClientWatch watch(m_state, windows);
    const struct {
        const char* windowClass;
        const char* title;
        const char* shown;
        const char* client;
    } rows[] = {
        {"orionuo.exe", "Ultima Online - Bran (Oak)", "Ultima Online - Bran (Oak)", "OrionUO"},
        {"orionuo.exe", "Ultima Online - account(Oak)", "Ultima Online - ? (?)", "OrionUO"},
        {"orionuo.exe", "Ultima Online", "Ultima Online - ? (?)", "OrionUO"},
        {"client.exe", "Ultima Online - account(Oak)", "Ultima Online - account(Oak)", nullptr},
        {"client.exe", kMira, kMira, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        real.windows = {{.handle = 7, .windowClass = row.windowClass, .title = row.title}};
        EXPECT_TRUE(watch.ReadClient());
        EXPECT_EQ(m_state.ClientWindow, 7U);
        EXPECT_EQ(m_state.ClientTitle, row.shown);
        EXPECT_EQ(windows.Current() == nullptr, row.client == nullptr);
    }
}

TEST_F(TranslatedWindowsTest, WithoutRows_TheClassicClientAloneIsKnown) {
    m_windows.SetClients({});
    Show(8, "ClassicUO", "Bran - ClassicUO - 1");
    EXPECT_EQ(Tick(), "Ultima Online - ? (?)");
    Show(7, "Ultima Online", kMira);
    EXPECT_EQ(Tick(), kMira);
}

TEST_F(TranslatedWindowsTest, OnWindows_TheOtherColumnCounts) {
    m_real.classKind = WindowClassKind::kWindows;
    m_windows.SetClients(LoadGameClients().rows);
    Show(8, "SDL_app", "Bran - ClassicUO - 1");
    EXPECT_EQ(Tick(), "Ultima Online - Bran (ClassicUO)");
}

}  // namespace
}  // namespace spellwick
