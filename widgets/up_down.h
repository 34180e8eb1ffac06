// The pair of small arrows beside a counter: they step the counter's number by one, from 0 to the
// most that it may show.
#pragma once

#include <QLineEdit>

#include "text/number_types.h"
#include "widgets/arrow_pair.h"

namespace spellwick {

inline constexpr i32 kMostCounted = 999;

// The number after a step up (+1) or down (-1) from a counter's text, 0 to `most`.
i32 SteppedCounter(const QString& text, int step, i32 most = kMostCounted);

class UpDown : public ArrowPair {
    Q_OBJECT

  public:
    UpDown(QLineEdit& buddy, QWidget* parent, i32 most = kMostCounted);

    // Writes the counter, then reports the change; at the end of the range nothing changes.
    void Step(int step);

    QAccessible::Role SpokenRole() const override { return QAccessible::SpinBox; }
    QVariant SpokenNumber() const override { return SteppedCounter(m_buddy.text(), 0, m_most); }
    void SetSpokenNumber(int number) override;
    int MostSpoken() const override { return m_most; }

  signals:
    void Changed();

  private:
    QLineEdit& m_buddy;
    i32 m_most;
};

}  // namespace spellwick
