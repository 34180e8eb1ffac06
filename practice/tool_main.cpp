// spellwick-practice-tool: a stand-in for an assist tool, for trying and testing Spellwick. It
// answers and reports by a script, casts what the practice game has seen, and plays faults.

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <cstdio>
#include <string>

#include <unistd.h>

#include "practice/console.h"
#include "practice/journal_watch.h"
#include "practice/practice_tool.h"
#include "practice/tool_window.h"

namespace {

using spellwick::practice::JournalWatch;
using spellwick::practice::PracticeTool;
using spellwick::practice::ToolCommand;
using spellwick::practice::ToolEvent;
using spellwick::practice::ToolTime;
using spellwick::practice::WriteLine;

void WriteEvent(const ToolEvent& event) {
    std::string line = event.second ? "2 " : "";
    if (event.way != ToolEvent::Way::kNote) {
        line += event.way == ToolEvent::Way::kIn ? "in " : "out ";
    }
    WriteLine(line + event.text.toStdString());
}

std::string State(const PracticeTool& tool) {
    return "state open " + std::to_string(static_cast<int>(tool.IsOpen())) + " connected " +
           std::to_string(tool.Connections()) + " registered " +
           std::to_string(tool.Script().Registered().size()) + " mana " +
           std::to_string(tool.Script().Mana());
}

// Carries out commands and answers them.
class Operator {
  public:
    explicit Operator(PracticeTool& tool) : m_tool(tool) {
        QObject::connect(&tool, &PracticeTool::Changed, &tool, [this] { WriteQuiet(); });
    }

    void Obey(const std::string& line) {
        const auto command = spellwick::practice::ParseToolCommand(line);
        if (!command) {
            WriteLine("unknown " + line);
            return;
        }
        if (command->kind == ToolCommand::Kind::kQuit) {
            QCoreApplication::quit();
        } else if (command->kind == ToolCommand::Kind::kState) {
            WriteLine(State(m_tool));
        } else {
            m_waits = m_waits || command->kind == ToolCommand::Kind::kWait;
            m_tool.Obey(*command);
        }
        WriteLine("done " + line);
        WriteQuiet();
    }

  private:
    void WriteQuiet() {
        if (m_waits && m_tool.Quiet()) {
            m_waits = false;
            WriteLine("quiet");
        }
    }

    PracticeTool& m_tool;
    bool m_waits = false;
};

QString Help() {
    QString help = QObject::tr("A practice assist tool for Spellwick.") + QStringLiteral("\n\n") +
                   QString::fromLatin1(spellwick::practice::kToolCommandHelp);
    for (const auto& row : spellwick::practice::AllFaults()) {
        help += QStringLiteral("\n  %1 %2")
                    .arg(QString::fromLatin1(row.name.data()), -17)
                    .arg(QString::fromLatin1(row.caption.data()));
    }
    return help;
}

struct Options {
    Options() {
        parser.setApplicationDescription(Help());
        parser.addOptions({socket, game, tool});
        parser.addHelpOption();
    }

    // Not "name": the toolkit takes that for its own.
    const QCommandLineOption socket{QStringLiteral("socket"),
                                    QObject::tr("Listen on <name>.sock, \"practice\" by default."),
                                    QStringLiteral("name"), QStringLiteral("practice")};
    const QCommandLineOption game{QStringLiteral("game"),
                                  QObject::tr("Follow the journal that the practice game writes to "
                                              "<file>, and report what happens in it."),
                                  QStringLiteral("file")};
    const QCommandLineOption tool{
        QStringLiteral("tool"),
        QObject::tr("Pretend to be uoassist (by default), razor, razor-enhanced or classicuo."),
        QStringLiteral("tool"), QStringLiteral("uoassist")};
    QCommandLineParser parser;
};

int Refuse(const char* reason) {
    std::fprintf(stderr, "spellwick-practice-tool: %s\n", reason);
    return 2;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("spellwick-practice-tool"));
    const QApplication application(argc, argv);
    Options options;
    const QCommandLineParser& parser = options.parser;
    options.parser.process(application);

    const auto* role = spellwick::practice::FindToolRole(parser.value(options.tool).toStdString());
    if (role == nullptr) {
        return Refuse("there is no such tool to pretend to be");
    }

    QElapsedTimer clock;
    clock.start();
    PracticeTool tool({
        .folder = spellwick::practice::ToolFolder(),
        .name = parser.value(options.socket),
        .clock = [&clock] { return ToolTime(clock.elapsed()); },
        .random =
            [](int lowest, int highest) {
                return QRandomGenerator::global()->bounded(lowest, highest + 1);
            },
        .role = role,
    });
    QObject::connect(&tool, &PracticeTool::Happened, &tool, WriteEvent);
    spellwick::practice::ToolWindow window(tool);

    JournalWatch journal;
    if (parser.isSet(options.game)) {
        QObject::connect(&journal, &JournalWatch::Line, &tool, &PracticeTool::Watch);
        if (!journal.Follow(parser.value(options.game))) {
            return Refuse("cannot read the journal file");
        }
    }
    if (!tool.Open()) {
        return 2;
    }
    window.show();

    Operator toolOperator(tool);
    spellwick::practice::Console console([&](const std::string& line) { toolOperator.Obey(line); });
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (!console.Read()) {
            input.setEnabled(false);
        }
    });
    return QApplication::exec();
}
