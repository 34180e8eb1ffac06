// The frame of the settings dialog: strip, showing, closing, place.
#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

class FormSettingsTest : public SettingsFixture {};

using testing::ElementsAre;

TEST_F(FormSettingsTest, Strip_EightButtonsWithTheirCaptions) {
    Open();
    const std::vector<std::string> captions{
        "Spells && Reagents", "User Spells", "Macros", "Skills",
        "Reagent Management", "Spell texts", "About",  "Settings"};
    for (int tab = 0; tab < kTabCount; ++tab) {
        EXPECT_EQ(Text("CheckTab", tab), captions[static_cast<std::size_t>(tab)]);
    }
    EXPECT_EQ(Form().windowTitle(), QStringLiteral("Spellwick - Settings"));
}

}  // namespace
}  // namespace spellwick
