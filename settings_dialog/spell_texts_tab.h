// The Spell texts tab: what the character says with a spell.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <array>

#include "model/spell_record.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/settings_tab.h"

namespace spellwick {

class SpellTextsTab : public SettingsTab {
    Q_OBJECT

  public:
    SpellTextsTab(const SettingsServices& services, QWidget* parent);

    void Load() override;
    // Shows the switches and the suffix, which belong to the player, and the page.
    void Refresh() override;
    QWidget* FirstControl() override { return ComboSpellText; }
    bool TakesEntriesWhenLeft() const override { return false; }

    // Fills the names and texts for the page of ComboSpellText.
    void RefreshSpellTextPage();

    void ChangeText(int row);  // 0 to 7
    void ClickSendText();
    void ClickSendSuffix();
    void ChangeSuffix();

    // The name of the spell in row 0 to 7, "LabelSpell(8)" to "LabelSpell(15)".
    QLabel& LabelSpell(int row) { return *m_names[static_cast<std::size_t>(row)]; }

    ChoiceBox* ComboSpellText;
    std::array<QLineEdit*, kSlotCount> TextSpell{};
    QCheckBox* CheckSpellText;
    QCheckBox* CheckSendSuffix;
    QLineEdit* SpellSuffix;

  private:
    i32 SpellRow(int row) const { return ComboSpellText->currentIndex() * kSlotCount + row; }
    void PlaceControls();

    std::array<QLabel*, kSlotCount> m_names{};
};

}  // namespace spellwick
