// The open Skills tab, with known values of the character.
#pragma once

#include <numeric>
#include <string>
#include <vector>

#include "tests/support/settings_fixture.h"

namespace spellwick {

constexpr int kCharacter = 8;

struct GroupRow {
    const char* caption;
    const char* title;
    const char* colour;
    int firstRow;  // of a page; the first group has circles
};
inline constexpr GroupRow kGroupRows[] = {{"Magery Skills", "Magery", "#c00000", 0},
                                          {"Necromancy Skills", "Necromancy", "#008000", 64},
                                          {"Paladin Skills", "Necromancy", "#008000", 72},
                                          {"Paladin Skills", "Chivalry", "#0000ff", 80},
                                          {"Paladin Skills", "Chivalry", "#0000ff", 88}};

class SkillsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() {
        Open();
        m_state.Magery = 50;
        m_state.Necro = 60;
        m_state.Chivalry = 70;
        m_state.Intelligence = 100;
        ShowTab(3);
        Leave();
        m_companion.UpdateChances();
        Form().RefreshDialog();
        TakeLog();
        return Form();
    }
    void ShowGroup(int group) {
        Click("SkillType", group);
        TakeLog();
    }
    static int RowOf(int group, int line) {
        return group == 0 ? line * 8 : kGroupRows[group].firstRow + line;
    }
    i16 SkillOf(int group) const {
        const i16 skills[] = {m_state.Magery, m_state.Necro, m_state.Necro, m_state.Chivalry,
                              m_state.Chivalry};
        return skills[group];
    }
    std::string Ground(const char* name, int line) {
        return Named(name, line).palette().color(QPalette::Base).name().toStdString();
    }
    // Rows of the table whose cell has the value.
    std::vector<i32> RowsWith(i16 SpellRecord::*cell, i16 value) {
        std::vector<i32> rows;
        for (i32 row = 0; row <= 95; ++row) {
            if (m_state.Spells(row).*cell == value) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    static std::vector<i32> Circle(int line) {
        std::vector<i32> rows(8);
        std::iota(rows.begin(), rows.end(), line * 8);
        return rows;
    }
    // Sets a cell of all rows, so that a changed one stands out.
    void SetAll(i16 SpellRecord::*cell, i16 value) {
        for (i32 row = 0; row <= 95; ++row) {
            m_state.Spells(row).*cell = value;
        }
    }
};

}  // namespace spellwick
