// Casts into a window of SDL, as today's clients open it: each chord arrives with exactly its
// modifiers, and nothing of a text is lost.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;

constexpr const char* kPython = "/usr/bin/python3";  // the one with the packages of the system
constexpr const char* kBranOfClassicUo = "Ultima Online - Bran (ClassicUO)";
constexpr const char* kTitle = "Bran - ClassicUO - 1.0";
constexpr int kSlots = 8;
constexpr int kCasts = 200;

struct Macro {
    const char* saved;
    const char* chord;
};

// One key of each kind for the first eight spells.
constexpr Macro kMacros[kSlots] = {{"A--1", "key Alt+1"},        {"-C-2", "key Ctrl+2"},
                                   {"AC-3", "key Ctrl+Alt+3"},   {"A-S4", "key Alt+Shift+4"},
                                   {"-CS5", "key Ctrl+Shift+5"}, {"ACSQ", "key Ctrl+Alt+Shift+Q"},
                                   {"A--{F7}", "key Alt+F7"},    {"ACS8", "key Ctrl+Alt+Shift+8"}};

class SdlClient : public PlayerDesk {
  protected:
    void SetUp() override {
        if (RunToEnd({kPython, "-c", "import pygame"}).exitCode != 0) {
            GTEST_SKIP() << "not installed: python3-pygame";
        }
        PlayerDesk::SetUp();
    }

    void StartInSdlClient(int framesASecond) {
        PrepareMage(kBranOfClassicUo, 30000);
        for (int slot = 0; slot < kSlots; ++slot) {
            Prepare(kGlobal, {{"Macro " + std::to_string(slot + 1), kMacros[slot].saved}});
        }
        const XSession& session = m_desk->Session();
        Environment variables = session.Variables();
        variables["SDL_VIDEO_X11_WMCLASS"] = "ClassicUO";
        m_client = ChildProcess::Start({kPython, SDL_GAME, kTitle, std::to_string(framesASecond)},
                                       variables);
        ASSERT_TRUE(m_client);
        ASSERT_NE(m_desk->WaitWindow(kTitle), 0U) << m_client->Output();
        StartSpellwick();
        ASSERT_TRUE(WaitCharacter("Bran"));
    }

    // A click while a modifier of the last chord is down would be another click.
    bool WaitReleased() const {
        return WaitUntil([this] {
            return m_desk->Session().Keyboard().keysDown == decltype(KeyboardState::keysDown){};
        });
    }

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        std::istringstream output(m_client->Output());
        for (std::string line; std::getline(output, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::unique_ptr<ChildProcess> m_client;
};

TEST_F(SdlClient, TwoHundredCasts_EachChordIsExact) {
    StartInSdlClient(60);
    std::vector<std::string> expected;
    for (int cast = 0; cast < kCasts; ++cast) {
        ClickSpell(cast % kSlots);
        expected.emplace_back(kMacros[cast % kSlots].chord);
        WaitUntil([&] { return Lines().size() >= expected.size(); });
        ASSERT_EQ(Lines(), expected);
        ASSERT_TRUE(WaitReleased());
    }
}

// Digits need Shift there; SDL names the keys by them all the same.
TEST_F(SdlClient, FrenchKeyboard_DigitsComeWithoutShift) {
    ASSERT_TRUE(m_desk->Session().SetLayout("fr"));
    StartInSdlClient(60);
    ClickSpell(0);
    EXPECT_TRUE(WaitUntil([&] { return Lines() == std::vector<std::string>{"key Alt+1"}; }))
        << testing::PrintToString(Lines());
    ASSERT_TRUE(m_desk->Session().SetLayout("us"));
}

class SlowSdlClient : public SdlClient, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(FramesASecond, SlowSdlClient, testing::Values(5, 20));

// With few frames SDL sees its focus only after the pause, and takes the keys that are down then
// for held ones.
TEST_P(SlowSdlClient, Text_ArrivesWhole) {
    Prepare(kBranOfClassicUo, {{"SendSpellSuffix", "1"}, {"SpellTextSuffix", "... Alakazam ..."}});
    StartInSdlClient(GetParam());
    std::vector<std::string> expected;
    for (int slot = 0; slot < kSlots; ++slot) {
        ClickSpell(slot);
        expected.insert(expected.end(), {kMacros[slot].chord, "say ... Alakazam ..."});
        WaitUntil([&] { return Lines().size() >= expected.size(); });
        ASSERT_EQ(Lines(), expected);
        ASSERT_TRUE(WaitReleased());
    }
}

}  // namespace
}  // namespace spellwick::testing_support
