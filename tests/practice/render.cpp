// Renders the practice assist tool's window, for looking at: render FOLDER [dark].
#include <QApplication>
#include <QEventLoop>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>

#include "practice/tool_window.h"

namespace spellwick::practice {
namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
}

void RenderAll(const QString& folder, const QString& tone) {
    const QTemporaryDir sockets;
    ToolTime now{0};
    PracticeTool tool({.folder = sockets.path() + QStringLiteral("/assist"),
                       .name = QStringLiteral("practice"),
                       .clock = [&now] { return now; },
                       .random = [](int lowest, int) { return lowest; }});
    ToolWindow window(tool);
    window.show();
    tool.Open();
    QLocalSocket program;
    program.connectToServer(tool.Path());
    program.write("send 1224 18874377 0\n");
    const auto serve = [&](ToolTime time) {
        now += time;
        tool.Obey({.kind = ToolCommand::Kind::kState});
        QEventLoop loop;
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
    };
    for (int step = 0; step < 5; ++step) {
        serve(ToolTime(500));
    }
    tool.Cast(QStringLiteral("Greater Heal"));
    serve(ToolTime(600));
    tool.Play(Fault::kUnknownItems);
    serve(ToolTime(10));
    window.grab().save(folder + QStringLiteral("/tool-%1.png").arg(tone));
    auto* faults = window.findChild<QMenu*>(QStringLiteral("Faults"));
    faults->popup(window.mapToGlobal(QPoint(0, 0)));
    faults->grab().save(folder + QStringLiteral("/faults-%1.png").arg(tone));
    faults->close();
    tool.Close();
    serve(ToolTime(100));
    window.grab().save(folder + QStringLiteral("/closed-%1.png").arg(tone));
}

}  // namespace
}  // namespace spellwick::practice

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication toolkit(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() < 2) {
        return 2;
    }
    const bool dark = words.contains(QStringLiteral("dark"));
    if (dark) {
        QApplication::setPalette(spellwick::practice::DarkPalette());
    }
    spellwick::practice::RenderAll(words.at(1),
                                   dark ? QStringLiteral("dark") : QStringLiteral("light"));
    return 0;
}
