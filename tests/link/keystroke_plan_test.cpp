#include "link/keystroke_plan.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/link/hand_made_keymaps.h"
#include "text/utf8.h"

namespace spellwick {
namespace {

using namespace hand_made;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

KeyPlan Planned(std::string_view text, const Keymap& keymap) {
    const auto result = PlanKeystrokes(ParseKeystrokes(text), keymap);
    const auto* error = std::get_if<PlanError>(&result);
    EXPECT_EQ(error, nullptr) << error->text;
    return error == nullptr ? std::get<KeyPlan>(result) : KeyPlan{};
}

std::string Refused(std::string_view text, const Keymap& keymap) {
    const auto result = PlanKeystrokes(ParseKeystrokes(text), keymap);
    const auto* error = std::get_if<PlanError>(&result);
    return error == nullptr ? std::string() : error->text;
}

// The bindings of a plan that makes them all before its first event.
std::vector<SpareBinding> Bound(const KeyPlan& plan) {
    std::vector<SpareBinding> bindings;
    for (const PlannedBinding& planned : plan.bindings) {
        EXPECT_EQ(planned.freeFrom, 0U);
        bindings.push_back(planned.binding);
    }
    return bindings;
}

// "+50" for a press, "-50" for a release.
std::vector<std::string> Events(const KeyPlan& plan) {
    std::vector<std::string> events;
    events.reserve(plan.events.size());
    for (const KeyEvent& event : plan.events) {
        events.push_back((event.down ? "+" : "-") + std::to_string(event.code));
    }
    return events;
}

std::vector<std::string> Codes(const std::vector<int>& codes) {
    std::vector<std::string> events;
    events.reserve(codes.size());
    for (const int code : codes) {
        events.push_back((code > 0 ? "+" : "") + std::to_string(code));
    }
    return events;
}

TEST(PlanKeystrokes, Marks_GoDownAltCtrlShiftAndUpMirrored) {
    EXPECT_EQ(Events(Planned("%^+{F1}", Us())),
              Codes({kAltKey, kControlKey, kShiftKey, kFirstFunctionKey, -kFirstFunctionKey,
                     -kShiftKey, -kControlKey, -kAltKey}));
    EXPECT_EQ(Events(Planned("+^%{F1}", Us())), Events(Planned("%^+{F1}", Us())));
}

TEST(PlanKeystrokes, Characters_TakeTheModifiersThatTheyNeed) {
    const Keycode a = LetterKey('a');
    const Keycode q = LetterKey('q');
    EXPECT_EQ(Events(Planned("a", Us())), Codes({a, -a}));
    EXPECT_EQ(Events(Planned("A", Us())), Codes({kShiftKey, a, -a, -kShiftKey}));
    EXPECT_EQ(Events(Planned("@", De())), Codes({kLevelThreeKey, q, -q, -kLevelThreeKey}));
    EXPECT_EQ(Events(Planned("a", Fr())), Codes({q, -q}));
    EXPECT_EQ(Events(Planned("1", Fr())),
              Codes({kShiftKey, kDigitOneKey, -kDigitOneKey, -kShiftKey}));
    EXPECT_EQ(Events(Planned("z", De())), Codes({LetterKey('y'), -LetterKey('y')}));
}

TEST(PlanKeystrokes, MarkOnACapitalOrASign_AddsToWhatItNeeds) {
    const Keycode a = LetterKey('a');
    const Keycode q = LetterKey('q');
    EXPECT_EQ(Events(Planned("+a", Us())), Codes({kShiftKey, a, -a, -kShiftKey}));
    EXPECT_EQ(Events(Planned("+A", Us())), Codes({kShiftKey, a, -a, -kShiftKey}));
    EXPECT_EQ(Events(Planned("%A", Us())),
              Codes({kAltKey, kShiftKey, a, -a, -kShiftKey, -kAltKey}));
    EXPECT_EQ(Events(Planned("+1", Us())),
              Codes({kShiftKey, kDigitOneKey, -kDigitOneKey, -kShiftKey}));
    EXPECT_EQ(Events(Planned("^@", De())),
              Codes({kControlKey, kLevelThreeKey, q, -q, -kLevelThreeKey, -kControlKey}));
    EXPECT_EQ(Events(Planned("%!", Us())),
              Codes({kAltKey, kShiftKey, kDigitOneKey, -kDigitOneKey, -kShiftKey, -kAltKey}));
}

TEST(PlanKeystrokes, ChordOfADigitOrLetter_HoldsTheMarkedModifiersAlone) {
    EXPECT_EQ(Events(Planned("%1", Fr())), Codes({kAltKey, kDigitOneKey, -kDigitOneKey, -kAltKey}));
    EXPECT_EQ(Events(Planned("+1", Fr())),
              Codes({kShiftKey, kDigitOneKey, -kDigitOneKey, -kShiftKey}));
    EXPECT_EQ(Events(Planned("%^+1", Fr())),
              Codes({kAltKey, kControlKey, kShiftKey, kDigitOneKey, -kDigitOneKey, -kShiftKey,
                     -kControlKey, -kAltKey}));
    // Only the marked key is a chord.
    EXPECT_EQ(Events(Planned("%11", Fr())),
              Codes({kAltKey, kDigitOneKey, -kDigitOneKey, -kAltKey, kShiftKey, kDigitOneKey,
                     -kDigitOneKey, -kShiftKey}));
    Keymap keymap = Us();
    constexpr Keycode kOtherKey = 200;
    keymap.keys.push_back(
        {kOtherKey, kLevelThree, {{0, Symbol::kOther}, {kLevelThree, CharacterSymbol(U'\u00e4')}}});
    EXPECT_EQ(Events(Planned("^\u00e4", keymap)),
              Codes({kControlKey, kOtherKey, -kOtherKey, -kControlKey}));
}

TEST(PlanKeystrokes, LetterThatTheLayoutLacks_IsTheKeyKnownByItInAChordAlone) {
    Keymap keymap = Ru();
    const Keycode a = LetterKey('a');
    std::ranges::find(keymap.keys, a, &Key::code)->cap = CharacterSymbol(U'a');
    const KeyPlan chord = Planned("%+a", keymap);
    EXPECT_THAT(chord.bindings, IsEmpty());
    EXPECT_EQ(Events(chord), Codes({kAltKey, kShiftKey, a, -a, -kShiftKey, -kAltKey}));
    EXPECT_EQ(Planned("a", keymap).bindings.size(), 1U);
    // No key is known by it: a code is borrowed.
    EXPECT_EQ(Planned("%s", keymap).bindings.size(), 1U);
}

TEST(PlanKeystrokes, Pauses_FollowThePressOfTheKeyAndTheEndOfTheKeystroke) {
    const KeyPlan plan = Planned("%aB", Us());
    std::vector<PauseAfter> pauses;
    for (const KeyEvent& event : plan.events) {
        pauses.push_back(event.pause);
    }
    EXPECT_THAT(pauses, ElementsAre(PauseAfter::kNone, PauseAfter::kHold, PauseAfter::kNone,
                                    PauseAfter::kGap, PauseAfter::kNone, PauseAfter::kHold,
                                    PauseAfter::kNone, PauseAfter::kGap));
}

// "t" for a keystroke of text, "k" for one of a key.
std::string TextOrKeys(std::string_view text) {
    std::string kinds;
    for (const KeyEvent& event : Planned(text, Us()).events) {
        if (event.pause == PauseAfter::kGap) {
            kinds.push_back(event.text ? 't' : 'k');
        }
    }
    return kinds;
}

TEST(PlanKeystrokes, Text_IsWhatFollowsTheMacroKeyWithoutMarks) {
    EXPECT_EQ(TextOrKeys("%{f1}{ENTER}"), "kk");
    EXPECT_EQ(TextOrKeys("a{ENTER}"), "kk");
    EXPECT_EQ(TextOrKeys("%1ab{ENTER}"), "kttt");
    EXPECT_EQ(TextOrKeys("%1{ENTER}aB{ENTER}c{ENTER}"), "kkttttt");
    EXPECT_EQ(TextOrKeys("%1a+b{ENTER}c{F1}{ENTER}"), "ktkktkk");
    for (const KeyEvent& event : Planned("%1B", Us()).events) {
        EXPECT_EQ(event.text, event.code == LetterKey('b') || event.code == kShiftKey);
    }
}

TEST(PlanKeystrokes, SymbolsThatTheLayoutLacks_GetASpareCodeEach) {
    const KeyPlan plan = Planned("\u00e4a\u00df\u00e4%\u00df", Us());
    EXPECT_THAT(Bound(plan), ElementsAre(SpareBinding{255, CharacterSymbol(U'\u00e4')},
                                         SpareBinding{254, CharacterSymbol(U'\u00df')}));
    EXPECT_EQ(Events(plan), Codes({255, -255, LetterKey('a'), -LetterKey('a'), 254, -254, 255, -255,
                                   kAltKey, 254, -254, -kAltKey}));
}

TEST(PlanKeystrokes, NamedKeyThatTheKeyboardLacks_GetsASpareCode) {
    EXPECT_EQ(Planned("{F13}", Us()).bindings.size(), 1U);
}

TEST(PlanKeystrokes, LayoutOfTheOtherGroup_LacksLatinLetters) {
    const KeyPlan plan = Planned("Ha\u0444", Ru());
    EXPECT_THAT(Bound(plan), ElementsAre(SpareBinding{255, CharacterSymbol(U'H')},
                                         SpareBinding{254, CharacterSymbol(U'a')}));
    EXPECT_EQ(Events(plan), Codes({255, -255, 254, -254, LetterKey('a'), -LetterKey('a')}));
}

TEST(PlanKeystrokes, MoreSymbolsThanSpareCodes_ACodeChangesItsSymbolBetweenTwoKeystrokes) {
    Keymap keymap = Us();
    keymap.spares = {255, 254};
    const Symbol ae = CharacterSymbol(U'\u00e4');
    const Symbol oe = CharacterSymbol(U'\u00f6');
    const Symbol ue = CharacterSymbol(U'\u00fc');
    const KeyPlan plan = Planned("\u00e4\u00f6\u00e4\u00fc\u00f6", keymap);
    // The code that was used longest ago changes.
    EXPECT_THAT(plan.bindings,
                ElementsAre(PlannedBinding{{255, ae}, 0, 0}, PlannedBinding{{254, oe}, 0, 2},
                            PlannedBinding{{254, ue}, 4, 6}, PlannedBinding{{255, oe}, 6, 8}));
    EXPECT_EQ(Events(plan), Codes({255, -255, 254, -254, 255, -255, 254, -254, 255, -255}));
}

TEST(PlanKeystrokes, LentCodes_AreUsedAgainAndChangedOnlyWhenNoSpareIsLeft) {
    Keymap keymap = Us();
    keymap.spares = {255};
    const Symbol ae = CharacterSymbol(U'\u00e4');
    const Symbol oe = CharacterSymbol(U'\u00f6');
    const std::vector<SpareBinding> lent{{254, ae}, {253, oe}};
    for (const SpareBinding& binding : lent) {
        keymap.keys.push_back({binding.code, 0, {{0, binding.symbol}}});
    }
    const auto planned = [&](std::string_view text) {
        return std::get<KeyPlan>(PlanKeystrokes(ParseKeystrokes(text), keymap, lent));
    };
    EXPECT_THAT(planned("\u00f6\u00e4").bindings, IsEmpty());
    EXPECT_EQ(Events(planned("\u00f6")), Codes({253, -253}));
    EXPECT_THAT(planned("\u00fc").bindings,
                ElementsAre(PlannedBinding{{255, CharacterSymbol(U'\u00fc')}, 0, 0}));
    // The one unused longest is the first.
    EXPECT_THAT(planned("\u00fc\u00df").bindings,
                ElementsAre(PlannedBinding{{255, CharacterSymbol(U'\u00fc')}, 0, 0},
                            PlannedBinding{{254, CharacterSymbol(U'\u00df')}, 0, 2}));
}

TEST(PlanKeystrokes, SymbolOfAnotherGroup_IsStruckThere) {
    Keymap keymap = Ru();
    keymap.group = 1;
    keymap.otherGroups = {{0, Us().keys}};
    const KeyPlan plan = Planned("\u0444Ha \u0444\u00e4", keymap);
    EXPECT_THAT(Bound(plan), ElementsAre(SpareBinding{255, CharacterSymbol(U'\u00e4')}));
    const Keycode a = LetterKey('a');
    const Keycode h = LetterKey('h');
    EXPECT_EQ(Events(plan), Codes({a, -a, kShiftKey, h, -h, -kShiftKey, a, -a, kSpaceKey,
                                   -kSpaceKey, a, -a, 255, -255}));
    std::vector<int> groups;
    for (const KeyEvent& event : plan.events) {
        groups.push_back(event.group);
    }
    // A blank is in both groups and does not change the group.
    EXPECT_THAT(groups, ElementsAre(1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1));
}

TEST(PlanKeystrokes, NoSpareCodeAtAll_NamesTheCharactersThatAreMissing) {
    Keymap keymap = Us();
    keymap.spares = {};
    EXPECT_EQ(Refused("abc", keymap), "");
    EXPECT_THAT(Refused("\u00e4\u00f6", keymap), HasSubstr("\u00e4"));
    EXPECT_NE(Refused("{F13}", keymap), "");
    const auto result = PlanKeystrokes(ParseKeystrokes("a\u00e4\u00f6b\u00e4{F13}"), keymap);
    ASSERT_TRUE(std::holds_alternative<PlanError>(result));
    EXPECT_EQ(std::get<PlanError>(result).missing, "\u00e4\u00f6");
}

TEST(PlanKeystrokes, KeyboardWithoutAlt_IsASentence) {
    Keymap keymap = Us();
    keymap.alt = 0;
    EXPECT_THAT(Refused("%a", keymap), HasSubstr("Alt"));
    EXPECT_EQ(Refused("a", keymap), "");
}

TEST(PlanKeystrokes, CapsLock_IsTakenAwayOnlyIfItChangesAKey) {
    Keymap keymap = Us();
    keymap.locked = kCaps | kNum;
    EXPECT_EQ(Planned("%{F1}{ENTER}1! .", keymap).unlock, 0);
    for (const char* text : {"a", "A", "%a", "1a", "\u00e4"}) {
        SCOPED_TRACE(text);
        const KeyPlan plan = Planned(text, keymap);
        EXPECT_EQ(plan.unlock, kCaps);
        EXPECT_EQ(plan.relock, kCaps);
    }
    EXPECT_EQ(Planned("a", Us()).unlock, 0);
}

TEST(PlanKeystrokes, CapsLockStruckByTheText_IsNotSetAgainBehindIt) {
    Keymap keymap = Us();
    keymap.locked = kCaps;
    EXPECT_EQ(Planned("{CAPSLOCK}a", keymap).unlock, 0);
}

TEST(PlanKeystrokes, OtherLocksAndLatches_AreTakenAwayAndLatchesDoNotComeBack) {
    Keymap keymap = De();
    keymap.locked = kLevelThree | kNum;
    keymap.latched = kShift;
    const KeyPlan plan = Planned("{F1}", keymap);
    EXPECT_EQ(plan.unlock, kLevelThree | kShift);
    EXPECT_EQ(plan.relock, kLevelThree);
}

TEST(PlanKeystrokes, NumLock_IsTakenAwayIfTheKeyDependsOnIt) {
    Keymap keymap = Us();
    keymap.keys.push_back(
        {200, kNum, {{0, CharacterSymbol(U'\u00b0')}, {kNum, CharacterSymbol(U'7')}}});
    keymap.locked = kNum;
    EXPECT_EQ(Planned("\u00b0", keymap).unlock, kNum);
    EXPECT_EQ(Planned("7", keymap).unlock, 0);
}

TEST(PlanKeystrokes, KeysHeldByAHand_AreReleasedFirstIfTheyMatter) {
    Keymap keymap = Us();
    keymap.down = {kControlKey, kShiftKey, LetterKey('a'), LetterKey('x'), kCapsKey};
    EXPECT_THAT(Planned("ab", keymap).releaseFirst,
                ElementsAre(kControlKey, kShiftKey, LetterKey('a')));
    EXPECT_THAT(Planned("ab", Us()).releaseFirst, IsEmpty());
}

TEST(PlanKeystrokes, ModifierKeyWithAnotherFunctionUnderAModifier_IsPassedOver) {
    Keymap keymap = Us();
    for (Key& key : keymap.keys) {
        if (key.code == kShiftKey) {
            key.relevant = kAlt;
            key.levels = {{0, Symbol::kModifier}, {kAlt, Symbol::kOther}};
        }
    }
    const KeyPlan plan = Planned("%+{F1}", keymap);
    EXPECT_EQ(plan.events.at(1), (KeyEvent{62, true, PauseAfter::kNone}));
    EXPECT_EQ(Planned("+{F1}", keymap).events.front().code, kShiftKey);

    std::erase_if(keymap.modifierKeys, [](const ModifierKey& key) { return key.code == 62; });
    EXPECT_NE(Refused("%+{F1}", keymap), "");
    EXPECT_EQ(Refused("+{F1}", keymap), "");
}

TEST(PlanKeystrokes, PlaceWithFewestModifiers_IsTaken) {
    Keymap keymap = Us();
    keymap.keys.insert(keymap.keys.begin(),
                       {8, kShift, {{0, Symbol::kOther}, {kShift, CharacterSymbol(U'a')}}});
    EXPECT_EQ(Planned("a", keymap).events.front().code, LetterKey('a'));
}

TEST(PlanKeystrokes, LevelBehindALock_IsNoPlace) {
    Keymap keymap = Us();
    keymap.keys.push_back({200, kNum, {{0, Symbol::kOther}, {kNum, CharacterSymbol(U'\u00e4')}}});
    EXPECT_EQ(Planned("\u00e4", keymap).bindings.size(), 1U);
}

std::string RandomText(std::mt19937& random) {
    static const std::vector<std::string> kPieces{
        "%", "^",      "+",      "{ENTER}", "{f1}", "{F13}", "{",      "}", "a",   "B",  "1", "!",
        " ", "\u00e4", "\u00df", "\u20ac",  "@",    "~",     "\u0444", "z", "{x}", "\n", "."};
    std::string text;
    const auto length = random() % 12;
    for (unsigned index = 0; index < length; ++index) {
        text += kPieces[random() % kPieces.size()];
    }
    return text;
}

TEST(PlanKeystrokes, RandomTexts_EveryDownHasItsUpInMirroredOrder) {
    std::mt19937 random(7);  // NOLINT: same texts in every run
    const std::vector<Keymap> keymaps{Us(), De(), Fr(), Ru()};
    int planned = 0;
    for (int round = 0; round < 20000; ++round) {
        Keymap keymap = keymaps[random() % keymaps.size()];
        keymap.locked = static_cast<ModifierMask>(random() & 0xff);
        const std::string text = RandomText(random);
        SCOPED_TRACE(text);
        const auto result = PlanKeystrokes(ParseKeystrokes(text), keymap);
        if (!std::holds_alternative<KeyPlan>(result)) {
            continue;
        }
        ++planned;
        const KeyPlan& plan = std::get<KeyPlan>(result);
        std::vector<Keycode> down;
        for (const KeyEvent& event : plan.events) {
            if (event.down) {
                ASSERT_EQ(std::ranges::count(down, event.code), 0);
                down.push_back(event.code);
            } else {
                ASSERT_FALSE(down.empty());
                ASSERT_EQ(down.back(), event.code);
                down.pop_back();
            }
            ASSERT_TRUE(event.pause != PauseAfter::kGap || down.empty());
        }
        ASSERT_TRUE(down.empty());
    }
    EXPECT_GT(planned, 15000);
}

}  // namespace
}  // namespace spellwick
