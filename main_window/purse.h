// The thirteen counters of the bag in use, with their arrows and the list of bags.
#pragma once

#include <QComboBox>
#include <QObject>
#include <QWidget>
#include <array>
#include <functional>

#include "main_window/circle_page.h"
#include "main_window/services.h"
#include "widgets/counter_box.h"
#include "widgets/up_down.h"

namespace spellwick {

// List of bags: an editable list that tells when the focus leaves its text.
class BagList : public QComboBox {
    Q_OBJECT

  public:
    explicit BagList(QWidget* parent);

  signals:
    void LostFocus();

  protected:
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

class Purse : public QObject {
    Q_OBJECT

  public:
    Purse(const MainWindowServices& services, QWidget* form);

    // Texts of the counters as they stand.
    CounterTexts Counters() const;
    std::string CounterText(i32 reagent) const;
    void SetCounterText(i32 reagent, const std::string& text);

    // Stores the number that a counter shows into the bag in use.
    void StoreCounter(i32 reagent);

    void Highlight(const SpellRecord& spell);
    void ClearHighlight();

    // Steps of the load of a player.
    void ShowBagNames();
    void SelectBag();
    void ShowStock();
    void ShowCounter(i32 reagent);

    // Runs the handlers of an entry that has lost the focus without the toolkit saying so, as in a
    // window that is not the active one.
    void CommitPending();

    void ReagentGotFocus(i32 reagent);
    void ReagentLostFocus(i32 reagent);
    void BagTextEdited();
    void BagClicked();
    void BagLostFocus();

    i32 FocusedReagent() const { return m_focusedReagent; }

    CounterBox& Reagent(i32 reagent) { return *m_reagents(reagent); }
    UpDown& Arrows(i32 reagent) { return *m_upDowns(reagent); }
    QWidget& ImgReg(int k) { return *m_imgReg[static_cast<std::size_t>(k)]; }
    // Called after every change that can move a castable amount.
    std::function<void()> OnAmountsChanged = [] {};

    BagList* ComboReagent = nullptr;

  private:
    void MakeCounter(i32 reagent, QWidget* form);
    void RewriteBagEntry(int selected);

    const MainWindowServices& m_services;
    SharedState& m_state;
    FixedTable<CounterBox*, 1, kReagentCount> m_reagents;
    FixedTable<UpDown*, 1, kReagentCount> m_upDowns;
    std::array<QWidget*, kReagentCount> m_imgReg{};
    i32 m_focusedReagent = 0;
    bool m_bagNameChanged = false;
    int m_clickedBag = -1;
};

}  // namespace spellwick
