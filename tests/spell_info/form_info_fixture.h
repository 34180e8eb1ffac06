// The spell info window with the delivered spell table and recording doubles.
#pragma once

#include <QTest>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "spell_info/form_info.h"
#include "tests/support/recording_desktop.h"

namespace spellwick {

class FormInfoTest : public testing::Test, public FailureSink {
  protected:
    FormInfoTest() {
        InitReagentTables(m_state);
        LoadSpellData(m_state, SPELLWICK_SPELL_DATA);
        m_state.Magery = 100;
        m_state.Dexterity = 30;
        m_state.Intelligence = 90;
        m_state.EvalInt = 80;
        m_state.TargetResist = 70;
        m_state.TargetInt = 60;
        m_state.SpiritSpeak = 50;
        m_state.Necro = 40;
        m_form = std::make_unique<FormInfo>(
            InfoServices{.state = m_state, .desktop = m_desktop, .failures = *this});
    }
    void TearDown() override { EXPECT_EQ(m_failures, std::vector<FailureKind>{}); }
    void OnUncaughtFailure(const std::exception& failure, std::string_view /*action*/) override {
        const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
        ASSERT_NE(known, nullptr) << failure.what();
        m_failures.push_back(known->Kind());
    }

    void Show(i32 row) {
        m_form->show();
        m_form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
        m_form->DisplayInfo(row);
    }
    QLabel& Label(int number) {
        auto* label = m_form->findChild<QLabel*>(QStringLiteral("Label(%1)").arg(number));
        if (label == nullptr) {
            throw std::logic_error("no label");
        }
        return *label;
    }
    std::string Text(int number) { return Label(number).text().toStdString(); }
    CounterBox& Box(int index) { return m_form->TextBox(index); }
    void Enter(int index, const char* text) {
        QTest::mouseClick(&Box(index), Qt::LeftButton);
        QTest::keyClicks(&Box(index), QLatin1String(text));
    }
    void LeaveTo(int index) { Box(index).setFocus(Qt::TabFocusReason); }
    std::vector<FailureKind> TakeFailures() { return std::exchange(m_failures, {}); }

    SharedState m_state;
    RecordingDesktop m_desktop;
    std::unique_ptr<FormInfo> m_form;
    std::vector<FailureKind> m_failures;
};

}  // namespace spellwick
