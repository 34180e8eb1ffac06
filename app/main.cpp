// Start of the program.
#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <exception>

#include "app/application.h"
#include "platform/system.h"

int main(int argc, char** argv) {
    constexpr int kNoDisplay = 2;
    const std::string trouble = spellwick::PrepareProcess();
    if (!trouble.empty()) {
        std::fprintf(stderr, "spellwick: %s\n", trouble.c_str());
        return kNoDisplay;
    }
    try {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
        QApplication toolkit(argc, argv);
        QApplication::setApplicationName(QStringLiteral("spellwick"));
        QGuiApplication::setDesktopFileName(QStringLiteral("spellwick"));
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/pictures/spellwick-48.png")));
        QApplication::setQuitOnLastWindowClosed(false);
        spellwick::Application application(spellwick::OpenSystem());
        if (const std::optional<int> exitCode = application.Start()) {
            return *exitCode;
        }
        return QApplication::exec();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "spellwick: %s\n", failure.what());
        return 1;
    }
}
