#include "settings_dialog/icon_options.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "model/timer_display.h"
#include "store/catalogue.h"
#include "text/number_forms.h"

namespace spellwick {

IconOptions::IconOptions(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      CheckKeysOnIcons(Named(new QCheckBox(QStringLiteral("Keys on the icons"), this),
                             QStringLiteral("CheckKeysOnIcons"))),
      CheckSecondsOnIcons(Named(new QCheckBox(QStringLiteral("Seconds on the icons"), this),
                                QStringLiteral("CheckSecondsOnIcons"))),
      ComboTimers(Named(new ChoiceBox(this), QStringLiteral("ComboTimers"),
                        QStringLiteral("Running spell timers"))),
      m_services(services),
      m_events(services.failures, this) {
    CheckKeysOnIcons->setToolTip(QStringLiteral(
        "Each spell of the main window shows its macro key in small letters in a corner."));
    CheckSecondsOnIcons->setToolTip(
        QStringLiteral("The icons of running spell timers show the seconds that are left."));
    ComboTimers->addItems(
        {QStringLiteral("Off"), QStringLiteral("Text"), QStringLiteral("Graphic")});
    ComboTimers->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    ComboTimers->setToolTip(
        QStringLiteral("How running spell timers are shown: as names, as icons, or not at all."));
    auto* caption = new QLabel(QStringLiteral("Running spell timers"), this);
    auto* timers = new QHBoxLayout;
    timers->addWidget(caption);
    timers->addWidget(ComboTimers);
    timers->addStretch();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(CheckKeysOnIcons);
    all->addLayout(timers);
    all->addWidget(CheckSecondsOnIcons);
    m_events.On(CheckKeysOnIcons, &QCheckBox::clicked, "changing an option",
                [this] { ClickKeys(); });
    m_events.On(CheckSecondsOnIcons, &QCheckBox::clicked, "changing an option",
                [this] { ClickSeconds(); });
    m_events.On(ComboTimers, &QComboBox::activated, "changing an option",
                [this] { ChooseTimers(); });
}

void IconOptions::Load() {
    CheckKeysOnIcons->setChecked(m_services.state.KeysOnIcons);
    CheckSecondsOnIcons->setChecked(m_services.state.SecondsOnIcons);
    ComboTimers->setCurrentIndex(TimerModeOf(m_services.state.SpellTimerMode));
}

void IconOptions::ClickKeys() {
    SetSwitch(m_services, kKeysOnIconsKey, CheckKeysOnIcons->isChecked());
    m_services.companion.UpdatePage();
}

void IconOptions::ClickSeconds() {
    SetSwitch(m_services, kSecondsOnIconsKey, CheckSecondsOnIcons->isChecked());
    // Draws the timers anew.
    m_services.companion.SetTimerMode(m_services.state.SpellTimerMode);
}

void IconOptions::ChooseTimers() {
    m_services.companion.SetTimerMode(ComboTimers->currentIndex());
    m_services.companion.SaveOption(kTimerModeKey.key, PlainText(m_services.state.SpellTimerMode));
}

}  // namespace spellwick
