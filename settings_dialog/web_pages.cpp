#include "settings_dialog/web_pages.h"

#include <QClipboard>
#include <QGuiApplication>

#include "store/catalogue.h"
#include "store/section_name.h"
#include "text/log.h"
#include "widgets/hint.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

void ShowAddress(const SettingsServices& services, QWidget& button, const QString& address) {
    QWidget& window = *button.window();
    auto* hints = window.findChild<Hints*>({}, Qt::FindDirectChildrenOnly);
    if (hints == nullptr) {
        hints = new Hints(window, services.failures);
    }
    hints->Show(
        QStringLiteral("No program could be started for the page %1\nA click here copies its "
                       "address.")
            .arg(address),
        {.beside = &button,
         .follow = [address] { QGuiApplication::clipboard()->setText(address); }});
}

void Open(const SettingsServices& services, QWidget& button, std::string_view key,
          const char* unset) {
    const std::string address = services.store.Read(kGlobalSection, key).value_or(unset);
    if (!services.desktop.OpenWebPage(address)) {
        LogLine("no program could be started to open " + address);
        ShowAddress(services, button, ToQString(address));
    }
}

}  // namespace

void OpenGuildPage(const SettingsServices& services, QWidget& button) {
    Open(services, button, kGuildPageKey, kDefaultGuildPage);
}

void OpenHomePage(const SettingsServices& services, QWidget& button) {
    Open(services, button, kHomePageKey, kDefaultHomePage);
}

}  // namespace spellwick
