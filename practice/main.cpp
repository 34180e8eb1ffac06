// spellwick-practice-game: a stand-in for the game's client, for trying and testing Spellwick. It
// shows and writes down every key that reaches its window.

#include <QApplication>
#include <QCommandLineParser>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

#include "practice/commands.h"
#include "practice/game_window.h"
#include "practice/roster.h"

namespace {

using spellwick::practice::GameCommand;
using spellwick::practice::GameWindow;
using spellwick::practice::JournalEntry;

void WriteLine(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

// Reads what has arrived on standard input; false at its end.
bool ReadCommands(std::string& pending, GameWindow& window) {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        return count < 0 && errno == EINTR;
    }
    pending.append(buffer.data(), static_cast<std::size_t>(count));
    for (std::size_t end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
        const std::string line = pending.substr(0, end);
        pending.erase(0, end + 1);
        const auto command = spellwick::practice::ParseCommand(line);
        if (!command) {
            std::fprintf(stderr, "spellwick-practice-game: unknown command: %s\n", line.c_str());
        } else if (command->kind == GameCommand::Kind::kQuit) {
            QCoreApplication::quit();
        } else {
            window.Obey(*command);
        }
    }
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Qt makes the window class, which must be the game's, from these two names unchanged.
    QCoreApplication::setApplicationName(
        QString::fromLatin1(spellwick::practice::kWindowClass.data()));
    std::string nameOption = "-name";
    std::string name(spellwick::practice::kWindowClass);
    std::vector<char*> arguments{argv[0], nameOption.data(), name.data()};
    for (int index = 1; index < argc; ++index) {
        arguments.push_back(argv[index]);
    }
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    const QApplication application(count, arguments.data());

    QCommandLineParser parser;
    parser.setApplicationDescription(QObject::tr("A practice game for Spellwick."));
    const QCommandLineOption journalOption(QStringLiteral("journal"),
                                           QObject::tr("Also append the journal to <file>."),
                                           QStringLiteral("file"));
    parser.addOption(journalOption);
    parser.addHelpOption();
    parser.process(application);

    std::ofstream journal;
    if (parser.isSet(journalOption)) {
        journal.open(parser.value(journalOption).toStdString(), std::ios::app);
        if (!journal) {
            std::fputs("spellwick-practice-game: cannot write the journal file\n", stderr);
            return 2;
        }
    }

    GameWindow window([&journal](const JournalEntry& entry) {
        const std::string line = WrittenEntry(entry);
        WriteLine(line);
        if (journal.is_open()) {
            journal << line << '\n' << std::flush;
        }
    });
    window.show();
    WriteLine("window " + std::to_string(window.winId()));

    std::string pending;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (!ReadCommands(pending, window)) {
            input.setEnabled(false);
        }
    });
    return QApplication::exec();
}
