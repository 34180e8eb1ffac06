#include "app/application.h"

#include <QApplication>
#include <QFileInfo>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>

#include "store/conversion.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr std::chrono::milliseconds kAfterFirstPaint{150};

// Where the display takes no keys; the user was told at the start.
class NoKeySender : public KeySender {
  public:
    SendResult SendKeys(std::string_view /*text*/, bool /*wait*/) override {
        return {"This display takes no keys."};
    }
};

std::unique_ptr<KeySender> MakeKeySender(Keyboard* keyboard) {
    if (keyboard == nullptr) {
        return std::make_unique<NoKeySender>();
    }
    return std::make_unique<KeystrokeSender>(*keyboard);
}

}  // namespace

Application::Application(System system)
    : m_system(std::move(system)),
      m_keys(MakeKeySender(m_system.keyboard.get())),
      m_timers({.timers = m_running,
                .state = m_state,
                .desktop = *m_system.desktop,
                .failures = m_runEnd},
               [this](std::string_view key) { return m_main->Io().ReadPosition(key); }) {
    m_main = std::make_unique<FormMain>(Services());
    m_boxes.SetOwner(m_main.get());
    ConnectAssist();
    m_runEnd.SetSaving([this] { return m_main->SaveAfterFailure(); });
    m_runEnd.SetCleanUp([this] {
        m_keys.reset();
        m_system.store.reset();
    });
}

MainWindowServices Application::Services() {
    return {.state = m_state,
            .store = *m_system.store,
            .clients = *m_system.clients,
            .keys = *m_keys,
            .desktop = *m_system.desktop,
            .boxes = m_boxes,
            .assist = m_assist,
            .oldData = *this,
            .settings = *this,
            .spellInfo = *this,
            .timers = m_timers,
            .failures = m_runEnd,
            .process = m_runEnd,
            .folder = QFileInfo(QCoreApplication::applicationDirPath()).filesystemFilePath()};
}

std::optional<int> Application::Start() {
    constexpr int kNoSpellData = 2;
    for (const std::string& trouble : m_system.troubles) {
        m_boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
    }
    if (m_main->Form_Load() != LoadOutcome::kReady) {
        return kNoSpellData;
    }
    Guard(m_runEnd, "showing the window", [&] { m_main->Form_Activate(); });
    WatchForEnd();
    return std::nullopt;
}

void Application::ConnectAssist() {
    SettingsPort& settings = *this;
    m_reports = std::make_unique<AssistReports>(*m_main, m_boxes, settings, m_timers);
    m_dispatcher = std::make_unique<AssistDispatcher>(m_state, *m_reports, m_assist, m_runEnd);
    m_assist.SetCountButton([this](bool enabled) { m_reports->EnableCount(enabled); });
    m_assist.SetReceiver(*m_dispatcher);
    if (m_system.assist->Descriptor() >= 0) {
        auto* reports =
            new QSocketNotifier(m_system.assist->Descriptor(), QSocketNotifier::Read, m_main.get());
        QObject::connect(reports, &QSocketNotifier::activated, m_main.get(), [this] {
            Guard(m_runEnd, "serving the assist tool", [&] { m_system.assist->Service(); });
        });
    }
}

void Application::WatchForEnd() {
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, m_main.get(),
                     [this](QSessionManager&) { m_main->close(); });
    if (m_system.endRequests >= 0) {
        auto* requests =
            new QSocketNotifier(m_system.endRequests, QSocketNotifier::Read, m_main.get());
        QObject::connect(requests, &QSocketNotifier::activated, m_main.get(), [this, requests] {
            // One request is enough, and it stays there to be read: while a box stands at the end
            // it would be told again and again.
            requests->setEnabled(false);
            Guard(m_runEnd, "ending the program", [&] { m_main->Form_Unload(); });
        });
    }
}

void Application::ConvertOldData() {
    Conversion({.state = m_state,
                .store = *m_system.store,
                .io = m_main->Io(),
                .boxes = m_boxes,
                .wait = m_wait})
        .ConvertOldData();
}

void Application::DisplayInfo(i32 row) {
    if (m_info == nullptr) {
        m_info = std::make_unique<FormInfo>(
            InfoServices{.state = m_state, .desktop = *m_system.desktop, .failures = m_runEnd});
    }
    m_info->ComeForward();
    m_info->DisplayInfo(row);
}

// The dialog takes as long to make as the page: it is made when the page has been painted, before
// anybody can ask for it.
void Application::Load() {
    QTimer::singleShot(kAfterFirstPaint, m_main.get(), [this] {
        Guard(m_runEnd, "making the settings dialog", [&] { MakeSettings(); });
    });
}

void Application::MakeSettings() {
    if (m_settings != nullptr) {
        return;
    }
    m_settingsHost = std::make_unique<SettingsHost>(*m_main, m_timers);
    m_settings =
        std::make_unique<FormSettings>(SettingsServices{.state = m_state,
                                                        .store = *m_system.store,
                                                        .desktop = *m_system.desktop,
                                                        .boxes = m_boxes,
                                                        .dialogs = m_dialogs,
                                                        .installation = *m_system.installation,
                                                        .failures = m_runEnd,
                                                        .mainWindow = *m_settingsHost,
                                                        .pictures = m_main->PictureStrips()},
                                       m_main.get());
    // Its load can call back here, so it is there before it is filled.
    m_settings->Form_Load();
}

void Application::ShowModal() {
    MakeSettings();
    m_settings->exec();
}

void Application::UpdateChance() {
    // A dialog that is still to come fills itself.
    if (m_settings != nullptr) {
        m_settings->UpdateChance();
    }
}

void Application::ShowMinimumSkill(const std::string& text) {
    WithSettings([&] { m_settings->Skills().ShowReportedSkill(text); });
}

void Application::ShowMinimumInt(const std::string& text) {
    WithSettings([&] { m_settings->Skills().ShowReportedInt(text); });
}

// The dialog shows the spell table: before that is read there is none, and it fills itself later.
void Application::WithSettings(const std::function<void()>& show) {
    if (m_state.Spells.Last() >= 0) {
        MakeSettings();
        show();
    }
}

StoreResult Application::Unload() {
    return m_settings != nullptr ? m_settings->Form_Unload() : StoreResult{};
}

}  // namespace spellwick
