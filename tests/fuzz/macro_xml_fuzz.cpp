// The clients' macros.xml: any bytes are read or refused. What is saved into a file that was read
// is loaded again with the same keys, a second save changes nothing, and every foreign byte is
// kept.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <variant>

#include "settings_dialog/macro_xml_reader.h"
#include "store/client_keys.h"
#include "store/client_macros.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// All spells, or, since it takes time to read every one that was saved, a share of them.
bool IsNamed(i32 number, unsigned kind) {
    constexpr unsigned kAll = 0x70;
    const unsigned share = kind >> 4U;
    return (kind & 0xf0U) == kAll || (static_cast<unsigned>(number) + share) % 13 == 0;
}

// Some keys for the tables, told by a number below 256.
SharedState Tables(unsigned kind) {
    SharedState state;
    state.Spells.GrowTo(kLastRow);
    const char* const keys[] = {"q", "Q", "{F7}", ";", " ", "AA", "+", "\u00e9"};
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        if (number > 0 && IsNamed(number, kind) && ActionOfMacro(number)) {
            state.Spells(number - 1).Name = "Spell <&\"> " + std::to_string(number);
        }
        const unsigned mix = kind % 16 + static_cast<unsigned>(number + 1) * 7U;
        SetMacro(state, number,
                 {.alt = (mix & 1U) != 0,
                  .ctrl = (mix & 2U) != 0,
                  .shift = (mix & 4U) != 0,
                  .key = keys[(mix >> 1U) % 8]});
    }
    return state;
}

bool IsSpell(const SpellTables& tables, i32 number) {
    return number == kMeditationMacro || (number > 0 && !tables.Spells(number - 1).Name.empty());
}

MacroXml Reread(const std::string& bytes) {
    const auto read = ReadMacroXml(bytes);
    Require(std::holds_alternative<MacroXml>(read));
    return std::get<MacroXml>(read);
}

void RequirePlaces(const std::string& bytes, const MacroXml& xml) {
    std::size_t before = xml.rootTagEnd;
    for (const XmlMacro& macro : xml.macros) {
        Require(macro.tagBegin >= before && macro.tagEnd > macro.tagBegin);
        Require(bytes.compare(macro.tagBegin, 6, "<macro") == 0 && bytes[macro.tagEnd - 1] == '>');
        before = macro.tagEnd;
    }
    Require(before <= xml.endTagBegin || xml.endTagBegin == xml.rootTagEnd);
    Require(xml.endTagBegin <= bytes.size() && bytes[xml.rootTagEnd - 1] == '>');
}

// Macros are read in the order of the file, so those of the old one come first. Between their start
// tags, and around them, nothing but the new macros has come in.
void RequireForeignBytes(const std::string& old, const MacroXml& oldXml, const std::string& bytes,
                         const MacroXml& xml) {
    Require(xml.macros.size() >= oldXml.macros.size());
    if (oldXml.macros.empty()) {
        return;
    }
    std::size_t oldPlace = 0;
    std::size_t place = 0;
    for (std::size_t at = 0; at < oldXml.macros.size(); ++at) {
        const XmlMacro& oldMacro = oldXml.macros[at];
        const XmlMacro& macro = xml.macros[at];
        Require(old.substr(oldPlace, oldMacro.tagBegin - oldPlace) ==
                bytes.substr(place, macro.tagBegin - place));
        Require(macro.actions == oldMacro.actions);
        for (const auto& [name, value] : oldMacro.attributes) {
            const bool isOurs = name == "key" || name == "mousebutton" || name == "wheelscroll" ||
                                name == "alt" || name == "ctrl" || name == "shift";
            Require(isOurs || ValueOf(macro.attributes, name) == value);
        }
        oldPlace = oldMacro.tagEnd;
        place = macro.tagEnd;
    }
    const std::string oldEnd = old.substr(oldXml.endTagBegin);
    Require(bytes.size() >= oldEnd.size() &&
            bytes.compare(bytes.size() - oldEnd.size(), oldEnd.size(), oldEnd) == 0);
}

// The same each time.
const SharedState& TablesOf(unsigned kind) {
    static std::array<std::unique_ptr<const SharedState>, 256> made;
    auto& tables = made[kind % made.size()];
    if (!tables) {
        tables = std::make_unique<const SharedState>(Tables(kind % made.size()));
    }
    return *tables;
}

void RequireSound(const SpellTables& spells, const MacroTables& macros, const MacroLoad& load) {
    for (const i32 number : load.taken) {
        Require(IsSpell(spells, number) && CodeOfMacroKey(MacroOf(macros, number).key).has_value());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    static_cast<void>(IsXml(bytes));
    const auto read = ReadMacroXml(bytes);
    const auto* const xml = std::get_if<MacroXml>(&read);
    if (xml == nullptr) {
        Require(!std::get<std::string>(read).empty());
        return 0;
    }
    RequirePlaces(bytes, *xml);
    const SharedState& state = TablesOf(data[0]);
    MacroTables loaded = static_cast<const MacroTables&>(state);
    RequireSound(state, loaded, LoadClientMacros(*xml, state.Spells, loaded));

    const SavedMacros saved = SaveClientMacros(bytes, *xml, state.Spells, state);
    const MacroXml again = Reread(saved.bytes);
    RequirePlaces(saved.bytes, again);
    RequireForeignBytes(bytes, *xml, saved.bytes, again);
    // Into other macros of the same spells.
    const SharedState& others = TablesOf((data[0] & 0xf0U) | ((data[0] + 1U) & 0x0fU));
    MacroTables back = static_cast<const MacroTables&>(others);
    const MacroLoad load = LoadClientMacros(again, state.Spells, back);
    for (const auto* numbers : {&saved.save.replaced, &saved.save.added, &saved.save.unchanged}) {
        for (const i32 number : *numbers) {
            Require(load.taken.contains(number));
            Require(MacroOf(back, number) == PressedMacro(state, number));
        }
    }
    const SavedMacros second = SaveClientMacros(saved.bytes, again, state.Spells, state);
    Require(second.bytes == saved.bytes);
    return 0;
}
