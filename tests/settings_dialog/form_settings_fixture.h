// The settings dialog with the helpers of the tests of its frame.
#pragma once

#include <vector>

#include "tests/support/settings_fixture.h"

namespace spellwick {

class FormSettingsTest : public SettingsFixture {
  protected:
    std::vector<int> TickedTabs() {
        std::vector<int> ticked;
        for (int tab = 0; tab < kTabCount; ++tab) {
            if (Form().CheckTab[static_cast<std::size_t>(tab)]->isChecked()) {
                ticked.push_back(tab);
            }
        }
        return ticked;
    }
    std::vector<int> ShownPanels() {
        std::vector<int> shown;
        for (int panel = 1; panel <= kTabCount; ++panel) {
            if (Named("TabFrame", panel).isVisible()) {
                shown.push_back(panel);
            }
        }
        return shown;
    }
};

}  // namespace spellwick
