#include "timers/form_timer.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMouseEvent>

#include "widgets/form_font.h"
#include "widgets/on_screen.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kHide = 0;  // lblControls
constexpr int kLayout = 1;
constexpr int kControlMargin = 4;
constexpr int kAsks = 3;  // at the first paint and at the next two ticks
constexpr const char* kWidestName = "Summon Daemon ";
constexpr const char* kWidestSeconds = "00000";

template <typename Part>
void Place(Part& part, const QRect& box, bool shown) {
    part.setGeometry(box);
    part.setVisible(shown);
}

}  // namespace

FormTimer::FormTimer(const TimerServices& services, QPoint place)
    : m_services(services),
      m_timers(services.timers),
      m_events(services.failures, this),
      m_icons(QStringLiteral("colour"), qGuiApp->devicePixelRatio() * FormScale()),
      m_aside(place.isNull() ? std::optional(place) : std::nullopt) {
    setObjectName(QStringLiteral("FormTimer"));
    setWindowTitle(QStringLiteral("SpellTimer"));
    setAccessibleName(QStringLiteral("Running spell timers"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFont(FormFont());
    setMouseTracking(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    setAutoFillBackground(true);
    MakeParts();
    move(place);
}

void FormTimer::MakeParts() {
    for (int i = 0; i < kTimerSlots; ++i) {
        const std::size_t slot = static_cast<std::size_t>(i);
        m_names[slot] = new TimerLabel(this, Qt::AlignLeft);
        m_names[slot]->setObjectName(IndexedName("lblSpellName", i));
        m_seconds[slot] = new TimerLabel(this, Qt::AlignRight);
        m_seconds[slot]->setObjectName(IndexedName("lblTimeRemaining", i));
        m_pictures[slot] = new IconPicture(this);
        m_pictures[slot]->setObjectName(IndexedName("imgSpell", i));
        m_bars[slot] = new TimerBar(this);
        m_bars[slot]->setObjectName(IndexedName("picProg", i));
    }
    for (const int i : {kHide, kLayout}) {
        auto* control = new TimerControl(this);
        control->setObjectName(IndexedName("lblControls", i));
        m_controls[static_cast<std::size_t>(i)] = control;
    }
    m_controls[kHide]->setText(QStringLiteral("X"));
    m_controls[kHide]->setToolTip(QStringLiteral("Hide"));
    m_controls[kHide]->setAccessibleName(QStringLiteral("Hide the timers"));
    m_controls[kLayout]->setAccessibleName(QStringLiteral("Row or column"));
    m_events.On(m_controls[kHide], &TimerControl::Clicked, "hiding the timers",
                [this] { HideForUser(); });
    m_events.On(m_controls[kLayout], &TimerControl::Clicked, "arranging the timers", [this] {
        m_timers.ToggleLayout();
        ShowTimers();
    });
}

void FormTimer::ShowTimers() {
    const TimerScreen& screen = m_timers.Screen();
    if (!screen.visible) {
        hide();
        return;
    }
    Arrange(screen);
    for (std::size_t slot = 0; slot < screen.shown.size(); ++slot) {
        if (screen.mode == kTimersAsText) {
            ShowText(slot, screen.shown[slot]);
        } else {
            ShowIcon(slot, screen.shown[slot]);
        }
    }
    if (!isVisible()) {
        MakeVisible();
    } else if (m_asksDue < kAsks) {
        AskForStates();
    }
}

void FormTimer::Arrange(const TimerScreen& screen) {
    const auto count = static_cast<i32>(screen.shown.size());
    if (screen.mode == kTimersAsText) {
        const QFontMetrics metrics(font());
        const auto sizeOf = [&metrics](const char* text) {
            return QSize(metrics.horizontalAdvance(QLatin1String(text)), metrics.height());
        };
        // ODDITY(timer-name-width): in text mode a name longer than "Summon Daemon" is cut short;
        // kept because the window has one width for all names.
        Apply(PlanTexts(count, sizeOf(kWidestName), sizeOf(kWidestSeconds)));
        return;
    }
    m_controls[kLayout]->setText(screen.horizontal ? QStringLiteral("V") : QStringLiteral("H"));
    m_controls[kLayout]->setToolTip(screen.horizontal
                                        ? QStringLiteral("Switch to Vertical display")
                                        : QStringLiteral("Switch to Horizontal display"));
    const double scale = FormScale();
    Apply(screen.horizontal ? PlanRow(count, ControlSize(), scale)
                            : PlanColumn(count, ControlSize(), scale));
}

void FormTimer::Apply(const TimerPlan& plan) {
    for (int i = 0; i < kTimerSlots; ++i) {
        const auto slot = static_cast<std::size_t>(i);
        Place(*m_names[slot], plan.names[slot], i < plan.texts);
        Place(*m_seconds[slot], plan.seconds[slot], i < plan.texts);
        Place(*m_pictures[slot], plan.pictures[slot], i < plan.icons);
        Place(*m_bars[slot], plan.bars[slot], i < plan.icons);
    }
    for (std::size_t i = 0; i < m_controls.size(); ++i) {
        Place(*m_controls[i], plan.controls[i], plan.showsControls);
    }
    setFixedSize(plan.window);
}

QSize FormTimer::ControlSize() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(QLatin1Char('H')) + kControlMargin, metrics.height()};
}

void FormTimer::ShowText(std::size_t slot, const TimerSlot& timer) {
    m_names[slot]->setText(ToQString(timer.name));
    m_seconds[slot]->SetColour(timer.secondsColour);
    m_seconds[slot]->setText(ToQString(timer.seconds));
}

void FormTimer::ShowIcon(std::size_t slot, const TimerSlot& timer) {
    if (timer.row <= kLastPagedRow) {
        const PictureStrip& strip = m_icons.StripOf(timer.row);
        m_pictures[slot]->SetPicture(strip.Strip(), strip.Cell(timer.row % kSlotCount));
    } else {
        m_pictures[slot]->SetPicture({}, {});
    }
    m_pictures[slot]->SetCorner(m_services.state.SecondsOnIcons ? ToQString(timer.seconds)
                                                                : QString());
    m_bars[slot]->SetPercent(timer.percent);
}

void FormTimer::MakeVisible() {
    QPoint place = OnScreens(pos(), *this);
    if (pos() != m_aside) {
        m_aside.reset();
    }
    if (m_aside) {
        if (m_services.keepsClear) {
            place = ClearOf(place, size(), m_services.keepsClear());
        }
        m_aside = place;
    }
    if (place != pos()) {
        move(place);
    }
    // The native window must exist on the window system's side first.
    const auto handle = static_cast<WindowHandle>(winId());
    QGuiApplication::sync();
    // Where the desktop has no such state, the window is in the list.
    static_cast<void>(m_services.desktop.LeaveTaskList(handle));
    m_asksDue = kAsks;
    show();
}

// A window manager that is busy clears the states of a window that was hidden only after it is
// shown again, and drops a request for a window that it has not yet taken.
void FormTimer::AskForStates() {
    if (m_asksDue == 0) {
        return;
    }
    --m_asksDue;
    const auto handle = static_cast<WindowHandle>(winId());
    // Where the desktop has no such state, the window stays as it is.
    if (m_services.state.AlwaysOnTop) {
        static_cast<void>(m_services.desktop.SetTopMost(handle, true));
    }
    static_cast<void>(m_services.desktop.LeaveTaskList(handle));
}

void FormTimer::HideForUser() {
    m_timers.HideForUser();
    ShowTimers();
}

void FormTimer::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_dragging = true;
        m_pressPlace = event->globalPosition().toPoint();
        m_pressWindow = pos();
    }
}

void FormTimer::mouseMoveEvent(QMouseEvent* event) {
    if (!m_dragging) {
        return;
    }
    if (event->buttons().testFlag(Qt::LeftButton)) {
        m_aside.reset();
        // Screen coordinates, because the window follows the mouse with a delay.
        move(m_pressWindow + event->globalPosition().toPoint() - m_pressPlace);
    } else {
        m_dragging = false;
    }
}

void FormTimer::mouseReleaseEvent(QMouseEvent* event) {
    m_events.Run("hiding the timers", [&] {
        if (event->button() == Qt::LeftButton) {
            m_dragging = false;
        } else {
            HideForUser();
        }
    });
}

void FormTimer::paintEvent(QPaintEvent* /*event*/) {
    m_events.Run("showing the timers", [&] {
        // By now the window manager mostly knows the window.
        if (m_asksDue == kAsks) {
            AskForStates();
        }
    });
}

void FormTimer::hideEvent(QHideEvent* event) {
    m_asksDue = 0;
    QWidget::hideEvent(event);
}

// Closing the window through the window manager hides it.
void FormTimer::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_events.Run("hiding the timers", [&] { HideForUser(); });
}

}  // namespace spellwick
