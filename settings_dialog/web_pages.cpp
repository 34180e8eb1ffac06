#include "settings_dialog/web_pages.h"

#include "store/catalogue.h"
#include "store/section_name.h"
#include "text/log.h"

namespace spellwick {

namespace {

void Open(const SettingsServices& services, std::string_view key, const char* unset) {
    const std::string address = services.store.Read(kGlobalSection, key).value_or(unset);
    if (!services.desktop.OpenWebPage(address)) {
        LogLine("no program could be started to open " + address);
    }
}

}  // namespace

void OpenGuildPage(const SettingsServices& services) {
    Open(services, kGuildPageKey, kDefaultGuildPage);
}

void OpenHomePage(const SettingsServices& services) {
    Open(services, kHomePageKey, kDefaultHomePage);
}

}  // namespace spellwick
