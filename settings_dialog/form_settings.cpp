#include "settings_dialog/form_settings.h"

#include <QEvent>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace spellwick {

namespace {

std::string OptionText(bool on) {
    return on ? "True" : "False";
}

}  // namespace

FormSettings::FormSettings(SharedState& state, FailureSink& failures, SettingsActions actions,
                           QWidget* parent)
    : QDialog(parent), m_state(state), m_failures(failures), m_actions(std::move(actions)) {
    setObjectName(QStringLiteral("FormSettings"));
    setWindowTitle(QStringLiteral("Spellwick - Settings"));
    setAccessibleName(QStringLiteral("Settings"));
    m_alwaysOnTop =
        MakeOption("CheckAlwaysOnTop", "Always on Top", &FormSettings::ClickAlwaysOnTop);
    m_displayVertical = MakeOption("CheckDisplayVertical", "Display main window vertically",
                                   &FormSettings::ClickDisplayVertical);
    m_showNecroRegs = MakeOption("CheckShowNecroRegs", "Show Necromancer Reagents",
                                 &FormSettings::ClickShowNecroRegs);

    auto* group = new QGroupBox(QStringLiteral("Main window"), this);
    auto* options = new QVBoxLayout(group);
    options->addWidget(m_alwaysOnTop);
    options->addWidget(m_displayVertical);
    options->addWidget(m_showNecroRegs);

    auto* ok = new QPushButton(QStringLiteral("&OK"), this);
    ok->setObjectName(QStringLiteral("Command1"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this,
            [this] { Guard(m_failures, "closing the settings", [&] { ClickOk(); }); });

    auto* all = new QVBoxLayout(this);
    all->addWidget(group);
    all->addWidget(ok, 0, Qt::AlignRight);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

QCheckBox* FormSettings::MakeOption(const char* name, const char* caption,
                                    void (FormSettings::*clicked)()) {
    auto* box = new QCheckBox(QLatin1String(caption), this);
    box->setObjectName(QLatin1String(name));
    connect(box, &QCheckBox::clicked, this, [this, clicked] {
        Guard(m_failures, "changing an option", [&] { (this->*clicked)(); });
    });
    return box;
}

void FormSettings::RefreshDialog() {
    m_alwaysOnTop->setChecked(m_state.AlwaysOnTop);
    m_displayVertical->setChecked(m_state.DisplayVertical);
    m_showNecroRegs->setChecked(m_state.ShowNecroRegs);
}

void FormSettings::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        Guard(m_failures, "showing the settings", [&] {
            m_actions.setTopMost(static_cast<WindowHandle>(winId()), m_state.AlwaysOnTop);
            RefreshDialog();
        });
    }
}

void FormSettings::ClickAlwaysOnTop() {
    m_state.AlwaysOnTop = m_alwaysOnTop->isChecked();
    m_actions.saveOption("AlwaysOnTop", OptionText(m_state.AlwaysOnTop));
}

void FormSettings::ClickDisplayVertical() {
    if (m_displayVertical->isChecked()) {
        m_actions.layOutVertically();
    } else {
        m_actions.layOutHorizontally();
    }
    m_actions.saveOption("DisplayVertical", OptionText(m_state.DisplayVertical));
}

void FormSettings::ClickShowNecroRegs() {
    m_state.ShowNecroRegs = m_showNecroRegs->isChecked();
    m_actions.saveOption("ShowNecroRegs", OptionText(m_state.ShowNecroRegs));
    ClickDisplayVertical();
}

void FormSettings::ClickOk() {
    m_actions.saveAll();
    hide();
}

}  // namespace spellwick
