// What the reports of the assist tool show and start in the program's windows.
#pragma once

#include <string>

#include "text/number_types.h"

namespace spellwick {

class AssistView {
  public:
    virtual ~AssistView() = default;

    // Shows a count in the counter of reagent 1 to 13.
    virtual void ShowCounter(i32 reagent, i32 count) = 0;
    // Shows tithing points, in the label and its edit.
    virtual void ShowTithes(i32 points) = 0;
    // Shows the mana of the state, in brackets.
    virtual void ShowCurrentMana() = 0;
    // Works out the figures of the page anew and shows them.
    virtual void ShowAmounts() = 0;
    virtual void ShowChances() = 0;
    // Takes the cost of one cast; RuntimeFailure (subscript) for a row that is not 0 to 96.
    virtual void DebitSpell(i32 row) = 0;
    // Starts the countdown of a spell that lasts; row 0 to 96.
    virtual void StartTimer(i32 row) = 0;

    virtual void EnableCount(bool enabled) = 0;
    // The Count button's caption.
    virtual void CaptionCount(const std::string& caption) = 0;
    // Starts the timer that presses the meditation button.
    virtual void ArmMeditation() = 0;

    // Puts points into the character's line of the skills tab. What such an entry stores it stores
    // here too.
    virtual void ShowReportedMagery(i32 points) = 0;
    virtual void ShowReportedIntelligence(i32 points) = 0;

    // A plain message box; returns when it is answered.
    virtual void ShowBox(const std::string& text) = 0;
    // Lets pending events run once.
    virtual void YieldEvents() = 0;
    // A report has been taken, or has failed.
    virtual void EndReport() = 0;
};

}  // namespace spellwick
