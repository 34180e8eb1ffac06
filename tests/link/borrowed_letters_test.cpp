// Letters that the layout lacks: from its other groups, and on borrowed codes, of which there are
// fewer than letters.
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/keystroke_sender.h"
#include "tests/link/hand_made_keymaps.h"
#include "tests/support/any_target.h"
#include "tests/support/recording_keyboard.h"
#include "text/utf8.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using namespace hand_made;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Pace kPace{1ms, 1ms};
constexpr auto kGrace = 1000ms;

// So many letters that no hand-made layout has, from U+0100 on.
std::string Letters(int first, int count) {
    std::string text;
    for (int letter = first; letter < first + count; ++letter) {
        AppendUtf8(text, static_cast<char32_t>(0x100 + letter));
    }
    return text;
}

// Reads the keys at once, and says so.
class ReadingTarget : public AnyTarget {
  public:
    bool HasRead(std::chrono::milliseconds /*patience*/) override {
        ++asked;
        return true;
    }

    int asked = 0;
};

// No code changes its symbol within the grace period of its last use.
void ExpectNoLetterLostInASlowProgram(const RecordingKeyboard& keyboard) {
    std::map<Keycode, std::chrono::milliseconds> lastUse;
    auto binding = keyboard.allBindings.begin();
    const auto bindUpTo = [&](std::chrono::milliseconds time) {
        for (; binding != keyboard.allBindings.end() && binding->first <= time; ++binding) {
            const auto used = lastUse.find(binding->second.code);
            if (used != lastUse.end()) {
                EXPECT_GE(binding->first, used->second + kGrace) << binding->second.code;
            }
        }
    };
    for (const RecordingKeyboard::Event& event : keyboard.events) {
        bindUpTo(event.time);
        lastUse[event.code] = event.time;
    }
}

TEST(BorrowedLetters, MoreThanThereAreCodes_AreTypedWholeAndWaitedForNoLongerThanNeeded) {
    RecordingKeyboard keyboard(Us());
    ASSERT_EQ(keyboard.keymap.spares.size(), 8U);
    const auto start = keyboard.Now();
    const std::string text = "a" + Letters(0, 20) + "b";
    KeystrokeSender sender(keyboard, kPace, kGrace);
    const SendResult result = sender.SendKeys(text, true, anywhere);
    EXPECT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(keyboard.Typed(), text);
    EXPECT_EQ(result.strokes, 22U);
    ExpectNoLetterLostInASlowProgram(keyboard);
    // Two grace periods for twice eight letters more, while the others are typed.
    EXPECT_LE(keyboard.Now() - start, 2 * kGrace + 22 * 2ms);
}

TEST(BorrowedLetters, ProgramThatSaysWhatItHasRead_IsNotWaitedFor) {
    RecordingKeyboard keyboard(Us());
    const auto start = keyboard.Now();
    const std::string text = Letters(0, 40);
    ReadingTarget target;
    KeystrokeSender sender(keyboard, kPace, kGrace);
    EXPECT_TRUE(sender.SendKeys(text, true, target).Ok());
    EXPECT_EQ(keyboard.Typed(), text);
    EXPECT_EQ(keyboard.Now() - start, 40 * 2ms);
    // The map changes once for each eight letters.
    EXPECT_EQ(keyboard.bindCalls, 5U);
    EXPECT_EQ(target.asked, 4);
}

TEST(BorrowedLetters, TwoTextsWithinTheGracePeriod_AreBothTyped) {
    RecordingKeyboard keyboard(Us());
    const auto start = keyboard.Now();
    KeystrokeSender sender(keyboard, kPace, kGrace);
    EXPECT_TRUE(sender.SendKeys(Letters(0, 6), true, anywhere).Ok());
    EXPECT_TRUE(sender.SendKeys(Letters(4, 6), true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), Letters(0, 6) + Letters(4, 6));
    ExpectNoLetterLostInASlowProgram(keyboard);
    // Two letters are there already, and two codes are free: two letters wait.
    EXPECT_GE(keyboard.Now() - start, kGrace);
    EXPECT_LE(keyboard.Now() - start, kGrace + 12 * 2ms);
    // Nothing is left behind.
    keyboard.Pause(kGrace);
    sender.Tick();
    EXPECT_THAT(keyboard.bound, IsEmpty());
}

// Follows a change of the map only when it has read it, and notices none before its first key.
class LateTarget : public AnyTarget {
  public:
    LateTarget(RecordingKeyboard& keyboard, bool says) : m_keyboard(keyboard), m_says(says) {}

    bool FollowsKeyMapLate() override { return true; }
    bool HasRead(std::chrono::milliseconds /*patience*/) override {
        EXPECT_FALSE(m_keyboard.events.empty());
        bindCallsRead = m_keyboard.bindCalls;
        return m_says;
    }
    bool MayType() override {
        EXPECT_EQ(m_keyboard.bindCalls, bindCallsRead) << "a key before the map is read";
        return true;
    }

    std::size_t bindCallsRead = 0;

  private:
    RecordingKeyboard& m_keyboard;
    bool m_says;
};

