// Who pays for a cast: the click, or the report of the assist tool.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "link/assist_tool.h"
#include "model/shared_state.h"

namespace spellwick {

class CastPayment {
  public:
    using Time = std::chrono::steady_clock::time_point;

    // `state` outlives it; `now` tells the time.
    explicit CastPayment(
        const SharedState& state,
        std::function<Time()> now = [] { return std::chrono::steady_clock::now(); })
        : m_state(state), m_now(std::move(now)) {}

    // From now on the reports come from this tool; the trust that the one before has earned is
    // forgotten.
    void Follow(const AssistTool& tool);

    // Whether a cast is paid when it is clicked, as without a tool.
    bool PaysAtClick() const;

    // A cast of this row, 0 to 96, has been typed, and has been paid or not.
    void NoteClick(i32 row, bool paid);

    // The row of a reported cast: that of the number, or, from a tool that tells the place within
    // the circle or book, that of the last click if it is less than ten seconds old and stands at
    // that place. Nothing if there is none.
    std::optional<i32> RowOfReport(i32 number) const;

    // A cast of this row has been reported. False if its click has paid for it.
    [[nodiscard]] bool TakeReport(i32 row);

    // Stock of a reagent, 1 to 13, or of something else, 0, has been reported.
    void NoteStock(i32 reagent);

    // Whether the debit of a reported cast waits, since the tool's next reports of stock may hold
    // it already, or does not come at all, since they have held it. False if it is to be taken now.
    [[nodiscard]] bool HoldDebit(i32 row);

    // The rows whose debits have waited long enough; with `all`, those too that have not. They wait
    // no more.
    std::vector<i32> TakeDueDebits(bool all = false);

  private:
    struct Click {
        i32 row = 0;
        Time at;
    };

    void ForgetOldClicks();
    bool IsYoung(const Click& click) const;
    bool Needs(i32 row, i32 reagent) const;
    bool IsTrusted() const { return m_tool.isTrustedAtOnce || m_hasEarnedTrust; }

    const SharedState& m_state;
    std::function<Time()> m_now;
    AssistTool m_tool{.name = {}, .isTrustedAtOnce = true};
    bool m_hasEarnedTrust = false;  // by a report of a cast or of stock
    std::optional<Click> m_last;
    std::vector<Click> m_paid;  // clicks that have paid and whose reports have not come
    std::vector<Click> m_held;  // reports whose debits wait
    std::array<std::optional<Time>, static_cast<std::size_t>(kReagentCount) + 1> m_stock{};
};

}  // namespace spellwick
