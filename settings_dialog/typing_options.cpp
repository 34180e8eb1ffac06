#include "settings_dialog/typing_options.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "model/updating_scope.h"
#include "settings_dialog/controls.h"
#include "text/number_forms.h"

namespace spellwick {

TimeBox::TimeBox(QWidget* parent) : QSpinBox(parent) {
    setRange(kShortestPace, kLongestPace);
    setSuffix(QStringLiteral(" ms"));
    setFocusPolicy(Qt::StrongFocus);
}

void TimeBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

TypingOptions::TypingOptions(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      m_services(services),
      m_events(services.failures, this),
      CheckEnter(Named(
          new QCheckBox(QStringLiteral("Press Enter to open the chat line before a text"), this),
          QStringLiteral("CheckEnter"))),
      SpinHold(MakeTime("SpinHold", "Time that a key of a text is held", kTextHoldKey)),
      SpinGap(MakeTime("SpinGap", "Time between two keys of a text", kTextGapKey)) {
    CheckEnter->setToolTip(
        QStringLiteral("For clients that get no Enter behind a macro key, such as ClassicUO, if "
                       "their options say that Enter opens the chat."));
    m_events.On(CheckEnter, &QCheckBox::clicked, "changing an option", [this] { ClickEnter(); });
    auto* pace = new QHBoxLayout;
    pace->addWidget(new QLabel(QStringLiteral("In texts hold each key for"), this));
    pace->addWidget(SpinHold);
    pace->addWidget(new QLabel(QStringLiteral("and then wait"), this));
    pace->addWidget(SpinGap);
    pace->addStretch();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(CheckEnter);
    all->addLayout(pace);
}

TimeBox* TypingOptions::MakeTime(const char* name, const char* accessibleName, const PaceKey& key) {
    auto* box = Named(new TimeBox(this), QLatin1String(name), QLatin1String(accessibleName));
    box->setToolTip(QStringLiteral("Raise it if letters of your texts get lost; %1 ms as delivered")
                        .arg(key.fallback));
    m_events.On(box, &QSpinBox::valueChanged, "changing an option",
                [this, key](int time) { ChangeTime(key, time); });
    return box;
}

void TypingOptions::Load() {
    SharedState& state = m_services.state;
    const UpdatingScope updating(state);
    CheckEnter->setChecked(state.EnterOpensChat);
    SpinHold->setValue(state.TextHold);
    SpinGap->setValue(state.TextGap);
}

void TypingOptions::ClickEnter() {
    SetSwitch(m_services, kEnterOpensChatKey, CheckEnter->isChecked());
}

void TypingOptions::ChangeTime(const PaceKey& key, int time) {
    if (m_services.state.Updating) {
        return;
    }
    m_services.state.*key.cell = ToI16(time);
    m_services.companion.SaveOption(key.key, PlainText(i32{time}));
}

}  // namespace spellwick
