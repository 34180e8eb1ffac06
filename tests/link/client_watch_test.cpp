#include "link/client_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_client_windows.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

constexpr const char* kMira = "Ultima Online - Mira Talon (Atlantic)";
constexpr const char* kBran = "Ultima Online - Bran (Oak Hill)";

class ClientWatchTest : public testing::Test {
  protected:
    void ShowClient(const std::string& title, const char* windowClass = "Ultima Online") {
        m_windows.windows = {{.handle = 7, .windowClass = windowClass, .title = title}};
    }

    SharedState m_state;
    std::vector<std::string> m_log;
    RecordingClientWindows m_windows{&m_log};
    ClientWatch m_watch{m_state, m_windows};
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

TEST(IsRealServer, NeitherNothingNorAQuestionMark) {
    EXPECT_TRUE(IsRealServer("Atlantic"));
    EXPECT_TRUE(IsRealServer("??"));
    EXPECT_FALSE(IsRealServer(""));
    EXPECT_FALSE(IsRealServer("?"));
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

TEST_F(ClientWatchTest, ReadClient_NoClient_SetsThePlaceholder) {
    m_state.CurrentPlayerName = kMira;
    m_state.CharacterName = "Mira Talon";
    EXPECT_FALSE(m_watch.ReadClient());
    EXPECT_EQ(m_state.ClientWindow, 0U);
    EXPECT_EQ(m_state.ClientTitle, "Ultima Online - ? (?)");
    EXPECT_EQ(m_state.CharacterName, "?");
    EXPECT_EQ(m_state.ServerName, "?");
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

TEST_F(ClientWatchTest, ReadClient_TwoClients_TakesWhatTheSearchReturns) {
    m_windows.windows = {{.handle = 7, .windowClass = "Ultima Online", .title = kMira},
                         {.handle = 8, .windowClass = "Ultima Online", .title = kBran}};
    EXPECT_TRUE(m_watch.ReadClient());
    EXPECT_EQ(m_state.ClientWindow, 7U);
    EXPECT_EQ(m_state.ClientTitle, kMira);
}

TEST_F(ClientWatchTest, ReadClient_ClientClosesWhileItsTitleIsRead_KeepsThePlayer) {
    // Finds a client, but has no title for it, and no client the next time.
    class ClosingClient : public RecordingClientWindows {
      public:
        WindowHandle FindWindowByClass(std::string_view /*windowClass*/) override {
            return m_searches++ == 0 ? 7 : 0;
        }
        std::string WindowTitle(WindowHandle /*window*/) override { return {}; }

      private:
        int m_searches = 0;
    };
    m_state.CurrentPlayerName = kMira;
    m_state.ServerName = "Atlantic";
    ClosingClient windows;
    ClientWatch watch(m_state, windows);
    EXPECT_FALSE(watch.ReadClient());
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(m_state.ServerName, "?");
}

TEST_F(ClientWatchTest, ParseClientTitle_NoBracket_KeepsTheNames) {
    m_state.CharacterName = "Mira Talon";
    m_state.ServerName = "Atlantic";
    m_state.ClientTitle = "Ultima Online";
    m_watch.ParseClientTitle();
    EXPECT_EQ(m_state.CharacterName, "Mira Talon");
    EXPECT_EQ(m_state.ServerName, "Atlantic");
}

}  // namespace
}  // namespace spellwick
