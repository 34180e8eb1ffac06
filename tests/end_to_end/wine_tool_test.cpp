// Spellwick beside an assist tool in Wine, with the bridge between them.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>

#include "platform/linux/x11_connection.h"
#include "tests/bridge/socket_client.h"
#include "tests/bridge/wine_desk.h"
#include "tests/end_to_end/player_desk.h"
#include "tests/support/pace.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::IsSupersetOf;

constexpr int kCountButton = 3;
constexpr int kBloodmoss = 3;
constexpr i32 kHealNumber = 4;

constexpr std::uint32_t kStock = 0x52d;
constexpr std::uint32_t kCast = 0x52e;
constexpr std::uint32_t kStatistics = 0x531;
// What tests/bridge/peers/wine_tool.c is steered by.
constexpr std::uint32_t kReport = 0x8001;
constexpr std::uint32_t kSetNumber = 0x8002;
constexpr std::uint32_t kFlood = 0x8003;
constexpr std::uint32_t kHang = 0x8005;
constexpr std::uint32_t kRegistered = 0x8006;
constexpr std::uint32_t kDie = 0x8007;

class WineTool : public PlayerDesk {
  protected:
    static void SetUpTestSuite() {
        if (WinePrefixFolder::WhatIsMissing().empty()) {
            prefix = std::make_unique<WinePrefixFolder>();
        }
    }
    static void TearDownTestSuite() { prefix.reset(); }

    void SetUp() override {
        if (const std::string missing = WinePrefixFolder::WhatIsMissing(); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        PlayerDesk::SetUp();
    }

    void TearDown() override {
        if (HasFailure() && m_bridge) {
            ADD_FAILURE() << "The bridge said: " << m_bridge->Output() << "In Wine run:\n"
                          << prefix->Threads();
        }
        m_steer.reset();
        m_bridge.reset();
        m_tool.reset();
        if (prefix) {
            // Its desktop is on a display that goes.
            prefix->ShutDown();
        }
        PlayerDesk::TearDown();
    }

    const Environment& Variables() const { return m_desk->Session().Variables(); }

    void StartTool(const WineToolForm& form = kUoAssist) {
        m_steer.reset();
        // On a busy machine Wine at times does not come up so soon after its end.
        for (int tries = 0; tries < 2 && !m_steer; ++tries) {
            m_tool = prefix->StartTool(Variables(), form);
            ASSERT_TRUE(m_tool);
            // A line to it beside Spellwick's.
            m_steer = SocketClient::Find(m_desk->Session().RuntimeDir() / "spellwick" / "assist",
                                         form.title);
            if (!m_steer && m_tool->Runs()) {
                break;  // it is there, and was not found
            }
        }
        ASSERT_TRUE(m_steer) << m_tool->Output();
    }
    // A tool that was slow to answer is asked again after 2, 4, 8 and 16 seconds.
    testing::AssertionResult WaitLinked() {
        std::string registered;
        const bool isLinked = WaitUntil(
            [&] {
                const std::optional<i32> count = m_steer->Ask(kRegistered);
                registered = count ? std::to_string(*count) : "none";
                return count == 1;
            },
            40s);
        return isLinked ? testing::AssertionSuccess()
                        : testing::AssertionFailure()
                              << "windows registered with the tool: " << registered;
    }

    void StartAll(const WineToolForm& form = kUoAssist) {
        PrepareMage(kMira, 10);
        StartGame();
        TellGame("login 1");
        m_bridge = prefix->StartBridge(Variables());
        ASSERT_TRUE(m_bridge);
        ASSERT_NO_FATAL_FAILURE(StartTool(form));
        StartSpellwick();
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
        ASSERT_TRUE(WaitLinked());
        m_desk->RestingPicture(Window());
    }

    // The tool sends a report and waits until it is taken.
    void Report(std::uint32_t number, i32 wParam, i32 lParam) {
        EXPECT_EQ(m_steer->Ask(kSetNumber, static_cast<i32>(number)), 1);
        EXPECT_EQ(m_steer->Ask(kReport, wParam, lParam), 1);
    }
    void TypeHeal() {
        std::vector<std::string> expected = Typed();
        expected.insert(expected.end(), {"key Alt+4", "cast Heal", "key Enter"});
        ClickSpell(kHeal);
        ASSERT_TRUE(WaitTyped(expected)) << testing::PrintToString(Typed());
    }
    void ClickCount() { m_desk->Click(Window(), Command(kCountButton)); }

    // Closes Spellwick as a user would and checks what it has saved.
    void ExpectSaved(const std::vector<std::pair<const std::string, std::string>>& values) {
        m_desk->RestingPicture(Window());
        ASSERT_EQ(CloseSpellwick(), 0) << "it still answers";
        EXPECT_THAT(StoredSection(kMira), IsSupersetOf(values));
    }

    // The pixels of one counter.
    Picture CounterPicture(int reagent) const {
        xcb_connection_t* connection = m_desk->Session().Connection();
        const Place place = Counter(reagent);
        const auto reply = OwnReply(
            xcb_get_image_reply(connection,
                                xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, Window(),
                                              static_cast<std::int16_t>(place.x - 12),
                                              static_cast<std::int16_t>(place.y - 6), 40, 12, ~0U),
                                nullptr));
        Picture picture;
        if (reply != nullptr) {
            const std::uint8_t* data = xcb_get_image_data(reply.get());
            picture.assign(data, data + xcb_get_image_data_length(reply.get()));
        }
        return picture;
    }

