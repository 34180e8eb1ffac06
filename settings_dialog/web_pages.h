// The two web pages that the dialog's buttons open. The settings store can hold other addresses.
#pragma once

#include "settings_dialog/services.h"

namespace spellwick {

inline constexpr const char* kDefaultGuildPage = "https://www.uoguide.com/";
inline constexpr const char* kDefaultHomePage = "https://uo.com/";

// Open the address in the store, or the default. A browser that does not start is no failure.
void OpenGuildPage(const SettingsServices& services);
void OpenHomePage(const SettingsServices& services);

}  // namespace spellwick
