// The real main window on recording parts, used by mouse and keyboard as a user would.
#pragma once

#include <QLabel>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "main_window/form_main.h"
#include "tests/support/companion_fixture.h"

namespace spellwick {

class MainWindowFixture : public CompanionFixture {
  protected:
    MainWindowFixture();
    ~MainWindowFixture() override;

    // A failure, a message box or a warning of the toolkit that the test did not ask for fails it.
    void TearDown() override;

    // Makes the window with the parts as they stand.
    FormMain& Make();
    // The same, loaded and shown, with Mira in the client; the log is empty after it. The watch
    // ticks only when the test says so.
    void StartWithMira() override;
    // Loads and shows what Make made.
    void Start() override;

    FormMain& Form() { return *m_form; }

    void Tick(int index) override;
    void InThePause(std::function<void()> happens) override;

    template <typename Control = QWidget>
    Control& Named(const QString& name) {
        auto* control = m_form->findChild<Control*>(name);
        if (control == nullptr) {
            throw std::logic_error("no control " + name.toStdString());
        }
        return *control;
    }
    template <typename Control = QWidget>
    Control& Named(const char* name, int index) {
        return Named<Control>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
    }
    QLineEdit& Reagent(int index) { return Named<QLineEdit>("Reagent", index); }
    QLabel& LabelAmount(int slot) { return Named<QLabel>("LabelAmount", slot); }
    QLabel& LabelChance(int slot) { return Named<QLabel>("LabelChance", slot); }
    std::string Text(const char* name) override;
    std::string Text(const char* name, int index) override;
    Colour AmountGround(int slot) { return Named<CellLabel>("LabelAmount", slot).CellGround(); }
    Colour ChanceGroundOf(int slot) { return Named<CellLabel>("LabelChance", slot).CellGround(); }

    // Mouse and keys as the window system would bring them.
    void Click(QWidget& control, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Click(const char* name, int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void DoubleClick(QWidget& control, Qt::MouseButton button = Qt::LeftButton);
    void MoveTo(QWidget& control);
    void MoveTo(QPoint place);
    void Type(const std::string& text);
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Replaces the text of a counter by typing, without leaving it.
    void Enter(QLineEdit& box, const std::string& text);
    void ClickSpell(int slot, i16 shift = 0) override;
    void ClickSpellWith(int slot, Qt::KeyboardModifiers modifiers);
    void ShowPage(int button) override;
    void ClickCommand(int index) override { Click("Command", index); }
    void EnterCounter(int reagent, const std::string& text) override;
    void Leave() override;
    std::string FocusName() const;

    // Forms
    void Show(const Changes& changes) override;
    WindowHandle MakeMainWindow() override { return m_form->MakeHandle(); }
    void FocusPage() override { m_form->FocusPage(); }
    void FocusCounter(i32 reagent) override { m_form->FocusCounter(reagent); }
    void FocusHelp() override { m_form->FocusHelp(); }
    void ServeEvents() override { QCoreApplication::processEvents(); }
    void Pause() override { m_form->Pause(); }
    WindowPlaces MainPlace() override { return m_form->Places(); }
    void HideMainWindow() override { m_form->hide(); }

    std::unique_ptr<FormMain> m_form;
};

// Warnings of the toolkit since the last call; installed by the tests' main.
std::vector<std::string> TakeWarnings();
void CollectWarnings();

}  // namespace spellwick
