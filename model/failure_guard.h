// The one guard through which every slot, timer tick and event override enters the program, so that
// no exception ever crosses the toolkit.
#pragma once

#include <exception>
#include <string_view>

#include "text/runtime_failure.h"

namespace spellwick {

// Takes uncaught failures. The program's sink ends the run; a test's records them.
class FailureSink {
  public:
    virtual ~FailureSink() = default;

    // `action` says in words what the user or the program was doing.
    virtual void OnUncaughtFailure(const std::exception& failure, std::string_view action) = 0;
};

template <typename Step>
void Guard(FailureSink& sink, std::string_view action, Step&& step) {
    try {
        step();
    } catch (const std::exception& failure) {
        sink.OnUncaughtFailure(failure, action);
    }
}

// Runs one step of an event that ignores failures: the next step follows in any case.
template <typename Step>
void IgnoreFailure(Step&& step) {
    try {
        step();
    } catch (const RuntimeFailure&) {
        return;
    }
}

}  // namespace spellwick
