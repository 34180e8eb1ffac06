#include "main_window/form_main.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "text/number_forms.h"
#include "widgets/form_font.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kWatchMs = 1000;
constexpr int kMeditationMs = 100;
constexpr const char* kMeditateTag = "Meditate";
constexpr const char* kHelpFile = "ReadMe.wri";

enum CommandIndex { kUndo, kHelp, kSettings, kCount, kMeditate };

struct CommandFacts {
    const char* caption;
    const char* toolTip;
    const char* accessibleName;
};

constexpr std::array<CommandFacts, 5> kCommands{{
    {"Undo", "", "Undo the last debit"},
    {"?", "Click me for help", "Help"},
    {"Settings", "", "Settings"},
    {"Count", "", "Count the reagents"},
    {"Meditate", "Click this to use the Meditation skill", "Meditate"},
}};

// Gives the form its font before the controls measure themselves by it.
std::array<QPushButton*, 5> MakeCommands(QWidget* form) {
    form->setFont(FormFont());
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
      m_state(m_services.state),
      m_pictures(qGuiApp->devicePixelRatio()),
      m_io(m_state, m_services.store, *this),
      m_page(m_services, m_pictures, this),
      m_purse(m_services, this),
      m_tithes(m_services, this),
      m_command(MakeCommands(this)),
      m_watch(m_state, m_services.clients, *this),
      m_casting(m_services,
                {.page = m_page,
                 .purse = m_purse,
                 .tithes = m_tithes,
                 .watch = m_watch,
                 .helpButton = *m_command[kHelp]},
                this) {
    setObjectName(QStringLiteral("FormMain"));
    setAccessibleName(QStringLiteral("Spellwick"));
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    setMouseTracking(true);
    m_page.SetPurse(*this);
    m_purse.OnAmountsChanged = [this] { m_page.UpdateAmounts(); };
    m_tithes.OnAmountsChanged = [this] { m_page.UpdateAmounts(); };
    m_page.OnCastWanted = [this](int slot) { m_casting.CastSpell(slot); };
    ConnectCommands();
    ConnectTimers();
}

void FormMain::ConnectCommands() {
    for (int index = 0; index < 5; ++index) {
        connect(&Command(index), &QPushButton::clicked, this, [this, index] {
            Guard(m_services.failures,
                  std::string("pressing ") +
                      kCommands[static_cast<std::size_t>(index)].accessibleName,
                  [&] { ClickCommand(index); });
        });
    }
}

void FormMain::ConnectTimers() {
    m_watchTimer.setObjectName(QStringLiteral("Timer1(1)"));
    m_watchTimer.setInterval(kWatchMs);
    connect(&m_watchTimer, &QTimer::timeout, this, [this] {
        Guard(m_services.failures, "watching the game client", [&] {
            m_services.keys.Tick();
            m_watch.Tick();
            m_services.timers.Update();
        });
    });
    m_meditationTimer.setObjectName(QStringLiteral("Timer1(2)"));
    m_meditationTimer.setInterval(kMeditationMs);
    connect(&m_meditationTimer, &QTimer::timeout, this, [this] {
        Guard(m_services.failures, "starting to meditate", [&] { MeditationTick(); });
    });
}

QTimer& FormMain::Timer1(int index) {
    if (index == 0) {
        return m_casting.WaitTimer();
    }
    return index == 1 ? m_watchTimer : m_meditationTimer;
}

void FormMain::ArmMeditation() {
    MeditationTag = kMeditateTag;
    if (!m_meditationTimer.isActive()) {
        m_meditationTimer.start();
    }
}

void FormMain::MeditationTick() {
    if (MeditationTag != kMeditateTag) {
        return;
    }
    MeditationTag.clear();
    m_meditationTimer.stop();
    ClickCommand(kMeditate);
}

void FormMain::ClickCommand(int index) {
    switch (index) {
        case kUndo:
            m_casting.Undo();
            return;
        case kHelp:
            OpenHelp();
            return;
        case kSettings:
            OpenSettings();
            return;
        case kCount:
            Count();
            return;
        default:
            m_casting.Meditate();
    }
}

void FormMain::OpenHelp() {
    // ODDITY(help-fails): a help text that is not there, or no program to open it, ends the run;
    // kept because the start of the opener is not looked after, and the data are saved all the
    // same.
    if (!m_services.desktop.OpenDocument(m_services.folder / kHelpFile)) {
        throw RuntimeFailure(FailureKind::kFile, "The help text ReadMe.wri cannot be opened.");
    }
}

void FormMain::OpenSettings() {
    setCursor(Qt::WaitCursor);
    m_services.settings.ShowModal();
    unsetCursor();
    m_page.UpdatePage();
}

void FormMain::Count() {
    m_services.assist.FindAssist();
    if (m_state.AssistLinked) {
        Command(kCount).setEnabled(false);
        Command(kCount).setText(QStringLiteral("Wait.."));
        m_services.assist.RequestCount();
    } else {
        m_services.boxes.Show({.text = "Could not find UO Assist. Without UO Assist the count "
                                       "function does not work.",
                               .icon = BoxIcon::kInformation});
    }
    if (m_watch.FindClient()) {
        m_services.clients.SetForegroundWindow(m_state.ClientWindow);
        QCoreApplication::processEvents();
    } else {
        m_casting.ShowClientNotFound();
    }
}

void FormMain::EnterKey() {
    const i32 box = m_purse.FocusedReagent();
    m_casting.CommitEntries();
    if (box > 0) {
        m_purse.Reagent(box).setFocus(Qt::OtherFocusReason);
        if (m_purse.FocusedReagent() != box) {
            m_purse.ReagentGotFocus(box);
        }
    }
    m_page.UpdateAmounts();
}

void FormMain::ShowCaption() {
    const QString caption = ToQString(CaptionText(m_state.CharacterName, m_state.ServerName));
    if (windowTitle() != caption) {
        setWindowTitle(caption);
    }
}

void FormMain::ShowTithes() {
    m_tithes.ShowEverywhere(PlainText(m_state.CurrentTithing));
}

void FormMain::Highlight(const SpellRecord& spell) {
    m_purse.Highlight(spell);
    m_tithes.Highlight(spell);
}

void FormMain::CommitTithes() {
    if (m_tithes.IsEditing()) {
        m_tithes.LostFocus();
    }
}

void FormMain::paintEvent(QPaintEvent* /*event*/) {
    Guard(m_services.failures, "painting the window", [&] {
        // ODDITY(caption-at-paint): after the client has closed the caption goes on showing the
        // character until the window is painted again; kept because the watch leaves the caption
        // alone without a client.
        ShowCaption();
        QPainter painter(this);
        DrawReagents(painter);
        if (!m_mapped) {
            m_mapped = true;
            m_services.desktop.SetTopMost(m_state.MainWindowHandle, m_state.AlwaysOnTop);
        }
    });
}

void FormMain::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_activated) {
        Guard(m_services.failures, "activating the window", [&] { Form_Activate(); });
    }
}

void FormMain::closeEvent(QCloseEvent* event) {
    event->ignore();
    Guard(m_services.failures, "ending the program", [&] { Form_Unload(); });
}

void FormMain::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event)) {
        Guard(m_services.failures, "committing an entry", [&] { EnterKey(); });
        return;
    }
    QWidget::keyPressEvent(event);
}

void FormMain::mouseMoveEvent(QMouseEvent* event) {
    m_purse.ClearHighlight();
    QWidget::mouseMoveEvent(event);
}

void FormMain::mousePressEvent(QMouseEvent* event) {
    update();
    QWidget::mousePressEvent(event);
}

}  // namespace spellwick
