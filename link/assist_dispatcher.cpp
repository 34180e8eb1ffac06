#include "link/assist_dispatcher.h"

#include <algorithm>
#include <array>

#include "link/assist_messages.h"
#include "model/book_order.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr i32 kLastOneBasedNumber = 100;
constexpr i32 kFirstNecromancy = 101;
constexpr i32 kFirstChivalry = 201;
constexpr i32 kFirstIgnoredNumber = 250;
constexpr i32 kTenthsPerPoint = 10;

struct NumberPair {
    i32 tool;
    i32 ours;
};

constexpr std::array<NumberPair, 13> kReagents{{
    {1, 3},
    {2, 6},
    {3, 5},
    {4, 8},
    {5, 1},
    {6, 7},
    {7, 2},
    {8, 4},
    {100, 9},
    {101, 11},
    {102, 10},
    {103, 12},
    {104, 13},
}};

struct SkillCell {
    i32 skill;
    i16 SharedState::*cell;
};

constexpr std::array<SkillCell, 4> kSkills{{
    {0x10, &SharedState::EvalInt},
    {0x20, &SharedState::SpiritSpeak},
    {0x31, &SharedState::Necro},
    {0x33, &SharedState::Chivalry},
}};

}  // namespace

std::optional<i32> MapSpellNumber(i32 number) {
    if (number < kFirstNecromancy) {
        return std::nullopt;
    }
    return number < kFirstChivalry ? RowInBook(kNecromancyBook, number - kFirstNecromancy)
                                   : RowInBook(kChivalryBook, number - kFirstChivalry);
}

std::optional<i32> ReagentOfReport(i32 counted) {
    const auto* const found = std::ranges::find(kReagents, counted, &NumberPair::tool);
    return found == kReagents.end() ? std::nullopt : std::optional(found->ours);
}

std::optional<i32> AssistDispatcher::OnMessage(const WindowMessage& message) {
    bool ours = true;
    const auto take = [&] {
        try {
            ours = Dispatch(message).has_value();
        } catch (...) {
            m_view.EndReport();
            throw;
        }
        m_view.EndReport();
    };
    if (m_state.Spells.Last() < 0) {
        // A start-up message is open; the spells are not loaded yet.
        IgnoreFailure(take);
    } else {
        Guard(m_failures, "handling a report of the assist tool", take);
    }
    return ours ? std::optional<i32>(0) : std::nullopt;
}

std::optional<i32> AssistDispatcher::Dispatch(const WindowMessage& message) {
    switch (message.number) {
        case kAssistStock:
            Stock(message.wParam, message.lParam);
            return 0;
        case kAssistCast:
            Cast(message.wParam);
            return 0;
        case kAssistThere:
            FindUnlessLinked();
            return 0;
        case kAssistMagery:
            Magery(message.wParam);
            return 0;
        case kAssistStats:
            Stats(message.wParam, message.lParam);
            return 0;
        case kAssistSkill:
            Skill(message.wParam, message.lParam);
            return 0;
        default:
            return std::nullopt;
    }
}

void AssistDispatcher::Stock(i32 counted, i32 count) {
    bool changed = false;
    if (const auto reagent = ReagentOfReport(counted)) {
        changed = StoreStock(*reagent, count);
    } else if (counted == kTithingReport) {
        // ODDITY(tithes-report): the casts of Paladin abilities stay as they were when the tool
        // reports other tithing points; kept because the next refresh shows them, and such reports
        // come with each count.
        m_state.CurrentTithing = count;
        m_view.ShowTithes(count);
    }
    if (changed) {
        m_view.ShowAmounts();
        m_view.YieldEvents();
    }
    FindUnlessLinked();
    m_view.CaptionCount("Count");
    m_view.EnableCount(true);
}

// ODDITY(report-bag): a report of stock fills the bag that is selected, whichever the tool looked
// into; kept because a report does not say where it counted.
bool AssistDispatcher::StoreStock(i32 reagent, i32 count) {
    i16& cell = m_state.ReagentStock(reagent, m_state.CurrentReagentBag);
    if (i32{cell} == count) {
        return false;
    }
    cell = ToI16(count);
    m_view.ShowCounter(reagent, count);
    return true;
}

void AssistDispatcher::Cast(i32 number) {
    if (number < kFirstIgnoredNumber) {
        i32 spell = number;
        if (number > kLastOneBasedNumber) {
            const auto mapped = MapSpellNumber(number);
            if (!mapped) {
                // ODDITY(unknown-spell-number): a box names the number, and then the run ends with
                // an error report; kept because there is no spell whose cost could be taken.
                m_view.ShowBox("Unsupported Necromancer or Paladin spell number " +
                               PlainText(number) + " has been cast.");
            }
            spell = mapped.value_or(0);
        }
        // ODDITY(reported-spell-before): a Necromancer spell or Paladin ability that the tool
        // reports takes the cost of the spell before it in the table; kept because the numbers of
        // both kinds lose one here, and users have set their costs by what is taken.
        const i16 row = ToI16(static_cast<double>(spell) - 1.0);
        // ODDITY(debit-twice): a cast clicked while the tool was not linked is paid at the click
        // and again at the report; kept because a report never says which click it belongs to.
        m_view.DebitSpell(row);
        // While the tool is not linked the click has started the countdown.
        if (m_state.AssistLinked) {
            m_view.StartTimer(number > kLastOneBasedNumber ? spell : i32{row});
        }
    }
    FindUnlessLinked();
}

void AssistDispatcher::Magery(i32 points) {
    m_state.Magery = ToI16(points);
    m_view.ShowReportedMagery(points);
    m_view.ShowChances();
}

void AssistDispatcher::Stats(i32 intelligence, i32 mana) {
    m_state.Intelligence = ToI16(intelligence);
    m_state.CurrentMana = ToI16(mana);
    const bool low = m_state.CurrentMana < m_state.MeditateLevel;
    const bool falling = m_state.CurrentMana < m_lastMana;
    if (m_state.Meditate && low && falling) {
        m_view.ArmMeditation();
    }
    m_view.ShowReportedIntelligence(intelligence);
    m_view.ShowCurrentMana();
    m_view.ShowChances();
    m_lastMana = m_state.CurrentMana;
}

void AssistDispatcher::Skill(i32 skill, i32 tenths) {
    const auto* const found = std::ranges::find(kSkills, skill, &SkillCell::skill);
    if (found != kSkills.end()) {
        // ODDITY(skill-report): the chances stay as they were when the tool reports a skill other
        // than Magery; kept because a list of skills comes at once and the next refresh shows them.
        m_state.*found->cell = ToI16(TruncatingDivide(tenths, kTenthsPerPoint));
    }
}

void AssistDispatcher::FindUnlessLinked() {
    if (!m_state.AssistLinked) {
        m_link.FindAssist();
    }
}

}  // namespace spellwick
