// What each report of the assist tool does: from (message, wParam, lParam) to changes of the state
// and calls on the view.
#pragma once

#include "link/assist_link.h"
#include "link/assist_view.h"
#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/assist_transport.h"

namespace spellwick {

// The program's spell number for the tool's numbers 101 to 117 and 201 to 210; nothing for any
// other.
std::optional<i32> MapSpellNumber(i32 number);

// The reagent, 1 to 13, that a stock report's wParam tells of; nothing for any other.
std::optional<i32> ReagentOfReport(i32 counted);

class AssistDispatcher : public MessageReceiver {
  public:
    // All outlive it.
    AssistDispatcher(SharedState& state, AssistView& view, AssistLink& link, FailureSink& failures)
        : m_state(state), m_view(view), m_link(link), m_failures(failures) {}

    // 0 for the tool's six messages, nothing for any other. A failure goes to the sink; before the
    // spell table is read it is ignored, as failures of the start are.
    std::optional<i32> OnMessage(const WindowMessage& message) override;

    // The same with failures left to the caller: RuntimeFailure (overflow, subscript) for a value
    // that does not fit.
    std::optional<i32> Dispatch(const WindowMessage& message);

    // The mana of the last report; 0 before the first.
    i16 LastMana() const { return m_lastMana; }

  private:
    void Stock(i32 counted, i32 count);
    bool StoreStock(i32 reagent, i32 count);
    void Cast(i32 number);
    void Magery(i32 points);
    void Stats(i32 intelligence, i32 mana);
    void Skill(i32 skill, i32 tenths);
    void FindUnlessLinked();

    SharedState& m_state;
    AssistView& m_view;
    AssistLink& m_link;
    FailureSink& m_failures;
    i16 m_lastMana = 0;
};

}  // namespace spellwick
