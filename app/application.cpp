#include "app/application.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QScreen>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QSysInfo>
#include <QTimer>
#include <chrono>

#include "companion/version_copy.h"
#include "help/help_window.h"
#include "store/text_settings_file.h"
#include "text/log.h"
#include "widgets/guarded_events.h"
#include "widgets/pictures.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

// For a display that takes no keys; the user is told at the start.
class NoKeySender : public KeySender {
  public:
    SendResult SendKeys(std::string_view /*text*/, bool /*wait*/, KeyTarget& /*target*/) override {
        return {"This display takes no keys."};
    }
};

std::unique_ptr<KeySender> MakeKeySender(Keyboard* keyboard, const SharedState& state) {
    if (keyboard == nullptr) {
        return std::make_unique<NoKeySender>();
    }
    return std::make_unique<KeystrokeSender>(*keyboard, [&state] {
        return Pace{.textHold = std::chrono::milliseconds(state.TextHold),
                    .textGap = std::chrono::milliseconds(state.TextGap)};
    });
}

System Completed(System system) {
    if (system.files == nullptr) {
        system.files = std::make_unique<TextSettingsFile>();
    }
    return system;
}

// With the files that lie beside the program.
std::filesystem::path ProgramFolder() {
    return QFileInfo(QCoreApplication::applicationDirPath()).filesystemFilePath();
}

}  // namespace

Application::Application(System system)
    : m_system(Completed(std::move(system))),
      m_game(m_state, m_clients, {.folder = m_system.folder, .wayland = m_system.wayland}),
      m_spellTable(ProgramFolder(), m_system.folder),
      m_tools(*m_system.assist, m_state, m_payment, {}, [this] { return m_system.clock->Now(); }),
      m_keys(MakeKeySender(m_system.keyboard.get(), m_state)),
      m_companion(Services()),
      m_timers({.timers = m_companion.Timers(),
                .state = m_state,
                .desktop = *m_system.desktop,
                .failures = m_runEnd,
                .keepsClear =
                    [this] {
                        return std::vector{m_main->frameGeometry(), GameRect()};
                    }},
               [this](std::string_view key) { return m_companion.Io().ReadPosition(key); }) {
    m_companion.SetForms(*this);
    m_main = std::make_unique<FormMain>(MainWindowServices{
        .companion = m_companion, .desktop = *m_system.desktop, .failures = m_runEnd});
    m_boxes.SetOwner(m_main.get());
    m_hints = new Hints(*m_main, m_runEnd);
    m_hints->SetGame([this] { return GameRect(); });
    const GuardedEvents events(m_runEnd, m_main.get());
    events.On(m_main.get(), &FormMain::SettingsWanted, "pressing Settings",
              [this] { ShowSettings(); });
    events.On(m_main.get(), &FormMain::InfoWanted, "pressing a spell",
              [this](i32 row) { ShowInfo(row); });
    events.On(m_main.get(), &FormMain::SettingsNear, "making the settings dialog",
              [this] { MakeSettings(); });
    ConnectAssist();
    m_runEnd.SetSaving([this] { return m_companion.SaveAfterFailure(); });
    m_runEnd.SetDetails([this] { return Details(); });
    m_runEnd.SetCleanUp([this] {
        m_keys.reset();
        m_system.store.reset();
    });
}

CompanionServices Application::Services() {
    return {.state = m_state,
            .store = *m_system.store,
            .clients = m_clients,
            .keys = *m_keys,
            .desktop = *m_system.desktop,
            .boxes = m_boxes,
            .assist = m_assist,
            .payment = m_payment,
            .link = m_tools.Status(),
            .wait = m_wait,
            .clock = *m_system.clock,
            .failures = m_runEnd,
            .journal = m_system.journal.get(),
            .games = &m_clients,
            .files = m_system.files.get(),
            .wineTools = m_system.wineTools.get(),
            .folder = ProgramFolder(),
            .settingsFolder = m_system.folder};
}

