#include "link/translated_windows.h"

#include <algorithm>

#include "link/client_watch.h"
#include "link/profile_folder.h"

namespace spellwick {

TranslatedWindows::TranslatedWindows(ClientWindows& windows, std::vector<GameClient> clients,
                                     Clock clock)
    : m_windows(windows), m_clock(std::move(clock)) {
    SetClients(std::move(clients));
}

void TranslatedWindows::SetClients(std::vector<GameClient> clients) {
    m_clients = std::move(clients);
    m_classes = ClassesOf(m_clients, m_windows.ClassKind());
    Keep({}, nullptr);
}

const GameClient* TranslatedWindows::Current() const {
    return m_current;
}

WindowHandle TranslatedWindows::FindWindowOfClasses(
    std::span<const std::string_view> windowClasses) {
    const WindowHandle classic = m_windows.FindWindowOfClasses(windowClasses);
    const bool isClassic = classic != 0 && m_windows.ClassKind() == WindowClassKind::kWindows;
    const std::vector<Found> found = isClassic ? std::vector<Found>() : KnownWindows();
    // Some of Wine's programs are found by their titles; they may be known clients too.
    const bool isKnown = std::ranges::any_of(
        found, [&](const Found& each) { return each.window.handle == classic; });
    if (found.empty() || (classic != 0 && !isKnown)) {
        Keep({}, nullptr);
        return classic;
    }
    const Found& chosen = Choose(found);
    Keep(chosen.window, chosen.known.client);
    return m_found.handle;
}

void TranslatedWindows::Keep(const TopLevelWindow& window, const GameClient* client) {
    m_found = window;
    m_current = client;
}

std::string TranslatedWindows::WindowTitle(WindowHandle window) {
    std::string title = m_windows.WindowTitle(window);
    if (title.empty() || m_current == nullptr || window != m_found.handle) {
        return title;
    }
    m_found.title = title;
    const auto known = FindGameClient(m_clients, m_found, m_windows.ClassKind());
    if (!known || !known->inGame) {
        return std::string(kNoClientTitle);
    }
    m_current = known->client;
    if (!known->shard.empty()) {
        return CommonTitle(known->name, known->shard);
    }
    // A shard that is not known yet must not pass for an unknown one, which is another profile.
    if (!LookUpShard(window, known->name)) {
        return std::string(kNoClientTitle);
    }
    return CommonTitle(known->name, m_lookedUp.shard.value_or(known->client->shard));
}

// False while it is too early to look again.
bool TranslatedWindows::LookUpShard(WindowHandle window, const std::string& name) {
    constexpr std::chrono::seconds kBetween{1};
    if (m_lookedUp.window == window && m_lookedUp.name == name) {
        return true;
    }
    const auto now = m_clock();
    if (m_lookedUp.window != 0 && now - m_lookedUp.when < kBetween) {
        return false;
    }
    const auto profile = NewestProfile(m_windows.ProgramFolders(window), name);
    m_lookedUp = {window, name, std::nullopt, now};
    if (profile && IsRealServer(profile->shard)) {
        m_lookedUp.shard = profile->shard;
    }
    return true;
}

std::vector<TranslatedWindows::Found> TranslatedWindows::KnownWindows() {
    std::vector<Found> found;
    if (m_classes.empty()) {
        return found;
    }
    for (TopLevelWindow& window : m_windows.WindowsOfClasses(m_classes)) {
        if (std::optional<KnownTitle> known =
                FindGameClient(m_clients, window, m_windows.ClassKind())) {
            found.push_back({std::move(window), *std::move(known)});
        }
    }
    return found;
}

// Not empty. The list is topmost first, but a window of ours or another may have come between.
const TranslatedWindows::Found& TranslatedWindows::Choose(const std::vector<Found>& found) {
    const auto place = [&](auto&& holds) {
        return found.size() == 1 ? found.begin() : std::ranges::find_if(found, holds);
    };
    auto chosen =
        place([&](const Found& each) { return m_windows.IsForegroundWindow(each.window.handle); });
    if (chosen == found.end()) {
        chosen = place([&](const Found& each) { return each.window.handle == m_inFront; });
    }
    if (chosen == found.end()) {
        chosen = found.begin();
    }
    m_inFront = chosen->window.handle;
    return *chosen;
}

}  // namespace spellwick
