// The Reagent Management tab: two of the ten bags side by side, moves between them, and totals.
// Every change takes effect at once.
#pragma once

#include <QLabel>
#include <QToolButton>
#include <array>

#include "model/bag_transfer.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/reagent_pictures.h"
#include "settings_dialog/settings_tab.h"
#include "settings_dialog/transfer_arrows.h"
#include "widgets/counter_box.h"
#include "widgets/up_down.h"

namespace spellwick {

class ReagentsTab : public SettingsTab {
    Q_OBJECT

  public:
    ReagentsTab(const SettingsServices& services, QWidget* parent);

    void Load() override { ShowReagentType(); }
    void Refresh() override;
    QWidget* FirstControl() override { return ComboTransfer[0]; }

    void UpdateReagentTotals();
    void ShowReagentType();

    // Handles the choice of a bag in list 0 or 1.
    void ClickTransfer(int list);
    // Reagents are 1 to 13.
    void ClickArrow(i32 reagent, BagSide to);
    void CountLostFocus(BagSide side, i32 reagent);
    void ArrowsChangedCount(BagSide side, i32 reagent);

    CounterBox& ReagentLeft(i32 reagent) { return *m_lines(reagent).left.count; }
    CounterBox& ReagentRight(i32 reagent) { return *m_lines(reagent).right.count; }
    UpDown& UpDownLeft(i32 reagent) { return *m_lines(reagent).left.upDown; }
    UpDown& UpDownRight(i32 reagent) { return *m_lines(reagent).right.upDown; }
    TransferArrows& UpDown1(i32 reagent) { return *m_lines(reagent).arrows; }
    QLabel& LabelTotal(i32 reagent) { return *m_lines(reagent).total; }
    // The stock of all bags, as last added up.
    i16 ReagentTotal(i32 reagent) const { return m_reagentTotal(reagent); }

    std::array<ChoiceBox*, 2> ComboTransfer{};
    std::array<QToolButton*, 2> RegType{};
    ReagentPictures* PicRegsL;
    ReagentPictures* PicRegsR;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct Side {
        QLabel* name = nullptr;
        UpDown* upDown = nullptr;
        CounterBox* count = nullptr;
    };
    struct Line {
        Side left;
        TransferArrows* arrows = nullptr;
        Side right;
        QLabel* total = nullptr;
    };

    void MakeTypes();
    void MakeLine(i32 reagent);
    Side MakeSide(BagSide side, i32 reagent);
    void PlaceControls();
    void PlaceLine(i32 reagent);
    BagPair Bags() const;
    i32 BagOf(BagSide side) const;  // -1 for none
    CounterBox& Count(BagSide side, i32 reagent);
    void ShowCount(BagSide side, i32 reagent);
    void ShowInMainWindow(i32 reagent);

    FixedTable<Line, 1, kReagentCount> m_lines;
    FixedTable<i16, 1, kReagentCount> m_reagentTotal;
    QLabel* m_totalHeading;
};

}  // namespace spellwick
