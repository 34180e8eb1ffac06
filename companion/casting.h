// Casting a spell: the tests in their order, the keys, the debit; undo, credit and meditation.
#pragma once

#include <vector>

#include "companion/display.h"
#include "companion/last_cast.h"
#include "companion/page.h"
#include "companion/player.h"
#include "companion/purse.h"
#include "companion/running_timers.h"
#include "companion/services.h"
#include "companion/tithes.h"
#include "link/keystroke_string.h"

namespace spellwick {

class Casting {
  public:
    // What the pipeline works on; all outlive it.
    struct Parts {
        Display& display;
        Page& page;
        Purse& purse;
        Tithes& tithes;
        Player& player;
        RunningTimers& timers;
    };

    Casting(const CompanionServices& services, const Parts& parts)
        : m_services(services), m_state(services.state), m_parts(parts) {}

    // Keeps the button and the modifiers of a press for the click that follows.
    void KeepPress(i16 button, i16 shift);

    // Casts the spell of a slot, 0 to 7.
    void CastSpell(i32 slot);

    // Takes the cost of one cast off the counters; row 0 to 96.
    void DebitSpell(i32 row);

    // Gives the cost of one cast back.
    void CreditSpell(i32 row);

    // Gives the amounts of the last debit back.
    void Undo();

    // Presses the macro of the Meditation skill.
    void Meditate();

    // Moves the focus to the first page button, so that an unfinished entry is committed.
    void CommitEntries();

    const LastCast& Last() const { return m_last; }

  private:
    // What the boxes of one cast have left to say, until it is over.
    using Ways = std::vector<WayHint>;

    void Cast(i32 slot, Ways& ways);
    bool WarnOfNoChance(i32 row, Ways& ways);
    bool AskForBook(i32 row);
    bool RefuseForStock(i32 slot, i32 row, Ways& ways);
    BoxAnswer ShowBox(const Box& box);
    void BringClientForward();
    EnterRules RulesOfEnter() const;
    // False if not a key went out, because the game, or with the option off anything but our own
    // windows, was not in front.
    bool SendKeys();
    void LogTyping(const SendResult& sent, bool spoken) const;
    bool ClientIsInFront();
    SlotScreen& Slot(i32 slot) {
        return m_parts.display.screen.spellSlots[static_cast<std::size_t>(slot)];
    }

    const CompanionServices& m_services;
    SharedState& m_state;
    Parts m_parts;
    LastCast m_last;
};

}  // namespace spellwick
