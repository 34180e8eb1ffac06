#include "practice/game_window.h"

#include <QApplication>
#include <QKeyEvent>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "practice/key_names.h"

namespace spellwick::practice {
namespace {

using testing::ElementsAre;

class GameWindowTest : public testing::Test {
  protected:
    void Type(int key, Qt::KeyboardModifiers modifiers, quint32 keysym, const QString& text = {}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, 0, keysym, 0, text);
        QApplication::sendEvent(&m_window, &press);
    }

    std::vector<std::string> m_lines;
    GameWindow m_window{
        [this](const JournalEntry& entry) { m_lines.push_back(WrittenEntry(entry)); }};
};

TEST_F(GameWindowTest, Start_IsTheLoginScreen) {
    EXPECT_EQ(m_window.windowTitle(), QStringLiteral("Ultima Online"));
}

TEST_F(GameWindowTest, LoginAndLogout_ChangeTheTitle) {
    struct Row {
        int character;
        const char* title;
    };
    for (const Row& row : {Row{1, "Ultima Online - Mira Talon (Atlantic)"},
                           Row{2, "Ultima Online - Bran Oakley (Atlantic)"},
                           Row{3, "Ultima Online - Ysolde (Oak Hill)"}}) {
        m_window.Obey({.kind = GameCommand::Kind::kLogin, .character = row.character});
        EXPECT_EQ(m_window.windowTitle().toStdString(), row.title);
    }
    m_window.Obey({.kind = GameCommand::Kind::kLogout});
    EXPECT_EQ(m_window.windowTitle(), QStringLiteral("Ultima Online"));
}

TEST_F(GameWindowTest, CharacterButtons_LogIn) {
    const auto buttons = m_window.findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 4);
    for (QPushButton* button : buttons) {
        if (button->text().startsWith(QStringLiteral("Ysolde"))) {
            button->click();
        }
    }
    EXPECT_EQ(m_window.windowTitle(), QStringLiteral("Ultima Online - Ysolde (Oak Hill)"));
}

TEST_F(GameWindowTest, CommandTitle_IsShownAsItStands) {
    m_window.Obey({.kind = GameCommand::Kind::kTitle, .title = "()"});
    EXPECT_EQ(m_window.windowTitle(), QStringLiteral("()"));
}

TEST_F(GameWindowTest, Keys_AreWrittenDownInOrder) {
    m_window.Obey({.kind = GameCommand::Kind::kLogin, .character = 2});
    m_lines.clear();
    Type(Qt::Key_Alt, Qt::AltModifier, XKB_KEY_Alt_L);
    Type(Qt::Key_1, Qt::AltModifier, XKB_KEY_1, QStringLiteral("1"));
    Type(Qt::Key_Return, Qt::NoModifier, XKB_KEY_Return, QStringLiteral("\r"));
    Type(Qt::Key_Adiaeresis, Qt::NoModifier, XKB_KEY_adiaeresis, QStringLiteral("ä"));
    Type(Qt::Key_Tab, Qt::NoModifier, XKB_KEY_Tab, QStringLiteral("\t"));
    Type(Qt::Key_Return, Qt::NoModifier, XKB_KEY_Return, QStringLiteral("\r"));
    EXPECT_THAT(m_lines, ElementsAre("key Alt+1", "cast Clumsy", "key Enter", "key Tab", "say ä"));
}

TEST(CapName, EachKey_HasItsName) {
    struct Row {
        quint32 plain;
        quint32 shifted;
        const char* name;
    };
    for (const Row& row : {
             Row{XKB_KEY_q, XKB_KEY_Q, "Q"},
             Row{XKB_KEY_1, XKB_KEY_exclam, "1"},
             Row{XKB_KEY_ampersand, XKB_KEY_1, "1"},
             Row{XKB_KEY_semicolon, XKB_KEY_colon, ";"},
             Row{XKB_KEY_odiaeresis, XKB_KEY_Odiaeresis, "Ö"},
             Row{XKB_KEY_Cyrillic_ef, XKB_KEY_Cyrillic_EF, "Ф"},
             Row{XKB_KEY_F5, XKB_KEY_F5, "F5"},
             Row{XKB_KEY_F12, XKB_KEY_F12, "F12"},
             Row{XKB_KEY_KP_Enter, XKB_KEY_NoSymbol, "Enter"},
             Row{XKB_KEY_space, XKB_KEY_space, "Space"},
             Row{XKB_KEY_Shift_L, XKB_KEY_NoSymbol, ""},
             Row{XKB_KEY_ISO_Level3_Shift, XKB_KEY_NoSymbol, ""},
             Row{XKB_KEY_Caps_Lock, XKB_KEY_NoSymbol, ""},
         }) {
        EXPECT_EQ(CapName(row.plain, row.shifted), row.name) << row.name;
    }
}

}  // namespace
}  // namespace spellwick::practice
