#include "store/section_name.h"

#include <set>

#include <gmock/gmock.h>

#include "tests/support/memory_settings_store.h"

namespace spellwick {
namespace {

std::vector<std::string> OddNames() {
    return {"Ultima Online - Mira Talon (Atlantic)",
            "Settings",
            "=Settings",
            "==Settings",
            "= Settings",
            "settings",
            "Settings ",
            "MySettings",
            "=MySettings",
            "=",
            "==",
            "a/b\\c",
            "'quotes\" and [brackets] (((",
            "\xF0\x9F\xA7\x99 \xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D",
            std::string(300, 'x'),
            std::string(5000, '('),
            std::string("nul\0nul", 7),
            "\xFF\xFE broken",
            "\n",
            "DoesNotExist",
            "Player 1"};
}

TEST(SectionName, EveryNameComesBackAndNoneIsTheGlobalSection) {
    std::set<std::string> sections;
    for (const std::string& name : OddNames()) {
        const std::string section = SectionOfPlayer(name);
        EXPECT_EQ(PlayerOfSection(section), name);
        EXPECT_NE(section, "Settings");
        EXPECT_TRUE(sections.insert(section).second) << name;
    }
}

TEST(SectionName, OnlyTheGlobalNameIsMarked) {
    EXPECT_EQ(SectionOfPlayer("Settings"), "=Settings");
    EXPECT_EQ(SectionOfPlayer("=Settings"), "==Settings");
    for (const std::string& name : OddNames()) {
        if (!name.ends_with("Settings") || name == "MySettings" || name == "=MySettings" ||
            name == "= Settings") {
            EXPECT_EQ(SectionOfPlayer(name), name);
        }
    }
}

TEST(SectionName, PlayerNames_AreAllSectionsButTheGlobalOne) {
    MemorySettingsStore store;
    EXPECT_THAT(PlayerNames(store), testing::IsEmpty());
    store.Put("Settings", "RegYellow", "3");
    EXPECT_THAT(PlayerNames(store), testing::IsEmpty());
    for (const std::string& name : OddNames()) {
        store.Put(SectionOfPlayer(name), "Magery", "100");
    }
    EXPECT_THAT(PlayerNames(store), testing::UnorderedElementsAreArray(OddNames()));
}

}  // namespace
}  // namespace spellwick