std::optional<int> Application::Start() {
    constexpr int kNoSpellData = 2;
    constexpr std::chrono::milliseconds kBetweenNotes{500};
    WatchForEnd();
    for (const std::string& trouble : m_system.troubles) {
        m_boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
    }
    // Before the conversion, which is the first to write.
    if (m_system.folder && m_system.journal != nullptr) {
        CopyForNewVersion(*m_system.store, *m_system.folder, kVersion, m_system.clock->Now());
    }
    if (const std::string fault = m_game.LoadTable(); !fault.empty()) {
        m_boxes.Show({.text = fault +
                              "\n\nUntil the file is put right, Spellwick knows the classic "
                              "client alone.",
                      .icon = BoxIcon::kExclamation});
    }
    LoadedTable<AssistToolRow> tools = LoadAssistTools(m_system.folder);
    m_tools.SetTools(std::move(tools.rows));
    if (!tools.fault.empty()) {
        m_boxes.Show({.text = tools.fault +
                              "\n\nUntil the file is put right, Spellwick knows UOAssist alone.",
                      .icon = BoxIcon::kExclamation});
    }
    if (m_main->Form_Load() != LoadOutcome::kReady) {
        return kNoSpellData;
    }
    Guard(m_runEnd, "showing the window", [&] { m_main->Form_Activate(); });
    Guard(m_runEnd, "reading the icon",
          [] { QApplication::setWindowIcon(QIcon(ReadPicture(QStringLiteral("spellwick-48")))); });
    if (m_system.owner != nullptr) {
        m_system.owner->SetWindow(static_cast<WindowHandle>(m_main->winId()));
    }
    if (m_system.mapsLater) {
        Guard(m_runEnd, "painting the window", [&] { m_main->PaintAhead(); });
    }
    m_companion.ShowStartHints();
    auto* notes = new QTimer(m_main.get());
    GuardedEvents(m_runEnd, m_main.get())
        .On(notes, &QTimer::timeout, "noting what has changed",
            [this] { m_companion.NoteChanges(); });
    notes->start(kBetweenNotes);
    return std::nullopt;
}

std::string Application::About() const {
    std::string text = std::string("Spellwick ") + kVersion + "\n\nYour data: " +
                       (m_system.storePlace.empty() ? "not kept" : m_system.storePlace);
    if (m_system.folder) {
        text += "\nTheir folder: " + m_system.folder->string();
    }
    text += std::string("\n\nSpellwick: MIT\nQt ") + qVersion() + ": LGPL 3";
    for (const std::string& licence : m_system.licences) {
        text += "\n" + licence;
    }
    return text;
}

// What helps to find the cause of a failure; no names of characters.
std::string Application::Details() {
    const QString system =
        QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::currentCpuArchitecture();
    return std::string("Spellwick ") + kVersion + "\nSystem: " + ToText(system) +
           "\nDisplay: " + ToText(QGuiApplication::platformName()) + ", Qt " + qVersion() +
           "\nAssist tool: " + LinkText(m_tools.Status(), m_payment.PaysAtClick());
}

void Application::Show(const Changes& changes) {
    m_main->Show(changes);
    // A dialog that is not built yet fills itself when it is.
    if (m_settings != nullptr) {
        m_settings->Show(m_companion.Shown(), changes);
    }
    if (changes.timers) {
        m_timers.Show();
    }
}

void Application::ShowHint(const std::string& text, const Target& target) {
    LogEvent(LogTopic::kRefused, [&] { return "hint: " + text; });
    HintLead lead;
    if (target.way != Way::kNone) {
        lead = {.beside = ControlFor(target),
                .follow = [this, target] { Follow(target); },
                .untilClick = target.way == Way::kFirstSteps};
    }
    m_hints->Show(ToQString(text), lead);
}

// In the toolkit's coordinates, which are the system's divided by the density, from the corner of
// the screen that the window is on.
QRect Application::GameRect() {
    const std::optional<WindowArea> area = m_clients.AreaOf(m_state.ClientWindow);
    if (!area) {
        return {};
    }
    const QScreen& screen = *m_main->screen();
    const double density = screen.devicePixelRatio();
    const QPoint corner = screen.geometry().topLeft();
    const auto inPoints = [density](int pixels) { return qRound(pixels / density); };
    return {corner + QPoint(inPoints(area->left - corner.x()), inPoints(area->top - corner.y())),
            QSize(inPoints(area->width), inPoints(area->height))};
}

QWidget* Application::ControlFor(const Target& target) {
    switch (target.way) {
        case Way::kCounters:
            return &m_main->StockCounter(m_companion.CounterFor(target.row));
        case Way::kTithingPoints:
            return &m_main->TithesLabel();
        default:
            return &m_main->Command(kSettingsCommand);
    }
}

void Application::Follow(const Target& target) {
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr && modal != m_settings.get()) {
        return;  // a box wants its answer first
    }
    if (target.way == Way::kCounters || target.way == Way::kTithingPoints) {
        if (m_settings != nullptr && m_settings->isVisible()) {
            m_settings->ClickCommand1();
            if (m_settings->isVisible()) {
                return;  // an entry was refused
            }
        }
        if (!m_system.desktop->Activate(static_cast<WindowHandle>(m_main->winId()))) {
            m_main->activateWindow();
        }
        if (target.way == Way::kCounters) {
            m_companion.FocusStock(target.row);
        } else {
            m_companion.EditTithes();
        }
        return;
    }
    MakeSettings();
    if (m_settings == nullptr) {
        return;
    }
    m_settings->GoTo(target);
    if (!m_settings->isVisible()) {
        m_main->ClickCommand(kSettingsCommand);
    }
}

