// Renders the practice assist tool's window.
#include "tests/support/render.h"

#include <QEventLoop>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>

#include "practice/tool_window.h"

namespace spellwick::practice {
namespace {

void RenderTool(const RenderTarget& target) {
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
    target.Save(window, QStringLiteral("tool"));
    auto* faults = window.findChild<QMenu*>(QStringLiteral("Faults"));
    faults->popup(window.mapToGlobal(QPoint(0, 0)));
    target.Save(*faults, QStringLiteral("faults"));
    faults->close();
    tool.Close();
    serve(ToolTime(100));
    target.Save(window, QStringLiteral("closed"));
}

}  // namespace
}  // namespace spellwick::practice

void spellwick::RenderForms(const RenderTarget& target) {
    practice::RenderTool(target);
}
