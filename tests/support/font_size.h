// The size of the desktop's font for a whole run.
#pragma once

#include <QApplication>
#include <QFont>

namespace spellwick {

// Points from the environment's SPELLWICK_TEST_FONT; the platform's own size without it.
inline void TakeFontSize() {
    bool isSet = false;
    const int points = qEnvironmentVariableIntValue("SPELLWICK_TEST_FONT", &isSet);
    if (isSet) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
}

}  // namespace spellwick
