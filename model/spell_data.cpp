#include "model/spell_data.h"

#include <new>
#include <utility>

#include "text/number_forms.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr int kEnd = std::istream::traits_type::eof();

bool IsBlank(int c) {
    return c == ' ' || c == '\t';
}
bool EndsValue(int c) {
    return c == ',' || c == '\n' || c == kEnd;
}

[[noreturn]] void FailFile(const char* what) {
    throw RuntimeFailure(FailureKind::kFile, what);
}

i32 SchoolOf(const std::string& word) {
    if (word == "Magery") {
        return kMagery;
    }
    if (word == "Necromancer") {
        return kNecromancer;
    }
    return word == "Chivalry" ? kChivalry : kNoSchool;
}

i32 SecondSkillOf(const std::string& word) {
    if (word == "Eval Int") {
        return kEvalInt;
    }
    if (word == "Spirit Speak") {
        return kSpiritSpeak;
    }
    return word == "Karma" ? kKarma : kNoSecondSkill;
}

}  // namespace

i32 LastRowFor(i32 spellCount) {
    const std::int64_t last = (std::int64_t{spellCount} / kSlotCount + 1) * kSlotCount;
    return ToI32(static_cast<double>(last));
}

SpellDataReader::SpellDataReader(std::istream& input) : m_input(input) {
    Peek();  // fills the block
    if (std::string_view(m_block.data(), m_filled).starts_with(kByteOrderMark)) {
        m_at = kByteOrderMark.size();
    }
}

int SpellDataReader::Peek() {
    if (m_at == m_filled) {
        // A whole block at once: a stream looks at its state for every character.
        m_at = 0;
        m_input.read(m_block.data(), static_cast<std::streamsize>(m_block.size()));
        m_filled = static_cast<std::size_t>(m_input.gcount());
    }
    return m_at == m_filled ? kEnd : static_cast<unsigned char>(m_block[m_at]);
}

int SpellDataReader::Take() {
    const int c = Peek();
    if (c != kEnd) {
        ++m_at;
    }
    return c;
}

// The next character; a Windows line end is read as one character.
int SpellDataReader::Next() {
    if (m_at < m_filled) {
        // Nearly all characters.
        const auto next = static_cast<unsigned char>(m_block[m_at]);
        if (next != '\r' && next != 0) {
            ++m_at;
            return next;
        }
    }
    int c = Take();
    if (c == '\r') {
        if (Peek() == '\n') {
            Take();
        }
        c = '\n';
    }
    if (c == 0) {
        FailFile("The file is no text.");
    }
    return c;
}

// The blanks that lie in the block. Tables in columns consist of them by half.
void SpellDataReader::SkipBlanks() {
    while (m_at < m_filled && IsBlank(m_block[m_at])) {
        ++m_at;
    }
}

// What lies in the block before one of the two characters or one that Next treats as special.
std::string_view SpellDataReader::TakePlain(char end, char otherEnd) {
    const std::size_t from = m_at;
    for (; m_at < m_filled; ++m_at) {
        const char c = m_block[m_at];
        if (c == end || c == otherEnd || c == '\r' || c == 0) {
            break;
        }
    }
    return {m_block.data() + from, m_at - from};
}

std::string SpellDataReader::ReadQuoted() {
    std::string text(TakePlain('"', '"'));
    for (int c = Next(); c != '"'; c = Next()) {
        if (c == kEnd) {
            FailFile("A quote is not closed.");
        }
        text.push_back(static_cast<char>(c));
        text += TakePlain('"', '"');
    }
    int c = Next();
    while (IsBlank(c)) {
        c = Next();
    }
    if (!EndsValue(c)) {
        throw RuntimeFailure(FailureKind::kTypeMismatch, "A text goes on behind its quotes.");
    }
    return text;
}

