// The User Spells tab: the eight spells of each of the two user pages.
#pragma once

#include <QGroupBox>
#include <QStandardItemModel>
#include <array>

#include "settings_dialog/controls.h"
#include "settings_dialog/settings_tab.h"
#include "settings_dialog/spell_choice.h"

namespace spellwick {

inline constexpr int kUserLists = 16;

class UserSpellsTab : public SettingsTab {
    Q_OBJECT

  public:
    UserSpellsTab(const SettingsServices& services, QWidget* parent);

    // Fills the lists with one entry per spell row, so that the index is the row.
    void Load() override;
    void Refresh() override;
    QWidget* FirstControl() override { return ComboUserSpell[0]; }

    void ClickUserSpell(int list);  // 0 to 15

    QLabel* LabelUserPages = nullptr;
    std::array<QGroupBox*, 2> Frame1{};
    std::array<SpellChoice*, kUserLists> ComboUserSpell{};

  private:
    // All lists show the same entries.
    QStandardItemModel m_entries;
};

// The entry of a spell row, " 1 - Clumsy".
std::string UserSpellEntry(i32 row, const std::string& name);

}  // namespace spellwick
