// The dispatcher of reports with a view that writes down what it is told.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "tests/support/failures.h"
#include "tests/support/recording_assist_view.h"

namespace spellwick {

class SinkThatCounts : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& /*failure*/, std::string_view action) override {
        actions.emplace_back(action);
    }
    std::vector<std::string> actions;
};

class AssistDispatch : public testing::Test {
  protected:
    AssistDispatch() { m_state.AssistLinked = true; }

    std::vector<std::string> Report(std::uint32_t number, i32 wParam, i32 lParam) {
        EXPECT_EQ(m_dispatcher.Dispatch({number, wParam, lParam}), std::optional<i32>(0));
        return m_view.TakeLog();
    }

    std::optional<FailureKind> FailureOfReport(std::uint32_t number, i32 wParam, i32 lParam) {
        return FailureOf([&] { m_dispatcher.Dispatch({number, wParam, lParam}); });
    }

    SharedState m_state;
    RecordingAssistView m_view;
    SinkThatCounts m_sink;
    AssistDispatcher m_dispatcher{m_state, m_view, m_view, m_sink};
};

}  // namespace spellwick
