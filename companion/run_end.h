// The end of the run: the regular one, and the one after an uncaught failure with its report box
// and its saving.
#pragma once

#include <functional>

#include "model/failure_guard.h"
#include "platform/message_boxes.h"

namespace spellwick {

class RunEnd : public FailureSink {
  public:
    explicit RunEnd(MessageBoxes& boxes) : m_boxes(boxes) {}

    // Saves as a regular end does, each step on its own; true when all is saved.
    void SetSaving(std::function<bool()> save) { m_save = std::move(save); }

    // What else helps to find the cause, for the report's button "Copy details".
    void SetDetails(std::function<std::string()> details) { m_details = std::move(details); }

    // Runs last, when nothing of the program is needed any more.
    void SetCleanUp(std::function<void()> cleanUp) { m_cleanUp = std::move(cleanUp); }

    // Shows the report, saves, and ends with exit code 1. A failure that comes while this goes on
    // is part of the same end and adds nothing.
    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override;

    // Ends the process at once.
    void EndProcess(int exitCode);

  private:
    std::string Details() const;

    MessageBoxes& m_boxes;
    std::function<bool()> m_save = [] { return true; };
    std::function<void()> m_cleanUp = [] {};
    std::function<std::string()> m_details = [] { return std::string(); };
    bool m_ending = false;
};

// Text of the report: what failed, in which action, and what becomes of the data.
std::string FailureReport(const std::exception& failure, std::string_view action);

}  // namespace spellwick
