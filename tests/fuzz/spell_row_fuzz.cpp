// Any bytes as the head and the rows of a spell data file, however few rows there are: each row is
// read or fails in a defined way, and a row that was read is read again as it is written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "model/spell_data.h"
#include "text/runtime_failure.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// A text with a quote in it cannot have been in quotes.
void AppendText(std::string& row, const std::string& text) {
    const char* const quote = text.find('"') == std::string::npos ? "\"" : "";
    row.append(quote).append(text).append(quote).append(",");
}

void AppendNumber(std::string& row, i32 number) {
    row.append(std::to_string(number)).append(",");
}

const char* SchoolWord(i32 school) {
    constexpr const char* kWords[] = {"none", "Magery", "Necromancer", "Chivalry"};
    return kWords[school];
}

const char* SkillWord(i32 skill) {
    constexpr const char* kWords[] = {"none", "Eval Int", "Spirit Speak", "Karma"};
    return kWords[skill];
}

std::string Written(const SpellRecord& spell) {
    std::string row;
    AppendNumber(row, spell.Number);
    AppendText(row, spell.Name);
    AppendText(row, SchoolWord(spell.School));
    AppendText(row, SkillWord(spell.SecondSkill));
    AppendNumber(row, spell.Mana);
    AppendNumber(row, spell.MinimumSkill);
    AppendNumber(row, spell.MaximumSkill);
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        Require(spell.Reagents(reagent) == spell.ReagentInput(reagent));
        AppendNumber(row, spell.ReagentInput(reagent));
    }
    AppendNumber(row, spell.File1);
    AppendNumber(row, spell.File2);
    AppendNumber(row, spell.File3);
    AppendText(row, spell.File4);
    AppendText(row, spell.Words);
    AppendNumber(row, spell.InTown);
    AppendText(row, spell.DamageText);
    AppendText(row, spell.DurationText);
    AppendText(row, spell.ExtraText1);
    AppendText(row, spell.ExtraText2);
    AppendNumber(row, spell.File5);
    return row;
}

void RequireReadAgain(const SpellRecord& spell) {
    const std::string row = Written(spell);
    std::istringstream input(row);
    SpellDataReader reader(input);
    SpellRecord again;
    ReadSpellRow(reader, again);
    Require(reader.AtEnd() && Written(again) == row);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(std::string(data, data + size));
    SpellDataReader reader(input);
    std::size_t rows = 0;
    try {
        Require(ReadSpellCount(reader) >= kFewestSpells);
        while (!reader.AtEnd()) {
            SpellRecord spell;
            ReadSpellRow(reader, spell);
            RequireReadAgain(spell);
            ++rows;
        }
    } catch (const RuntimeFailure& failure) {
        Require(failure.Kind() == FailureKind::kFile || failure.Kind() == FailureKind::kOverflow ||
                failure.Kind() == FailureKind::kTypeMismatch ||
                failure.Kind() == FailureKind::kSubscript);
    }
    // Each of the 32 values of a row has at least the byte that ends it.
    Require(rows <= size / 32 + 1);
    return 0;
}
