#include "timers/form_timer.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMouseEvent>

#include "widgets/form_font.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kHide = 0;  // lblControls
constexpr int kLayout = 1;
constexpr int kControlMargin = 4;
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
      m_state(services.state),
      m_events(services.failures, this),
      m_icons(QStringLiteral("colour"), qGuiApp->devicePixelRatio()) {
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
    Arrange();
}

void FormTimer::MakeParts() {
    for (int i = 0; i < kTimerSlots; ++i) {
        const std::size_t slot = static_cast<std::size_t>(i);
        m_names[slot] = new TimerLabel(this, Qt::AlignLeft);
        m_names[slot]->setObjectName(IndexedName("lblSpellName", i));
        m_seconds[slot] = new TimerLabel(this, Qt::AlignRight);
        m_seconds[slot]->setObjectName(IndexedName("lblTimeRemaining", i));
        m_pictures[slot] = new TimerPicture(this);
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
    m_controls[kHide]->setAccessibleName(QStringLiteral("Hide the timers"));
    m_controls[kLayout]->setText(QStringLiteral("H"));
    m_controls[kLayout]->setAccessibleName(QStringLiteral("Row or column"));
    m_events.On(m_controls[kHide], &TimerControl::Clicked, "hiding the timers", [this] {
        m_hiddenByUser = true;
        Arrange();
    });
    m_events.On(m_controls[kLayout], &TimerControl::Clicked, "arranging the timers", [this] {
        ToggleLayout();
        Arrange();
    });
}

void FormTimer::CreateNewSpellTimer(i16 spellNumber, i16 spellDuration) {
    m_timers.Create(m_state.Spells, spellNumber, spellDuration,
                    m_services.clock.SecondsSinceMidnight());
    m_hiddenByUser = false;
    SortTimers();
}

bool FormTimer::SpellsActive() {
    if (m_timers.IsEmpty()) {
        hide();
        return false;
    }
    if (!isVisible() && Mode() != kTimersOff && !m_hiddenByUser) {
        MakeVisible();
    }
    return true;
}

void FormTimer::SortTimers() {
    m_needsResort = false;
    if (m_timers.IsEmpty()) {
        hide();
        return;
    }
    // Dropped before the window can be shown: a timer of no seconds has no percentage.
    const float now = m_services.clock.SecondsSinceMidnight();
    m_timers.DropEnding(now);
    m_timers.Sort(now);
    Arrange();
}

void FormTimer::Arrange() {
    if (m_hiddenByUser) {
        hide();
        return;
    }
    SpellsActive();
    const i32 count = static_cast<i32>(m_timers.Count());
    switch (Mode()) {
        case kTimersOff:
            hide();
            break;
        case kTimersAsText: {
            const QFontMetrics metrics(font());
            Apply(PlanTexts(
                count, {m_nameWidth, metrics.height()},
                {metrics.horizontalAdvance(QLatin1String(kWidestSeconds)), metrics.height()}));
            break;
        }
        case kTimersAsIcons:
            Apply(m_horizontal ? PlanRow(count, ControlSize()) : PlanColumn(count, ControlSize()));
            break;
    }
    m_controls[kHide]->setToolTip(QStringLiteral("Hide"));
    m_lastMode = m_state.SpellTimerMode;
    Update();
}

void FormTimer::Apply(const TimerPlan& plan) {
    for (int i = 0; i < kTimerSlots; ++i) {
        const std::size_t slot = static_cast<std::size_t>(i);
        Place(*m_names[slot], plan.names[slot], i < plan.texts);
        Place(*m_seconds[slot], plan.seconds[slot], i < plan.texts);
        Place(*m_pictures[slot], plan.pictures[slot], i < plan.icons);
        Place(*m_bars[slot], plan.bars[slot], i < plan.icons);
    }
    for (std::size_t i = 0; i < m_controls.size(); ++i) {
        Place(*m_controls[i], plan.controls[i], plan.showsControls);
    }
    if (plan.showsControls) {
        m_controls[kLayout]->setText(m_horizontal ? QStringLiteral("V") : QStringLiteral("H"));
        m_controls[kLayout]->setToolTip(m_horizontal
                                            ? QStringLiteral("Switch to Vertical display")
                                            : QStringLiteral("Switch to Horizontal display"));
    }
    setFixedSize(plan.window);
}

TimerMode FormTimer::Mode() const {
    return TimerModeOf(m_state.SpellTimerMode);
}

QSize FormTimer::ControlSize() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(QLatin1Char('H')) + kControlMargin, metrics.height()};
}

