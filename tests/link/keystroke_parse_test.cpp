#include "link/keystroke_parse.h"

#include <string>

#include <gtest/gtest.h>

#include "text/utf8.h"

namespace spellwick {
namespace {

// The parsed keys, one word each: "A+C+S+F1 a".
std::string Read(std::string_view text) {
    std::string words;
    for (const Keystroke& keystroke : ParseKeystrokes(text)) {
        words += words.empty() ? "" : " ";
        words += keystroke.marks.alt ? "A+" : "";
        words += keystroke.marks.control ? "C+" : "";
        words += keystroke.marks.shift ? "S+" : "";
        if (IsCharacter(keystroke.symbol)) {
            const auto character = static_cast<char32_t>(keystroke.symbol);
            if (character == U' ') {
                words += "BLANK";
            } else {
                AppendUtf8(words, character);
            }
        } else {
            words += "#" + std::to_string(static_cast<std::uint32_t>(keystroke.symbol) -
                                          static_cast<std::uint32_t>(Symbol::kFirstNamed));
        }
    }
    return words;
}

std::string Named(Symbol symbol) {
    return "#" + std::to_string(static_cast<std::uint32_t>(symbol) -
                                static_cast<std::uint32_t>(Symbol::kFirstNamed));
}

Symbol FunctionKey(std::uint32_t number) {
    return static_cast<Symbol>(static_cast<std::uint32_t>(Symbol::kF1) + number - 1);
}

TEST(ParseKeystrokes, EveryName_IsItsKeyInAnyCase) {
    const std::vector<std::pair<std::string, Symbol>> names{{"ENTER", Symbol::kEnter},
                                                            {"TAB", Symbol::kTab},
                                                            {"ESC", Symbol::kEscape},
                                                            {"ESCAPE", Symbol::kEscape},
                                                            {"BACKSPACE", Symbol::kBackspace},
                                                            {"BS", Symbol::kBackspace},
                                                            {"BKSP", Symbol::kBackspace},
                                                            {"DELETE", Symbol::kDelete},
                                                            {"DEL", Symbol::kDelete},
                                                            {"INSERT", Symbol::kInsert},
                                                            {"INS", Symbol::kInsert},
                                                            {"HOME", Symbol::kHome},
                                                            {"END", Symbol::kEnd},
                                                            {"PGUP", Symbol::kPageUp},
                                                            {"PGDN", Symbol::kPageDown},
                                                            {"UP", Symbol::kUp},
                                                            {"DOWN", Symbol::kDown},
                                                            {"LEFT", Symbol::kLeft},
                                                            {"RIGHT", Symbol::kRight},
                                                            {"CLEAR", Symbol::kClear},
                                                            {"HELP", Symbol::kHelp},
                                                            {"BREAK", Symbol::kPause},
                                                            {"PRTSC", Symbol::kPrint},
                                                            {"CAPSLOCK", Symbol::kCapsLock},
                                                            {"NUMLOCK", Symbol::kNumLock},
                                                            {"SCROLLLOCK", Symbol::kScrollLock},
                                                            {"SPACE", CharacterSymbol(U' ')}};
    for (const auto& [name, symbol] : names) {
        SCOPED_TRACE(name);
        std::string lower = name;
        for (char& letter : lower) {
            letter = static_cast<char>(letter | 0x20);
        }
        const std::string mixed = lower.substr(0, 1) + name.substr(1);
        for (const std::string& form : {name, lower, mixed}) {
            EXPECT_EQ(ParseKeystrokes("{" + form + "}"),
                      (std::vector<Keystroke>{{Marks{}, symbol}}));
        }
    }
    for (std::uint32_t number = 1; number <= 16; ++number) {
        for (const char* letter : {"f", "F"}) {
            EXPECT_EQ(ParseKeystrokes("{" + (letter + std::to_string(number)) + "}"),
                      (std::vector<Keystroke>{{Marks{}, FunctionKey(number)}}));
        }
    }
}

TEST(ParseKeystrokes, Marks_HoldForTheNextKeyOnly) {
    EXPECT_EQ(Read("%ab"), "A+a b");
    EXPECT_EQ(Read("^ab"), "C+a b");
    EXPECT_EQ(Read("+ab"), "S+a b");
    EXPECT_EQ(Read("%^+ab"), "A+C+S+a b");
    EXPECT_EQ(Read("+^%ab"), "A+C+S+a b");
    EXPECT_EQ(Read("%%a"), "A+a");
    EXPECT_EQ(Read("%{F1}{F1}"), "A+" + Named(Symbol::kF1) + " " + Named(Symbol::kF1));
    EXPECT_EQ(Read("% a"), "A+BLANK a");
}

TEST(ParseKeystrokes, MarksBeforeEnter_ActOnEnter) {
    EXPECT_EQ(Read("%^+{ENTER}"), "A+C+S+" + Named(Symbol::kEnter));
}

TEST(ParseKeystrokes, MarkInASuffix_HoldsForTheNextCharacter) {
    EXPECT_EQ(Read("5%ab"), "5 A+a b");
}

TEST(ParseKeystrokes, MarkAtTheEnd_DoesNothing) {
    EXPECT_EQ(Read("a%"), "a");
    EXPECT_EQ(Read("%^+"), "");
    EXPECT_EQ(Read(""), "");
}

TEST(ParseKeystrokes, SingleCharacterInBraces_IsThatCharacter) {
    EXPECT_EQ(Read("{+}{^}{%}{a}{ }{~}"), "+ ^ % a BLANK ~");
    EXPECT_EQ(Read("{{}{}}"), "{ }");
    EXPECT_EQ(Read("{\u00e4}{\U0001f600}"), "\u00e4 \U0001f600");
    EXPECT_EQ(Read("%{+}a"), "A++ a");
}

TEST(ParseKeystrokes, UnknownName_IsTypedAsItStands) {
    EXPECT_EQ(Read("{fx}"), "{ f x }");
    EXPECT_EQ(Read("{F17}{F0}"), "{ F 1 7 } { F 0 }");
    EXPECT_EQ(Read("{a+b%}c"), "{ a + b % } c");
    EXPECT_EQ(Read("{}"), "{ }");
    EXPECT_EQ(Read("%{ab}"), "A+{ a b }");
    EXPECT_EQ(Read("{ENTER 3}"), "{ E N T E R BLANK 3 }");
}

TEST(ParseKeystrokes, BraceWithoutPartner_IsTyped) {
    EXPECT_EQ(Read("a{b"), "a { b");
    EXPECT_EQ(Read("a}b"), "a } b");
    EXPECT_EQ(Read("{"), "{");
    EXPECT_EQ(Read("hey {{ENTER}"), "h e y BLANK { " + Named(Symbol::kEnter));
    EXPECT_EQ(Read("{en{ENTER}"), "{ e n " + Named(Symbol::kEnter));
}

TEST(ParseKeystrokes, AllElse_IsTypedLiterally) {
    EXPECT_EQ(Read("~()[]\"'\\$#@!"), "~ ( ) [ ] \" ' \\ $ # @ !");
    EXPECT_EQ(Read("\u00e4\u20ac\u044f\u05d0"), "\u00e4 \u20ac \u044f \u05d0");
}

TEST(ParseKeystrokes, LineEnds_AreEnterAndTabsAreTab) {
    const std::string enter = Named(Symbol::kEnter);
    EXPECT_EQ(Read("a\nb"), "a " + enter + " b");
    EXPECT_EQ(Read("a\r\nb"), "a " + enter + " b");
    EXPECT_EQ(Read("a\rb"), "a " + enter + " b");
    EXPECT_EQ(Read("%\n"), "A+" + enter);
    EXPECT_EQ(Read("\t"), Named(Symbol::kTab));
}

TEST(ParseKeystrokes, WhatNoKeyGives_IsLeftOutOrReplaced) {
    EXPECT_EQ(Read(std::string_view("a\0b\x01\x7f", 5)), "a b");
    EXPECT_EQ(Read("a\xff"), "a \ufffd");
    EXPECT_EQ(Read("{\x01}"), "{ }");
}

TEST(ParseKeystrokes, WholeCast_ComesInOrder) {
    EXPECT_EQ(Read("%{f1}{ENTER}... Ha ...{ENTER}"),
              "A+" + Named(Symbol::kF1) + " " + Named(Symbol::kEnter) +
                  " . . . BLANK H a BLANK . . . " + Named(Symbol::kEnter));
}

}  // namespace
}  // namespace spellwick
