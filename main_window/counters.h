// The controls of the thirteen counters of the bag in use, with their arrows and the list of bags.
#pragma once

#include <QComboBox>
#include <QObject>
#include <QWidget>
#include <array>

#include "main_window/services.h"
#include "widgets/counter_box.h"
#include "widgets/guarded_events.h"
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

class Counters : public QObject {
    Q_OBJECT

  public:
    Counters(const MainWindowServices& services, QWidget* form);

    void Show(const Screen& screen, const Changes& changes);

    // Moves the focus to a counter, 1 to 13, and selects its text.
    void Focus(i32 reagent);

    CounterBox& Reagent(i32 reagent) { return *m_reagents(reagent); }
    UpDown& Arrows(i32 reagent) { return *m_upDowns(reagent); }
    QWidget& ImgReg(int k) { return *m_imgReg[static_cast<std::size_t>(k)]; }

    BagList* ComboReagent = nullptr;

  private:
    void MakeCounter(i32 reagent, QWidget* form);
    void ShowBags(const Screen& screen);

    const MainWindowServices& m_services;
    Companion& m_companion;
    GuardedEvents m_events;
    FixedTable<CounterBox*, 1, kReagentCount> m_reagents;
    FixedTable<UpDown*, 1, kReagentCount> m_upDowns;
    std::array<QWidget*, kReagentCount> m_imgReg{};
};

}  // namespace spellwick