void FormTimer::Update() {
    if (!SpellsActive()) {
        return;
    }
    if (m_lastMode != m_state.SpellTimerMode) {
        Arrange();
    }
    const float now = m_services.clock.SecondsSinceMidnight();
    for (SpellTimer& timer : m_timers.Timers()) {
        if (timer.ControlIndex < kTimerSlots) {
            ShowTimer(timer, now);
        }
        if (timer.TimeRemaining(now) == 0.0F) {
            m_needsResort = true;
        }
    }
    if (m_needsResort) {
        SortTimers();
    }
}

void FormTimer::ShowTimer(SpellTimer& timer, float now) {
    const std::size_t slot = static_cast<std::size_t>(timer.ControlIndex);
    const TimerMode mode = Mode();
    if (mode == kTimersAsText) {
        m_names[slot]->setText(ToQString(timer.SpellName()));
        m_seconds[slot]->SetColour(SecondsColour(timer.PercentRemaining(now)));
        m_seconds[slot]->setText(ToQString(SecondsText(timer.TimeRemaining(now))));
    } else if (mode == kTimersAsIcons) {
        const i32 row = timer.SpellNumber();
        if (row <= kLastPagedRow) {
            const PictureStrip& strip = m_icons.StripOf(row);
            m_pictures[slot]->SetPicture(strip.Strip(), strip.Cell(row % kSlotCount));
        } else {
            m_pictures[slot]->SetPicture({}, {});
        }
        DrawBar(timer.ControlIndex, timer.PercentRemaining(now));
    }
}

void FormTimer::DrawBar(i16 slot, i16 percent) {
    m_bars[static_cast<std::size_t>(slot)]->SetPercent(percent);
}

void FormTimer::SetMode(i32 newMode) {
    m_state.SpellTimerMode = newMode;
    Arrange();
}

void FormTimer::MakeVisible() {
    // The handle must be there, and known to the window system, before it is told about.
    const auto handle = static_cast<WindowHandle>(winId());
    QGuiApplication::sync();
    m_services.desktop.LeaveTaskList(handle);
    show();
    BecomeActive();
}

void FormTimer::BecomeActive() {
    if (Mode() == kTimersOff) {
        hide();
        return;
    }
    // ODDITY(timer-name-width): in text mode a name longer than "Summon Daemon" is cut short; kept
    // because the window has one width for all names.
    m_nameWidth = QFontMetrics(font()).horizontalAdvance(QLatin1String(kWidestName));
    Arrange();
}

void FormTimer::ToggleLayout() {
    m_horizontal = !m_horizontal;
    m_controls[kLayout]->setText(m_horizontal ? QStringLiteral("V") : QStringLiteral("H"));
}

void FormTimer::HideForUser() {
    m_hiddenByUser = true;
    hide();
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
        // Places on the screen, since the window follows the mouse with a delay.
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
        // The window manager knows the window by now.
        if (m_state.AlwaysOnTop && !m_onTop) {
            m_onTop = true;
            m_services.desktop.SetTopMost(static_cast<WindowHandle>(winId()), true);
        }
    });
}

void FormTimer::hideEvent(QHideEvent* event) {
    m_onTop = false;
    QWidget::hideEvent(event);
}

// A window manager's way to close it is one more way to hide it.
void FormTimer::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_events.Run("hiding the timers", [&] { HideForUser(); });
}

}  // namespace spellwick
