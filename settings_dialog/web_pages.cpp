#include "settings_dialog/web_pages.h"

#include "store/catalogue.h"
#include "store/section_name.h"

namespace spellwick {

namespace {

void Open(const SettingsServices& services, std::string_view key, const char* unset) {
    services.desktop.OpenWebPage(services.store.Read(kGlobalSection, key).value_or(unset));
}

}  // namespace

void OpenGuildPage(const SettingsServices& services) {
    Open(services, kGuildPageKey, kDefaultGuildPage);
}

void OpenHomePage(const SettingsServices& services) {
    Open(services, kHomePageKey, kDefaultHomePage);
}

}  // namespace spellwick
