// The screen, and what has changed on it since the forms were told last.
#pragma once

#include <utility>

#include "companion/forms.h"
#include "companion/screen.h"

namespace spellwick {

class Display {
  public:
    // Before the first change; outlives the display.
    void SetForms(Forms& forms) { m_forms = &forms; }
    Forms& TheForms() { return *m_forms; }

    Screen screen;
    Changes changes;

    void WriteCounter(i32 reagent, const std::string& text) {
        screen.counters(reagent).text = text;
        changes.counters(reagent) = true;
    }

    // Tells the forms of the changes so far.
    void Tell() {
        if (changes != Changes{}) {
            m_forms->Show(std::exchange(changes, {}));
        }
    }

    // Runs an action and tells the forms what it has changed, also when it fails.
    template <typename Action>
    void Act(Action&& action) {
        try {
            action();
        } catch (...) {
            Tell();
            throw;
        }
        Tell();
    }

  private:
    Forms* m_forms = nullptr;
};

}  // namespace spellwick
