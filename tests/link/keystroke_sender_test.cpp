#include "link/keystroke_sender.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/link/hand_made_keymaps.h"
#include "tests/support/any_target.h"
#include "tests/support/recording_keyboard.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using namespace hand_made;
using testing::ElementsAre;
using testing::IsEmpty;

std::string TypedOn(const Keymap& keymap, std::string_view text) {
    RecordingKeyboard keyboard(keymap);
    KeystrokeSender sender(keyboard);
    const SendResult result = sender.SendKeys(text, true, anywhere);
    EXPECT_TRUE(result.Ok()) << result.error;
    EXPECT_THAT(keyboard.Down(), IsEmpty());
    EXPECT_EQ(keyboard.keymap.locked, keymap.locked);
    return keyboard.Typed();
}

TEST(KeystrokeSender, Cast_IsTypedWithItsModifiers) {
    EXPECT_EQ(TypedOn(Us(), "%{f1}{ENTER}... Alakazam ...{ENTER}"),
              "<Alt+F1><Enter>... Alakazam ...<Enter>");
    EXPECT_EQ(TypedOn(Us(), "%^+q+1"), "<Ctrl+Alt+Shift+Q>!");
    EXPECT_EQ(TypedOn(Us(), "^a"), "<Ctrl+a>");
    EXPECT_EQ(TypedOn(Us(), "a"), "a");
}

TEST(KeystrokeSender, EveryLayoutAndLock_TheTextIsAsWritten) {
    const std::string text = "aA zy \u00e4\u00df\u20ac@{~} 1! ";
    const std::string typed = "aA zy \u00e4\u00df\u20ac@~ 1! ";
    for (const Keymap& layout : {Us(), De(), Fr(), Ru()}) {
        for (const int locked : {0, int{kCaps}, kShift | kCaps, kLevelThree | kNum, 0xff}) {
            Keymap keymap = layout;
            keymap.spares = {255, 254, 253, 252, 251, 250, 249, 248, 247, 246, 245, 244};
            keymap.locked = static_cast<ModifierMask>(locked);
            SCOPED_TRACE(locked);
            EXPECT_EQ(TypedOn(keymap, text), typed);
        }
    }
}

TEST(KeystrokeSender, HeldModifiers_AreReleasedFirstAndStayReleased) {
    Keymap keymap = Us();
    keymap.down = {kControlKey, kShiftKey};
    RecordingKeyboard keyboard(keymap);
    KeystrokeSender sender(keyboard);
    EXPECT_TRUE(sender.SendKeys("ab", true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), "ab");
    EXPECT_THAT(keyboard.Down(), IsEmpty());
    ASSERT_GE(keyboard.events.size(), 2U);
    EXPECT_EQ(keyboard.events[0].code, kControlKey);
    EXPECT_EQ(keyboard.events[1].code, kShiftKey);
    for (const RecordingKeyboard::Event& event : keyboard.events) {
        EXPECT_FALSE(event.down && (event.code == kControlKey || event.code == kShiftKey));
    }
}

TEST(KeystrokeSender, HandThatDoesNotLetGo_NothingIsTyped) {
    Keymap keymap = Us();
    keymap.down = {kControlKey};
    RecordingKeyboard keyboard(keymap);
    keyboard.stuck = {kControlKey};
    KeystrokeSender sender(keyboard);
    EXPECT_FALSE(sender.SendKeys("ab", true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), "");
}

// Allows a number of keystrokes.
class TargetThatGoes : public AnyTarget {
  public:
    explicit TargetThatGoes(std::size_t allowed) : m_left(allowed) {}
    bool MayType() override { return m_left-- != 0; }

  private:
    std::size_t m_left;
};

