// The page of eight spells: its buttons, icons, figures and the lines about the spell under the
// mouse.
#pragma once

#include <QLabel>
#include <QObject>
#include <array>
#include <functional>

#include "main_window/cell_label.h"
#include "main_window/services.h"
#include "main_window/spell_icon.h"
#include "model/castable_amount.h"
#include "model/spell_lookup.h"
#include "widgets/page_button.h"
#include "widgets/pictures.h"

namespace spellwick {

// What the page needs of the counters beside it.
class PurseView {
  public:
    virtual ~PurseView() = default;

    virtual CounterTexts Counters() const = 0;
    // Colours the counters by what a spell needs.
    virtual void Highlight(const SpellRecord& spell) = 0;
    // Commits an edit of the tithing points that is under way.
    virtual void CommitTithes() = 0;
};

class CirclePage : public QObject {
    Q_OBJECT

  public:
    CirclePage(const MainWindowServices& services, Pictures& pictures, QWidget* form);

    void SetPurse(PurseView& purse) { m_purse = &purse; }

    // Checks the button of circle 1 without any effect beyond that.
    void InitCircleButtons();
    void ClearSpellLabels();

    // Repaints the page, then its chances and amounts.
    void UpdatePage();
    void UpdateChances();
    void UpdateAmounts();

    // Row of a slot (0 to 7) of the page shown.
    i32 SpellAtSlot(i32 slot) const;

    // The same as a click on a page button (0 to 13).
    void ClickCheckCircle(int index);
    void Hover(int slot);

    // Shows CurrentMana in brackets.
    void ShowCurrentMana();

    // Called for a click that casts, with the slot.
    std::function<void(int)> OnCastWanted = [](int) {};

    std::array<PageButton*, kPageButtonCount> CheckCircle{};
    std::array<SpellIcon*, kSlotCount> SpellIcons{};
    std::array<CellLabel*, kSlotCount> LabelAmount{};
    std::array<CellLabel*, kSlotCount> LabelChance{};
    std::array<QLabel*, 2> Image1{};
    QLabel* LabelName = nullptr;
    QLabel* LabelWords = nullptr;
    QLabel* LabelMana = nullptr;
    QLabel* LabelCost = nullptr;
    QLabel* LabelCurrentMana = nullptr;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeButtons(QWidget* form);
    void MakeSlots(QWidget* form);
    void MakeLabels(QWidget* form);
    i32 PressedButton() const;
    void PressIcon(int slot, i16 button, i16 shift);

    const MainWindowServices& m_services;
    SharedState& m_state;
    Pictures& m_pictures;
    PurseView* m_purse = nullptr;
};

}  // namespace spellwick
