// The window "Please wait".
#include "main_window/wait_notice.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace spellwick {
namespace {

FormWait* Window() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* wait = qobject_cast<FormWait*>(window)) {
            return wait;
        }
    }
    return nullptr;
}

std::string Text(int index) {
    return Window()
        ->findChild<QLabel*>(QStringLiteral("Label1(%1)").arg(index))
        ->text()
        .toStdString();
}

TEST(WaitNotice, Window_ShowsItsThreeLabelsAndThePercent) {
    WaitNotice notice;
    notice.ShowPercent(10);  // before there is a window
    EXPECT_EQ(Window(), nullptr);
    notice.ShowWait();
    notice.ServeEvents();
    ASSERT_NE(Window(), nullptr);
    EXPECT_TRUE(Window()->isVisible());
    EXPECT_FALSE(Window()->isModal());
    EXPECT_EQ(Window()->windowTitle(), "Please wait");
    EXPECT_EQ(Text(2), "Converting...");
    EXPECT_EQ(Text(1), "% done");
    for (const int percent : {10, 100}) {
        notice.ShowPercent(percent);
        notice.ServeEvents();
        EXPECT_EQ(Text(0), std::to_string(percent));
    }
    for (const QLabel* label : Window()->findChildren<QLabel*>()) {
        EXPECT_TRUE(Window()->rect().contains(label->geometry()));
        EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    }
    notice.ShowWait();  // at the next start of a conversion
    EXPECT_TRUE(Window()->isVisible());
    notice.CloseWait();
    EXPECT_EQ(Window(), nullptr);
}

TEST(WaitNotice, PercentHundred_DoesNotMoveTheWindow) {
    WaitNotice notice;
    notice.ShowWait();
    notice.ServeEvents();
    const QSize size = Window()->size();
    notice.ShowPercent(100);
    notice.ServeEvents();
    EXPECT_EQ(Window()->size(), size);
}

}  // namespace
}  // namespace spellwick
