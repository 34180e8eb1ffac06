#include "link/cast_payment.h"

#include <algorithm>

#include "link/assist_dispatcher.h"
#include "model/book_order.h"

namespace spellwick {

using namespace std::chrono_literals;

namespace {

// A report that comes later belongs to another cast.
constexpr auto kClickCounts = 10s;
// Between the reports of a cast and of what it has used up.
constexpr auto kStockFollows = 1s;

constexpr i32 kSpellsInCircle = 8;
constexpr i32 kMagerySpells = 64;

// Whether the spell of this row stands at this place of its circle or book.
bool StandsAt(i32 row, i32 place) {
    if (row < kMagerySpells) {
        return place == row % kSpellsInCircle + 1;
    }
    const auto inBook = [&](std::span<const i32> book) {
        const std::optional<i32> found = PlaceInBook(book, row);
        return found && *found + 1 == place;
    };
    return inBook(kNecromancyBook) || inBook(kChivalryBook);
}

}  // namespace

void CastPayment::Follow(const AssistTool& tool) {
    m_tool = tool;
    m_hasEarnedTrust = false;
    m_stock = {};
}

bool CastPayment::PaysAtClick() const {
    return !m_state.AssistLinked || !IsTrusted() || !m_tool.reportsCasts;
}

void CastPayment::NoteClick(i32 row, bool paid) {
    m_last = {row, m_now()};
    ForgetOldClicks();
    if (paid) {
        m_paid.push_back(*m_last);
    }
}

std::optional<i32> CastPayment::RowOfReport(i32 number) const {
    if (m_tool.castsWithinCircle) {
        const bool fits = m_last && IsYoung(*m_last) && StandsAt(m_last->row, number);
        return fits ? std::optional(m_last->row) : std::nullopt;
    }
    if (number >= 1 && number <= kMagerySpells) {
        return number - 1;
    }
    return MapSpellNumber(number);
}

bool CastPayment::TakeReport(i32 row) {
    if (!m_tool.reportsCasts) {
        return false;
    }
    m_hasEarnedTrust = true;
    ForgetOldClicks();
    const auto paid = std::ranges::find(m_paid, row, &Click::row);
    if (paid == m_paid.end()) {
        return true;
    }
    m_paid.erase(paid);
    return false;
}

void CastPayment::NoteStock(i32 reagent) {
    m_hasEarnedTrust = true;
    if (reagent < 1 || reagent > kReagentCount) {
        return;
    }
    m_stock.at(static_cast<std::size_t>(reagent)) = m_now();
    std::erase_if(m_held, [&](const Click& held) { return Needs(held.row, reagent); });
}

bool CastPayment::HoldDebit(i32 row) {
    if (m_tool.isTrustedAtOnce || !m_tool.reportsStock) {
        return false;
    }
    bool needsAny = false;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (!Needs(row, reagent)) {
            continue;
        }
        needsAny = true;
        const auto& told = m_stock.at(static_cast<std::size_t>(reagent));
        if (told && m_now() - *told <= kStockFollows) {
            return true;
        }
    }
    if (needsAny) {
        m_held.push_back({row, m_now()});
    }
    return needsAny;
}

std::vector<i32> CastPayment::TakeDueDebits(bool all) {
    std::vector<i32> due;
    std::erase_if(m_held, [&](const Click& held) {
        if (!all && m_now() - held.at <= kStockFollows) {
            return false;
        }
        due.push_back(held.row);
        return true;
    });
    return due;
}

void CastPayment::ForgetOldClicks() {
    std::erase_if(m_paid, [this](const Click& click) { return !IsYoung(click); });
}

bool CastPayment::IsYoung(const Click& click) const {
    return m_now() - click.at < kClickCounts;
}

bool CastPayment::Needs(i32 row, i32 reagent) const {
    return m_state.Spells(row).Reagents(reagent) != 0;
}

}  // namespace spellwick
