// A box for a number with its small commands: takes digits and signs, and drops all other keys with
// a beep.
#pragma once

#include <QFont>
#include <optional>

#include "widgets/entry_box.h"

namespace spellwick {

class CounterBox : public EntryBox {
    Q_OBJECT

  public:
    explicit CounterBox(QWidget* parent);

    // The font of a number that fits; a longer one gets a smaller font, so that no digit is lost.
    void SetNumberFont(const QFont& font);

  signals:
    void KeyDropped();
    void Stepped(int step);  // up or down arrow key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitNumber();

    std::optional<QFont> m_numberFont;
};

}  // namespace spellwick
