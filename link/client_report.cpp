#include "link/client_report.h"

#include <algorithm>

namespace spellwick {

namespace {

constexpr std::string_view kWineDesktopEnd = " - Wine desktop";
constexpr std::string_view kDivider = " - ";

bool HasDigit(std::string_view word) {
    return word.find_first_of("0123456789") != std::string_view::npos;
}

// Words with digits are versions, counters and the like; bars and braces mean something in a form.
bool Changes(std::string_view word) {
    return HasDigit(word) || word.find_first_of("{}|\"") != std::string_view::npos;
}

// The part of a title that is no name: what may change becomes {any}.
std::string FormOf(std::string_view text) {
    std::string form;
    while (!text.empty()) {
        const std::size_t end = text.find(' ');
        const std::string_view word = text.substr(0, end);
        if (!Changes(word)) {
            form += word;
        } else if (!form.ends_with("{any} ")) {
            form += "{any}";
        } else {
            form.pop_back();
        }
        if (end == std::string_view::npos) {
            break;
        }
        form += ' ';
        text.remove_prefix(end + 1);
    }
    return form;
}

// Of the part in which the name stands: "NAME" or "NAME (SHARD)".
std::string NameForm(std::string_view text) {
    const std::size_t open = text.rfind(" (");
    const bool hasShard =
        open != std::string_view::npos && open > 0 && text.ends_with(')') && text.size() > open + 3;
    return hasShard ? "{name} ({shard})" : "{name}";
}

std::string ProposeForm(std::string_view title) {
    constexpr std::string_view kClassic = "Ultima Online - ";
    if (title.starts_with(kClassic) && title.size() > kClassic.size()) {
        return std::string(kClassic) + NameForm(title.substr(kClassic.size()));
    }
    const std::size_t divider = title.find(kDivider);
    if (divider == std::string_view::npos || divider == 0) {
        return NameForm(title);
    }
    return NameForm(title.substr(0, divider)) + FormOf(title.substr(divider));
}

std::string Counted(std::size_t count, const std::string& windowClass) {
    return (count == 1 ? "1 window" : std::to_string(count) + " windows") + " of class " +
           windowClass;
}

// In a value, these divide it or end it.
std::string WithoutBars(std::string text) {
    std::erase_if(text, [](char c) { return c == '|' || c == '"' || c == '\n' || c == '\r'; });
    return text;
}

}  // namespace

std::string NothingFoundText(const std::vector<GameClient>& clients,
                             const std::vector<TopLevelWindow>& windows, WindowClassKind kind) {
    std::string seen;
    std::size_t total = 0;
    for (const std::string& windowClass : ClassesOf(clients, kind)) {
        GameClient one;
        (kind == WindowClassKind::kX11 ? one.x11Classes : one.windowsClasses) = {windowClass};
        const auto count =
            static_cast<std::size_t>(std::ranges::count_if(windows, [&](const auto& window) {
                return HasClass(one, window, kind) && !FindGameClient(clients, window, kind);
            }));
        if (count > 0) {
            seen += (seen.empty() ? "" : ", ") + Counted(count, windowClass);
            total += count;
        }
    }
    if (seen.empty()) {
        return "No window is of a known client's class.";
    }
    return seen +
           (total == 1 ? ", its title of no known form." : ", none with a title of a known form.");
}

bool IsWineDesktop(const TopLevelWindow& window) {
    return window.title.ends_with(kWineDesktopEnd) && window.title.size() > kWineDesktopEnd.size();
}

TableRow ProposeRow(const std::vector<GameClient>& clients, const TopLevelWindow& window,
                    WindowClassKind kind) {
    const std::string ours = WithoutBars(window.windowClass);
    TableRow row{"My game", "", "", "", "", "My game", "no"};
    row[kind == WindowClassKind::kX11 ? 1 : 2] = ours;
    if (IsWineDesktop(window)) {
        row[0] = row[5] = "Wine desktop";
        row[3] = "{name}" + std::string(kWineDesktopEnd);
        return row;
    }
    // A known client under a class of its own.
    std::optional<KnownTitle> known;
    for (GameClient client : clients) {
        (kind == WindowClassKind::kX11 ? client.x11Classes
                                       : client.windowsClasses) = {window.windowClass};
        known = FindGameClient({client}, window, kind);
        if (known && known->inGame) {
            row[0] = row[5] = client.name;
            row[6] = client.enterBehindMacro ? "yes" : "no";
            break;
        }
    }
    row[3] = ProposeForm(window.title);
    return row;
}

}  // namespace spellwick
