// Spell data files that must not load, and must not crash, hang or exhaust the memory either.
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "tests/model/spell_file_text.h"
#include "tests/support/failures.h"
#include "tests/support/file_bytes.h"
#include "tests/support/largest_piece.h"
#include "tests/support/pace.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

bool Loads(const std::string& text) {
    std::istringstream input(text);
    SharedState state;
    return LoadSpellData(state, input);
}

std::string ShippedText() {
    return BytesOf(SPELLWICK_SPELL_DATA);
}

TEST(BadSpellFile, Missing_IsFalse) {
    SharedState state;
    const fs::path missing = fs::path(testing::TempDir()) / "no folder" / "SpellData.txt";
    EXPECT_FALSE(LoadSpellData(state, missing));
    EXPECT_EQ(FailureOf([&] { OpenSpellData(missing); }), FailureKind::kFile);
    EXPECT_EQ(state.Spells.Last(), -1);
}

TEST(BadSpellFile, Folder_IsFalse) {
    SharedState state;
    EXPECT_FALSE(LoadSpellData(state, fs::path(testing::TempDir())));
}

TEST(BadSpellFile, Above64Megabytes_IsFalseAndNotRead) {
    const TemporaryFolder folder;
    const fs::path large = folder.Path() / "SpellData.txt";
    fs::copy_file(SPELLWICK_SPELL_DATA, large);
    constexpr std::uintmax_t kMost = std::uintmax_t{64} * 1024 * 1024;
    fs::resize_file(large, kMost);
    SharedState state;
    EXPECT_TRUE(LoadSpellData(state, large)) << "the rows end before the zeros";
    fs::resize_file(large, kMost + 1);
    EXPECT_FALSE(LoadSpellData(state, large));
}

TEST(BadSpellFile, Shipped_LoadsFromItsPath) {
    SharedState state;
    EXPECT_TRUE(LoadSpellData(state, fs::path(SPELLWICK_SPELL_DATA)));
    EXPECT_TRUE(Loads(ShippedText()));
}

// A buffer that gives a text and then fails, as that of a file on a disk with a fault.
class FailingBuffer : public std::streambuf {
  public:
    explicit FailingBuffer(std::string text) : m_text(std::move(text)) {
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
    }

  protected:
    int_type underflow() override { throw std::ios_base::failure("a fault of the disk"); }

  private:
    std::string m_text;
};

TEST(BadSpellFile, ReadThatFails_EndsTheFile) {
    const std::string text = ShippedText();
    for (const std::size_t readable : {std::size_t{0}, text.size() / 2}) {
        FailingBuffer buffer(text.substr(0, readable));
        std::istream input(&buffer);
        SharedState state;
        EXPECT_FALSE(LoadSpellData(state, input)) << readable;
    }
}

TEST(BadSpellFile, EmptyAndBlank_Fail) {
    for (const char* text : {"", "\n", " ", "\n\n\n", ",", ",,,,", "\"\"", "96", "Title, 96\n"}) {
        EXPECT_FALSE(Loads(text)) << '"' << text << '"';
    }
}

// Each byte of the first and the last rows and around each line end; of the rows between, which are
// alike, each seventh.
TEST(BadSpellFile, CutOffAtAnyByte_FailsUnlessOnlyTheLineEndIsLost_Long) {
    const std::string text = ShippedText();
    const std::size_t end = text.find_last_not_of(" \r\n") + 1;
    ASSERT_GT(end, 10'000U);
    constexpr std::size_t kRows = 1500;
    const auto matters = [&](std::size_t cut) {
        return cut < kRows || cut + kRows > text.size() || cut % 7 == 0 ||
               text.substr(cut - 3, 6).find('\n') != std::string::npos;
    };
    std::size_t cuts = 0;
    const testing_support::ProcessorTime time;
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        if (!matters(cut)) {
            continue;
        }
        ++cuts;
        ASSERT_EQ(Loads(text.substr(0, cut)), cut >= end) << "cut at byte " << cut;
    }
    EXPECT_LT(time.Seconds() / static_cast<double>(cuts), 0.001 * testing_support::kPace);
}

struct ValueRow {
    int value;
    const char* field;
};

constexpr ValueRow kWholeNumbers[] = {
    {1, "Number"}, {5, "Mana"}, {6, "MinimumSkill"}, {7, "MaximumSkill"}, {32, "File5"}};
