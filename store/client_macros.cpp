#include "store/client_macros.h"

#include <algorithm>
#include <map>
#include <set>

#include "store/client_keys.h"
#include "store/macro_writer.h"
#include "text/lower_case.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

ClientAction ActionOf(const XmlAttributes& action) {
    return {NumberOf(action, "code"), NumberOf(action, "subcode")};
}

std::string NameOf(const SpellTable& spells, i32 number) {
    if (number == kMeditationMacro) {
        return "Meditation";
    }
    return number - 1 <= spells.Last() ? ValidUtf8(spells(number - 1).Name) : std::string();
}

// The macro of ours that an action of the file is; nothing for a row without a spell.
std::optional<i32> NumberOfAction(const XmlAttributes& action, const SpellTable& spells) {
    const std::optional<i32> number = MacroOfAction(ActionOf(action));
    return number && !NameOf(spells, *number).empty() ? number : std::nullopt;
}

bool IsOnMouse(const XmlMacro& macro) {
    return NumberOf(macro.attributes, "mousebutton") != 0 || IsOn(macro.attributes, "wheelscroll");
}

Macro MacroOf(const XmlMacro& macro) {
    const i32 code = NumberOf(macro.attributes, "key");
    return {.alt = IsOn(macro.attributes, "alt"),
            .ctrl = IsOn(macro.attributes, "ctrl"),
            .shift = IsOn(macro.attributes, "shift"),
            .key = MacroKeyOfCode(code).value_or(std::string())};
}

// Why the tables cannot take the key of a macro.
std::optional<LeftReason> Obstacle(const XmlMacro& macro) {
    if (IsOnMouse(macro)) {
        return LeftReason::kMouse;
    }
    if (ValueOf(macro.attributes, "key").empty() || ValueOf(macro.attributes, "key") == "0") {
        return LeftReason::kNoKey;
    }
    return MacroOf(macro).key.empty() ? std::optional(LeftReason::kOtherKey) : std::nullopt;
}

// The macros that do nothing but cast one spell, by the number of ours, in the order of the file.
using MacrosOfSpells = std::map<i32, std::vector<const XmlMacro*>>;

MacrosOfSpells FindMacros(const MacroXml& xml, const SpellTable& spells) {
    MacrosOfSpells found;
    for (const XmlMacro& macro : xml.macros) {
        if (macro.actions.size() == 1) {
            if (const auto number = NumberOfAction(macro.actions.front(), spells)) {
                found[*number].push_back(&macro);
            }
        }
    }
    return found;
}

// The one that counts: the first whose key can be taken, else the first.
const XmlMacro& MainMacro(const std::vector<const XmlMacro*>& macros) {
    const auto usable = std::ranges::find_if(
        macros, [](const XmlMacro* macro) { return !Obstacle(*macro).has_value(); });
    return usable != macros.end() ? **usable : *macros.front();
}

// For spells that have no macro of their own.
void AddMacrosThatDoMore(const MacroXml& xml, const SpellTable& spells,
                         const MacrosOfSpells& single, MacroLoad& load) {
    for (const XmlMacro& macro : xml.macros) {
        if (macro.actions.size() < 2) {
            continue;
        }
        for (const XmlAttributes& action : macro.actions) {
            const auto number = NumberOfAction(action, spells);
            if (number && !single.contains(*number)) {
                load.left.push_back({LeftReason::kMoreActions, NameOf(spells, *number)});
            }
        }
    }
}

// A blank alone stands for no key: it would cast with every word that is typed.
bool HasNoKey(const Macro& macro) {
    const bool isBare = !macro.alt && !macro.ctrl && !macro.shift;
    return macro.key.empty() || macro.key == ReadMacroCode(kUnsavedMacro).key ||
           (macro.key == " " && isBare);
}

struct Wanted {
    i32 number;
    ClientAction action;
    i32 code;
    Macro macro;
};

// The macros that can be saved; the others are left.
std::vector<Wanted> FindWanted(const SpellTable& spells, const MacroTables& tables,
                               MacroSave& save) {
    std::vector<Wanted> wanted;
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        const std::optional<ClientAction> action = ActionOfMacro(number);
        const std::string name = action ? NameOf(spells, number) : std::string();
        if (name.empty()) {
            continue;
        }
        const Macro macro = PressedMacro(tables, number);
        const std::optional<i32> code = CodeOfMacroKey(macro.key);
        if (HasNoKey(MacroOf(tables, number))) {
            if (number != kMeditationMacro) {
                save.left.push_back({LeftReason::kNoKey, name});
            }
        } else if (!code) {
            save.left.push_back({LeftReason::kOtherKey, name + " (" + macro.key + ")"});
        } else {
            wanted.push_back({number, *action, *code, macro});
        }
    }
    return wanted;
}