TEST(BorrowedLetters, ProgramThatFollowsTheMapLate_GetsFewLowCodesAndTimeForEachChange) {
    for (const bool says : {true, false}) {
        SCOPED_TRACE(says);
        RecordingKeyboard keyboard(Us());
        LateTarget target(keyboard, says);
        KeystrokeSender sender(keyboard, kPace, kGrace);
        const std::string text = Letters(0, 10);
        const auto start = keyboard.Now();
        EXPECT_TRUE(sender.SendKeys("{F1}" + text, true, target).Ok());
        EXPECT_EQ(keyboard.Typed(), "<F1>" + text);
        for (const SpareBinding& binding : keyboard.bound) {
            EXPECT_LE(binding.code, 251) << "the lowest four of 248 to 255";
        }
        if (says) {
            EXPECT_EQ(keyboard.bindCalls, 3U);
            EXPECT_EQ(keyboard.Now() - start, 11 * 2ms);
        } else {
            EXPECT_GE(keyboard.Now() - start, 3 * 200ms);
        }
    }
}

TEST(BorrowedLetters, LateProgramBehindAnother_UsesTheLowCodesOnly) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard, kPace, kGrace);
    EXPECT_TRUE(sender.SendKeys(Letters(0, 8), true, anywhere).Ok());
    keyboard.ForgetEvents();
    LateTarget target(keyboard, true);
    target.bindCallsRead = keyboard.bindCalls;
    EXPECT_TRUE(sender.SendKeys("a" + Letters(0, 8), true, target).Ok());
    EXPECT_EQ(keyboard.Typed(), "a" + Letters(0, 8));
    for (const RecordingKeyboard::Event& event : keyboard.events) {
        EXPECT_LE(event.code, 251);
    }
}

TEST(BorrowedLetters, LateProgram_HasReadBeforeTheGroupChanges) {
    class Target : public AnyTarget {
      public:
        explicit Target(RecordingKeyboard& keyboard) : m_keyboard(keyboard) {}
        bool FollowsKeyMapLate() override { return true; }
        bool HasRead(std::chrono::milliseconds /*patience*/) override {
            typedInGroup.push_back(m_keyboard.Typed() + " " + std::to_string(m_keyboard.group));
            return true;
        }
        std::vector<std::string> typedInGroup;

      private:
        RecordingKeyboard& m_keyboard;
    };
    Keymap keymap = Us();
    keymap.otherGroups = {{1, Ru().keys}};
    RecordingKeyboard keyboard(keymap);
    KeystrokeSender sender(keyboard, kPace, kGrace);
    Target target(keyboard);
    EXPECT_TRUE(sender.SendKeys("ab\u0444\u044bc\u0444", true, target).Ok());
    EXPECT_THAT(target.typedInGroup, ElementsAre("ab 0", "ab\u0444\u044b 1", "ab\u0444\u044bc 0",
                                                 "ab\u0444\u044bc\u0444 1"));
    EXPECT_EQ(keyboard.group, 0);
}

TEST(BorrowedLetters, FewLetters_AreNotWaitedFor) {
    RecordingKeyboard keyboard(Us());
    const auto start = keyboard.Now();
    KeystrokeSender sender(keyboard, kPace, kGrace);
    const std::string text = Letters(0, 8) + Letters(0, 8);
    EXPECT_TRUE(sender.SendKeys(text, true, anywhere).Ok());
    EXPECT_TRUE(sender.SendKeys(text, true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), text + text);
    EXPECT_EQ(keyboard.Now() - start, 32 * 2ms);
    EXPECT_EQ(keyboard.bindCalls, 1U);
}

TEST(BorrowedLetters, MapChangedByAnotherProgram_TheLettersAreBoundAnew) {
    RecordingKeyboard keyboard(Us());
    KeystrokeSender sender(keyboard, kPace, kGrace);
    EXPECT_TRUE(sender.SendKeys(Letters(0, 8), true, anywhere).Ok());
    keyboard.bound.clear();
    EXPECT_TRUE(sender.SendKeys(Letters(0, 8), true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), Letters(0, 8) + Letters(0, 8));
}

TEST(BorrowedLetters, LettersOfAnotherGroup_NeedNoCodes) {
    Keymap keymap = Us();
    keymap.otherGroups = {{1, Ru().keys}};
    keymap.spares = {};
    keymap.locked = kCaps;
    RecordingKeyboard keyboard(keymap);
    KeystrokeSender sender(keyboard, kPace, kGrace);
    const std::string text =
        "Ha \u0439\u0446\u0443\u043a\u0435\u043d\u0433\u0448\u0449\u0437 \u0424\u042b ok!";
    EXPECT_TRUE(sender.SendKeys(text, true, anywhere).Ok());
    EXPECT_EQ(keyboard.Typed(), text);
    EXPECT_EQ(keyboard.group, 0);
    EXPECT_EQ(keyboard.keymap.locked, kCaps);
}

TEST(BorrowedLetters, GroupAtAnAbort_IsAsBefore) {
    Keymap keymap = Ru();
    keymap.group = 1;
    keymap.otherGroups = {{0, Us().keys}};
    for (std::size_t calls = 0; calls < 40; ++calls) {
        RecordingKeyboard keyboard(keymap);
        class Target : public AnyTarget {
          public:
            explicit Target(std::size_t allowed) : m_left(allowed) {}
            bool MayType() override { return m_left-- != 0; }

          private:
            std::size_t m_left;
        } target(calls);
        KeystrokeSender sender(keyboard, kPace, kGrace);
        static_cast<void>(sender.SendKeys("\u0444ab\u0444", true, target));
        EXPECT_EQ(keyboard.group, 1) << calls;
        EXPECT_THAT(keyboard.Down(), IsEmpty());
    }
}

}  // namespace
}  // namespace spellwick
