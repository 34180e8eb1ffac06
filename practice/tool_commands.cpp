#include "practice/tool_commands.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "practice/spell_costs.h"
#include "practice/tool_numbers.h"

namespace spellwick::practice {

const char* const kToolCommandHelp =
    R"(Commands on standard input, one per line; the tool answers `done LINE` or `unknown LINE`:
  gain ITEM N, lose ITEM N   adds or takes N of an item, by its number in reports: 1 to 8,
                             100 to 104, 200 for tithing points
  mana N, skill NUMBER N     sets mana, or a skill (0 to 57) in tenths, and reports it
  cast SPELL                 casts, as if the game had seen it
  fizzle                     the next cast fizzles before it is reported
  send MESSAGE WPARAM LPARAM sends any report to every registered window
  fault NAME                 plays a fault from the menu
  mend                       ends all lasting faults
  close, open                the tool disappears and comes back
  logout                     the character logs out, and back in after 5 seconds
  idle on, idle off          unasked reports on or off: mana regenerates, skills rise
  state                      writes `state open O connected C registered R mana M`
  wait                       writes `quiet` once all reports are sent and answered
  quit
The tool writes `in LINE` and `out LINE` for each line on a socket, and what else happens.
The second tool's lines start with `2 `.
Faults:)";

namespace {

constexpr std::size_t kMostWords = 4;

// Splits at single blanks; the last word takes the rest of the line.
std::array<std::string_view, kMostWords> Words(std::string_view line) {
    std::array<std::string_view, kMostWords> words{};
    for (std::size_t word = 0; word < kMostWords; ++word) {
        const std::size_t blank = word + 1 < kMostWords ? line.find(' ') : std::string_view::npos;
        words.at(word) = line.substr(0, blank);
        line = blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    }
    return words;
}

std::optional<int> Number(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

std::optional<ToolCommand> ParseStock(ToolCommand::Kind kind, std::string_view item,
                                      std::string_view amount) {
    const auto number = Number(item);
    const auto count = Number(amount);
    const auto* const found =
        std::ranges::find(kStockItems, number.value_or(0), &StockItem::number);
    if (found == kStockItems.end() || !count || *count < 0) {
        return std::nullopt;
    }
    return ToolCommand{
        .kind = kind, .which = static_cast<int>(found - kStockItems.begin()), .amount = *count};
}

std::optional<ToolCommand> ParseSkill(std::string_view skill, std::string_view tenths) {
    const auto number = Number(skill);
    const auto value = Number(tenths);
    if (!number || *number < 0 || *number >= kSkillCount || !value) {
        return std::nullopt;
    }
    return ToolCommand{.kind = ToolCommand::Kind::kSkill, .which = *number, .amount = *value};
}

std::optional<ToolCommand> ParseWord(std::string_view line) {
    using Kind = ToolCommand::Kind;
    struct Row {
        std::string_view line;
        Kind kind;
        int which = 0;
    };
    constexpr std::array<Row, 10> kRows{{
        {"fizzle", Kind::kFizzle},
        {"mend", Kind::kMend},
        {"close", Kind::kClose},
        {"open", Kind::kOpen},
        {"logout", Kind::kLogout},
        {"idle on", Kind::kIdle, 1},
        {"idle off", Kind::kIdle, 0},
        {"state", Kind::kState},
        {"wait", Kind::kWait},
        {"quit", Kind::kQuit},
    }};
    const auto* const found = std::ranges::find(kRows, line, &Row::line);
    return found == kRows.end()
               ? std::nullopt
               : std::optional(ToolCommand{.kind = found->kind, .which = found->which});
}

}  // namespace

std::optional<ToolCommand> ParseToolCommand(std::string_view line) {
    using Kind = ToolCommand::Kind;
    const auto words = Words(line);
    const std::string_view rest = line.substr(std::min(line.size(), words[0].size() + 1));
    if (words[0] == "gain" || words[0] == "lose") {
        const Kind kind = words[0] == "gain" ? Kind::kGain : Kind::kLose;
        return words[3].empty() ? ParseStock(kind, words[1], words[2]) : std::nullopt;
    }
    if (words[0] == "skill") {
        return words[3].empty() ? ParseSkill(words[1], words[2]) : std::nullopt;
    }
    if (words[0] == "mana") {
        const auto mana = Number(rest);
        return mana ? std::optional(ToolCommand{.kind = Kind::kMana, .amount = *mana})
                    : std::nullopt;
    }
    if (words[0] == "cast") {
        return FindSpell(rest) != nullptr
                   ? std::optional(ToolCommand{.kind = Kind::kCast, .name = std::string(rest)})
                   : std::nullopt;
    }
    if (words[0] == "send") {
        const auto parsed = ParseToolLine(line);
        const auto* const message = parsed ? std::get_if<ToolMessage>(&*parsed) : nullptr;
        return message != nullptr
                   ? std::optional(ToolCommand{.kind = Kind::kSend, .message = *message})
                   : std::nullopt;
    }
    if (words[0] == "fault") {
        const FaultRow* const row = FindFault(rest);
        return row != nullptr
                   ? std::optional(ToolCommand{.kind = Kind::kFault, .fault = row->fault})
                   : std::nullopt;
    }
    return ParseWord(line);
}

}  // namespace spellwick::practice
