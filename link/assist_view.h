// What the reports of the assist tool show and start in the program's windows.
#pragma once

#include <string>

#include "text/number_types.h"

namespace spellwick {

class AssistView {
  public:
    virtual ~AssistView() = default;

    // Text of a counter, reagent 1 to 13.
    virtual void ShowCounter(i32 reagent, const std::string& text) = 0;
    // Text of the tithing points, in the label and its editor.
    virtual void ShowTithes(const std::string& text) = 0;
    // Shows the mana of the state, in brackets.
    virtual void ShowCurrentMana() = 0;
    virtual void UpdateAmounts() = 0;
    virtual void UpdateChances() = 0;
    // Takes the cost of one cast; RuntimeFailure (subscript) for a row that is not 0 to 96.
    virtual void DebitSpell(i32 row) = 0;
    // Starts the countdown of a spell that lasts; row 0 to 96.
    virtual void StartTimer(i32 row) = 0;

    virtual void EnableCount(bool enabled) = 0;
    // The Count button's caption.
    virtual void CaptionCount(const std::string& caption) = 0;
    // Starts the timer that presses the meditation button.
    virtual void ArmMeditation() = 0;

    // Texts of the character's line in the settings dialog, which is made if it does not exist yet.
    // What such an entry stores it stores here too.
    virtual void ShowMinimumSkill(const std::string& text) = 0;
    virtual void ShowMinimumInt(const std::string& text) = 0;

    // A plain message box; returns when it is answered.
    virtual void ShowBox(const std::string& text) = 0;
    // Lets pending events run once.
    virtual void YieldEvents() = 0;
};

}  // namespace spellwick
