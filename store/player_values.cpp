#include "store/player_values.h"

#include <map>
#include <string>

#include "store/catalogue.h"
#include "store/text_forms.h"
#include "text/runtime_failure.h"

namespace spellwick {

namespace {

// Reads a value as the load does, for its failure alone.
using Reader = void (*)(std::string_view);

void AsText(std::string_view /*text*/) {}
void AsNumber(std::string_view text) {
    static_cast<void>(ReadI16(text));
}
void AsStock(std::string_view text) {
    static_cast<void>(ReadStock(text));
}
void AsTithing(std::string_view text) {
    static_cast<void>(ReadTithing(text));
}

std::map<std::string, Reader, std::less<>> MakeReaders() {
    std::map<std::string, Reader, std::less<>> readers;
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        readers[BagNameKey(bag)] = AsText;
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            readers[StockKey(reagent, bag)] = AsStock;
        }
    }
    readers[std::string(kTithingKey)] = AsTithing;
    for (const auto& entry : kBagChoiceKeys) {
        readers[std::string(entry.key)] = AsNumber;
    }
    for (i32 cell = 0; cell < kUserCells; ++cell) {
        readers[UserSpellKey(cell)] = AsNumber;
    }
    for (i32 row = 0; row <= kLastRow; ++row) {
        readers[SpellbookKey(row)] = AsNumber;
    }
    for (const auto& entry : kSkillKeys) {
        readers[std::string(entry.key)] = AsNumber;
    }
    for (const auto& entry : kSendKeys) {
        readers[std::string(entry.key)] = AsNumber;
    }
    readers[std::string(kSuffixKey)] = AsText;
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        readers[SpellTextKey(row)] = AsText;
    }
    return readers;
}

}  // namespace

bool IsPlayerValue(std::string_view key, std::string_view value) {
    static const auto kReaders = MakeReaders();
    const auto reader = kReaders.find(key);
    if (reader == kReaders.end()) {
        return false;
    }
    try {
        reader->second(value);
    } catch (const RuntimeFailure&) {
        return false;
    }
    return true;
}

}  // namespace spellwick
