#include "store/journal_lines.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

JournalEntry Entry(std::int64_t time, std::string value) {
    return {time, "Ultima Online - Mira Talon (Atlantic)", "MR 0", std::move(value)};
}

std::string File(const std::vector<JournalEntry>& entries) {
    std::string file(kJournalHead);
    for (const JournalEntry& entry : entries) {
        file += JournalLine(entry);
    }
    return file;
}

TEST(JournalLines, OneLine_IsSumTimeSectionKeyAndValue) {
    EXPECT_EQ(JournalLine({1000000000, "Bran", "MR 0", "49"}),
              "ffbc966ae4bc8ef0\t1000000000\tBran\tMR 0\t49\n");
}

TEST(JournalLines, AnyTexts_ComeBackAsTheyWere) {
    using namespace std::string_literals;
    const std::vector<JournalEntry> entries{
        {0, "", "", ""},
        {-1, "a\tb", "c\\d", "e\nf\rg\0h"s},
        {9'000'000'000, "\xF0\x9F\xA7\x99 (\xC3\x84)", "\\n", std::string(5000, '\\')},
        {1, "=Settings", "SpellText 1 5", "\xFF\xFE"},
    };
    EXPECT_EQ(ReadJournal(File(entries)), entries);
}

TEST(JournalLines, FileCutAnywhere_GivesTheWholeLinesBeforeTheCut) {
    const std::vector<JournalEntry> entries{Entry(1, "49"), Entry(2, "48"), Entry(3, "47")};
    const std::string file = File(entries);
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const auto read = ReadJournal(std::string_view(file).substr(0, length));
        std::size_t whole = 0;
        std::size_t end = kJournalHead.size();
        while (whole < entries.size() && end + JournalLine(entries[whole]).size() <= length) {
            end += JournalLine(entries[whole]).size();
            ++whole;
        }
        EXPECT_EQ(read, std::vector(entries.begin(),
                                    entries.begin() + static_cast<std::ptrdiff_t>(whole)))
            << "cut at " << length;
    }
}

TEST(JournalLines, AnyByteChanged_GivesNothingFromThatLineOn) {
    const std::vector<JournalEntry> entries{Entry(1, "49"), Entry(2, "48"), Entry(3, "47")};
    const std::string file = File(entries);
    const std::size_t second = kJournalHead.size() + JournalLine(entries[0]).size();
    const std::size_t third = second + JournalLine(entries[1]).size();
    for (std::size_t place = 0; place < file.size(); ++place) {
        std::string garbled = file;
        garbled[place] = static_cast<char>(garbled[place] ^ 1);
        const std::size_t before = place < second ? 0 : (place < third ? 1 : 2);
        EXPECT_EQ(
            ReadJournal(garbled),
            std::vector(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(before)))
            << "at " << place;
    }
}

TEST(JournalLines, OtherFirstLine_GivesNothing) {
    const std::string lines = JournalLine(Entry(1, "49"));
    for (const std::string head : {"", "\n", "spellwick journal 2\n", "spellwick journal 1\r\n",
                                   "Spellwick Journal 1\n", "\xEF\xBB\xBFspellwick journal 1\n"}) {
        EXPECT_THAT(ReadJournal(head + lines), IsEmpty()) << head;
    }
}

TEST(JournalLines, MoreBehindTheValue_IsAFault) {
    std::string file = File({{7, "Bran", "MR 0", "x"}});
    ASSERT_THAT(ReadJournal(file), ElementsAre(JournalEntry{7, "Bran", "MR 0", "x"}));
    file.insert(file.size() - 1, "\tmore");
    EXPECT_THAT(ReadJournal(file), IsEmpty());
}

// With the right sums.
TEST(JournalLines, SpellingThatIsNeverWritten_IsAFault) {
    using namespace std::string_literals;
    for (const std::string& line :
         {"9cac69a3534984cf\t007\tBran\tMR 0\tx\n"s, "54ec52df4cefec30\t7\tBr\0n\tMR 0\tx\n"s}) {
        EXPECT_THAT(ReadJournal(std::string(kJournalHead) + line), IsEmpty());
    }
}

}  // namespace
}  // namespace spellwick