bool Application::ShowHelp() {
    // Over a modal dialog, which would lock it out otherwise.
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const parent = modal != nullptr ? modal : m_main.get();
    auto* help = parent->findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (help == nullptr) {
        auto made = std::make_unique<HelpWindow>(*m_main, m_runEnd, parent);
        if (!made->Load()) {
            return false;
        }
        help = made.release();
    }
    help->show();
    help->raise();
    help->activateWindow();
    return true;
}

void Application::ServeEvents() {
    QCoreApplication::processEvents();
}

void Application::ConnectAssist() {
    m_assist.SetCountButton([this](bool enabled) { m_companion.EnableCount(enabled); });
    m_assist.SetReceiver(m_companion.Reports());
    if (m_system.assist->Descriptor() >= 0) {
        auto* reports =
            new QSocketNotifier(m_system.assist->Descriptor(), QSocketNotifier::Read, m_main.get());
        GuardedEvents(m_runEnd, m_main.get())
            .On(reports, &QSocketNotifier::activated, "serving the assist tool",
                [this] { m_system.assist->Service(); });
    }
}

void Application::WatchForEnd() {
    const GuardedEvents events(m_runEnd, m_main.get());
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, m_main.get(), [this](QSessionManager&) {
            Guard(m_runEnd, "saving for the log-off", [&] { m_companion.SaveForLogOff(); });
        });
    // The session ends for good.
    events.On(qApp, &QCoreApplication::aboutToQuit, "ending with the session",
              [this] { m_companion.End(EndCause::kSystem); });
    if (m_system.endRequests >= 0) {
        auto* requests =
            new QSocketNotifier(m_system.endRequests, QSocketNotifier::Read, m_main.get());
        GuardedEvents(m_runEnd, m_main.get())
            .On(requests, &QSocketNotifier::activated, "ending the program", [this, requests] {
                requests->setEnabled(false);
                TakeEndRequest(m_system.endRequests);
                m_companion.End(EndCause::kSystem);
            });
    }
}

void Application::ShowInfo(i32 row) {
    if (m_info == nullptr) {
        m_info = std::make_unique<FormInfo>(
            InfoServices{.state = m_state, .desktop = *m_system.desktop, .failures = m_runEnd});
    }
    m_info->ComeForward();
    m_info->DisplayInfo(row);
}

void Application::ShowMainWindow() {
    if (m_system.mapsLater) {
        Guard(m_runEnd, "showing the window", [&] { m_main->Appear(); });
    }
}

// The dialog itself is as costly to build as the main window, and many runs never need it.
void Application::LoadSettings() {
    m_settingsAtStart = TakeInSettings(m_state, *m_system.store);
}

void Application::MakeSettings() {
    if (m_settings != nullptr || !m_settingsAtStart) {
        return;
    }
    m_settings =
        std::make_unique<FormSettings>(SettingsServices{.state = m_state,
                                                        .store = *m_system.store,
                                                        .desktop = *m_system.desktop,
                                                        .boxes = m_boxes,
                                                        .dialogs = m_dialogs,
                                                        .installation = *m_system.installation,
                                                        .failures = m_runEnd,
                                                        .companion = m_companion,
                                                        .game = m_game,
                                                        .spellTable = m_spellTable,
                                                        .pictures = m_main->PictureStrips(),
                                                        .atStart = *m_settingsAtStart,
                                                        .about = About(),
                                                        .gameArea = [this] { return GameRect(); },
                                                        .data = m_companion.Data(),
                                                        .wineTools = m_system.wineTools.get()},
                                       m_main.get());
    GuardedEvents(m_runEnd, m_settings.get())
        .On(m_settings.get(), &FormSettings::MainWindowWanted, "going to a first step",
            [this](const Target& target) { Follow(target); });
    // Loading can call back here, so the member is set before it.
    m_settings->Form_Load();
}

void Application::ShowSettings() {
    MakeSettings();
    if (m_settings == nullptr) {
        return;
    }
    m_settings->exec();
    // Its edits hold the data of before.
    if (m_settings->IsOutdated()) {
        m_settings.reset();
    }
}

StoreResult Application::UnloadSettings() {
    if (!m_settingsAtStart) {
        return {};
    }
    if (m_settings == nullptr) {
        return m_companion.SaveMacros(m_settingsAtStart->place);
    }
    // A signal may have ended the program with the dialog open and nobody there to answer a box.
    m_boxes.SetSilent(true);
    m_settings->TakeEntryAtEnd();
    m_boxes.SetSilent(false);
    return m_settings->Form_Unload();
}

}  // namespace spellwick
