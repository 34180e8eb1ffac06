#include "tests/support/main_window_fixture.h"

#include <QApplication>
#include <QFile>
#include <mutex>

#include "widgets/texts.h"

namespace spellwick {

namespace {

std::vector<std::string>& Warnings() {
    static std::vector<std::string> warnings;
    return warnings;
}

void OnMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    // The offscreen platform says so of every window that is sized or raised.
    const bool isKnown = message.startsWith(QStringLiteral("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isKnown) {
        Warnings().push_back(message.toStdString());
    }
}

const char* const kStockCodes[] = {"MR", "SA", "BM", "SS", "GA", "BP", "NI",
                                   "GI", "BW", "DB", "GD", "NC", "PI"};

}  // namespace

std::vector<std::string> TakeWarnings() {
    return std::exchange(Warnings(), {});
}

void CollectWarnings() {
    qInstallMessageHandler(OnMessage);
}

void RecordingParts::Note(const std::string& line) {
    m_log.push_back(line);
    if (line == hooked) {
        hook();
    }
    if (line == failing) {
        throw RuntimeFailure(FailureKind::kInvalidCall, line);
    }
}

void PrintTo(const UncaughtFailure& failure, std::ostream* out) {
    *out << FailureName(failure.kind) << " while " << failure.action;
}

void PrintTo(const Box& box, std::ostream* out) {
    *out << "[" << box.title << "] " << box.text << " (icon " << static_cast<int>(box.icon)
         << (box.buttons == BoxButtons::kYesNo ? ", Yes/No)" : ")");
}

MainWindowFixture::MainWindowFixture() {
    TakeWarnings();
    QFile::copy(QStringLiteral(SPELLWICK_SOURCE_FOLDER "/data/SpellData.txt"),
                m_folder.filePath(QStringLiteral("SpellData.txt")));
}

MainWindowFixture::~MainWindowFixture() = default;

void MainWindowFixture::TearDown() {
    m_form.reset();
    EXPECT_THAT(TakeBoxes(), testing::IsEmpty()) << "a box that nobody asked for";
    EXPECT_THAT(TakeFailures(), testing::IsEmpty()) << "a failure that nobody asked for";
    EXPECT_THAT(TakeWarnings(), testing::IsEmpty()) << "a warning of the toolkit";
}

void MainWindowFixture::OnUncaughtFailure(const std::exception& failure, std::string_view action) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    ASSERT_NE(known, nullptr) << failure.what();
    m_failures.push_back({known->Kind(), std::string(action)});
    m_log.push_back("failure");
}

void MainWindowFixture::SavePlayer(const std::string& title) {
    SetSaved("Settings", "CurrentPlayerName", title);
    for (const char* key :
         {"EvalInt", "Magery", "Necro", "Chivalry", "SpiritSpeak", "Intelligence"}) {
        SetSaved(title, key, "100");
    }
    for (int row = 0; row <= kLastRow; ++row) {
        SetSaved(title, "Spellbook " + std::to_string(row), "0");
    }
    for (const char* code : kStockCodes) {
        SetSaved(title, std::string(code) + " 0", "50");
        SetSaved(title, std::string(code) + " 1", "20");
    }
    SetSaved(title, "CurrentTithing", " 500");
    SetSaved(title, "SendSpellText", "0");
}

void MainWindowFixture::SetSaved(const std::string& section, const std::string& key,
                                 const std::string& value) {
    m_store.Put(section, key, value);
}

std::string MainWindowFixture::Saved(const std::string& section, const std::string& key) const {
    return m_store.Read(section, key).value_or("(none)");
}

void MainWindowFixture::OpenClient(const std::string& title) {
    m_clients.windows.clear();
    if (!title.empty()) {
        m_clients.windows.push_back({kClient, "Ultima Online", title});
    }
}

