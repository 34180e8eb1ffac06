// Reads the spell data file: a flat sequence of values, each ended by a comma or a line end.
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

// Smallest count of rows for which the table reaches row 96.
inline constexpr i32 kFewestSpells = 88;

// Last row of the table for a count of rows: the next multiple of eight above it.
i32 LastRowFor(i32 spellCount);

// Reads value by value. Every error is a RuntimeFailure: the end of the data, a number that does
// not fit, a text where a number is required, a quote that is not closed, a NUL byte. A UTF-8 byte
// order mark before the first value is skipped, since some editors write one.
class SpellDataReader {
  public:
    explicit SpellDataReader(std::istream& input);

    std::string ReadText();
    i32 ReadI32();
    i16 ReadI16();
    unsigned char ReadByte();
    // Whether nothing but blanks is left.
    bool AtEnd();

  private:
    struct Value {
        std::string text;
        bool quoted = false;
    };

    int Peek();
    int Take();
    int Next();
    void SkipBlanks();
    std::string_view TakePlain(char end, char otherEnd);
    Value ReadValue();
    std::string ReadQuoted();
    double ReadNumber();

    std::istream& m_input;
    std::array<char, 4096> m_block{};
    std::size_t m_at = 0;  // in the block
    std::size_t m_filled = 0;
};

// Opens the file for reading; RuntimeFailure (file) if that fails.
std::ifstream OpenSpellData(const std::filesystem::path& path);

// Reads the header and returns the count of rows.
i32 ReadSpellCount(SpellDataReader& reader);

// Reads one row.
void ReadSpellRow(SpellDataReader& reader, SpellRecord& spell);

// Fills SpellCount and Spells. False if anything failed; the table then keeps the rows read so far.
bool LoadSpellData(SpellTables& tables, std::istream& input);
bool LoadSpellData(SpellTables& tables, const std::filesystem::path& path);

}  // namespace spellwick
