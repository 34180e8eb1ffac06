#include "tests/support/settings_fixture.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollArea>

#include "model/chances.h"
#include "model/spell_data.h"
#include "store/section_name.h"
#include "tests/support/window_in_front.h"
#include "widgets/texts.h"

namespace spellwick {

void RecordingCompanion::Note(const std::string& line) {
    m_log.push_back(line);
    if (line == failing) {
        throw RuntimeFailure(FailureKind::kInvalidCall, line);
    }
}

void RecordingCompanion::LayoutVertical() {
    Note("vertical");
    m_state.DisplayVertical = true;
}

void RecordingCompanion::LayoutHorizontal() {
    Note("horizontal");
    m_state.DisplayVertical = false;
}

void RecordingCompanion::UpdateChances() {
    Note("update chances");
    CalculateChances(m_state);
    updateChance();
}

void RecordingCompanion::SavePlayer() {
    Note("save " + m_state.CurrentPlayerName);
    EXPECT_TRUE(io.SavePlayerSettings(m_state.CurrentPlayerName).ok);
}

void RecordingCompanion::LoadPlayer() {
    Note("load " + m_state.CurrentPlayerName);
    io.LoadPlayerSettings(m_state.CurrentPlayerName);
}

void RecordingCompanion::SaveAll() {
    Note("save all");
    EXPECT_TRUE(io.SaveGlobalSettings({}).ok);
}

void RecordingCompanion::SaveOption(std::string_view key, const std::string& value) {
    Note("option " + std::string(key) + " " + value);
    EXPECT_TRUE(io.SaveOption(key, value).ok);
}

StoreResult RecordingCompanion::SaveMacros(const std::optional<WindowPlaces::Place>& dialog) {
    Note(dialog ? "save place and macros" : "save macros");
    return io.SaveMacros(dialog);
}

void RecordingCompanion::ReportSave(const StoreResult& result) {
    if (!result.ok) {
        Note("report " + result.trouble);
    }
}

SettingsFixture::SettingsFixture() {
    TakeWarnings();
}

SettingsFixture::~SettingsFixture() = default;

void SettingsFixture::TearDown() {
    m_form.reset();
    EXPECT_THAT(TakeBoxes(), testing::IsEmpty()) << "a box that nobody asked for";
    EXPECT_THAT(TakeFailures(), testing::IsEmpty()) << "a failure that nobody asked for";
    EXPECT_THAT(TakeWarnings(), testing::IsEmpty()) << "a warning of the toolkit";
}

void SettingsFixture::OnUncaughtFailure(const std::exception& failure, std::string_view action) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    ASSERT_NE(known, nullptr) << failure.what();
    m_failures.push_back({known->Kind(), std::string(action)});
    m_log.push_back("failure");
}

SettingsServices SettingsFixture::Services() {
    return {.state = m_state,
            .store = m_store,
            .desktop = m_desktop,
            .boxes = m_boxes,
            .dialogs = m_dialogs,
            .installation = m_installation,
            .failures = *this,
            .companion = m_companion,
            .game = m_game,
            .spellTable = m_spellTable,
            .pictures = m_pictures,
            .atStart = TakeInSettings(m_state, m_store),
            .about = "Spellwick 7.5\n\nYour data: /home/mira/settings.db",
            .data = &m_data,
            .wineTools = &m_wineTools};
}

FormSettings& SettingsFixture::Load() {
    InitReagentTables(m_state);
    EXPECT_TRUE(LoadSpellData(m_state, SPELLWICK_SOURCE_FOLDER "/data/SpellData.txt"));
    m_state.Spellbook.Fill(1);
    m_companion.io.LoadGlobalSettings();
    CalculateChances(m_state);
    m_form = std::make_unique<FormSettings>(Services(), nullptr);
    m_companion.updateChance = [this] { m_form->UpdateChance(); };
    m_form->Form_Load();
    return *m_form;
}

void SettingsFixture::Show() {
    m_form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
    QCoreApplication::processEvents();
}

FormSettings& SettingsFixture::Open() {
    Load();
    Show();
    TakeLog();
    m_store.ForgetBatches();
    return *m_form;
}

FormSettings& SettingsFixture::OpenAt(int tab) {
    Open();
    ShowTab(tab);
    TakeLog();
    return *m_form;
}

void SettingsFixture::LeaveAndComeBack() {
    WindowInFront other;
    other.hide();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
}

void SettingsFixture::Reopen() {
    ASSERT_FALSE(m_form->isVisible());
    Show();
    // The offscreen platform has never deactivated it.
    QApplication::setActiveWindow(m_form.get());
}

std::string SettingsFixture::Text(const char* name) {
    return Named(QLatin1String(name)).property("text").toString().toStdString();
}

std::string SettingsFixture::Text(const char* name, int index) {
    return Named(name, index).property("text").toString().toStdString();
}

void SettingsFixture::Click(QWidget& control) {
    for (QWidget* parent = control.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(parent)) {
            scroll->ensureWidgetVisible(&control);
        }
    }
    // A check box has its own at its left end.
    const QPoint place = control.rect().center();
    const bool isWide = control.inherits("QCheckBox") || control.inherits("QRadioButton");
    ClickSpot(control, isWide ? QPoint(8, place.y()) : place);
}

void SettingsFixture::ClickSpot(QWidget& control, QPoint spot) {
    QTest::mouseClick(m_form->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      control.mapTo(m_form.get(), spot));
}

void SettingsFixture::Click(const char* name) {
    Click(Named(QLatin1String(name)));
}

void SettingsFixture::Click(const char* name, int index) {
    Click(Named(name, index));
}

void SettingsFixture::Type(const std::string& text) {
    for (const QChar character : ToQString(text)) {
        QTest::keyClick(m_form->windowHandle(), character.toLatin1());
    }
}

void SettingsFixture::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(m_form->windowHandle(), key, modifiers);
}

void SettingsFixture::Enter(QLineEdit& box, const std::string& text) {
    Click(box);
    Press(Qt::Key_A, Qt::ControlModifier);
    if (text.empty()) {
        Press(Qt::Key_Backspace);
    }
    Type(text);
}

void SettingsFixture::Enter(const char* name, int index, const std::string& text) {
    Enter(Named<QLineEdit>(name, index), text);
}

void SettingsFixture::Paste(QLineEdit& box, const QString& text) {
    Click(box);
    box.selectAll();
    QGuiApplication::clipboard()->setText(text);
    box.paste();
}

void SettingsFixture::Leave() {
    for (PageButton* button : m_form->CheckTab) {
        if (button->isChecked()) {
            button->setFocus(Qt::TabFocusReason);
        }
    }
}

void SettingsFixture::Pick(QComboBox& list, int index) {
    list.setFocus(Qt::MouseFocusReason);
    list.setCurrentIndex(index);
    emit list.activated(index);
}

std::string SettingsFixture::FocusName() const {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? "(none)" : focus->objectName().toStdString();
}

std::string SettingsFixture::Saved(const std::string& section, const std::string& key) const {
    return m_store.Read(section, key).value_or("(none)");
}

void SettingsFixture::SetSaved(const std::string& section, const std::string& key,
                               const std::string& value) {
    m_store.Put(section, key, value);
}

}  // namespace spellwick