FormMain& MainWindowFixture::Make() {
    m_form =
        std::make_unique<FormMain>(MainWindowServices{.state = m_state,
                                                      .store = m_store,
                                                      .clients = m_clients,
                                                      .keys = m_keys,
                                                      .desktop = m_desktop,
                                                      .boxes = m_boxes,
                                                      .assist = *m_assist,
                                                      .oldData = m_parts,
                                                      .settings = m_parts,
                                                      .spellInfo = m_parts,
                                                      .timers = m_parts,
                                                      .failures = *this,
                                                      .process = m_parts,
                                                      .folder = m_folder.path().toStdString()});
    return *m_form;
}

void MainWindowFixture::Start() {
    ASSERT_EQ(m_form->Form_Load(), LoadOutcome::kReady);
    m_form->Timer1(1).stop();
    m_form->Form_Activate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
}

FormMain& MainWindowFixture::StartWithMira() {
    SavePlayer(kMira);
    OpenClient(kMira);
    Make();
    Start();
    Tick(1);
    TakeLog();
    m_store.ForgetBatches();
    return *m_form;
}

void MainWindowFixture::Tick(int index) {
    QMetaObject::invokeMethod(&m_form->Timer1(index), "timeout");
}

std::string MainWindowFixture::Text(const char* name) {
    return Named(QLatin1String(name)).property("text").toString().toStdString();
}

std::string MainWindowFixture::Text(const char* name, int index) {
    return Named(name, index).property("text").toString().toStdString();
}

void MainWindowFixture::InThePause(std::function<void()> happens) {
    auto* look = new QTimer(m_form.get());
    look->setInterval(1);
    QObject::connect(look, &QTimer::timeout, look, [this, look, happens = std::move(happens)] {
        if (Form().Timer1(0).isActive()) {
            look->stop();
            happens();
        }
    });
    look->start();
}

void MainWindowFixture::Click(QWidget& control, Qt::MouseButton button,
                              Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(m_form->windowHandle(), button, modifiers,
                      control.mapTo(m_form.get(), control.rect().center()));
}

void MainWindowFixture::Click(const char* name, int index, Qt::KeyboardModifiers modifiers) {
    Click(Named(name, index), Qt::LeftButton, modifiers);
}

void MainWindowFixture::DoubleClick(QWidget& control, Qt::MouseButton button) {
    QTest::mouseDClick(m_form->windowHandle(), button, Qt::NoModifier,
                       control.mapTo(m_form.get(), control.rect().center()));
}

void MainWindowFixture::MoveTo(QWidget& control) {
    MoveTo(control.mapTo(m_form.get(), control.rect().center()));
}

void MainWindowFixture::MoveTo(QPoint place) {
    // A move to where the mouse is already would be none.
    QTest::mouseMove(m_form->windowHandle(), place + QPoint(1, 1));
    QTest::mouseMove(m_form->windowHandle(), place);
}

void MainWindowFixture::Type(const std::string& text) {
    for (const QChar character : ToQString(text)) {
        QTest::keyClick(m_form->windowHandle(), character.toLatin1());
    }
}

void MainWindowFixture::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(m_form->windowHandle(), key, modifiers);
}

void MainWindowFixture::Enter(QLineEdit& box, const std::string& text) {
    Click(box);
    if (text.empty()) {
        Press(Qt::Key_Backspace);
    }
    Type(text);
}

void MainWindowFixture::Leave() {
    Named("Command", 0).setFocus(Qt::TabFocusReason);
}

void MainWindowFixture::ClickSpell(int slot, Qt::KeyboardModifiers modifiers) {
    Click("SpellIcon", slot, modifiers);
}

void MainWindowFixture::ShowPage(int button) {
    Click("CheckCircle", button);
}

std::string MainWindowFixture::FocusName() const {
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr) {
        return "(none)";
    }
    const QString name = focus->objectName();
    return name.startsWith(QStringLiteral("qt_")) || name.isEmpty()
               ? focus->parentWidget()->objectName().toStdString()
               : name.toStdString();
}

std::vector<std::string> MainWindowFixture::TakeLog() {
    return std::exchange(m_log, {});
}

std::vector<Box> MainWindowFixture::TakeBoxes() {
    return std::exchange(m_boxes.shown, {});
}

std::vector<UncaughtFailure> MainWindowFixture::TakeFailures() {
    return std::exchange(m_failures, {});
}

}  // namespace spellwick
