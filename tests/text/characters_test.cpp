#include "text/characters.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

namespace spellwick {
namespace {

struct CharacterRow {
    const char* name;
    std::string text;
    std::size_t count;
    std::string firstTwo;
    std::string fromTwo;
    std::string lastTwo;
};

TEST(Characters, Table_CountsCodePointsAndStrayBytes) {
    const CharacterRow rows[] = {
        {"empty", "", 0, "", "", ""},
        {"one letter", "a", 1, "a", "", "a"},
        {"letters", "abcd", 4, "ab", "cd", "cd"},
        {"two bytes", "\xC3\xA4\xC3\xB6\xC3\xBC", 3, "\xC3\xA4\xC3\xB6", "\xC3\xBC",
         "\xC3\xB6\xC3\xBC"},
        {"three bytes",
         "\xE2\x82\xAC"
         "bc",
         3,
         "\xE2\x82\xAC"
         "b",
         "c", "bc"},
        {"four bytes",
         "a\xF0\x9F\x94\xA5"
         "c",
         3, "a\xF0\x9F\x94\xA5", "c",
         "\xF0\x9F\x94\xA5"
         "c"},
        {"stray continuation",
         "\x80"
         "ab",
         3,
         "\x80"
         "a",
         "b", "ab"},
        {"lead byte at the end", "ab\xC3", 3, "ab", "\xC3", "b\xC3"},
        {"cut three-byte character",
         "a\xE2\x82"
         "b",
         4, "a\xE2",
         "\x82"
         "b",
         "\x82"
         "b"},
        {"byte that is never used",
         "a\xFF"
         "b",
         3, "a\xFF", "b",
         "\xFF"
         "b"},
        {"overlong two bytes",
         "\xC0\x80"
         "a",
         3, "\xC0\x80", "a",
         "\x80"
         "a"},
    };
    for (const CharacterRow& row : rows) {
        EXPECT_EQ(CountCharacters(row.text), row.count) << row.name;
        EXPECT_EQ(FirstCharacters(row.text, 2), row.firstTwo) << row.name;
        EXPECT_EQ(SkipCharacters(row.text, 2), row.fromTwo) << row.name;
        EXPECT_EQ(LastCharacters(row.text, 2), row.lastTwo) << row.name;
    }
}

TEST(Characters, RandomBytes_SplitWithoutLossAtEveryPlace) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 5'000; ++round) {
        std::string text;
        for (int left = round % 12; left > 0; --left) {
            text.push_back(static_cast<char>(byte(random)));
        }
        const std::size_t count = CountCharacters(text);
        ASSERT_LE(count, text.size());
        for (std::size_t at = 0; at <= count; ++at) {
            const std::string first(FirstCharacters(text, at));
            ASSERT_EQ(first + std::string(SkipCharacters(text, at)), text);
            ASSERT_EQ(LastCharacters(text, count - at), SkipCharacters(text, at));
        }
        ASSERT_EQ(FirstCharacters(text, count + 5), text);
        ASSERT_EQ(LastCharacters(text, count + 5), text);
        ASSERT_EQ(SkipCharacters(text, count + 5), "");
    }
}

}  // namespace
}  // namespace spellwick
