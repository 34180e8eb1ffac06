#include "companion/player.h"

namespace spellwick {

Player::Player(const CompanionServices& services, const Parts& parts)
    : m_services(services),
      m_state(services.state),
      m_parts(parts),
      m_io(services.state, services.store, [this](PlayerPart part) { ShowPart(part); }),
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
    if (m_watch.ReadClient()) {
        ParseClientTitle();
        FollowTitle();
    }
    m_parts.display.Tell();
    m_services.assist.FindAssist();
}

void Player::FollowTitle() {
    if (m_state.ClientTitle == m_state.CurrentPlayerName) {
        return;
    }
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
}

void Player::Save() {
    ReportSave(m_io.SavePlayerSettings(m_state.CurrentPlayerName));
}

void Player::Load() {
    m_io.LoadPlayerSettings(m_state.CurrentPlayerName);
}

void Player::SaveAll(const WindowPlaces& places) {
    ReportSave(m_io.SaveGlobalSettings(places));
}

void Player::SaveOption(std::string_view key, const std::string& value) {
    ReportSave(m_io.SaveOption(key, value));
}

void Player::ReportSave(const StoreResult& result) {
    // The watch may save each second for as long as the trouble lasts.
    if (result.ok) {
        m_saveTroubleShown = false;
        return;
    }
    if (!m_saveTroubleShown) {
        m_saveTroubleShown = true;
        m_parts.display.Tell();
        m_services.boxes.Show({.text = result.trouble, .icon = BoxIcon::kExclamation});
    }
}

}  // namespace spellwick
