#include "link/client_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_client_windows.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";
constexpr const char* kBran = "Ultima Online - Bran (Oak Hill)";

// Writes down the calls of the watch, with the player that each save and load is for.
class RecordingHost : public ClientWatchHost {
  public:
    explicit RecordingHost(const SharedState& state) : m_state(state) {}

    void ShowCaption() override {
        caption = CaptionText(m_state.CharacterName, m_state.ServerName);
    }
    void SavePlayer() override { calls.push_back("save " + m_state.CurrentPlayerName); }
    void LoadPlayer() override { calls.push_back("load " + m_state.CurrentPlayerName); }
    void UpdatePage() override { calls.emplace_back("page"); }
    void FindAssist() override { calls.emplace_back("assist"); }

    std::vector<std::string> calls;
    std::string caption;

  private:
    const SharedState& m_state;
};

class ClientWatchTest : public testing::Test {
  protected:
    void ShowClient(const std::string& title, const char* windowClass = "Ultima Online") {
        m_windows.windows = {{.handle = 7, .windowClass = windowClass, .title = title}};
    }

    // Calls of one tick.
    std::vector<std::string> Tick() {
        m_host.calls.clear();
        m_watch.Tick();
        return m_host.calls;
    }

    SharedState m_state;
    std::vector<std::string> m_log;
    RecordingClientWindows m_windows{&m_log};
    RecordingHost m_host{m_state};
    ClientWatch m_watch{m_state, m_windows, m_host};
};

struct TitleRow {
    const char* name;
    std::string title;
    std::optional<TitleNames> names;
};

TEST(ParseTitle, Table) {
    const std::string prefix = "Ultima Online - ";
    const std::vector<TitleRow> rows{
        {"character and server", kMira, TitleNames{"Mira Talon", "Atlantic"}},
        {"blanks inside both parts stay", prefix + "Lady Bran  Ash (Oak Hill North)",
         TitleNames{"Lady Bran  Ash", "Oak Hill North"}},
        {"the program's name alone", "Ultima Online", std::nullopt},
        {"empty", "", std::nullopt},
        {"no bracket", prefix + "Mira Talon", std::nullopt},
        {"a bracket only before the names", "Ultima (Online) Mira", std::nullopt},
        {"no closing bracket", prefix + "Mira (Atlantic and on",
         TitleNames{"Mira", "Atlantic and on"}},
        {"only the first brackets count", prefix + "Mira (Atl) (x) y", TitleNames{"Mira", "Atl"}},
        {"text behind the bracket is dropped", prefix + "Mira (Atl) - full",
         TitleNames{"Mira", "Atl"}},
        {"bracket in second place", prefix + " (Atlantic)", TitleNames{"", "Atlantic"}},
        {"what stands before the bracket goes unseen", prefix + "Mira_(Atlantic)",
         TitleNames{"Mira", "Atlantic"}},
        {"empty server", prefix + "Mira ()", TitleNames{"Mira", ""}},
        {"the placeholder", std::string(kNoClientTitle), TitleNames{"?", "?"}},
        {"another title's first characters are skipped unseen", "0123456789abcdefMira (Atl)",
         TitleNames{"Mira", "Atl"}},
        {"characters count, not bytes", prefix + "Zoë Ünal (Größe)",
         TitleNames{"Zoë Ünal", "Größe"}},
        {"a wide character before the bracket", prefix + "Mira🔥(Atl)", TitleNames{"Mira", "Atl"}},
        {"right to left", prefix + "שלום (אטלנטיק)", TitleNames{"שלום", "אטלנטיק"}},
        {"quotes and slashes", prefix + R"(O'Neil "x" a/b\c (S/1))",
         TitleNames{R"(O'Neil "x" a/b\c)", "S/1"}},
    };
    for (const TitleRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ParseTitle(row.title), row.names);
    }
}

