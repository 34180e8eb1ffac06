// The controls of the page of eight spells: its buttons, icons, figures and the lines about the
// spell under the mouse.
#pragma once

#include <QLabel>
#include <QObject>
#include <array>

#include "main_window/cell_label.h"
#include "main_window/services.h"
#include "main_window/spell_icon.h"
#include "model/spell_lookup.h"
#include "widgets/guarded_events.h"
#include "widgets/page_button.h"
#include "widgets/pictures.h"

namespace spellwick {

class CirclePage : public QObject {
    Q_OBJECT

  public:
    CirclePage(const MainWindowServices& services, Pictures& pictures, QWidget* form);

    // The page, its icons and its lines.
    void Show(const Screen& screen, const Changes& changes);
    // The chances and the amounts, which come last of what the window shows.
    void ShowFigures(const Screen& screen, const Changes& changes);

    // How many icons stand in a row, for the arrow keys: 4 or 8.
    void SetColumns(int columns) { m_columns = columns; }

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

  signals:
    // The right mouse button asks for all that is known about a row.
    void InfoWanted(spellwick::i32 row);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeButtons(QWidget* form);
    void MakeSlots(QWidget* form);
    void MakeLabels(QWidget* form);
    void PressIcon(int slot, i16 button, i16 shift);
    // The eight icons are one stop of the Tab key: the one that had the focus last.
    void FocusIcon(int slot);
    void StepFrom(int slot, int columns, int rows);
    void ShowIcon(std::size_t slot, const SlotScreen& shown);
    void ShowSpellLines(const Screen& screen);

    Companion& m_companion;
    GuardedEvents m_events;
    Pictures& m_pictures;
    int m_columns = kSlotCount;
};

}  // namespace spellwick