    static std::unique_ptr<WinePrefixFolder> prefix;
    std::unique_ptr<ChildProcess> m_bridge;
    std::unique_ptr<ChildProcess> m_tool;
    std::optional<SocketClient> m_steer;
};

std::unique_ptr<WinePrefixFolder> WineTool::prefix;

TEST_F(WineTool, CountCastsAndMana_FollowTheTool) {
    Prepare(kGlobal, {{"Meditate", "1"}, {"MeditateLevel", "20"}});
    StartAll();
    ClickCount();
    m_desk->RestingPicture(Window());
    // A click is paid by the report alone; here the second fizzles and is not reported.
    TypeHeal();
    Report(kCast, kHealNumber, 0);
    TypeHeal();
    // A fall of the mana below the level meditates.
    Report(kStatistics, 95, 50);
    const std::size_t typed = Typed().size();
    Report(kStatistics, 95, 15);
    EXPECT_TRUE(WaitUntil([&] { return Typed().size() > typed; })) << "Meditate is pressed";
    ExpectSaved({{"BM 0", "80"},
                 {"BP 0", "120"},
                 {"GA 0", "59"},
                 {"GI 0", "59"},
                 {"MR 0", "150"},
                 {"NI 0", "40"},
                 {"SA 0", "90"},
                 {"SS 0", "74"},
                 {"BW 0", "30"},
                 {"PI 0", "25"},
                 {"CurrentTithing", " 15000"},
                 {"Intelligence", "95"}});
}

constexpr WineToolForm kRazor{"razor", "WindowsForms10.Window", "Mira (Oak) - Razor v1.9"};
constexpr WineToolForm kEnhanced{"razor", "WindowsForms10.Window", "Razor Enhanced 0.8.2"};
constexpr WineToolForm kHidden{"other", "UOASSIST-TP-MSG-WND", "UOASSIST-TP-MSG-WND"};

TEST_F(WineTool, Razor_IsUnderstoodInWhatItReports) {
    StartAll(kRazor);
    // The click has paid for the first cast, and the stock tells of the second.
    TypeHeal();
    Report(kCast, kHealNumber, 0);
    TypeHeal();
    Report(kCast, kHealNumber, 0);
    for (const i32 reagent : {3, 4, 8}) {
        Report(kStock, reagent, 41);
    }
    Report(kStatistics, 120, 33);  // the largest mana, and the mana
    ExpectSaved({{"SS 0", "41"}, {"GA 0", "41"}, {"GI 0", "41"}, {"Intelligence", "100"}});
}

TEST_F(WineTool, RazorEnhanced_ReportsNoStock_EachCastIsPaidOnce) {
    StartAll(kEnhanced);
    TypeHeal();
    Report(kCast, kHealNumber, 0);
    TypeHeal();
    Report(kCast, kHealNumber, 0);
    Report(kCast, kHealNumber + 1, 0);  // no click stands at that place
    ExpectSaved({{"SS 0", "8"}, {"GA 0", "8"}, {"GI 0", "8"}, {"MR 0", "10"}});
}

TEST_F(WineTool, HiddenWindowOfAClient_ReportsNoCasts_TheClickPays) {
    StartAll(kHidden);
    TypeHeal();
    Report(kStatistics, 120, 33);  // hits, where mana belongs
    TypeHeal();
    ExpectSaved({{"SS 0", "8"}, {"GA 0", "8"}, {"GI 0", "8"}, {"Intelligence", "100"}});
}

