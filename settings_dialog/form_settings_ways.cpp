// The ways of the hints and of the first steps to the controls of the settings dialog.
#include <QScreen>
#include <QScrollArea>
#include <QWindow>
#include <utility>

#include "settings_dialog/form_settings.h"
#include "widgets/hint.h"

namespace spellwick {

namespace {

constexpr int kSpellsTab = 0;
constexpr int kSkillsTab = 3;
constexpr int kOptionsTab = 7;

// A tab may be larger than the dialog.
void ScrollTo(QWidget& control) {
    for (QWidget* parent = control.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(parent)) {
            area->ensureWidgetVisible(&control);
        }
    }
}

int TabOf(Way way) {
    switch (way) {
        case Way::kSkill:
        case Way::kIntelligence:
            return kSkillsTab;
        case Way::kSpellbook:
            return kSpellsTab;
        case Way::kNecroReagents:
            return kOptionsTab;
        default:
            return kGameTab;
    }
}

// The window manager's.
QMargins FrameOf(const QWidget& window) {
    return window.windowHandle() == nullptr ? QMargins() : window.windowHandle()->frameMargins();
}

}  // namespace

void FormSettings::GoTo(const Target& target) {
    if (target.way == Way::kNone || target.way == Way::kCounters ||
        target.way == Way::kTithingPoints) {
        return;
    }
    const int tab = TabOf(target.way);
    if (isVisible() && !LeaveEntryFor(*CheckTab[static_cast<std::size_t>(tab)])) {
        return;
    }
    ClickCheckTab(tab);
    if (QWidget* control = Tab(tab).ControlFor(target)) {
        control->setFocus(Qt::OtherFocusReason);
    }
    m_due = target.way;
    if (isVisible()) {
        DoWhatIsDue();
    }
}

// What takes a dialog that is shown and laid out.
void FormSettings::DoWhatIsDue() {
    const Way due = std::exchange(m_due, Way::kNone);
    if (due != Way::kNone && focusWidget() != nullptr) {
        ScrollTo(*focusWidget());
    }
    if (due == Way::kFirstSteps) {
        OpenFirstSteps();
    }
}

void FormSettings::OpenFirstSteps() {
    if (m_firstSteps == nullptr) {
        m_firstSteps = new FirstSteps(m_state, m_services.failures, this);
        m_events.On(m_firstSteps, &FirstSteps::Wanted, "going to a first step",
                    [this](const Target& target) { GoToStep(target); });
    }
    m_firstSteps->ensurePolished();
    m_firstSteps->layout()->activate();
    PlaceFirstSteps();
    m_firstSteps->show();
    m_firstSteps->raise();
    m_firstSteps->activateWindow();
}

// Both windows have the same frame, which the first steps do not have yet.
void FormSettings::PlaceFirstSteps() {
    m_frame = FrameOf(*this);
    const QSize size = m_firstSteps->layout()->totalSizeHint();
    const QWidget* main = parentWidget();
    const QPoint place = PlaceBeside(
        geometry().marginsAdded(m_frame), size.grownBy(m_frame), screen()->availableGeometry(),
        main == nullptr ? std::vector<QRect>() : std::vector{main->frameGeometry()}, GameArea());
    m_firstSteps->setGeometry(QRect(place + QPoint(m_frame.left(), m_frame.top()), size));
}

// The dialog's own frame comes after it, and its place with the frame.
void FormSettings::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    m_events.Run("placing the first steps", [&] {
        if (m_firstSteps != nullptr && m_firstSteps->isVisible() && m_frame != FrameOf(*this)) {
            PlaceFirstSteps();
        }
    });
}

void FormSettings::GoToStep(const Target& target) {
    if (target.way == Way::kCounters) {
        emit MainWindowWanted(target);
        return;
    }
    if (!m_services.desktop.Activate(static_cast<WindowHandle>(winId()))) {
        activateWindow();
    }
    GoTo(target);
}

}  // namespace spellwick
