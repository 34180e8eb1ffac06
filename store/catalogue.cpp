#include "store/catalogue.h"

#include "text/number_forms.h"

namespace spellwick {

std::string SpellRegsKey(i32 row) {
    return "SpellRegs" + StandardText(row + 1);
}

std::string InTownKey(i32 row) {
    return "InTown" + StandardText(row);
}

std::string MacroCodeKey(i32 number) {
    return "Macro" + StandardText(number);
}

std::string BagNameKey(i32 bag) {
    return "Bag" + StandardText(bag);
}

std::string StockKey(i32 reagent, i32 bag) {
    return std::string(FactsOfReagent(reagent).stockCode) + StandardText(bag);
}

std::string UserSpellKey(i32 cell) {
    return "User" + PlainText(cell + 1);
}

std::string SpellbookKey(i32 row) {
    return "Spellbook" + StandardText(row);
}

std::string SpellTextKey(i32 row) {
    return "SpellText" + StandardText(row / kSlotCount) + StandardText(row % kSlotCount);
}

}  // namespace spellwick
