// What a session leaves in the store: the same on every system.
#include <fstream>
#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/linux/sqlite_settings_store.h"
#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr const char* kDorn = "Ultima Online - Dorn \u0141uk\u00e4 (Oak Hill)";

// Window positions depend on the desktop, so leave them out.
bool IsPlace(const std::string& key) {
    return key.ends_with("Top") || key.ends_with("Left");
}

class PlayedSession : public ToolDesk {
  protected:
    // The reports; tests/windows/play.py sends the same ones.
    void ReportAll() {
        TellTool("send 1328 100 0");
        TellTool("send 1329 100 100");
        for (const int skill : {16, 32, 49, 51}) {
            TellTool("send 1330 " + std::to_string(skill) + " " + std::to_string(900 + skill));
        }
        for (const int counted : {1, 2, 3, 4, 5, 6, 7, 8, 100, 101, 102, 103, 104, 200}) {
            TellTool("send 1325 " + std::to_string(counted) + " " + std::to_string(1000 + counted));
        }
        ASSERT_TRUE(WaitQuiet());
    }

    // All lines "section|key|value" except window positions.
    std::set<std::string> Picture() const {
        SqliteSettingsStore store(StoreFile());
        EXPECT_EQ(store.Connect(), StoreState::kReady) << store.Reason();
        std::set<std::string> lines;
        for (const std::string& section : store.Sections()) {
            for (const auto& [key, value] : store.ReadSection(section)) {
                if (!IsPlace(key)) {
                    std::string line = section;
                    line.append("|").append(key).append("|").append(value);
                    lines.insert(std::move(line));
                }
            }
        }
        return lines;
    }
};

TEST_F(PlayedSession, Store_IsThePictureOfEverySystem) {
    Prepare(kMira, {{"Spellbook 0", "0"}});
    StartAll();
    ReportAll();
    ClickSpell(0);
    ASSERT_TRUE(WaitTyped({"key Alt+1", "cast Clumsy", "key Enter"}));
    ClickSpell(1);
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    ASSERT_TRUE(WaitTold("out send 1326 2 0"));
    ASSERT_TRUE(WaitQuiet());
    // The practice tool has reported its own pack after the casts.
    ReportAll();
    TellTool("send 1326 1 0");
    TellTool("send 1326 2 0");
    ASSERT_TRUE(WaitQuiet());
    TellTool("close");
    TellGame(std::string("title ") + kDorn);
    ASSERT_TRUE(WaitCharacter("Dorn \u0141uk\u00e4"));
    ASSERT_EQ(CloseSpellwick(), 0);

    std::set<std::string> expected;
    std::ifstream file(SESSION_STORE);
    for (std::string line; std::getline(file, line);) {
        expected.insert(line);
    }
    EXPECT_THAT(Picture(), testing::ContainerEq(expected));
}

}  // namespace
}  // namespace spellwick::testing_support
