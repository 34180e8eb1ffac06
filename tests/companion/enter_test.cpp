// Enter behind the macro key, which some clients take and others do not.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/casting_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class EnterTest : public CastingTest {
  protected:
    // Mira in a client of the delivered table.
    void StartInClient(const std::string& windowClass, const std::string& title) {
        m_translated = std::make_unique<TranslatedWindows>(m_clients, LoadGameClients().rows);
        m_games = m_translated.get();
        StartWithMira();
        m_clients.windows = {{kClientWindow, windowClass, title}};
        m_clients.foreground = kClientWindow;
        Tick(1);
        State().Spellbook(0) = 0;
        State().DisableCasting = false;
        State().Magery = 100;
        State().Intelligence = 100;
        ShowPageOf(0);
        TakeLog();
    }
    // The keys of Clumsy, the spell of row 0.
    std::string KeysOfCast() {
        m_keys.sent.clear();
        ClickSpell(0);
        return m_keys.sent.empty() ? std::string() : m_keys.sent.back();
    }

    static constexpr WindowHandle kClientWindow = 7;
    std::unique_ptr<TranslatedWindows> m_translated;
};

TEST_F(EnterTest, ClientWhoseRowSaysNo_GetsEnterWithATextAlone) {
    StartInClient("ClassicUO", "Mira Talon - ClassicUO - 1.0");
    State().SendSpellText = 0;
    EXPECT_EQ(KeysOfCast(), "%1");
    State().SendSpellSuffix = 1;
    State().SpellTextSuffix = "Ha!";
    EXPECT_EQ(KeysOfCast(), "%1Ha!{ENTER}");
    State().EnterOpensChat = true;
    EXPECT_EQ(KeysOfCast(), "%1{ENTER}Ha!{ENTER}");
    m_keys.sent.clear();
    ClickCommand(4);
    EXPECT_THAT(m_keys.sent, ElementsAre(" "));
}

TEST_F(EnterTest, ClientWhoseRowSaysYes_GetsItAlways) {
    StartInClient("crossuo", "Ultima Online - Mira Talon (Atlantic)");
    State().SendSpellText = 0;
    State().EnterOpensChat = true;
    EXPECT_EQ(KeysOfCast(), "%1{ENTER}");
    State().SendSpellSuffix = 1;
    State().SpellTextSuffix = "Ha!";
    EXPECT_EQ(KeysOfCast(), "%1{ENTER}Ha!{ENTER}");
}

TEST_F(EnterTest, ClassicClient_GetsItAlways) {
    StartInClient("Ultima Online", "Ultima Online - Mira Talon (Atlantic)");
    State().SendSpellText = 0;
    State().EnterOpensChat = true;
    EXPECT_EQ(KeysOfCast(), "%1{ENTER}");
}

}  // namespace
}  // namespace spellwick
