// Loads and saves the macro files of the clients behind the buttons of the macro tab, and tells
// what came of it. The kind of a file is told by its content.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "settings_dialog/services.h"

namespace spellwick {

class MacroFiles {
  public:
    using ShowHint = std::function<void(const std::string& text)>;

    MacroFiles(const SettingsServices& services, ShowHint showHint)
        : m_services(services), m_showHint(std::move(showHint)) {}

    // Takes the keys of a file over. A hint tells what the classic client's text brought, a box
    // what a macros.xml did.
    void Load(const std::filesystem::path& file);

    // Puts our keys into a macros.xml; a new one if the name ends so and there is none. Anything
    // else becomes the classic client's text, with the failure at its end (store/macro_file.h).
    void Save(const std::filesystem::path& file);

  private:
    void LoadText(const std::filesystem::path& file);
    void LoadXml(const std::filesystem::path& file);
    void SaveXml(const std::filesystem::path& file);
    bool IsSaveWanted(const std::filesystem::path& file);
    void Refuse(const std::string& what, const std::string& why);

    SettingsServices m_services;
    ShowHint m_showHint;
};

}  // namespace spellwick