constexpr ValueRow kBytes[] = {{22, "File1"}, {23, "File2"}, {24, "File3"}, {27, "InTown"}};

TEST(BadSpellFile, WholeNumberBeyondItsRange_Fails) {
    for (const ValueRow& row : kWholeNumbers) {
        for (const char* text : {"32768", "-32769", "32767.5", "99999999999", "1e400"}) {
            EXPECT_FALSE(Loads(FileWithValue(row.value, text))) << row.field << ' ' << text;
        }
        for (const char* text : {"32767", "-32768"}) {
            EXPECT_TRUE(Loads(FileWithValue(row.value, text))) << row.field << ' ' << text;
        }
    }
}

TEST(BadSpellFile, ByteBeyondItsRange_Fails) {
    for (const ValueRow& row : kBytes) {
        for (const char* text : {"256", "-1", "300", "32768", "255.6", "1e400"}) {
            EXPECT_FALSE(Loads(FileWithValue(row.value, text))) << row.field << ' ' << text;
        }
        EXPECT_TRUE(Loads(FileWithValue(row.value, "255"))) << row.field;
    }
}

TEST(BadSpellFile, ReagentBeyondAByte_FailsThoughItFitsTheInput) {
    for (int reagent = 1; reagent <= 14; ++reagent) {
        for (const char* text : {"300", "256", "-1", "32767", "32768", "-32769"}) {
            EXPECT_FALSE(Loads(FileWithValue(7 + reagent, text))) << reagent << ' ' << text;
        }
        EXPECT_TRUE(Loads(FileWithValue(7 + reagent, "255"))) << reagent;
    }
}

TEST(BadSpellFile, TextWhereANumberIsDue_Fails) {
    for (int value = 1; value <= 32; ++value) {
        const bool isText = (value >= 2 && value <= 4) || value == 25 || value == 26 ||
                            (value >= 28 && value <= 31);
        for (const char* text : {"abc", "", "1x", "1 2", "\"1\"", "0x1", "-", "nan", "inf"}) {
            EXPECT_EQ(Loads(FileWithValue(value, text)), isText) << value << ' ' << text;
        }
    }
}

TEST(BadSpellFile, QuoteNotClosed_Fails) {
    for (const int value : {2, 3, 4, 25, 26, 28, 29, 30, 31}) {
        EXPECT_FALSE(Loads(FileWithValue(value, "\"open"))) << value;
    }
    EXPECT_FALSE(Loads("\"open title, 96\n" + FileOf("96", 96)));
}

TEST(BadSpellFile, TextBehindClosedQuotes_Fails) {
    EXPECT_FALSE(Loads(FileWithValue(28, "\"a\" b")));
    EXPECT_FALSE(Loads(FileWithValue(28, "\"a\"\"b\"")));
}

TEST(BadSpellFile, NulByte_FailsAnywhere) {
    const std::string text = FileOf("96", 96);
    ASSERT_TRUE(Loads(text));
    for (std::size_t at = 0; at + 1 < text.size(); at += 53) {
        std::string broken = text;
        broken[at] = '\0';
        EXPECT_FALSE(Loads(broken)) << at;
    }
    std::string quoted = FileWithValue(28, "\"a?b\"");
    quoted[quoted.find('?')] = '\0';
    EXPECT_FALSE(Loads(quoted));
}

TEST(BadSpellFile, Utf16_Fails) {
    std::string wide = "\xFF\xFE";
    for (const char c : FileOf("96", 96)) {
        wide += c;
        wide += '\0';
    }
    EXPECT_FALSE(Loads(wide));
}

TEST(BadSpellFile, ValueTooManyOrTooFew_Fails) {
    EXPECT_FALSE(Loads(FileWithValue(2, "Dim, Spark")));
    std::string text = FileOf("96", 96);
    text.erase(text.find("Magery, "), 8);
    EXPECT_FALSE(Loads(text));
}

TEST(BadSpellFile, EmptyLineBetweenRows_Fails) {
    std::string text = FileOf("96", 96);
    text.insert(text.find('\n') + 1, "\n");
    EXPECT_FALSE(Loads(text)) << "a line end ends a value, so the line is an empty number";
}