// Spells whose key another macro of the file has as well.
std::vector<std::string> FindShared(const std::vector<Wanted>& wanted,
                                    const std::set<const XmlMacro*>& ours, const MacroXml& xml,
                                    const SpellTable& spells) {
    std::vector<std::string> shared;
    for (const Wanted& one : wanted) {
        const auto other = std::ranges::find_if(xml.macros, [&](const XmlMacro& macro) {
            return !ours.contains(&macro) && !Obstacle(macro) && MacroOf(macro) == one.macro;
        });
        if (other != xml.macros.end()) {
            shared.push_back(NameOf(spells, one.number));
        }
    }
    return shared;
}

}  // namespace

bool IsXml(std::string_view beginning) {
    using namespace std::string_view_literals;
    for (const std::string_view wide :
         {"\xff\xfe<\0"sv, "\xfe\xff\0<"sv, "<\0?\0"sv, "\0<\0?"sv, "\0\0\0<"sv, "<\0\0\0"sv}) {
        if (beginning.starts_with(wide)) {
            return true;
        }
    }
    if (beginning.starts_with(kUtf8Mark)) {
        beginning.remove_prefix(kUtf8Mark.size());
    }
    beginning.remove_prefix(std::min(beginning.find_first_not_of(kBlanks), beginning.size()));
    // In the classic client's text a blank follows the key <.
    return beginning.size() >= 2 && beginning[0] == '<' &&
           kBlanks.find(beginning[1]) == std::string_view::npos;
}

MacroLoad LoadClientMacros(const MacroXml& xml, const SpellTable& spells, MacroTables& tables) {
    MacroLoad load;
    const MacrosOfSpells single = FindMacros(xml, spells);
    for (const auto& [number, macros] : single) {
        const XmlMacro& main = MainMacro(macros);
        std::string name = NameOf(spells, number);
        if (macros.size() > 1) {
            load.left.push_back({LeftReason::kSecond, name});
        }
        const std::optional<LeftReason> obstacle = Obstacle(main);
        if (!obstacle) {
            SetMacro(tables, number, MacroOf(main));
            load.taken.insert(number);
            continue;
        }
        if (*obstacle == LeftReason::kOtherKey) {
            name += " (" + NameOfCode(NumberOf(main.attributes, "key")) + ")";
        }
        load.left.push_back({*obstacle, name});
    }
    AddMacrosThatDoMore(xml, spells, single, load);
    return load;
}

SavedMacros SaveClientMacros(std::string_view bytes, const MacroXml& xml, const SpellTable& spells,
                             const MacroTables& tables) {
    SavedMacros saved;
    const std::vector<Wanted> wanted = FindWanted(spells, tables, saved.save);
    const MacrosOfSpells inFile = FindMacros(xml, spells);
    std::set<const XmlMacro*> ours;
    std::map<std::size_t, std::pair<const XmlMacro*, const Wanted*>> inOrder;
    for (const Wanted& one : wanted) {
        const auto found = inFile.find(one.number);
        if (found != inFile.end()) {
            const XmlMacro& macro = MainMacro(found->second);
            ours.insert(&macro);
            inOrder.emplace(macro.tagBegin, std::pair(&macro, &one));
        }
    }
    MacroWriter writer(bytes, xml);
    for (const auto& [place, pair] : inOrder) {
        const auto& [macro, one] = pair;
        const bool isChanged = writer.Change(*macro, one->code, one->macro);
        (isChanged ? saved.save.replaced : saved.save.unchanged).insert(one->number);
        const std::optional<LeftReason> before = Obstacle(*macro);
        if (before == LeftReason::kMouse || before == LeftReason::kOtherKey) {
            saved.save.moved.push_back(NameOf(spells, one->number));
        }
    }
    for (const Wanted& one : wanted) {
        if (!inFile.contains(one.number)) {
            writer.Add(NameOf(spells, one.number), one.action, one.code, one.macro);
            saved.save.added.insert(one.number);
        }
    }
    saved.save.shared = FindShared(wanted, ours, xml, spells);
    saved.bytes = writer.Finish();
    return saved;
}

std::string EmptyClientMacros() {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<macros>\n</macros>";
}

Macro PressedMacro(const MacroTables& tables, i32 number) {
    Macro macro = MacroOf(tables, number);
    const std::string small = macro.key.starts_with('{') ? macro.key : LowerCase(macro.key);
    // The Meditation key goes out as it was entered, so a capital is typed with Shift.
    macro.shift = macro.shift || (number == kMeditationMacro && small != macro.key);
    macro.key = small;
    return macro;
}

}  // namespace spellwick
