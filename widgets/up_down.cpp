#include "widgets/up_down.h"

#include <algorithm>

#include "text/number_forms.h"
#include "widgets/texts.h"

namespace spellwick {

i32 SteppedCounter(const QString& text, int step, i32 most) {
    return ToI32(std::clamp(NumericPrefix(ToText(text)) + step, 0.0, static_cast<double>(most)));
}

UpDown::UpDown(QLineEdit& buddy, QWidget* parent, i32 most)
    : ArrowPair(Qt::Vertical, parent), m_buddy(buddy), m_most(most) {
    connect(this, &ArrowPair::Pressed, this,
            [this](Arrow arrow) { Step(arrow == Arrow::kFirst ? 1 : -1); });
}

void UpDown::Step(int step) {
    SetSpokenNumber(SteppedCounter(m_buddy.text(), step, m_most));
}

void UpDown::SetSpokenNumber(int wanted) {
    const QString number = QString::number(std::clamp(wanted, 0, m_most));
    if (number != m_buddy.text()) {
        m_buddy.setText(number);
        emit Changed();
    }
}

}  // namespace spellwick
