// A hand that presses a modifier while a text runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/keystroke_sender.h"
#include "tests/link/hand_made_keymaps.h"
#include "tests/support/any_target.h"
#include "tests/support/recording_keyboard.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using namespace hand_made;
using testing::ElementsAre;

// Presses a key behind the gap of the second keystroke and holds it for some time.
class Hand {
  public:
    Hand(RecordingKeyboard& keyboard, Keycode code, std::chrono::milliseconds holds) {
        keyboard.inPause = [&keyboard, code, holds, start = keyboard.Now(),
                            holding = false]() mutable {
            const auto time = keyboard.Now() - start;
            const auto from = 4 * 10ms;
            if (!holding && time >= from && time < from + holds) {
                holding = true;
                keyboard.Hold(code);
            } else if (holding && time >= from + holds) {
                holding = false;
                keyboard.LetGo(code);
            }
        };
    }
};

TEST(HandsOnTheKeys, ModifierPressedWhileTextRuns_IsWaitedOut) {
    for (const Keycode code : {kControlKey, kShiftKey, kAltKey, kLevelThreeKey}) {
        SCOPED_TRACE(code);
        RecordingKeyboard keyboard(De());
        const auto start = keyboard.Now();
        const Hand hand(keyboard, code, 300ms);
        KeystrokeSender sender(keyboard, {10ms, 10ms});
        const SendResult result = sender.SendKeys("abnq", true, anywhere);
        EXPECT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(keyboard.Typed(), "abnq");
        EXPECT_EQ(keyboard.Now() - start, 8 * 10ms + 300ms);
    }
}

TEST(HandsOnTheKeys, ModifierHeldLonger_EndsTheTyping) {
    RecordingKeyboard keyboard(Us());
    const auto start = keyboard.Now();
    const Hand hand(keyboard, kControlKey, 5000ms);
    KeystrokeSender sender(keyboard, {10ms, 10ms});
    const SendResult result = sender.SendKeys("abnq", true, anywhere);
    EXPECT_FALSE(result.Ok());
    EXPECT_FALSE(result.stopped);
    EXPECT_EQ(result.strokes, 2U);
    EXPECT_EQ(keyboard.Typed(), "ab");
    EXPECT_EQ(keyboard.Now() - start, 4 * 10ms + 500ms);
    EXPECT_THAT(keyboard.Down(), ElementsAre(kControlKey)) << "the hand's own";
}

}  // namespace
}  // namespace spellwick