TEST(KeystrokeSender, TargetThatGoes_EndsTheTypingBeforeTheNextKeystroke) {
    const std::vector<std::string> typed{"", "<Alt+F1>", "<Alt+F1>a", "<Alt+F1>aB",
                                         "<Alt+F1>aB<Enter>"};
    for (std::size_t allowed = 0; allowed < typed.size(); ++allowed) {
        SCOPED_TRACE(allowed);
        Keymap keymap = Us();
        keymap.locked = kCaps;
        RecordingKeyboard keyboard(keymap);
        KeystrokeSender sender(keyboard);
        TargetThatGoes target(allowed);
        const SendResult result = sender.SendKeys("%{F1}aB{ENTER}", true, target);
        EXPECT_EQ(keyboard.Typed(), typed[allowed]);
        EXPECT_EQ(result.strokes, allowed);
        EXPECT_EQ(result.stopped, allowed < 4);
        EXPECT_EQ(result.Ok(), allowed == 4);
        EXPECT_THAT(keyboard.Down(), IsEmpty());
        EXPECT_EQ(keyboard.keymap.locked, kCaps);
    }
}

TEST(KeystrokeSender, WhatCannotBeTypedWhole_IsNotBegun) {
    Keymap keymap = Us();
    keymap.spares = {};
    RecordingKeyboard keyboard(keymap);
    KeystrokeSender sender(keyboard);
    const SendResult result = sender.SendKeys("abc\u00e4\u00f6", true, anywhere);
    EXPECT_FALSE(result.Ok());
    EXPECT_EQ(result.missing, "\u00e4\u00f6");
    EXPECT_THAT(keyboard.events, IsEmpty());
}

TEST(KeystrokeSender, HoldAndGap_AreKept) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard, {30ms, 20ms});
    EXPECT_TRUE(sender.SendKeys("%ab", true, anywhere).Ok());
    std::vector<std::chrono::milliseconds> times;
    for (const RecordingKeyboard::Event& event : keyboard.events) {
        times.push_back(event.time);
    }
    EXPECT_THAT(times, ElementsAre(0ms, 0ms, 30ms, 30ms, 50ms, 80ms));
}

TEST(KeystrokeSender, HoldAndGapOfText_AreThoseOfKeysUnlessGiven) {
    const auto times = [](const Pace& pace) {
        RecordingKeyboard keyboard(Us());
        KeystrokeSender sender(keyboard, pace);
        EXPECT_TRUE(sender.SendKeys("1a{ENTER}", true, anywhere).Ok());
        std::vector<std::chrono::milliseconds> result;
        for (const RecordingKeyboard::Event& event : keyboard.events) {
            result.push_back(event.time);
        }
        return result;
    };
    EXPECT_THAT(times({30ms, 20ms, 3ms, 4ms}), ElementsAre(0ms, 30ms, 50ms, 53ms, 57ms, 60ms));
    EXPECT_THAT(times({30ms, 20ms}), ElementsAre(0ms, 30ms, 50ms, 80ms, 100ms, 130ms));
}

TEST(KeystrokeSender, ChangeOfLayoutBetweenSends_IsNoticed) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard);
    EXPECT_TRUE(sender.SendKeys("qa", true, anywhere).Ok());
    keyboard.keymap = Fr();
    EXPECT_TRUE(sender.SendKeys("qa", true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), "qaqa");
}

TEST(KeystrokeSender, BorrowedCodes_AreGivenBackAfterTheGracePeriodOfTheirLastUse) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard, {1ms, 1ms}, 1000ms);
    EXPECT_TRUE(sender.SendKeys("\u00e4\u00f6", true, anywhere).Ok());
    EXPECT_EQ(keyboard.bound.size(), 2U);
    keyboard.Pause(900ms);
    EXPECT_TRUE(sender.SendKeys("\u00f6", true, anywhere).Ok());
    EXPECT_EQ(keyboard.bound.size(), 2U);
    keyboard.Pause(500ms);
    sender.Tick();
    EXPECT_THAT(keyboard.bound, ElementsAre(SpareBinding{254, CharacterSymbol(U'\u00f6')}));
    keyboard.Pause(499ms);
    sender.Tick();
    EXPECT_EQ(keyboard.bound.size(), 1U);
    keyboard.Pause(1ms);
    sender.Tick();
    EXPECT_THAT(keyboard.bound, IsEmpty());
    EXPECT_EQ(keyboard.Typed(), "\u00e4\u00f6\u00f6");
}

