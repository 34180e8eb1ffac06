// What is told of a load and a save of macros.
#include "store/macro_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(MacroReport, CountedSpells_Meditation_IsNoSpell) {
    EXPECT_EQ(CountedSpells({}), "0 spells");
    EXPECT_EQ(CountedSpells({1}), "1 spell");
    EXPECT_EQ(CountedSpells({-1}), "Meditation");
    EXPECT_EQ(CountedSpells({-1, 5, 7}), "2 spells and Meditation");
}

TEST(MacroReport, LoadText_CountsAndReasons) {
    MacroLoad load;
    EXPECT_EQ(LoadText(load, "macros.txt", kFewNames), "No key was loaded from macros.txt.");
    load.taken = {1, 2, -1};
    EXPECT_EQ(LoadText(load, "macros.xml", kFewNames),
              "The keys of 2 spells and Meditation were loaded from macros.xml.");
    load.left = {{LeftReason::kMouse, "Heal"},          {LeftReason::kNoKey, "Cure"},
                 {LeftReason::kNoKey, "Harm"},          {LeftReason::kNoKey, "Cure"},
                 {LeftReason::kOtherKey, "Mark (Tab)"}, {LeftReason::kSecond, "Fireball"},
                 {LeftReason::kMoreActions, "Recall"},  {LeftReason::kUnknownSpell, "heal"}};
    load.isCutShort = true;
    EXPECT_EQ(LoadText(load, "macros.xml", kFewNames),
              "The keys of 2 spells and Meditation were loaded from macros.xml. These macros were "
              "left:\n"
              "\u2022 No spell has this name: heal.\n"
              "\u2022 No key: Cure, Harm.\n"
              "\u2022 A mouse button or the wheel: Heal.\n"
              "\u2022 A key that Spellwick cannot press: Mark (Tab).\n"
              "\u2022 A second macro for the spell, of which the first counts: Fireball.\n"
              "\u2022 A macro that does more than cast: Recall.\n"
              "The load ended at a spell that has no macro here.");
}

TEST(MacroReport, ManyNames_AreOnlyCounted) {
    MacroLoad load;
    for (int number = 0; number < 100000; ++number) {
        load.left.push_back({LeftReason::kUnknownSpell, "Name " + std::to_string(number)});
    }
    EXPECT_THAT(LoadText(load, "a", 2), EndsWith(": Name 0, Name 1 and 99998 more."));
}

TEST(MacroReport, LongNamesAndLineEnds_DoNotGrowTheText) {
    MacroLoad load;
    load.left = {{LeftReason::kUnknownSpell, std::string(5000, 'x')},
                 {LeftReason::kUnknownSpell, "a\nb"}};
    const std::string text = LoadText(load, std::string(300, 'f'), kFewNames);
    EXPECT_LT(text.size(), 250U);
    EXPECT_THAT(text, HasSubstr("xxx..., a b."));
}

TEST(MacroReport, SaveText_CountsAndReasons) {
    MacroSave save;
    EXPECT_EQ(SaveText(save, "macros.xml", 4), "Nothing had to be changed in macros.xml.");
    save.unchanged = {7};
    save.replaced = {1, 2};
    save.added = {-1};
    save.left = {{LeftReason::kNoKey, "Exorcism"}};
    save.moved = {"Heal"};
    save.shared = {"Mark", "Recall"};
    EXPECT_EQ(SaveText(save, "macros.xml", 4),
              "The keys of 2 spells and Meditation were saved to macros.xml: 2 changed, 1 new.\n"
              "In the file already: 1 spell.\n"
              "No longer on a mouse button, the wheel or another key: Heal.\n"
              "On the key of another macro too, so that only one of both works: Mark, Recall.\n"
              "These were not saved:\n"
              "\u2022 No key: Exorcism.");
}

}  // namespace
}  // namespace spellwick
