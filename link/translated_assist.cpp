#include "link/translated_assist.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "text/log.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr i32 kTenths = 10;

bool FitsI16(i32 value) {
    return value >= std::numeric_limits<i16>::min() && value <= std::numeric_limits<i16>::max();
}

// What the dispatcher could not store; of another tool it is no reason to end.
bool Fits(const WindowMessage& message) {
    switch (message.number) {
        case kAssistStock:
            return message.wParam == kTithingReport || FitsI16(message.lParam);
        case kAssistMagery:
            return FitsI16(message.wParam);
        case kAssistStats:
            return FitsI16(message.wParam) && FitsI16(message.lParam);
        case kAssistSkill:
            return FitsI16(message.lParam / kTenths);
        default:
            return true;
    }
}

// "Razor v1.9" of "Mira (Atlantic) - Razor v1.9".
std::string ToolName(const AssistToolRow* row, const std::string& title) {
    if (row == nullptr) {
        return title;
    }
    const std::size_t at = title.rfind(row->tool.name);
    return at == std::string::npos ? row->tool.name : title.substr(at);
}

AssistTool KindOf(const AssistToolRow* row) {
    return row != nullptr ? row->tool : AssistTool{.name = {}, .isTrustedAtOnce = true};
}

}  // namespace

TranslatedAssist::TranslatedAssist(AssistTransport& real, SharedState& state, CastPayment& payment,
                                   std::vector<AssistToolRow> tools, WallClock now)
    : m_real(real),
      m_state(state),
      m_payment(payment),
      m_tools(std::move(tools)),
      m_now(std::move(now)) {}

void TranslatedAssist::SetTools(std::vector<AssistToolRow> tools) {
    UseNone();
    m_tools = std::move(tools);
}

void TranslatedAssist::EnumWindows(const WindowVisitor& visit) {
    bool isThere = false;
    const std::vector<Found> found = FindTools(isThere);
    const Found* chosen = Choose(found);
    if (chosen == nullptr) {
        UseNone();
        return;
    }
    const bool isPlain = chosen->row == nullptr;
    const bool changes = m_window != 0 && m_window != chosen->window;
    if (changes && (m_row != nullptr || !isPlain)) {
        // A search that finds nothing ends the registration, and the next one begins it anew.
        if (isThere && m_state.AssistRegistered) {
            const i32 zero = 0;
            static_cast<void>(
                m_real.SendToWindow(m_window, kAssistRegister, m_state.MainWindowHandle, zero));
        }
        UseNone();
        return;
    }
    Use(*chosen);
    for (const Found& tool : found) {
        if (isPlain ? tool.row == nullptr : &tool == chosen) {
            visit(tool.window, isPlain ? std::string_view(tool.title) : kAssistTitleStart);
        }
    }
}

// The windows of tools, in the system's order; whether that of the tool in use is among all
// windows.
std::vector<TranslatedAssist::Found> TranslatedAssist::FindTools(bool& lastOneStillThere) {
    std::vector<Found> found;
    m_real.EnumWindows([&](WindowHandle window, std::string_view title) {
        lastOneStillThere = lastOneStillThere || window == m_window;
        if (title.starts_with(kAssistTitleStart)) {
            found.push_back({window, std::string(title), nullptr});
        } else if (const AssistToolRow* row = FindAssistTool(m_tools, title)) {
            found.push_back({window, std::string(title), row});
        }
    });
    return found;
}

const TranslatedAssist::Found* TranslatedAssist::Choose(const std::vector<Found>& found) const {
    const Found* chosen = nullptr;
    for (const Found& tool : found) {
        if (tool.row == nullptr) {
            chosen = &tool;  // the last of these, as the search takes it
        } else if (chosen == nullptr || chosen->row != nullptr) {
            const bool isInUse = tool.window == m_window && tool.row == m_row;
            const bool chosenIsInUse =
                chosen != nullptr && chosen->window == m_window && chosen->row == m_row;
            if (chosen == nullptr || isInUse || (!chosenIsInUse && tool.row < chosen->row)) {
                chosen = &tool;
            }
        }
    }
    return chosen;
}

void TranslatedAssist::Use(const Found& found) {
    if (found.window == m_window && found.row == m_row) {
        return;
    }
    m_window = found.window;
    m_row = found.row;
    m_status = {.tool = ToolName(found.row, found.title),
                .kind = KindOf(found.row),
                .since = m_now(),
                .cast = {},
                .stock = {},
                .mana = {},
                .skill = {}};
    m_payment.Follow(m_status.kind);
}

void TranslatedAssist::UseNone() {
    m_window = 0;
    m_row = nullptr;
    m_status = {};
    m_payment.Follow(KindOf(nullptr));
}

i32 TranslatedAssist::SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                                   const i32& word) {
    return m_real.SendToWindow(window, number, wParam, word);
}

void TranslatedAssist::Attach(WindowHandle own, MessageReceiver& receiver) {
    m_receiver = &receiver;
    m_real.Attach(own, *this);
}

std::optional<i32> TranslatedAssist::OnMessage(const WindowMessage& message) {
    LogDetail(LogTopic::kLinked, [&] {
        return "report " + std::to_string(message.number) + " " + PlainText(message.wParam) + " " +
               PlainText(message.lParam);
    });
    std::optional<WindowMessage> ours = message;
    if (m_row != nullptr) {
        ours = Translate(message);
    }
    if (!ours) {
        return 0;
    }
    NoteReport(*ours);
    return m_receiver->OnMessage(*ours);
}

std::optional<WindowMessage> TranslatedAssist::Translate(const WindowMessage& message) {
    if (!Fits(message)) {
        LogLine("a report of " + m_status.tool + " was not taken: no such value fits",
                LogTopic::kDropped);
        return std::nullopt;
    }
    switch (message.number) {
        case kAssistStock:
            m_payment.NoteStock(ReagentOfReport(message.wParam).value_or(0));
            return message;
        case kAssistCast:
            return TranslateCast(message);
        case kAssistStats:
            return TranslateStats(message);
        default:
            return message;
    }
}

std::optional<WindowMessage> TranslatedAssist::TranslateCast(const WindowMessage& message) {
    const std::optional<i32> row = m_payment.RowOfReport(message.wParam);
    if (!row) {
        LogLine("a reported cast was not counted: no click of the last ten seconds fits number " +
                    PlainText(message.wParam),
                LogTopic::kDropped);
        return std::nullopt;
    }
    if (!m_payment.TakeReport(*row)) {
        m_status.cast = m_now();
        return std::nullopt;
    }
    // Up to 100 the dispatcher's numbers are those of the rows, from 1.
    return WindowMessage{kAssistCast, *row + 1, 0};
}

std::optional<WindowMessage> TranslatedAssist::TranslateStats(const WindowMessage& message) const {
    switch (m_status.kind.stats) {
        case StatsWords::kIntelligenceAndMana:
            return message;
        case StatsWords::kManaAlone:
            return WindowMessage{kAssistStats, m_state.Intelligence, message.lParam};
        case StatsWords::kNone:
            return std::nullopt;
    }
    return std::nullopt;
}

void TranslatedAssist::NoteReport(const WindowMessage& message) {
    switch (message.number) {
        case kAssistStock:
            m_status.stock = m_now();
            break;
        case kAssistCast:
            m_status.cast = m_now();
            break;
        case kAssistStats:
            m_status.mana = m_now();
            break;
        case kAssistMagery:
        case kAssistSkill:
            m_status.skill = m_now();
            break;
        default:
            break;
    }
}

}  // namespace spellwick
