#include "settings_dialog/wine_tools_option.h"

#include <QVBoxLayout>
#include <chrono>

#include "settings_dialog/controls.h"

namespace spellwick {

namespace {

constexpr const char* kWhatItDoes =
    "Starts spellwick-bridge, which finds the assist tools that run in Wine and carries their "
    "messages to Spellwick and back.";

}  // namespace

WineToolsOption::WineToolsOption(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      CheckWineTools(Named(new QCheckBox(QStringLiteral("Look for assist tools in Wine"), this),
                           QStringLiteral("CheckWineTools"))),
      LabelWineTools(Named(new QLabel(this), QStringLiteral("LabelWineTools"))),
      m_services(services),
      m_events(services.failures, this) {
    constexpr std::chrono::seconds kBetweenReports{1};
    LabelWineTools->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(CheckWineTools);
    all->addWidget(LabelWineTools);
    m_events.On(CheckWineTools, &QCheckBox::clicked, "changing an option",
                [this] { ClickWineTools(); });
    m_events.On(&m_looks, &QTimer::timeout, "looking after the bridge", [this] {
        if (isVisible()) {
            ShowTrouble();
        }
    });
    if (m_services.wineTools == nullptr) {
        hide();
    } else {
        m_looks.start(kBetweenReports);
    }
    ShowTrouble();
}

void WineToolsOption::Load() {
    CheckWineTools->setChecked(m_services.state.FindWineTools);
    ShowTrouble();
}

void WineToolsOption::ClickWineTools() {
    SetSwitch(m_services, kFindWineToolsKey, CheckWineTools->isChecked());
    if (m_services.wineTools == nullptr) {
        return;
    }
    if (m_services.state.FindWineTools) {
        m_services.wineTools->Start();
    } else {
        m_services.wineTools->Stop();
    }
    ShowTrouble();
}

void WineToolsOption::ShowTrouble() {
    const std::string trouble =
        m_services.wineTools == nullptr ? "" : m_services.wineTools->Trouble();
    const std::string text = trouble.empty() ? kWhatItDoes : kWhatItDoes + ("\n" + trouble);
    LabelWineTools->setText(ToQString(text));
}

}  // namespace spellwick
