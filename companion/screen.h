// What the controls of the main window show, as plain data. The rules read it where a figure that
// stands on the screen decides, and the window draws it.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/colours.h"
#include "model/fixed_table.h"
#include "model/reagents.h"
#include "model/spell_record.h"
#include "text/number_types.h"

namespace spellwick {

inline constexpr const char* kMeditateTag = "Meditate";

// One of the eight places of the page.
struct SlotScreen {
    i32 row = 0;         // row of the spell table, 0 to 96
    bool inBook = true;  // the icon is in colour, else grey
    std::string amount;  // LabelAmount: casts that the stock allows
    Colour amountGround = kButtonFace;
    std::string chance;  // LabelChance: percent
    Colour chanceGround = kButtonFace;
};

struct CounterScreen {
    std::string text;  // as typed, also while the edit is unfinished
    Colour ground = kWindowBackground;
};

struct Screen {
    std::string caption;

    i32 pressedPage = -1;  // CheckCircle 0 to 13 that is pressed; -1 before the start
    std::array<SlotScreen, kSlotCount> spellSlots{};

    i32 hoveredRow = -1;  // the spell that the counters are coloured for; -1 for none

    // Of the spell under the mouse.
    std::string name;
    std::string words;
    std::string mana;
    std::string cost;
    std::string currentMana;  // in brackets

    FixedTable<CounterScreen, 1, kReagentCount> counters;
    i32 focusedReagent = 0;  // counter with the focus, 1 to 13; 0 for none

    std::vector<std::string> bags;  // entries of the list; a new name is not among them at once
    i32 selectedBag = -1;

    std::string tithes;      // the label
    std::string tithesEdit;  // the edit over it
    bool tithesEditing = false;
    Colour tithesGround = kButtonFace;

    std::string countCaption = "Count";
    bool countEnabled = true;
    std::string countReason;    // why it is never enabled; empty otherwise
    std::string linkText;       // of the mark of the link
    bool linkPays = false;      // casts are paid by the tool's reports
    std::string meditationTag;  // Tag of Timer1(2), which runs while it is kMeditateTag

    // Points as the assist tool last reported them, for the character's line of the skills tab.
    i32 reportedMagery = 0;
    i32 reportedIntelligence = 0;
    i32 skillGroup = 0;  // group that the skills tab shows, 0 to 4
};

// What an action has changed on the screen. The forms go through it in the order of its members.
struct Changes {
    bool caption = false;
    bool layout = false;      // the arrangement, by DisplayVertical and ShowNecroRegs
    bool page = false;        // the page buttons
    bool icons = false;       // icons, names and the grounds of the chances
    bool spellLines = false;  // name, words, mana and cost
    bool currentMana = false;
    FixedTable<bool, 1, kReagentCount> counters;  // texts
    bool counterGrounds = false;
    bool bags = false;
    bool tithes = false;  // label and edit
    bool tithesGround = false;
    bool tithesEditing = false;  // the edit opens anew or closes
    bool countButton = false;
    bool link = false;
    bool meditation = false;
    bool reportedMagery = false;
    bool reportedIntelligence = false;
    bool chances = false;
    bool amounts = false;
    bool timers = false;  // the window of the running timers

    bool operator==(const Changes&) const = default;
};

}  // namespace spellwick
