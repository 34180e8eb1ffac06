#include "companion/start_hints.h"

#include <array>
#include <ctime>
#include <optional>

#include "link/client_watch.h"
#include "model/failure_guard.h"
#include "store/section_name.h"

namespace spellwick {

namespace {

// "Mira Talon" of "Ultima Online - Mira Talon (Atlantic)"; a title of another form as it is.
std::string CharacterOf(std::string_view title) {
    std::optional<TitleNames> names;
    IgnoreFailure([&] { names = ParseTitle(title); });
    return names ? names->character : std::string(title);
}

constexpr std::size_t kDateLength = 11;

// 2001-12-31 23:59
std::string DateAndTime(const std::tm& time) {
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &time)};
}

}  // namespace

std::string RecoveryText(const Journal::Found& found, const Clock& clock) {
    const std::tm then = clock.Local(found.time);
    const std::tm now = clock.Local(std::chrono::system_clock::to_time_t(clock.Now()));
    const bool today =
        then.tm_year == now.tm_year && then.tm_mon == now.tm_mon && then.tm_mday == now.tm_mday;
    return "Recovered " + std::to_string(found.count) +
           (found.count == 1 ? " change of " : " changes of ") +
           CharacterOf(PlayerOfSection(found.section)) + " from " +
           DateAndTime(then).substr(today ? kDateLength : 0);
}

std::string UnreadValueText(std::string_view key, std::string_view player) {
    const std::string whose = player.empty() ? std::string() : " of " + CharacterOf(player);
    return "The saved value \"" + std::string(key) + "\"" + whose +
           " cannot be read, nor is what comes after it. The settings are copied before they are "
           "saved again.";
}

}  // namespace spellwick
