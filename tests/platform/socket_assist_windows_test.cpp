// Finding assist tools: sockets, titles.
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/socket_assist_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ToolSocket;

TEST_F(SocketAssist, NoFolder_NoWindow) {
    std::filesystem::remove_all(m_folder);
    EXPECT_THAT(Titles(), IsEmpty());
    std::filesystem::remove_all(m_top);
    EXPECT_THAT(Titles(), IsEmpty());
}

TEST_F(SocketAssist, Tools_AreEnumeratedInTheOrderOfTheirNames) {
    ToolSocket second(m_folder, "b.sock");
    Greet(second, "second");
    ToolSocket third(m_folder, "c.sock");
    Greet(third, "third");
    ToolSocket first(m_folder, "a.sock");
    Greet(first, "first");
    ToolSocket otherName(m_folder, "d.socket");
    EXPECT_THAT(Titles(), ElementsAre("first", "second", "third"));
    EXPECT_FALSE(otherName.Accept(0ms));
}

TEST_F(SocketAssist, TitleInUtf8_ComesWhole) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool, "UOAssist \xe2\x80\x93 Mira");
    EXPECT_THAT(Titles(), ElementsAre("UOAssist \xe2\x80\x93 Mira"));
}

TEST_F(SocketAssist, FileWithoutAListener_IsNoWindow) {
    {
        ToolSocket tool(m_folder, "a.sock");
        tool.CloseListener();
    }
    std::filesystem::create_directory(m_folder / "b.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(m_folder / "a.sock"));
}

TEST_F(SocketAssist, SilentTool_HoldsUpOneSearchShortlyAndNoOther) {
    constexpr auto kGreeting = 1s;
    SocketAssistTransport transport(m_folder, {.answers = kPatience, .greeting = kGreeting});
    ToolSocket tool(m_folder, "a.sock");
    const auto titles = [&transport] {
        std::vector<std::string> found;
        transport.EnumWindows(
            [&found](WindowHandle, std::string_view title) { found.emplace_back(title); });
        return found;
    };
    EXPECT_THAT(titles(), IsEmpty());
    const auto start = steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        EXPECT_THAT(titles(), IsEmpty());
    }
    EXPECT_LT(steady_clock::now() - start, kGreeting) << "not one has waited";
    ASSERT_TRUE(tool.AcceptAndGreet("UOAssist"));
    EXPECT_THAT(titles(), ElementsAre("UOAssist"));
}

TEST_F(SocketAssist, GreetingInPieces_CountsOnceItIsWhole) {
    ToolSocket tool(m_folder, "a.sock");
    Titles();
    ASSERT_TRUE(tool.Accept());
    tool.Write("title UOA");
    EXPECT_THAT(Titles(), IsEmpty());
    tool.Write("ssist");
    EXPECT_THAT(Titles(), IsEmpty());
    tool.Write("\n");
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
}

TEST_F(SocketAssist, BadGreeting_IsNoWindowAndLookedForAgain) {
    for (const std::string greeting : {"send 1325 1 80\n", "UOAssist\n", "result 1\n"}) {
        ToolSocket tool(m_folder, "a.sock");
        std::thread greeting1([&] {
            ASSERT_TRUE(tool.Accept());
            EXPECT_TRUE(tool.Write(greeting));
        });
        EXPECT_THAT(Titles(), IsEmpty());
        greeting1.join();
        EXPECT_TRUE(tool.PeerHasGone());
        Greet(tool);
    }
}

TEST_F(SocketAssist, ClosedTool_HasNoWindowAtTheNextSearch) {
    auto tool = std::make_unique<ToolSocket>(m_folder, "a.sock");
    Greet(*tool);
    const WindowHandle before = m_window;
    tool.reset();
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_FALSE(IsReadable(20ms));
    tool = std::make_unique<ToolSocket>(m_folder, "a.sock");
    Greet(*tool);
    EXPECT_NE(m_window, before);
}

