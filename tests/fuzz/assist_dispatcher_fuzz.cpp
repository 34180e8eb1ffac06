// Reports of the assist tool in any number and order: each is handled, left to the default
// handling, or fails in a defined way; none writes a cell that is not its own.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "model/cast_rules.h"
#include "tests/support/recording_assist_view.h"
#include "text/runtime_failure.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class NoSink : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& /*failure*/,
                           std::string_view /*action*/) override {
        std::abort();
    }
};

struct Cells {
    explicit Cells(const SharedState& state)
        : intelligence(state.Intelligence),
          mana(state.CurrentMana),
          magery(state.Magery),
          skills{state.EvalInt, state.SpiritSpeak, state.Necro, state.Chivalry},
          tithing(state.CurrentTithing) {
        for (i32 bag = 0; bag < kBagCount; ++bag) {
            for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
                stock[static_cast<std::size_t>(bag * kReagentCount + reagent - 1)] =
                    state.ReagentStock(reagent, bag);
            }
        }
    }

    i16 intelligence;
    i16 mana;
    i16 magery;
    std::array<i16, 4> skills;
    std::array<i16, std::size_t{kBagCount} * kReagentCount> stock{};
    i32 tithing;
};

template <std::size_t Size>
int Differences(const std::array<i16, Size>& a, const std::array<i16, Size>& b) {
    int differences = 0;
    for (std::size_t at = 0; at < Size; ++at) {
        differences += a[at] == b[at] ? 0 : 1;
    }
    return differences;
}

void RequireOwnCellsOnly(std::uint32_t number, const Cells& before, const Cells& after) {
    const int stock = Differences(before.stock, after.stock);
    const int skills = Differences(before.skills, after.skills);
    Require(stock <= (number == kAssistStock ? 1 : 0));
    Require(skills <= (number == kAssistSkill ? 1 : 0));
    Require(number == kAssistStock || before.tithing == after.tithing);
    Require(number == kAssistMagery || before.magery == after.magery);
    Require(number == kAssistStats ||
            (before.mana == after.mana && before.intelligence == after.intelligence));
}

class Tool {
  public:
    void Send(const WindowMessage& message) {
        const Cells before(m_state);
        const bool ours = message.number >= kAssistStock && message.number <= kAssistSkill;
        bool failed = false;
        try {
            Require(m_dispatcher.Dispatch(message).has_value() == ours);
        } catch (const RuntimeFailure& failure) {
            failed = true;
            Require(failure.Kind() == FailureKind::kOverflow ||
                    failure.Kind() == FailureKind::kSubscript);
        }
        RequireOwnCellsOnly(message.number, before, Cells(m_state));
        const std::vector<std::string> log = m_view.TakeLog();
        if (!ours) {
            Require(log.empty() && !failed);
        } else if (!failed && message.number == kAssistStock) {
            Require(log.size() >= 2 && log.back() == "enable" &&
                    log[log.size() - 2] == "caption Count");
        } else if (!failed && message.number == kAssistStats) {
            Require(m_dispatcher.LastMana() == m_state.CurrentMana);
        }
    }

    SharedState& State() { return m_state; }

  private:
    SharedState m_state;
    RecordingAssistView m_view;
    NoSink m_sink;
    AssistDispatcher m_dispatcher{m_state, m_view, m_view, m_sink};
};

// Eleven bytes per report: the message, two numbers, the state of the link and the bag, and the
// meditation limit.
constexpr std::size_t kReportBytes = 11;

i32 NumberAt(const std::uint8_t* bytes) {
    i32 number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Tool tool;
    for (; size >= kReportBytes; data += kReportBytes, size -= kReportBytes) {
        tool.State().AssistLinked = (data[9] & 1U) != 0;
        tool.State().Meditate = (data[9] & 2U) != 0;
        tool.State().MeditateLevel = static_cast<i16>(data[10]);
        // Bags 0 to 9, and one beyond either end.
        const int bag = (data[9] >> 3U) % (kBagCount + 2);
        tool.State().CurrentReagentBag = static_cast<i16>(bag > kBagCount ? -1 : bag);
        // Make small numbers as frequent as large ones.
        const bool isSmall = (data[9] & 4U) != 0;
        const i32 wParam = isSmall ? NumberAt(data + 1) % 300 : NumberAt(data + 1);
        const i32 lParam = isSmall ? NumberAt(data + 5) % 40000 : NumberAt(data + 5);
        tool.Send({kAssistStock - 1 + data[0] % 8U, wParam, lParam});
    }
    return 0;
}
