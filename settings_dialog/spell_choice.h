// A list of spells that finds a spell as its name is typed, although the entries begin with
// numbers.
#pragma once

#include <QElapsedTimer>
#include <QListView>
#include <QString>

#include "settings_dialog/controls.h"

namespace spellwick {

// The row, after or at `from`, of the next entry "4 - Heal" whose name begins like this, or, if
// none does, that itself begins like this; without regard to case. -1 if there is none.
int NextSpellEntry(const QAbstractItemModel& entries, int from, const QString& typed);

// The open list.
class SpellList : public QListView {
    Q_OBJECT

  public:
    explicit SpellList(QWidget* parent = nullptr) : QListView(parent) {}

    // What is typed within a moment counts together; the same letter again goes to the next name.
    void keyboardSearch(const QString& search) override;

  private:
    QString m_typed;
    QElapsedTimer m_since;
};

class SpellChoice : public ChoiceBox {
    Q_OBJECT

  public:
    using ChoiceBox::ChoiceBox;

    void showPopup() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // Costly, and most lists are never opened.
    void MakeList();

    bool m_hasList = false;
};

}  // namespace spellwick
