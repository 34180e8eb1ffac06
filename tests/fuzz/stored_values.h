// Values of the settings store made of a fuzzer's bytes, and what holds of them once they are
// loaded and saved.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "store/setting_changes.h"
#include "store/settings_io.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick::fuzz {

// Short enough to need no memory of its own, since each of a thousand keys bears it.
inline constexpr std::string_view kPlayer = "Mira (Atlantic)";

// Ends the run, which libFuzzer reports with the input.
void Require(bool holds);

// Whether `load` reads everything. A value that cannot be read is of a kind and a key that are
// known.
bool Reads(const SettingsIo& io, const std::function<void()>& load);

struct GivenValues {
    MemorySettingsStore store;
    std::map<std::string, std::string> texts;  // values of the player that are kept as they are
};

// Each value: two bytes for its place in `places`, one for its length, and its bytes.
GivenValues Given(const std::uint8_t* data, std::size_t size, const SettingChanges& places);

// The values of `saved` that are not as in `usual`, which has the same keys in the same order, in a
// store: a load takes the usual value of a key that is missing, and most of them are.
MemorySettingsStore Unusual(const SettingChanges& saved, const SettingChanges& usual);

// The same with all values.
MemorySettingsStore Whole(const SettingChanges& saved);

// The texts were saved as they were given.
void RequireTexts(const SettingChanges& saved, const std::map<std::string, std::string>& texts);

}  // namespace spellwick::fuzz
