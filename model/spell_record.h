// One row of the spell table, and the table itself.
#pragma once

#include <string>
#include <vector>

#include "model/fixed_table.h"
#include "model/reagents.h"
#include "text/number_types.h"

namespace spellwick {

// Pages, rows and slots: page p (1 to 12) holds rows (p-1)*8 to (p-1)*8+7, slot 0 to 7 each.
inline constexpr i32 kPageCount = 12;
inline constexpr i32 kSlotCount = 8;
inline constexpr i32 kLastPagedRow = 95;
inline constexpr i32 kLastRow = 96;  // beyond the pages, but loaded, saved and priced

enum School : i32 { kNoSchool = 0, kMagery = 1, kNecromancer = 2, kChivalry = 3 };
enum SecondSkill : i32 { kNoSecondSkill = 0, kEvalInt = 1, kSpiritSpeak = 2, kKarma = 3 };

struct SpellRecord {
    i16 Number = 0;
    std::string Name;
    i32 School = kNoSchool;
    i32 SecondSkill = kNoSecondSkill;
    i16 Mana = 0;  // cost of a cast, and the intelligence required
    i16 MinimumSkill = 0;
    i16 MaximumSkill = 0;
    FixedTable<unsigned char, 1, kTithes> Reagents;  // per cast; cell 14 is tithing points
    FixedTable<i16, 1, kTithes> ReagentInput;        // the same, as read from the file
    unsigned char InTown = 0;                        // 1 = may be cast in town
    i16 Cost = 0;                                    // gold for one cast, derived
    unsigned char File1 = 0;
    unsigned char File2 = 0;
    unsigned char File3 = 0;
    std::string File4;
    std::string Words;
    std::string SpellText;  // the loaded player's
    std::string DamageText;
    std::string DurationText;
    std::string ExtraText1;
    std::string ExtraText2;
    i16 File5 = 0;  // duration rule
};

// The spell table. Empty until it is filled; every subscript outside it is a RuntimeFailure.
class SpellTable {
  public:
    void Clear() { m_rows.clear(); }
    // Adds empty rows at the end until `last` is the index of the last one.
    void GrowTo(i32 last);
    // Index of the last row, -1 for an empty table.
    i32 Last() const { return static_cast<i32>(m_rows.size()) - 1; }

    SpellRecord& operator()(i32 row);
    const SpellRecord& operator()(i32 row) const;

  private:
    std::vector<SpellRecord> m_rows;
};

}  // namespace spellwick