TEST_F(SocketAssist, ToolThatComesAndGoes_LeavesNoDescriptorBehind) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    Titles();
    const auto before = descriptors();
    for (int round = 0; round < 20; ++round) {
        ToolSocket tool(m_folder, "a.sock");
        Greet(tool);
        if (round % 2 == 0) {
            tool.Write("broken\n");  // dropped by us, not closed by the tool
        }
        ServeFor(5ms);
    }
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_EQ(descriptors(), before);
}

TEST_F(SocketAssist, ManySockets_AtMostSixteenAreTalkedToAtATime) {
    std::vector<std::unique_ptr<ToolSocket>> tools;
    for (int i = 10; i < 50; ++i) {
        tools.push_back(std::make_unique<ToolSocket>(m_folder, std::to_string(i) + ".sock"));
    }
    Titles();
    std::size_t connected = 0;
    for (const auto& tool : tools) {
        connected += tool->Accept(0ms) ? 1U : 0U;
    }
    EXPECT_EQ(connected, 16U);
}

// Searches find a live one behind dead ones: so many in the first, and all in turn.
TEST_F(SocketAssist, ManySocketsWithoutAListener_HideNoTool) {
    const auto leave = [this](int first, int last) {
        for (int i = first; i < last; ++i) {
            ToolSocket(m_folder, "dead" + std::to_string(i) + ".sock").CloseListener();
        }
    };
    leave(0, 500);
    ToolSocket tool(m_folder, "live.sock");
    Greet(tool);
    tool.CloseConnection();
    leave(500, 1500);
    EXPECT_THAT(Titles(), IsEmpty());
    std::thread greeter([&] { EXPECT_TRUE(tool.AcceptAndGreet("UOAssist")); });
    bool found = false;
    for (int search = 0; search < 3 && !found; ++search) {
        found = !Titles().empty();
    }
    greeter.join();
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
}

std::vector<std::unique_ptr<ToolSocket>> MuteTools(const std::filesystem::path& folder, int count) {
    std::vector<std::unique_ptr<ToolSocket>> tools;
    tools.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        tools.push_back(
            std::make_unique<ToolSocket>(folder, "mute" + std::to_string(10 + i) + ".sock"));
    }
    return tools;
}

TEST_F(SocketAssist, MuteTools_MakeRoomForOneWithATitle) {
    const auto mute = MuteTools(m_folder, 16);
    Titles();
    std::this_thread::sleep_for(100ms);
    ToolSocket tool(m_folder, "tool.sock");
    Greet(tool);
    // It keeps its place, whoever else comes.
    ToolSocket other(m_folder, "aa.sock");
    for (int search = 0; search < 3; ++search) {
        std::this_thread::sleep_for(60ms);
        EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
    }
}

TEST_F(SocketAssist, MoreMuteToolsThanPlaces_TakeTurns_Long) {
    const auto mute = MuteTools(m_folder, 40);
    std::size_t connected = 0;
    for (int search = 0; search < 3; ++search) {
        Titles();
        std::this_thread::sleep_for(60ms);
    }
    for (const auto& tool : mute) {
        connected += tool->Accept(0ms) ? 1U : 0U;
    }
    EXPECT_EQ(connected, 40U);
    // One that finds its title after all is there when its turn comes.
    std::thread greeter([&] {
        while (mute[20]->Accept(1s)) {
            mute[20]->Write("title UOAssist\n");
        }
    });
    bool found = false;
    for (int search = 0; search < 20 && !found; ++search) {
        std::this_thread::sleep_for(60ms);
        found = !Titles().empty();
    }
    EXPECT_TRUE(found);
    greeter.join();
}

TEST_F(SocketAssist, MuteToolsThatTakeTurns_AreNotWaitedForAgain) {
    SocketAssistTransport transport(m_folder, {.answers = {}, .greeting = 1s, .title = 0ms});
    const auto mute = MuteTools(m_folder, 17);
    const auto start = steady_clock::now();
    for (int search = 0; search < 30; ++search) {
        transport.EnumWindows([](WindowHandle, std::string_view) {});
        for (const auto& tool : mute) {
            tool->Accept(0ms);
        }
    }
    EXPECT_GE(steady_clock::now() - start, 1s) << "new ones are waited for";
    EXPECT_LT(steady_clock::now() - start, 20s);
}

}  // namespace
}  // namespace spellwick