TEST(ParseTitle, TitleOf5000Characters_IsReadWhole) {
    const std::string character(2500, 'm');
    const std::string server(2480, 's');
    EXPECT_EQ(ParseTitle("Ultima Online - " + character + " (" + server + ")"),
              (TitleNames{character, server}));
}

TEST(ParseTitle, BracketInFirstPlace_Fails) {
    for (const char* title :
         {"Ultima Online - (Atlantic)", "Ultima Online - ()", "Ultima Online - ("}) {
        SCOPED_TRACE(title);
        try {
            ParseTitle(title);
            FAIL() << "no failure";
        } catch (const RuntimeFailure& failure) {
            EXPECT_EQ(failure.Kind(), FailureKind::kInvalidCall);
        }
    }
}

TEST(CaptionText, HasThreeBlanksBeforeEachLabel) {
    EXPECT_EQ(CaptionText("Mira Talon", "Atlantic"),
              "Spellwick 7.5   Character: Mira Talon   Server: Atlantic");
}

TEST_F(ClientWatchTest, FindClient_TriesBothClassesInOrder) {
    EXPECT_FALSE(m_watch.FindClient());
    EXPECT_THAT(m_log, ElementsAre("find Ultima Online", "find Ultima Online Third Dawn"));

    m_log.clear();
    ShowClient(kMira);
    EXPECT_TRUE(m_watch.FindClient());
    EXPECT_THAT(m_log, ElementsAre("find Ultima Online"));
    EXPECT_EQ(m_state.ClientWindow, 7U);

    ShowClient(kMira, "Ultima Online Third Dawn");
    EXPECT_TRUE(m_watch.FindClient());
    EXPECT_EQ(m_state.ClientWindow, 7U);
}

TEST_F(ClientWatchTest, Tick_NoClient_SetsThePlaceholderAndLeavesCaptionAndPlayer) {
    m_state.CurrentPlayerName = kMira;
    m_host.caption = "as it was";
    EXPECT_THAT(Tick(), ElementsAre("assist"));
    EXPECT_EQ(m_state.ClientWindow, 0U);
    EXPECT_EQ(m_state.ClientTitle, "Ultima Online - ? (?)");
    EXPECT_EQ(m_state.CharacterName, "?");
    EXPECT_EQ(m_state.ServerName, "?");
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(m_host.caption, "as it was");
}

TEST_F(ClientWatchTest, Tick_FirstLogin_LoadsWithoutASave) {
    ShowClient(kMira);
    EXPECT_THAT(Tick(),
                ElementsAre("load Ultima Online - Mira Talon (Atlantic)", "page", "assist"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(m_host.caption, "Spellwick 7.5   Character: Mira Talon   Server: Atlantic");
}

TEST_F(ClientWatchTest, Tick_SameTitle_TouchesNoProfile) {
    ShowClient(kMira);
    Tick();
    EXPECT_THAT(Tick(), ElementsAre("assist"));
}

TEST_F(ClientWatchTest, Tick_TitleInOtherCase_IsAnotherPlayer) {
    ShowClient(kMira);
    Tick();
    ShowClient("Ultima Online - mira talon (Atlantic)");
    EXPECT_THAT(Tick(),
                ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                            "load Ultima Online - mira talon (Atlantic)", "page", "assist"));
}

TEST_F(ClientWatchTest, Tick_OtherCharacter_SavesTheOldBeforeTheNewIsLoaded) {
    ShowClient(kMira);
    Tick();
    ShowClient(kBran);
    EXPECT_THAT(Tick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                                    "load Ultima Online - Bran (Oak Hill)", "page", "assist"));
    EXPECT_EQ(m_state.CharacterName, "Bran");
    EXPECT_EQ(m_state.ServerName, "Oak Hill");
}

TEST_F(ClientWatchTest, Tick_ClientClosesAndComesBack_NeitherSavesNorLoads) {
    ShowClient(kMira);
    Tick();
    m_windows.windows.clear();
    EXPECT_THAT(Tick(), ElementsAre("assist"));
    ShowClient(kMira);
    EXPECT_THAT(Tick(), ElementsAre("assist"));
    EXPECT_EQ(m_state.ServerName, "Atlantic");
}

