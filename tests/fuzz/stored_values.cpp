#include "tests/fuzz/stored_values.h"

#include <cstdlib>

#include "store/catalogue.h"
#include "store/section_name.h"
#include "text/runtime_failure.h"

namespace spellwick::fuzz {

namespace {

bool IsText(const SettingChange& place) {
    return place.section != kGlobalSection &&
           (place.key == kSuffixKey || place.key.starts_with("SpellText ") ||
            place.key.starts_with("Bag "));
}

}  // namespace

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool Reads(const SettingsIo& io, const std::function<void()>& load) {
    try {
        load();
        return true;
    } catch (const RuntimeFailure& failure) {
        Require(failure.Kind() == FailureKind::kTypeMismatch ||
                failure.Kind() == FailureKind::kOverflow);
        Require(!io.LastKey().empty());
        return false;
    }
}

GivenValues Given(const std::uint8_t* data, std::size_t size, const SettingChanges& places) {
    GivenValues given;
    std::string_view input(reinterpret_cast<const char*>(data), size);  // NOLINT
    while (input.size() >= 3) {
        const auto byte = [&input](std::size_t at) {
            return static_cast<std::size_t>(static_cast<unsigned char>(input[at]));
        };
        const SettingChange& place = places[(byte(0) * 256 + byte(1)) % places.size()];
        const std::size_t length = byte(2);
        input.remove_prefix(3);
        const std::string_view value = input.substr(0, length);
        input.remove_prefix(value.size());
        given.store.Put(place.section, place.key, value);
        if (IsText(place)) {
            given.texts[place.key] = value;
        }
    }
    return given;
}

MemorySettingsStore Unusual(const SettingChanges& saved, const SettingChanges& usual) {
    MemorySettingsStore store;
    Require(saved.size() == usual.size());
    for (std::size_t at = 0; at < saved.size(); ++at) {
        Require(saved[at].key == usual[at].key && saved[at].section == usual[at].section);
        if (saved[at].value != usual[at].value) {
            store.Put(saved[at].section, saved[at].key, saved[at].value.value_or(""));
        }
    }
    return store;
}

MemorySettingsStore Whole(const SettingChanges& saved) {
    MemorySettingsStore store;
    Require(store.Apply(saved).ok);
    return store;
}

void RequireTexts(const SettingChanges& saved, const std::map<std::string, std::string>& texts) {
    if (texts.empty()) {
        return;
    }
    std::size_t found = 0;
    for (const SettingChange& change : saved) {
        const auto text = change.section == kGlobalSection ? texts.end() : texts.find(change.key);
        if (text != texts.end()) {
            Require(change.value == text->second);
            ++found;
        }
    }
    Require(found == texts.size());
}

}  // namespace spellwick::fuzz
