#include "widgets/hint.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QToolTip>
#include <QWindow>
#include <algorithm>
#include <array>
#include <tuple>

#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr int kMostTextWidth = 240;
constexpr int kPadding = 8;
constexpr int kGap = 6;  // to the window, and between hints

int AreaOf(const QRect& rect) {
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

int Distance(const QRect& one, const QRect& other) {
    const auto gap = [](int lowEnd, int highStart) { return std::max(0, highStart - lowEnd); };
    return gap(one.right(), other.left()) + gap(other.right(), one.left()) +
           gap(one.bottom(), other.top()) + gap(other.bottom(), one.top());
}

QRect MovedInto(const QRect& room, QRect rect) {
    rect.moveRight(std::min(rect.right(), room.right()));
    rect.moveBottom(std::min(rect.bottom(), room.bottom()));
    rect.moveLeft(std::max(rect.left(), room.left()));
    rect.moveTop(std::max(rect.top(), room.top()));
    return rect;
}

// As wide as its longest line needs, with longer lines wrapped.
QSize SizeOf(const Hint& hint) {
    constexpr int kSpare = 2;  // a label wraps a text that fills its width to the pixel
    const int text = hint.fontMetrics().size(0, hint.text()).width() + kSpare;
    const int width = std::min(text, Scaled(kMostTextWidth)) + 2 * (kPadding + hint.frameWidth());
    return {width, hint.heightForWidth(width)};
}

// Of the program's windows, one that hints keep clear of.
bool IsOtherWindow(const QObject* object) {
    const auto* window = qobject_cast<const QWidget*>(object);
    return window != nullptr && window->isWindow() && window->windowType() != Qt::ToolTip &&
           window->windowType() != Qt::Popup;
}

// The program's other windows that are on the screen.
std::vector<QRect> WindowsBut(const QWidget& owner) {
    std::vector<QRect> windows;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window != &owner && window->isVisible() && !window->isMinimized() &&
            IsOtherWindow(window)) {
            windows.push_back(window->frameGeometry());
        }
    }
    return windows;
}

}  // namespace

QPoint PlaceBeside(const QRect& window, QSize size, const QRect& room,
                   const std::vector<QRect>& others, const QRect& game, const QRect& beside) {
    const QPoint along = beside.isEmpty() ? window.topLeft() : beside.topLeft();
    const std::array<QPoint, 4> places{{
        {window.right() + 1 + kGap, along.y()},
        {window.left() - kGap - size.width(), along.y()},
        {along.x(), window.bottom() + 1 + kGap},
        {along.x(), window.top() - kGap - size.height()},
    }};
    const auto covered = [&](const QPoint& place) {
        const QRect rect = MovedInto(room, QRect(place, size));
        int ofOthers = 0;
        for (const QRect& other : others) {
            ofOthers += AreaOf(rect.intersected(other));
        }
        return std::tuple(AreaOf(rect.intersected(window)), AreaOf(rect.intersected(game)),
                          ofOthers, beside.isEmpty() ? 0 : Distance(rect, beside));
    };
    const QPoint& best = *std::ranges::min_element(places, {}, covered);
    return MovedInto(room, QRect(best, size)).topLeft();
}