// covers ODDITY(saves-at-login-screen)
TEST_F(ClientWatchTest, Tick_Oddity_OldPlayerIsSavedEachSecondAtTheLoginScreen) {
    ShowClient(kMira);
    Tick();
    m_windows.windows.clear();
    Tick();
    ShowClient("Ultima Online");
    for (int second = 0; second < 3; ++second) {
        EXPECT_THAT(Tick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)", "assist"));
    }
    ShowClient(kBran);
    EXPECT_THAT(Tick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                                    "load Ultima Online - Bran (Oak Hill)", "page", "assist"));
}

TEST_F(ClientWatchTest, Tick_EmptyServer_DoesNotSwitch) {
    ShowClient(kMira);
    Tick();
    ShowClient("Ultima Online - Mira Talon ()");
    EXPECT_THAT(Tick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)", "assist"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

// covers ODDITY(bare-title-is-a-player)
TEST_F(ClientWatchTest, Tick_Oddity_BareTitleAfterAServerBecomesAPlayer) {
    ShowClient(kMira);
    Tick();
    ShowClient("Ultima Online");
    EXPECT_THAT(Tick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                                    "load Ultima Online", "page", "assist"));
    EXPECT_EQ(m_state.CharacterName, "Mira Talon");
    EXPECT_EQ(m_state.ServerName, "Atlantic");
}

// covers ODDITY(title-prefix-unread)
TEST_F(ClientWatchTest, Tick_Oddity_AnyTitleOfTheClassIsParsed) {
    ShowClient("Some other window Mira (Atlantic)");
    Tick();
    EXPECT_EQ(m_state.CharacterName, "w Mira");
    EXPECT_EQ(m_state.CurrentPlayerName, "Some other window Mira (Atlantic)");
}

TEST_F(ClientWatchTest, Tick_TwoClients_TakesWhatTheSearchReturns) {
    m_windows.windows = {{.handle = 7, .windowClass = "Ultima Online", .title = kMira},
                         {.handle = 8, .windowClass = "Ultima Online", .title = kBran}};
    Tick();
    EXPECT_EQ(m_state.ClientWindow, 7U);
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_THAT(Tick(), ElementsAre("assist"));
}

TEST_F(ClientWatchTest, Tick_ClientClosesWhileItsTitleIsRead_KeepsThePlayer) {
    // Finds a client, but has no title for it, and no client the next time.
    class ClosingClient : public ClientWindows {
      public:
        WindowHandle FindWindowByClass(std::string_view /*windowClass*/) override {
            return m_searches++ == 0 ? 7 : 0;
        }
        std::string WindowTitle(WindowHandle /*window*/) override { return {}; }
        bool SetForegroundWindow(WindowHandle /*window*/) override { return false; }
        bool IsForegroundWindow(WindowHandle /*window*/) override { return false; }
        bool SetFocus(WindowHandle /*window*/) override { return false; }

      private:
        int m_searches = 0;
    };
    m_state.CurrentPlayerName = kMira;
    m_state.ServerName = "Atlantic";
    ClosingClient windows;
    ClientWatch watch(m_state, windows, m_host);
    watch.Tick();
    EXPECT_THAT(m_host.calls, ElementsAre("assist"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(m_state.ServerName, "?");
}

TEST_F(ClientWatchTest, ParseClientTitle_NoBracket_KeepsTheNamesAndShowsTheCaption) {
    m_state.CharacterName = "Mira Talon";
    m_state.ServerName = "Atlantic";
    m_state.ClientTitle = "Ultima Online";
    m_watch.ParseClientTitle();
    EXPECT_EQ(m_host.caption, "Spellwick 7.5   Character: Mira Talon   Server: Atlantic");
    EXPECT_THAT(m_host.calls, IsEmpty());
}

}  // namespace
}  // namespace spellwick
