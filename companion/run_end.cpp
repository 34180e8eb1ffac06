#include "companion/run_end.h"

#include <cstdio>
#include <cstdlib>

namespace spellwick {

namespace {

constexpr int kAfterFailure = 1;

}  // namespace

std::string FailureReport(const std::exception& failure, std::string_view action) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    const std::string kind = known != nullptr ? FailureName(known->Kind()) : "Internal error";
    return "Spellwick has to end.\n\nWhat failed: " + kind + ". " + failure.what() +
           "\nWhile: " + std::string(action) +
           "\n\nThe counters, the character's data and the settings are saved as it ends.";
}

void RunEnd::OnUncaughtFailure(const std::exception& failure, std::string_view action) {
    if (m_ending) {
        return;
    }
    m_ending = true;
    const std::string report = FailureReport(failure, action);
    std::fprintf(stderr, "spellwick: %s\n", report.c_str());
    m_boxes.Show(
        {.text = report, .icon = BoxIcon::kCritical, .details = report + "\n\n" + Details()});
    if (!m_save()) {
        m_boxes.Show({.text = "Some data could not be saved. Earlier saves are intact.",
                      .icon = BoxIcon::kExclamation});
    }
    EndProcess(kAfterFailure);
}

std::string RunEnd::Details() const {
    try {
        return m_details();
    } catch (const std::exception&) {
        return {};  // the report is what matters
    }
}

void RunEnd::EndProcess(int exitCode) {
    m_cleanUp();
    std::fflush(nullptr);
    // End the process now, so that no window gets another event. A regular end requested while the
    // report is open does not change the exit code.
    std::_Exit(m_ending ? kAfterFailure : exitCode);
}

}  // namespace spellwick
