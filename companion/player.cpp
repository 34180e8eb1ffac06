#include "companion/player.h"

#include "companion/start_hints.h"
#include "text/log.h"

namespace spellwick {

Player::Player(const CompanionServices& services, const Parts& parts)
    : m_services(services),
      m_state(services.state),
      m_parts(parts),
      m_journal(services.journal, services.clock),
      m_store(services.store, m_journal, services.clock),
      m_io(services.state, m_store, [this](PlayerPart part) { ShowPart(part); }),
      m_watch(services.state, services.clients) {}

void Player::ShowPart(PlayerPart part) {
    switch (part) {
        case PlayerPart::kBagNames:
            m_parts.purse.ShowBagNames();
            return;
        case PlayerPart::kBagChoice:
            m_parts.purse.SelectBag();
            return;
        case PlayerPart::kStock:
            m_parts.purse.ShowStock();
            return;
        case PlayerPart::kTithingPoints:
            m_parts.tithes.Show(m_state.CurrentTithing);
            return;
    }
}

void Player::Tick() {
    const bool found = m_watch.ReadClient();
    LogGame();
    if (found) {
        ParseClientTitle();
        FollowTitle();
    }
    m_parts.display.Tell();
    m_services.assist.FindAssist();
}

void Player::LogGame() {
    if (CurrentLog() == nullptr ||
        (m_loggedWindow == m_state.ClientWindow && m_loggedTitle == m_state.ClientTitle)) {
        return;
    }
    m_loggedWindow = m_state.ClientWindow;
    m_loggedTitle = m_state.ClientTitle;
    LogEvent(LogTopic::kFound, [this] {
        if (m_loggedWindow == 0) {
            return std::string("no game");
        }
        const GameClient* client =
            m_services.games == nullptr ? nullptr : m_services.games->Current();
        return "the game's window " + std::to_string(m_loggedWindow) + " \"" + m_loggedTitle +
               "\"" + (client == nullptr ? "" : ", " + client->name);
    });
}

void Player::FollowTitle() {
    if (m_state.ClientTitle == m_state.CurrentPlayerName) {
        return;
    }
    m_beforeSwitch();
    if (!m_state.CurrentPlayerName.empty()) {
        // ODDITY(saves-at-login-screen): while the client shows its login screen the last character
        // is saved once a second; kept because it does no harm and loses nothing.
        Save();
    }
    if (!IsRealServer(m_state.ServerName)) {
        return;
    }
    // ODDITY(bare-title-is-a-player): a client that drops character and server from its title gets
    // a profile under the bare title; kept because the names of before still stand then.
    m_state.CurrentPlayerName = m_state.ClientTitle;
    Load();
    m_parts.page.Update();
}

void Player::ParseClientTitle() {
    m_watch.ParseClientTitle();
    ShowCaption();
}

void Player::ShowCaption() {
    m_parts.display.screen.caption = CaptionText(m_state.CharacterName, m_state.ServerName);
    m_parts.display.changes.caption = true;
}

void Player::ShowClientNotFound() {
    m_parts.display.Tell();
    m_services.boxes.Show({.text = "Could not find Ultima Online.", .icon = BoxIcon::kCritical});
    m_parts.display.TheForms().ShowWay(NoGameHint(m_state.ClientWindow != 0));
}

void Player::Save() {
    // What could not be saved is kept by the store, and memory may hold another character by the
    // time that the box is answered.
    ReportSave(m_io.SavePlayerSettings(m_state.CurrentPlayerName),
               [this] { return m_store.SaveDue(); });
}

void Player::Load() {
    LogEvent(LogTopic::kFound,
             [this] { return "loads the character of \"" + m_state.CurrentPlayerName + "\""; });
    m_journal.Pause();
    m_io.LoadPlayerSettings(m_state.CurrentPlayerName);
    BeginNotes();
}

void Player::Reload() {
    const std::string before = m_state.CurrentPlayerName;
    m_journal.Pause();
    m_io.LoadGlobalSettings();
    if (m_state.CurrentPlayerName.empty()) {
        m_io.LoadPlayerSettings(before);
    } else {
        BeginNotes();
    }
}

void Player::LoadAtStart() {
    const std::vector<Journal::Found> found = m_store.Recover();
    bool whole = false;
    IgnoreFailure([&] {
        m_io.LoadGlobalSettings();
        whole = true;
    });
    for (const Journal::Found& player : found) {
        m_startHints.push_back(RecoveryText(player, m_services.clock));
    }
    if (const StoreResult saved = m_store.SaveDue(); !saved.ok) {
        LogLine("what was recovered is not saved yet: " + saved.trouble);
    }
    if (!whole) {
        m_startHints.push_back(UnreadValueText(m_io.LastKey(), m_state.CurrentPlayerName));
        m_store.CopyBeforeWriting();
        m_io.TakeAsLoaded();
    }
    BeginNotes();
}

void Player::BeginNotes() {
    m_journal.Begin(PlayerChanges(m_state, m_state.CurrentPlayerName));
}

void Player::NoteChanges() {
    m_journal.Note(PlayerChanges(m_state, m_state.CurrentPlayerName));
}

void Player::KeepChanges() {
    NoteChanges();
    m_journal.Sync();
}

void Player::SaveAll(const WindowPlaces& places) {
    const auto save = [this, places] { return m_io.SaveGlobalSettings(places); };
    ReportSave(save(), save);
}

void Player::SaveOption(std::string_view key, const std::string& value) {
    const auto save = [this, key = std::string(key), value] { return m_io.SaveOption(key, value); };
    ReportSave(save(), save);
}

void Player::ReportSave(StoreResult result, const std::function<StoreResult()>& again) {
    while (!result.ok) {
        // The watch may save each second for as long as the trouble lasts, also behind the box.
        if (m_saveTroubleShown) {
            return;
        }
        m_saveTroubleShown = true;
        m_parts.display.Tell();
        const BoxAnswer answer = m_services.boxes.Show(
            {.text = result.trouble,
             .icon = BoxIcon::kExclamation,
             .buttons = again ? BoxButtons::kTryAgainOrClose : BoxButtons::kOk});
        if (answer != BoxAnswer::kTryAgain) {
            return;
        }
        m_saveTroubleShown = false;
        result = again();
    }
    m_saveTroubleShown = false;
}

}  // namespace spellwick
