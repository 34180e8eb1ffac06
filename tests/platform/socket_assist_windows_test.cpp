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
    ToolSocket tool(m_folder, "a.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    const auto start = steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        EXPECT_THAT(Titles(), IsEmpty());
    }
    EXPECT_LT(steady_clock::now() - start, 100ms);
    ASSERT_TRUE(tool.AcceptAndGreet("UOAssist"));
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
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

TEST_F(SocketAssist, ManySockets_AtMostSixteenAreTalkedTo) {
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

}  // namespace
}  // namespace spellwick