TEST(BadSpellFile, CountUnder88_Fails) {
    for (const char* count : {"-1", "0", "1", "87", "-2147483648", "87.4"}) {
        EXPECT_FALSE(Loads(FileOf(count, 96))) << count;
    }
}

TEST(BadSpellFile, CountThatIsNoNumber_Fails) {
    for (const char* count : {"abc", "", "96x", "\"96\"", "2147483648", "1e20", "-1e20"}) {
        EXPECT_FALSE(Loads(FileOf(count, 96))) << count;
    }
}

TEST(BadSpellFile, OneRowTooFew_Fails) {
    for (const int count : {88, 96, 97, 30000}) {
        EXPECT_FALSE(Loads(FileOf(std::to_string(count), count - 1))) << count;
        EXPECT_TRUE(Loads(FileOf(std::to_string(count), count))) << count;
    }
}

TEST(BadSpellFile, HugeCounts_TakeNoMemoryForRowsThatAreNotThere) {
    const std::string rows = FileOf("", 96).substr(FileOf("", 0).size());
    for (const char* count : {"1000000", "2000000000", "2147483647"}) {
        SharedState state;
        std::istringstream input("Title, " + std::string(count) + "\n" + rows);
        ForgetLargestPiece();
        EXPECT_FALSE(LoadSpellData(state, input)) << count;
        EXPECT_EQ(state.Spells.Last(), 96) << "96 rows and the one that was begun";
        EXPECT_EQ(state.Spells(95).Name, "Dim Spark") << "the table stays as far as it got";
        EXPECT_GT(LargestPiece(), sizeof(SpellRecord));
        EXPECT_LT(LargestPiece(), 256 * sizeof(SpellRecord)) << "a table of 96 rows may be doubled";
    }
}

TEST(BadSpellFile, FailureInTheMiddle_LeavesTheTableAsFarAsItGot) {
    std::string text = FileOf("96", 50) + "51, Broken, Magery, Eval Int, many\n";
    SharedState state;
    std::istringstream input(text);
    EXPECT_FALSE(LoadSpellData(state, input));
    EXPECT_EQ(state.SpellCount, 96);
    EXPECT_EQ(state.Spells(49).Name, "Dim Spark");
    EXPECT_EQ(state.Spells(50).Name, "Broken");
}

TEST(BadSpellFile, TenMegabytesOfNoise_FailFast_Long) {
    constexpr std::size_t kSize = 10U << 20U;
    constexpr std::size_t kRandomSize = kSize / 10;
    std::mt19937 random(1);
    const testing_support::ProcessorTime time;
    const std::pair<int, int> ranges[] = {{0, 255}, {1, 255}, {'0', '9'}, {'a', 'z'}, {' ', '~'}};
    for (const auto& [low, high] : ranges) {
        std::uniform_int_distribution<int> byte(low, high);
        std::string block(kRandomSize, ' ');
        for (char& c : block) {
            c = static_cast<char>(byte(random));
        }
        std::string noise;
        while (noise.size() < kSize) {
            noise += block;
        }
        EXPECT_FALSE(Loads(noise)) << low;
        EXPECT_FALSE(Loads("Title, 96\n" + noise)) << low;
        EXPECT_FALSE(Loads("Title, 96\n1, \"" + noise)) << low;
    }
    for (const char c : {',', '\n', '"', ' ', '0', '-', '.', 'e', '\r'}) {
        EXPECT_FALSE(Loads(std::string(kSize, c))) << c;
        EXPECT_FALSE(Loads("Title, 96\n" + std::string(kSize, c))) << c;
    }
    EXPECT_LT(time.Seconds(), 12.0 * testing_support::kPace);
}

TEST(BadSpellFile, ShippedFileWithOneByteChanged_NeverCrashes_Long) {
    const std::string text = ShippedText();
    std::mt19937 random(17);
    std::uniform_int_distribution<std::size_t> place(0, text.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    int loaded = 0;
    constexpr int kRounds = 3000;
    for (int round = 0; round < kRounds; ++round) {
        std::string broken = text;
        broken[place(random)] = static_cast<char>(byte(random));
        loaded += Loads(broken) ? 1 : 0;
    }
    EXPECT_GT(loaded, 0);
    EXPECT_LT(loaded, kRounds);
}

}  // namespace
}  // namespace spellwick
