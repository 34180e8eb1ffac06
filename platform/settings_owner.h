// The right of one program to one settings' folder: two programs on one store would undo each
// other's counters.
#pragma once

#include <memory>

#include "text/number_types.h"

namespace spellwick {

// Holds the right for as long as it lives; the end of the process gives it back too.
class SettingsOwner {
  public:
    virtual ~SettingsOwner() = default;

    // The window that a second start brings to the front.
    virtual void SetWindow(WindowHandle window) = 0;
};

struct Ownership {
    bool another = false;                  // another program has the folder
    std::unique_ptr<SettingsOwner> owner;  // null too where the system cannot say who has it
};

}  // namespace spellwick
