// Another window than the one under test, which has taken the front from it.
#pragma once

#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace spellwick {

class WindowInFront : public QWidget {
  public:
    WindowInFront() {
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }
};

}  // namespace spellwick
