// The two pages that buttons of the dialog open. A user can put another address in the store.
#pragma once

#include "settings_dialog/services.h"

namespace spellwick {

inline constexpr const char* kDefaultGuildPage = "https://www.uoguide.com/";
inline constexpr const char* kDefaultHomePage = "https://uo.com/";

// Opens the address under the key, or the default. A browser that does not start is no failure.
void OpenGuildPage(const SettingsServices& services);
void OpenHomePage(const SettingsServices& services);

}  // namespace spellwick
