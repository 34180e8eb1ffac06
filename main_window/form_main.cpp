#include "main_window/form_main.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include "store/catalogue.h"
#include "store/twips.h"
#include "widgets/form_font.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kPauseMs = 100;
constexpr int kWatchMs = 1000;
constexpr int kMeditationMs = 100;
constexpr float kFarthestTwips = 40000.0F;

enum CommandIndex {
    kUndo = kUndoCommand,
    kHelp = kHelpCommand,
    kSettings = kSettingsCommand,
    kCount,
    kMeditate
};

struct CommandFacts {
    const char* caption;
    const char* toolTip;
    const char* accessibleName;
    const char* action;
};

constexpr std::array<CommandFacts, 5> kCommands{{
    {"Undo", "", "Undo the last debit", "pressing Undo the last debit"},
    {"?", "Click me for help", "Help", "pressing Help"},
    {"Settings", "", "Settings", "pressing Settings"},
    {"Count", "", "Count the reagents", "pressing Count the reagents"},
    {"Meditate", "Click this to use the Meditation skill", "Meditate", "pressing Meditate"},
}};

// An open list or menu has grabbed the keyboard: keys that are typed would go into it, whichever
// window is in front.
void ClosePopups() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup) {
            return;
        }
    }
}

// Before there are controls: they lay out their texts as they are made, and a screen reader that is
// at work asks for each at once.
QWidget* Prepared(QWidget* form) {
    InstallSpoken();
    form->setFont(FormFont());
    return form;
}

std::array<QPushButton*, 5> MakeCommands(QWidget* form) {
    std::array<QPushButton*, 5> buttons{};
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        auto* button = new QPushButton(QLatin1String(kCommands[i].caption), form);
        button->setObjectName(IndexedName("Command", static_cast<int>(i)));
        button->setToolTip(QLatin1String(kCommands[i].toolTip));
        button->setAccessibleName(QLatin1String(kCommands[i].accessibleName));
        button->setAutoDefault(true);
        buttons[i] = button;
    }
    return buttons;
}

}  // namespace

FormMain::FormMain(const MainWindowServices& services)
    : m_services(services),
      m_companion(services.companion),
      m_state(services.companion.State()),
      m_events(services.failures, this),
      m_pictures(qGuiApp->devicePixelRatio() * FormScale()),
      m_page(m_services, m_pictures, Prepared(this)),
      m_counters(m_services, this),
      m_tithes(m_services, this),
      m_command(MakeCommands(this)),
      m_linkMark(new LinkMark(this)),
      m_undoNote(Command(kUndo), m_events),
      m_fontPixels(font().pixelSize()) {
    setObjectName(QStringLiteral("FormMain"));
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    setMouseTracking(true);
    // The game has the keyboard nearly always.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    connect(&m_page, &CirclePage::InfoWanted, this, &FormMain::InfoWanted);
    ConnectCommands();
    MakeTimers();
}

void FormMain::ConnectCommands() {
    for (int index = 0; index < 5; ++index) {
        m_events.On(&Command(index), &QPushButton::clicked,
                    kCommands[static_cast<std::size_t>(index)].action,
                    [this, index] { ClickCommand(index); });
    }
    for (QWidget* control : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        control->installEventFilter(this);  // for its tooltip, of the settings' button the mouse
    }
}

