// A box for a number with its small commands: takes digits and signs, and drops all other keys with
// a beep.
#pragma once

#include "widgets/entry_box.h"

namespace spellwick {

class CounterBox : public EntryBox {
    Q_OBJECT

  public:
    explicit CounterBox(QWidget* parent);

  signals:
    void KeyDropped();
    void Stepped(int step);  // up or down arrow key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace spellwick
