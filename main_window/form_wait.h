// The little window that asks for patience while old data are converted.
#pragma once

#include <QLabel>
#include <QWidget>

#include "text/number_types.h"

namespace spellwick {

class FormWait : public QWidget {
    Q_OBJECT

  public:
    FormWait();

    // 0 to 100.
    void ShowPercent(i32 percent);

  private:
    QLabel* m_percent = nullptr;
};

}  // namespace spellwick