Hint::Hint(const QString& text, QWidget* owner)
    : QLabel(owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus) {
    setObjectName(QStringLiteral("Hint"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFont(FormFont());
    setPalette(QToolTip::palette());
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setMargin(kPadding);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setText(text);
    m_time.setSingleShot(true);
}

void Hint::SetLead(HintLead lead) {
    m_lead = std::move(lead);
    if (m_lead.follow) {
        setCursor(Qt::PointingHandCursor);
        setAccessibleDescription(QStringLiteral("A click leads there"));
    }
}

void Hint::mouseReleaseEvent(QMouseEvent* /*event*/) {
    emit Clicked();
}

Hints::Hints(QWidget& owner, FailureSink& failures, std::chrono::milliseconds time)
    : QObject(&owner), m_owner(owner), m_events(failures, this), m_time(time) {
    owner.installEventFilter(this);
}

void Hints::Show(const QString& text, const HintLead& lead) {
    const auto same = std::ranges::find(m_hints, text, &Hint::text);
    if (same == m_hints.end()) {
        Make(text, lead);
        return;
    }
    (*same)->SetLead(lead);
    if ((*same)->isVisible() && !lead.untilClick) {
        (*same)->Time().start(m_time);
    }
}

void Hints::Make(const QString& text, const HintLead& lead) {
    auto* hint = new Hint(text, &m_owner);
    hint->SetLead(lead);
    m_events.On(hint, &Hint::Clicked, "following a hint", [this, hint] { Follow(hint); });
    m_events.On(&hint->Time(), &QTimer::timeout, "closing a hint", [this, hint] { Drop(hint); });
    m_hints.push_back(hint);
    qApp->installEventFilter(this);
    Arrange();
}

void Hints::Follow(Hint* hint) {
    const std::function<void()> follow = hint->Lead().follow;
    Drop(hint);
    if (follow) {
        follow();
    }
}

// A click on the hint itself is left to it.
void Hints::DropAtClick(const QObject* clicked) {
    for (Hint* hint : std::vector(m_hints)) {
        if (hint->Lead().untilClick && clicked != hint) {
            Drop(hint);
        }
    }
}

void Hints::Drop(Hint* hint) {
    std::erase(m_hints, hint);
    hint->hide();
    hint->deleteLater();
    Arrange();
}

void Hints::Arrange() {
    if (m_hints.empty()) {
        qApp->removeEventFilter(this);
        return;
    }
    if (!m_owner.isVisible() || m_owner.isMinimized()) {
        for (Hint* hint : m_hints) {
            hint->Time().stop();
            hint->hide();
        }
        return;
    }
    const QRect room = m_owner.screen()->availableGeometry();
    const QSize column = FitColumn(room);
    QPoint place = PlaceBeside(m_owner.frameGeometry(), column, room, WindowsBut(m_owner), m_game(),
                               Control());
    const bool isOnTheLeft = place.x() + column.width() <= m_owner.x();
    for (Hint* hint : m_hints) {
        hint->move(isOnTheLeft ? place + QPoint(column.width() - hint->width(), 0) : place);
        place.ry() += hint->height() + kGap;
        if (!hint->isVisible()) {
            Appear(*hint);
        } else {
            Attach(*hint);
        }
    }
}

// On the screen; of the newest hint that stands beside a control.
QRect Hints::Control() const {
    for (auto hint = m_hints.rbegin(); hint != m_hints.rend(); ++hint) {
        const QWidget* control = (*hint)->Lead().beside;
        if (control != nullptr && control->isVisible()) {
            return {control->mapToGlobal(QPoint(0, 0)), control->size()};
        }
    }
    return {};
}

// Gives each hint its size. Those for which the screen has no room any more go, the oldest first.
QSize Hints::FitColumn(const QRect& room) {
    QSize column(0, -kGap);
    std::size_t fitting = 0;
    for (auto hint = m_hints.rbegin(); hint != m_hints.rend(); ++hint) {
        const QSize size = SizeOf(**hint).boundedTo(room.size());
        if (fitting > 0 && column.height() + kGap + size.height() > room.height()) {
            break;
        }
        (*hint)->setFixedSize(size);
        column = {std::max(column.width(), size.width()), column.height() + kGap + size.height()};
        ++fitting;
    }
    while (m_hints.size() > fitting) {
        m_hints.front()->hide();
        m_hints.front()->deleteLater();
        m_hints.erase(m_hints.begin());
    }
    return column;
}

// A modal dialog takes the clicks of all windows but its own.
void Hints::Attach(Hint& hint) {
    const QWidget* modal = QApplication::activeModalWidget();
    QWindow* parent = (modal != nullptr ? *modal->window() : m_owner).windowHandle();
    if (hint.windowHandle()->transientParent() != parent) {
        hint.windowHandle()->setTransientParent(parent);
    }
}

void Hints::Appear(Hint& hint) {
    hint.MakeWindow();
    Attach(hint);
    hint.show();
    if (!hint.Lead().untilClick) {
        hint.Time().start(m_time);
    }
    QAccessibleEvent spoken(&hint, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

bool Hints::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        m_events.Run("closing a hint", [&] { DropAtClick(watched); });
    }
    if (watched != &m_owner && !IsOtherWindow(watched)) {
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::WindowStateChange:
        case QEvent::WindowActivate:
            m_events.Run("placing a hint", [&] { Arrange(); });
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace spellwick
