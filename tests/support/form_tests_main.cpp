// The main function of tests that need the toolkit: offscreen, in the program's style.
#include <QApplication>

#include <gtest/gtest.h>

#include "tests/support/font_size.h"
#include "tests/support/main_window_fixture.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication toolkit(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    spellwick::TakeFontSize();
    spellwick::CollectWarnings();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
