#include "settings_dialog/macro_files.h"

#include <algorithm>
#include <variant>

#include "settings_dialog/macro_xml_reader.h"
#include "store/client_macros.h"
#include "store/file_bytes.h"
#include "store/macro_file.h"
#include "text/log.h"
#include "text/lower_case.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBytesToTell = 4096;

std::string Utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string NameOf(const fs::path& file) {
    return Utf8Of(file.filename());
}

bool IsNamedXml(const fs::path& file) {
    return LowerCase(Utf8Of(file.extension())) == ".xml";
}

void LogInOneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    LogLine(text);
}

// The file's bytes and what stands in them, or why it is refused.
struct ReadXml {
    std::string bytes;
    std::variant<MacroXml, std::string> result;
};

ReadXml ReadXmlFile(const fs::path& file) {
    std::error_code trouble;
    if (fs::is_regular_file(file, trouble) && fs::file_size(file, trouble) > kMostXmlBytes) {
        return {{}, "It is larger than any macro file."};
    }
    ReadXml read{{}, "It cannot be read."};
    IgnoreFailure([&] {
        read.bytes = ReadFileBytes(file, kMostXmlBytes);
        read.result = IsXml(read.bytes) ? ReadMacroXml(read.bytes)
                                        : std::string("It is no macro file of this kind.");
    });
    return read;
}

// Whether the client will find what is to be saved.
bool ReadsBack(const SavedMacros& saved, const SharedState& state) {
    const std::variant<MacroXml, std::string> read = ReadMacroXml(saved.bytes);
    const auto* const xml = std::get_if<MacroXml>(&read);
    if (xml == nullptr) {
        return false;
    }
    MacroTables tables;
    const MacroLoad load = LoadClientMacros(*xml, state.Spells, tables);
    for (const std::set<i32>* numbers :
         {&saved.save.replaced, &saved.save.added, &saved.save.unchanged}) {
        for (const i32 number : *numbers) {
            if (!load.taken.contains(number) ||
                MacroOf(tables, number) != PressedMacro(state, number)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

void MacroFiles::Load(const fs::path& file) {
    if (IsXml(FirstFileBytes(file, kBytesToTell))) {
        LoadXml(file);
    } else {
        LoadText(file);
    }
}

void MacroFiles::LoadText(const fs::path& file) {
    MacroLoad load;
    try {
        MergeMacroFile(file, m_services.state, load);
    } catch (const RuntimeFailure& failure) {
        if (failure.Kind() == FailureKind::kFile) {
            // A name without its folder is what the dialog holds before a file is chosen.
            if (file.is_absolute()) {
                LogInOneLine(failure.what());
                m_showHint("The file " + NameOf(file) + " cannot be read.");
            }
            return;
        }
    }
    LogInOneLine(spellwick::LoadText(load, NameOf(file), kLoggedNames));
    m_showHint(spellwick::LoadText(load, NameOf(file), kFewNames));
}

void MacroFiles::LoadXml(const fs::path& file) {
    const ReadXml read = ReadXmlFile(file);
    const auto* const xml = std::get_if<MacroXml>(&read.result);
    if (xml == nullptr) {
        Refuse(NameOf(file) + " was not loaded.", std::get<std::string>(read.result));
        return;
    }
    const MacroLoad load = LoadClientMacros(*xml, m_services.state.Spells, m_services.state);
    LogInOneLine(spellwick::LoadText(load, NameOf(file), kLoggedNames));
    m_services.boxes.Show({.text = spellwick::LoadText(load, NameOf(file), kManyNames),
                           .icon = BoxIcon::kInformation});
}

void MacroFiles::Save(const fs::path& file) {
    if (IsNamedXml(file) || IsXml(FirstFileBytes(file, kBytesToTell))) {
        SaveXml(file);
    } else {
        WriteMacroFile(file, m_services.state);
    }
}

void MacroFiles::SaveXml(const fs::path& file) {
    const std::string refused = NameOf(file) + " was not saved.";
    std::error_code trouble;
    const bool isNew = fs::status(file, trouble).type() == fs::file_type::not_found;
    const auto read = [&] {
        return isNew ? ReadXml{EmptyClientMacros(), ReadMacroXml(EmptyClientMacros())}
                     : ReadXmlFile(file);
    };
    if (const ReadXml first = read(); std::holds_alternative<std::string>(first.result)) {
        Refuse(refused, std::get<std::string>(first.result));
        return;
    }
    if (!IsSaveWanted(file)) {
        return;
    }
    // The client may have written the file while the question stood.
    const ReadXml old = read();
    const auto* const xml = std::get_if<MacroXml>(&old.result);
    if (xml == nullptr) {
        Refuse(refused, std::get<std::string>(old.result));
        return;
    }
    const SharedState& state = m_services.state;
    const SavedMacros saved = SaveClientMacros(old.bytes, *xml, state.Spells, state);
    if (!ReadsBack(saved, state)) {
        Refuse(refused, "The macros in it could not be put right.");
        return;
    }
    fs::path copy = file;
    copy += ".bak";
    const bool isChanged = saved.bytes != old.bytes;
    if (isChanged && !isNew && !ReplaceFileBytes(copy, old.bytes)) {
        Refuse(refused, "The copy " + NameOf(copy) + " cannot be written beside it.");
        return;
    }
    if (isChanged && !ReplaceFileBytes(file, saved.bytes)) {
        Refuse(refused, "It cannot be written.");
        return;
    }
    const std::string done = isNew       ? "\nThe file is new and holds these macros alone."
                             : isChanged ? "\nThe file as it was is kept as " + NameOf(copy) + "."
                                         : "";
    LogInOneLine(SaveText(saved.save, NameOf(file), kLoggedNames) + done);
    m_services.boxes.Show({.text = SaveText(saved.save, NameOf(file), kManyNames) + done,
                           .icon = BoxIcon::kInformation});
}

bool MacroFiles::IsSaveWanted(const fs::path& file) {
    const std::string character = m_services.companion.CharacterInGame();
    if (character.empty()) {
        return true;
    }
    return m_services.boxes.Show(
               {.text = character + " is logged in. At the logout of " + character +
                        " the game writes the macros.xml of " + character +
                        " anew, and the keys that are saved to it now are lost then.\n"
                        "Save to " +
                        NameOf(file) + " all the same?",
                .icon = BoxIcon::kQuestion,
                .buttons = BoxButtons::kYesNo}) == BoxAnswer::kYes;
}

void MacroFiles::Refuse(const std::string& what, const std::string& why) {
    LogInOneLine(what + " " + why);
    m_services.boxes.Show({.text = what + " " + why, .icon = BoxIcon::kExclamation});
}

}  // namespace spellwick