TEST_F(WineTool, Report_IsOnTheScreenWithinTenMilliseconds) {
    StartAll();
    m_desk->MoveMouse({1200, 1000});
    m_desk->RestingPicture(Window());
    ASSERT_EQ(m_steer->Ask(kSetNumber, static_cast<i32>(kStock)), 1);
    constexpr int kReports = 40;
    constexpr int kRounds = 10;
    constexpr double kBound = 10.0 * kPace;  // milliseconds
    double best = kBound;
    // Other programs may have the processor for seconds: one round without them is enough.
    for (int round = 0; round < kRounds && best >= kBound; ++round) {
        std::vector<double> times;
        for (int i = 0; i < kReports; ++i) {
            const Picture before = CounterPicture(kBloodmoss);
            const auto start = steady_clock::now();
            ASSERT_TRUE(m_steer->Send(kReport, 1, 100 + 7 * (round * kReports + i)));
            while (CounterPicture(kBloodmoss) == before && steady_clock::now() - start < 5s) {
            }
            times.push_back(
                std::chrono::duration<double, std::milli>(steady_clock::now() - start).count());
            std::this_thread::sleep_for(10ms);
        }
        std::ranges::sort(times);
        const double median = times[times.size() / 2];
        best = std::min(best, median);
        RecordProperty("longest_ms_" + std::to_string(round), std::to_string(times.back()));
        RecordProperty("median_ms_" + std::to_string(round), std::to_string(median));
    }
    EXPECT_LT(best, kBound);
    ASSERT_EQ(CloseSpellwick(), 0);
}

TEST_F(WineTool, TenThousandReports_AllCountAndSpellwickGoesOn) {
    StartAll();
    EXPECT_EQ(m_steer->Ask(kFlood, 10000), 1);
    TypeHeal();
    ASSERT_TRUE(WaitUntil([&] { return m_steer->Ask(kRegistered) == 1; }));
    ExpectSaved({{"BM 0", "10000"}, {"SS 0", "10"}});
}

TEST_F(WineTool, ToolThatHangs_HoldsUpNeitherCountNorCastForLong) {
    StartAll();
    ASSERT_EQ(m_steer->Ask(kHang, 3500), 1);
    const auto start = steady_clock::now();
    ClickCount();
    TypeHeal();
    EXPECT_LT(steady_clock::now() - start, 3s * kPace);
    // Back again, it counts after all.
    ASSERT_EQ(m_steer->Ask(kRegistered), 1);
    ExpectSaved({{"BM 0", "80"}, {"SS 0", "75"}});
}

TEST_F(WineTool, ToolAndPrefixThatEnd_AreMissedAndLinkedAnew) {
    StartAll();
    EXPECT_TRUE(m_steer->Send(kDie));
    EXPECT_TRUE(m_steer->WaitGone());
    std::this_thread::sleep_for(1500ms);  // a tick of the watch
    TypeHeal();                           // paid for at the click
    ASSERT_NO_FATAL_FAILURE(StartTool());
    ASSERT_TRUE(WaitLinked());
    // All of Wine ends in the middle of reports.
    EXPECT_TRUE(m_steer->Send(kFlood, 2000));
    prefix->ShutDown();
    EXPECT_TRUE(m_steer->WaitGone());
    std::this_thread::sleep_for(1500ms);
    TypeHeal();
    ASSERT_NO_FATAL_FAILURE(StartTool());
    ASSERT_TRUE(WaitLinked());
    Report(kStock, 1, 33);
    Report(kCast, kHealNumber, 0);
    ExpectSaved({{"BM 0", "33"}, {"SS 0", "7"}, {"GA 0", "7"}, {"GI 0", "7"}});
}

TEST_F(WineTool, BridgeAndSpellwickThatRestart_LinkAnew) {
    StartAll();
    ASSERT_EQ(CloseSpellwick(), 0);
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    ASSERT_TRUE(WaitUntil([&] {
        Report(kStock, 2, 5);  // with it the tool forgets the window that is gone
        return m_steer->Ask(kRegistered) == 1;
    }));
    m_bridge->Signal(SIGKILL);
    m_bridge->WaitForEnd(5s);
    EXPECT_TRUE(m_steer->WaitGone());
    m_bridge = prefix->StartBridge(Variables());  // at once, which Spellwick notices all the same
    m_steer = SocketClient::Find(m_desk->Session().RuntimeDir() / "spellwick" / "assist",
                                 kUoAssist.title);
    ASSERT_TRUE(m_steer);
    Report(kStock, 2, 6);
    ASSERT_TRUE(WaitLinked());
    Report(kStock, 1, 34);
    ExpectSaved({{"BM 0", "34"}});
}

}  // namespace
}  // namespace spellwick::testing_support
