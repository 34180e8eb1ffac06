// The settings dialog on a player's desktop, operated by mouse and keyboard.
#pragma once

#include <filesystem>
#include <string>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {

inline constexpr int kSettingsButton = 2;

enum Tab {
    kSpells = 0,
    kUserSpells = 1,
    kMacros = 2,
    kSkills = 3,
    kReagents = 4,
    kSpellTexts = 5,
    kOptions = 7
};

class SettingsInTheProgram : public PlayerDesk {
  protected:
    // Opens the dialog; the first time, the focus is on the first tab button.
    void OpenDialog() {
        m_desk->Click(Window(), Command(kSettingsButton));
        m_dialog = m_desk->WaitWindow("Spellwick - Settings");
        ASSERT_NE(m_dialog, 0U);
        ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_dialog; }));
        m_desk->RestingPicture(m_dialog);
    }
    void Tabs(int count) {
        for (int step = 0; step < count; ++step) {
            m_desk->Tap(XKB_KEY_Tab);
        }
    }
    // Opens the dialog again and the tab by the keyboard; the focus is on its first control.
    void OpenTab(int tab) {
        OpenDialog();
        Tabs(tab);
        m_desk->Tap(XKB_KEY_space);
        m_desk->RestingPicture(m_dialog);
    }
    void PressOk() {
        m_desk->Hold(XKB_KEY_Alt_L, true);
        m_desk->Tap(XKB_KEY_o);
        m_desk->Hold(XKB_KEY_Alt_L, false);
        ASSERT_TRUE(m_desk->WaitGone(m_dialog));
    }
    void CloseDialog() {
        m_desk->AskToClose(m_dialog);
        ASSERT_TRUE(m_desk->WaitGone(m_dialog));
    }
    // The message box or dialog that opened last, in front of the settings; 0 if none opens.
    xcb_window_t WaitBox() {
        xcb_window_t box = 0;
        const bool stands = WaitUntil([&] {
            box = m_desk->Session().ActiveWindow();
            return box != 0 && box != m_dialog && box != Window() &&
                   m_desk->Session().WindowName(box).starts_with(m_boxTitle);
        });
        return stands ? box : 0;
    }
    // Answers it with its default button.
    void AnswerBox() {
        const xcb_window_t box = WaitBox();
        ASSERT_NE(box, 0U) << m_boxTitle;
        m_desk->RestingPicture(box);
        m_desk->Tap(XKB_KEY_Return);
        ASSERT_TRUE(m_desk->WaitGone(box));
    }
    bool WaitStored(const std::string& section, const std::string& key, const std::string& value) {
        return WaitUntil([&] { return Stored(section, key) == value; });
    }

    xcb_window_t m_dialog = 0;
    std::string m_boxTitle = "Spellwick";
};

}  // namespace spellwick::testing_support
