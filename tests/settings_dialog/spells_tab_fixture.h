// The Spells & Reagents tab.
#pragma once

#include <string>

#include "tests/support/settings_fixture.h"

namespace spellwick {

class SpellsTabTest : public SettingsFixture {
  protected:
    QComboBox& Level() { return Named<QComboBox>("ComboSpellLevel"); }
    void ShowPage(int page) { Pick(Level(), page); }
    static int Cell(int column, int row) { return column * 8 + row + 1; }
    bool IsShown(const char* name, int index) { return Named(name, index).isVisible(); }
    QCheckBox& Book(int row) { return Named<QCheckBox>("CheckBook", row); }
    QCheckBox& Town(int row) { return Named<QCheckBox>("CheckTown", row); }
    void SetPrice(int column, const std::string& text) { Enter("RegPrice", column, text); }
};

}  // namespace spellwick