bool FormMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == windowHandle()) {
        if (event->type() == QEvent::Expose) {
            m_events.Run("placing the window", [&] { TakeFrame(); });
        }
        return QWidget::eventFilter(watched, event);
    }
    if (watched == &Command(kSettings) && event->type() == QEvent::Enter) {
        m_events.Run("making the settings dialog", [&] { emit SettingsNear(); });
    }
    if (event->type() == QEvent::ToolTip) {
        m_events.Run("showing a tooltip", [&] {
            ShowTip(*static_cast<QWidget*>(watched), static_cast<QHelpEvent*>(event)->globalPos());
        });
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void FormMain::MakeTimers() {
    m_pauseTimer.setObjectName(QStringLiteral("Timer1(0)"));
    m_pauseTimer.setTimerType(Qt::PreciseTimer);
    m_pauseTimer.setInterval(kPauseMs);
    connect(&m_pauseTimer, &QTimer::timeout, &m_pauseTimer, &QTimer::stop);
    m_watchTimer.setObjectName(QStringLiteral("Timer1(1)"));
    m_watchTimer.setInterval(kWatchMs);
    m_events.On(&m_watchTimer, &QTimer::timeout, "watching the game client",
                [this] { m_companion.WatchTick(); });
    m_meditationTimer.setObjectName(QStringLiteral("Timer1(2)"));
    m_meditationTimer.setInterval(kMeditationMs);
    m_events.On(&m_meditationTimer, &QTimer::timeout, "starting to meditate",
                [this] { m_companion.MeditationTick(); });
}

QTimer& FormMain::Timer1(int index) {
    if (index == 0) {
        return m_pauseTimer;
    }
    return index == 1 ? m_watchTimer : m_meditationTimer;
}

LoadOutcome FormMain::Form_Load() {
    const LoadOutcome outcome = m_companion.Load();
    if (outcome == LoadOutcome::kReady) {
        m_watchTimer.start();
    }
    return outcome;
}

void FormMain::Form_Activate() {
    IgnoreFailure([&] {
        // Some desktops have no such state; the window then stays as it is.
        static_cast<void>(
            m_services.desktop.SetTopMost(m_state.MainWindowHandle, m_state.AlwaysOnTop));
    });
    if (m_activated) {
        return;
    }
    m_companion.RefreshAtFirstActivation();
    m_activated = true;
    Appear();
}

void FormMain::Appear() {
    if (m_appeared) {
        return;
    }
    m_appeared = true;
    hide();
    IgnoreFailure([&] {
        Arrange();
        TakePlace(SavedPlace());
    });
    // No caret blinks in a counter until the user puts it there.
    m_page.CheckCircle[kFirstCircleButton]->setFocus(Qt::OtherFocusReason);
    static_cast<void>(winId());  // makes the handle if there is none yet
    windowHandle()->installEventFilter(this);
    show();
}

// The toolkit paints no window that is not mapped, and when it is, copies to the screen what has
// not changed since the last painting.
void FormMain::PaintAhead() {
    if (isVisible() && !windowHandle()->isExposed()) {
        setAttribute(Qt::WA_Mapped);
        repaint();
        // Each control that is shown asks for a painting of its own.
        QCoreApplication::removePostedEvents(nullptr, QEvent::UpdateLater);
    }
}

// A window takes its place as that of its frame only if it has place and size before it has a
// handle, so lay it out once ahead of the options that the start is about to read.
WindowHandle FormMain::MakeHandle() {
    const auto read = [this](const KeyOf<bool>& key) {
        bool isOn = key.fallback;
        IgnoreFailure([&] { isOn = m_companion.Io().ReadSwitch(key); });
        return isOn;
    };
    m_state.ShowNecroRegs = read(kShowNecroRegsKey);
    m_state.DisplayVertical = read(kDisplayVerticalKey);
    Arrange();
    TakePlace(SavedPlace());
    return static_cast<WindowHandle>(winId());
}

QPoint FormMain::SavedPlace() {
    float top = 0.0F;
    float left = 0.0F;
    const auto read = [this](float& place, std::string_view key) {
        IgnoreFailure([&] {
            const float saved = m_companion.Io().ReadPosition(key);
            place = saved >= 0.0F && saved <= kFarthestTwips ? saved : 0.0F;
        });
    };
    read(top, kWindowTopKey);
    read(left, kWindowLeftKey);
    return {PixelsOf(left), PixelsOf(top)};
}

void FormMain::TakePlace(QPoint wanted) {
    const QPoint place = PlaceFor(wanted);
    if (!testAttribute(Qt::WA_Moved) || pos() != place) {
        move(place);
    }
}

WindowPlaces FormMain::Places() const {
    WindowPlaces places;
    if (!isMinimized() && !isMaximized() && !isFullScreen()) {
        places.main = {.top = TwipsOf(y()), .left = TwipsOf(x())};
    }
    return places;
}

void FormMain::Show(const Changes& changes) {
    const Screen& screen = m_companion.Shown();
    if (changes.caption && windowTitle() != ToQString(screen.caption)) {
        setWindowTitle(ToQString(screen.caption));
    }
    if (changes.layout) {
        LayoutAgain();
    }
    m_page.Show(screen, changes);
    m_counters.Show(screen, changes);
    m_tithes.Show(screen, changes);
    ShowCommands(screen, changes);
    m_page.ShowFigures(screen, changes);
}

void FormMain::ShowCommands(const Screen& screen, const Changes& changes) {
    if (changes.countButton) {
        Command(kCount).setText(ToQString(screen.countCaption));
        Command(kCount).setEnabled(screen.countEnabled);
        Command(kCount).setToolTip(screen.countReason.empty()
                                       ? QString(QLatin1String(kCommands[kCount].toolTip))
                                       : ToQString(screen.countReason));
    }
    if (changes.link) {
        m_linkMark->SetLink(ToQString(screen.linkText), screen.linkPays);
    }
    if (!changes.meditation) {
        return;
    }
    if (screen.meditationTag != kMeditateTag) {
        m_meditationTimer.stop();
    } else if (!m_meditationTimer.isActive()) {
        m_meditationTimer.start();
    }
}

void FormMain::FocusPage() {
    m_page.CheckCircle[0]->setFocus(Qt::OtherFocusReason);
}

void FormMain::FocusHelp() {
    Command(kHelp).setFocus(Qt::OtherFocusReason);
}

void FormMain::Pause() {
    ClosePopups();
    m_pauseTimer.start();
    while (m_pauseTimer.isActive()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        ClosePopups();
    }
    // An outer pause that ends with this one must not wait for one more event.
    QAbstractEventDispatcher::instance()->wakeUp();
}

void FormMain::ClickCommand(int index) {
    switch (index) {
        case kUndo:
            Undo();
            return;
        case kHelp:
            m_companion.OpenHelp();
            return;
        case kSettings:
            OpenSettings();
            return;
        case kCount:
            m_companion.Count();
            return;
        default:
            m_companion.Meditate();
    }
}

void FormMain::OpenSettings() {
    setCursor(Qt::WaitCursor);
    emit SettingsWanted();
    unsetCursor();
    m_companion.UpdatePage();
}

void FormMain::paintEvent(QPaintEvent* /*event*/) {
    m_events.Run("painting the window", [&] {
        // ODDITY(caption-at-paint): after the client has closed the caption goes on showing the
        // character until the window is painted again; kept because the watch leaves the caption
        // alone without a client.
        m_companion.ShowCaption();
        QPainter painter(this);
        DrawReagents(painter);
    });
}

// Only now is the frame there, and its width counts at the edge of the screen. The window moves
// after its first painting.
void FormMain::TakeFrame() {
    if (m_mapped || !windowHandle()->isExposed()) {
        return;
    }
    m_mapped = true;
    QTimer::singleShot(0, this, [this, place = pos()] { FitFrame(place); });
    static_cast<void>(m_services.desktop.SetTopMost(m_state.MainWindowHandle, m_state.AlwaysOnTop));
}

void FormMain::FitFrame(QPoint place) {
    m_events.Run("placing the window", [&] {
        if (pos() == place) {  // else it has been moved meanwhile
            TakePlace(place);
        }
    });
}

void FormMain::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_activated) {
        m_events.Run("activating the window", [&] { Form_Activate(); });
    }
}

void FormMain::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_events.Run("ending the program", [&] { m_companion.End(EndCause::kUser); });
}

void FormMain::mouseMoveEvent(QMouseEvent* event) {
    m_events.Run("leaving the spells", [&] { m_companion.LeaveSlots(); });
    QWidget::mouseMoveEvent(event);
}

void FormMain::mousePressEvent(QMouseEvent* event) {
    update();
    QWidget::mousePressEvent(event);
}

}  // namespace spellwick