SpellDataReader::Value SpellDataReader::ReadValue() {
    SkipBlanks();
    int c = Next();
    while (IsBlank(c)) {
        c = Next();
    }
    if (c == kEnd) {
        FailFile("The file ends too early.");
    }
    if (c == '"') {
        return {ReadQuoted(), true};
    }
    std::string text;
    while (!EndsValue(c)) {
        text.push_back(static_cast<char>(c));
        text += TakePlain(',', '\n');
        c = Next();
    }
    text.erase(text.find_last_not_of(" \t") + 1);
    return {std::move(text), false};
}

double SpellDataReader::ReadNumber() {
    const Value value = ReadValue();
    if (value.quoted) {
        throw RuntimeFailure(FailureKind::kTypeMismatch, "A text stands where a number is due.");
    }
    return RequiredNumber(value.text);
}

std::string SpellDataReader::ReadText() {
    return ReadValue().text;
}
i32 SpellDataReader::ReadI32() {
    return ToI32(ReadNumber());
}
i16 SpellDataReader::ReadI16() {
    return ToI16(ReadNumber());
}
unsigned char SpellDataReader::ReadByte() {
    return ToByte(ReadI32());
}
bool SpellDataReader::AtEnd() {
    while (IsBlank(Peek())) {
        Take();
    }
    return Peek() == kEnd;
}

// A pipe or a device would hold the start up, and a larger file is none of ours.
std::ifstream OpenSpellData(const std::filesystem::path& path) {
    constexpr std::uintmax_t kMostBytes = std::uintmax_t{64} * 1024 * 1024;
    std::error_code trouble;
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, trouble) &&
        std::filesystem::file_size(path, trouble) <= kMostBytes) {
        file.open(path, std::ios::binary);
    }
    if (!file.is_open() || !file) {
        FailFile("The spell data file cannot be opened.");
    }
    return file;
}

i32 ReadSpellCount(SpellDataReader& reader) {
    reader.ReadText();
    const i32 count = reader.ReadI32();
    if (count < kFewestSpells) {
        throw RuntimeFailure(FailureKind::kSubscript, "The file has too few spells.");
    }
    return count;
}

void ReadSpellRow(SpellDataReader& reader, SpellRecord& spell) {
    spell.Number = reader.ReadI16();
    spell.Name = reader.ReadText();
    spell.School = SchoolOf(reader.ReadText());
    spell.SecondSkill = SecondSkillOf(reader.ReadText());
    spell.Mana = reader.ReadI16();
    spell.MinimumSkill = reader.ReadI16();
    spell.MaximumSkill = reader.ReadI16();
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        spell.ReagentInput(reagent) = reader.ReadI16();
    }
    spell.File1 = reader.ReadByte();
    spell.File2 = reader.ReadByte();
    spell.File3 = reader.ReadByte();
    spell.File4 = reader.ReadText();
    spell.Words = reader.ReadText();
    spell.InTown = reader.ReadByte();
    spell.DamageText = reader.ReadText();
    spell.DurationText = reader.ReadText();
    spell.ExtraText1 = reader.ReadText();
    spell.ExtraText2 = reader.ReadText();
    spell.File5 = reader.ReadI16();
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        spell.Reagents(reagent) = ToByte(spell.ReagentInput(reagent));
    }
}

bool LoadSpellData(SpellTables& tables, std::istream& input) {
    try {
        SpellDataReader reader(input);
        const i32 count = ReadSpellCount(reader);
        tables.SpellCount = count;
        tables.Spells.Clear();
        // Grow the table with the rows that are really there, whatever the count says.
        for (i32 row = 0; row < count; ++row) {
            tables.Spells.GrowTo(row);
            ReadSpellRow(reader, tables.Spells(row));
        }
        tables.Spells.GrowTo(LastRowFor(count));
        return true;
    } catch (const RuntimeFailure&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool LoadSpellData(SpellTables& tables, const std::filesystem::path& path) {
    try {
        std::ifstream file = OpenSpellData(path);
        return LoadSpellData(tables, file);
    } catch (const RuntimeFailure&) {
        return false;
    }
}

}  // namespace spellwick
