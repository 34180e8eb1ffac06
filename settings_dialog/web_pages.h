// The two web pages that the dialog's buttons open. The settings store can hold other addresses.
#pragma once

#include <QWidget>

#include "settings_dialog/services.h"

namespace spellwick {

inline constexpr const char* kDefaultGuildPage = "https://www.uoguide.com/";
inline constexpr const char* kDefaultHomePage = "https://uo.com/";

// Open the address in the store, or the default. A browser that does not start is no failure: a
// hint beside the window of `button` says so, and a click on it copies the address.
void OpenGuildPage(const SettingsServices& services, QWidget& button);
void OpenHomePage(const SettingsServices& services, QWidget& button);

}  // namespace spellwick
