#include "tests/support/main_window_fixture.h"

#include <QApplication>
#include <QCoreApplication>
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

}  // namespace

std::vector<std::string> TakeWarnings() {
    return std::exchange(Warnings(), {});
}

void CollectWarnings() {
    qInstallMessageHandler(OnMessage);
}

MainWindowFixture::MainWindowFixture() {
    TakeWarnings();
}

MainWindowFixture::~MainWindowFixture() = default;

void MainWindowFixture::TearDown() {
    m_form.reset();
    CompanionFixture::TearDown();
    EXPECT_THAT(TakeWarnings(), testing::IsEmpty()) << "a warning of the toolkit";
}

FormMain& MainWindowFixture::Make() {
    m_form.reset();
    Companion& companion = CompanionFixture::Make();
    m_form = std::make_unique<FormMain>(
        MainWindowServices{.companion = companion, .desktop = m_desktop, .failures = *this});
    const GuardedEvents events(*this, m_form.get());
    events.On(m_form.get(), &FormMain::SettingsWanted, "pressing Settings",
              [this] { m_parts.Note("show settings"); });
    events.On(m_form.get(), &FormMain::InfoWanted, "pressing a spell",
              [this](i32 row) { m_parts.Note("info " + std::to_string(row)); });
    return *m_form;
}

void MainWindowFixture::Start() {
    ASSERT_EQ(m_form->Form_Load(), LoadOutcome::kReady);
    m_form->Timer1(1).stop();
    m_form->Form_Activate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
}

void MainWindowFixture::StartWithMira() {
    SavePlayer(kMira);
    OpenClient(kMira);
    Make();
    Start();
    Tick(1);
    TakeLog();
    m_store.ForgetBatches();
}

void MainWindowFixture::Show(const Changes& changes) {
    m_form->Show(changes);
    CompanionFixture::Show(changes);
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

void MainWindowFixture::ClickSpell(int slot, i16 shift) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (shift & 1) != 0);
    modifiers.setFlag(Qt::ControlModifier, (shift & 2) != 0);
    modifiers.setFlag(Qt::AltModifier, (shift & 4) != 0);
    ClickSpellWith(slot, modifiers);
}

void MainWindowFixture::ClickSpellWith(int slot, Qt::KeyboardModifiers modifiers) {
    Click("SpellIcon", slot, modifiers);
}

void MainWindowFixture::ShowPage(int button) {
    Click("CheckCircle", button);
}

void MainWindowFixture::EnterCounter(int reagent, const std::string& text) {
    Enter(Reagent(reagent), text);
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

}  // namespace spellwick
