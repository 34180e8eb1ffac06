#include "model/spell_record.h"

#include <utility>

namespace spellwick {

namespace {

std::size_t Place(i32 row, i32 last) {
    if (row < 0 || row > last) {
        throw RuntimeFailure(FailureKind::kSubscript,
                             "There is no spell row " + std::to_string(row) + ".");
    }
    return static_cast<std::size_t>(row);
}

}  // namespace

void SpellTable::GrowTo(i32 last) {
    if (last > Last()) {
        m_rows.resize(static_cast<std::size_t>(last) + 1);
    }
}

SpellRecord& SpellTable::operator()(i32 row) {
    return m_rows[Place(row, Last())];
}

const SpellRecord& SpellTable::operator()(i32 row) const {
    return m_rows[Place(row, Last())];
}

}  // namespace spellwick
