// The Spells & Reagents tab: which reagents the eight spells of a page need, what they cost, which
// are in the book and which may be cast in town. Every change takes effect at once.
#pragma once

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <optional>

#include "model/spell_record.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/reagent_pictures.h"
#include "settings_dialog/settings_tab.h"
#include "widgets/counter_box.h"
#include "widgets/entry_box.h"

namespace spellwick {

inline constexpr int kSpellColumns = 8;
inline constexpr int kOtherColumns = 6;  // beyond Magery: reagents 9 to 13 and the tithes

class SpellsTab : public SettingsTab {
    Q_OBJECT

  public:
    SpellsTab(const SettingsServices& services, QWidget* parent);

    void Load() override;
    void Refresh() override { RefreshSpellPage(); }
    QWidget* FirstControl() override { return ComboSpellLevel; }
    QWidget* ControlFor(const Target& target) override;

    // Fills the tab for the page of ComboSpellLevel and recalculates the costs.
    void RefreshSpellPage();

    void ClickSpellLevel();
    void ReagentLostFocus(int cell);  // 1 to 64
    void ChangeRegPrice(int column);  // 0 to 7
    void ClickBook(int row);          // 0 to 7
    void ClickTown(int row);
    void ClickFill();
    void ClickEmpty();
    void ClickPics();

    // Cell 1 to 64: column c and row r, both from 0, are cell c * 8 + r + 1.
    EntryBox& Reagent(int cell) { return *m_reagents[static_cast<std::size_t>(cell - 1)]; }

    ChoiceBox* ComboSpellLevel;
    std::array<QLabel*, kSlotCount> LabelSpell{};
    std::array<QLineEdit*, kSlotCount> SpellPrice{};
    std::array<QCheckBox*, kSlotCount> CheckBook{};
    std::array<QCheckBox*, kSlotCount> CheckTown{};
    std::array<CounterBox*, kSpellColumns> RegPrice{};
    std::array<QLabel*, kSpellColumns> Label2{};
    ReagentPictures* PicRegHolder;
    QCheckBox* CheckPics;
    QPushButton* Command2;
    QPushButton* Command3;
    QFrame* Line2;

  private:
    void MakeRow(int row);
    void MakeColumn(int column);
    void MakePictures();
    void PlaceControls();
    void PlaceRows();
    int Page() const { return ComboSpellLevel->currentIndex(); }
    bool IsMageryPage() const;
    int Columns() const;
    i32 ReagentOfColumn(int column) const;
    i32 SpellRow(int row) const;
    void ShowColumn(int column);
    // Names the cells for screen readers by spell and reagent.
    void NameCells();
    void ShowPictures();
    void MarkSchool(bool inBook);
    // Calculates the costs of all spells. When one of them overflows, the prices go back to those
    // for which none did, so that the end of the program does not save the others.
    void Recalculate();

    std::optional<decltype(SharedState::RegPrice)> m_goodPrices;
    std::array<QWidget*, kSpellColumns> m_pictures{};
    std::array<EntryBox*, std::size_t{kSlotCount} * kSpellColumns> m_reagents{};
};

}  // namespace spellwick
