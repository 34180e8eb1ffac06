#include "widgets/guarded_events.h"

#include <QLineEdit>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GuardedEventsTest : public testing::Test, public FailureSink {
  protected:
    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override {
        m_failures.push_back(std::string(action) + ": " + failure.what());
    }

    std::vector<std::string> m_failures;
    std::unique_ptr<QObject> m_context = std::make_unique<QObject>();
    GuardedEvents m_events{*this, m_context.get()};
    QLineEdit m_edit;
    std::vector<std::string> m_seen;
};

TEST_F(GuardedEventsTest, On_HandlerTakesTheArgument_GetsIt) {
    m_events.On(&m_edit, &QLineEdit::textChanged, "typing",
                [this](const QString& text) { m_seen.push_back(text.toStdString()); });
    m_edit.setText(QStringLiteral("Clumsy"));
    EXPECT_THAT(m_seen, ElementsAre("Clumsy"));
}

TEST_F(GuardedEventsTest, On_HandlerTakesFewerArguments_GetsTheFirst) {
    QSlider slider;
    m_events.On(&slider, &QSlider::rangeChanged, "dragging",
                [this](int least) { m_seen.push_back(std::to_string(least)); });
    m_events.On(&slider, &QSlider::rangeChanged, "dragging",
                [this] { m_seen.emplace_back("none"); });
    slider.setRange(7, 9);
    EXPECT_THAT(m_seen, ElementsAre("7", "none"));
}

TEST_F(GuardedEventsTest, On_PrivateSignal_CallsAHandlerWithoutArguments) {
    QTimer timer;
    m_events.On(&timer, &QTimer::timeout, "waiting", [this] { m_seen.emplace_back("tick"); });
    timer.setSingleShot(true);
    timer.start(0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_seen.empty(); }, 1000));
}

TEST_F(GuardedEventsTest, On_HandlerThrows_TheSinkGetsItWithTheAction) {
    m_events.On(&m_edit, &QLineEdit::textChanged, "typing",
                [] { throw RuntimeFailure(FailureKind::kOverflow, "Too large."); });
    m_edit.setText(QStringLiteral("40000"));
    EXPECT_THAT(m_failures, ElementsAre("typing: Too large."));
}

TEST_F(GuardedEventsTest, On_ContextIsGone_CallsNothing) {
    m_events.On(&m_edit, &QLineEdit::textChanged, "typing",
                [this] { m_seen.emplace_back("late"); });
    m_context.reset();
    m_edit.setText(QStringLiteral("Clumsy"));
    EXPECT_THAT(m_seen, IsEmpty());
}

TEST_F(GuardedEventsTest, Run_StepThrows_TheSinkGetsItWithTheAction) {
    m_events.Run("painting", [] { throw RuntimeFailure(FailureKind::kSubscript, "Row 97."); });
    EXPECT_THAT(m_failures, ElementsAre("painting: Row 97."));
}

}  // namespace
}  // namespace spellwick