TEST(KeystrokeSender, BorrowedCodesLongUnused_AreGivenBackAtTheNextSend) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard, {1ms, 1ms}, 1000ms);
    EXPECT_TRUE(sender.SendKeys("\u00e4", true, anywhere).Ok());
    keyboard.Pause(5000ms);
    EXPECT_TRUE(sender.SendKeys("a", true, anywhere).Ok());
    EXPECT_THAT(keyboard.bound, IsEmpty());
}

TEST(KeystrokeSender, EndOfTheSender_GivesBackWhenTheGracePeriodIsOver) {
    RecordingKeyboard keyboard(Us());
    const auto start = keyboard.Now();
    {
        KeystrokeSender sender(keyboard, {1ms, 1ms}, 1000ms);
        EXPECT_TRUE(sender.SendKeys("\u00e4", true, anywhere).Ok());
    }
    EXPECT_THAT(keyboard.bound, IsEmpty());
    EXPECT_GE(keyboard.Now() - start, 1000ms);
}

TEST(KeystrokeSender, EmptyText_TouchesNothing) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard);
    EXPECT_TRUE(sender.SendKeys("", true, anywhere).Ok());
    EXPECT_TRUE(sender.SendKeys("%^+", true, anywhere).Ok());
    EXPECT_THAT(keyboard.events, IsEmpty());
}

// A keyboard whose connection fails for a while, so that a test can see what is done afterwards.
class FailingOnce : public RecordingKeyboard {
  public:
    FailingOnce(Keymap map, std::size_t failingEvent)
        : RecordingKeyboard(std::move(map)), m_left(failingEvent) {}

    // The event reaches the system; only the answer is lost.
    bool Press(Keycode code) override { return RecordingKeyboard::Press(code) && m_left-- != 0; }
    bool Release(Keycode code) override {
        return RecordingKeyboard::Release(code) && m_left-- != 0;
    }

  private:
    std::size_t m_left;
};

TEST(KeystrokeSender, AbortAtEveryEvent_LeavesNoKeyDownAndTheLocksAsBefore) {
    const std::vector<std::string> texts{"%^+{F1}aB", "+@%\u00e4", "aA1{ENTER}", "^%@@"};
    for (const Keymap& layout : {Us(), De(), Fr()}) {
        for (const std::string& text : texts) {
            for (std::size_t failing = 0; failing < 24; ++failing) {
                SCOPED_TRACE(text + " at event " + std::to_string(failing));
                Keymap keymap = layout;
                keymap.locked = kCaps | kLevelThree;
                FailingOnce keyboard(keymap, failing);
                KeystrokeSender sender(keyboard);
                const SendResult result = sender.SendKeys(text, true, anywhere);
                EXPECT_EQ(result.Ok(), failing >= keyboard.events.size());
                EXPECT_THAT(keyboard.Down(), IsEmpty());
                EXPECT_EQ(keyboard.keymap.locked, keymap.locked);
                std::vector<Keycode> down;
                for (const RecordingKeyboard::Event& event : keyboard.events) {
                    if (event.down) {
                        down.push_back(event.code);
                    } else if (!down.empty() && down.back() == event.code) {
                        down.pop_back();
                    }
                }
                EXPECT_THAT(down, IsEmpty());
            }
        }
    }
}

TEST(KeystrokeSender, ConnectionLostAtEveryCall_IsASentenceAndNoCrash) {
    std::size_t calls = 0;
    for (bool ok = false; !ok; ++calls) {
        ASSERT_LT(calls, 1000U);
        RecordingKeyboard keyboard(Us());
        keyboard.callsUntilLost = calls;
        KeystrokeSender sender(keyboard);
        const SendResult result = sender.SendKeys("%{F1}\u00e4B", true, anywhere);
        ok = result.Ok();
        EXPECT_EQ(result.error.empty(), ok);
    }
    EXPECT_GT(calls, 10U);
}

}  // namespace
}  // namespace spellwick
