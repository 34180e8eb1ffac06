// Everything that the main window asks from outside itself.
#pragma once

#include "companion/companion.h"
#include "model/failure_guard.h"
#include "platform/desktop.h"

namespace spellwick {

// All references outlive the main window.
struct MainWindowServices {
    Companion& companion;
    Desktop& desktop;
    FailureSink& failures;
};

}  // namespace spellwick
