// spellwick-practice-game: a stand-in for the game's client, for trying and testing Spellwick. It
// shows and writes down every key that reaches its window.

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QSocketNotifier>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <unistd.h>

#include "practice/commands.h"
#include "practice/console.h"
#include "practice/game_window.h"
#include "practice/macro_file.h"
#include "practice/roster.h"

namespace {

using spellwick::practice::Client;
using spellwick::practice::GameCommand;
using spellwick::practice::GameWindow;
using spellwick::practice::JournalEntry;
using spellwick::practice::MacroKey;
using spellwick::practice::Modifiers;
using spellwick::practice::Play;
using spellwick::practice::WriteLine;

void Obey(const std::string& line, GameWindow& window) {
    const auto command = spellwick::practice::ParseCommand(line);
    if (!command) {
        std::fprintf(stderr, "spellwick-practice-game: unknown command: %s\n", line.c_str());
    } else if (command->kind == GameCommand::Kind::kQuit) {
        QCoreApplication::quit();
    } else {
        window.Obey(*command);
    }
}

// The client that the options name, before the toolkit reads them: it makes the window class from
// names that it wants at once. The classic one for an unknown name, which is refused later.
Client NamedClient(const std::vector<std::string_view>& arguments) {
    constexpr std::string_view kOption = "--client";
    Client client = Client::kClassic;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view word = arguments[index];
        std::string_view value;
        if (word == kOption && index + 1 < arguments.size()) {
            value = arguments[index + 1];
        } else if (word.starts_with("--client=")) {
            value = word.substr(kOption.size() + 1);
        }
        client = spellwick::practice::ClientOfName(value).value_or(client);
    }
    return client;
}

// The keys of a macros.xml. None if it cannot be read.
std::optional<std::vector<MacroKey>> ReadMacros(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? spellwick::practice::ReadMacroFile(file) : std::nullopt;
}

struct Options {
    Options() {
        parser.setApplicationDescription(QObject::tr("A practice game for Spellwick."));
        parser.addOptions({journal, client, macros, chat});
        parser.addHelpOption();
    }

    const QCommandLineOption journal{QStringLiteral("journal"),
                                     QObject::tr("Also append the journal to <file>."),
                                     QStringLiteral("file")};
    const QCommandLineOption client{
        QStringLiteral("client"),
        QObject::tr("Plays <client>: classic, orion, crossuo, classicuo or tazuo."),
        QStringLiteral("client"), QStringLiteral("classic")};
    const QCommandLineOption macros{
        QStringLiteral("macros"),
        QObject::tr("Reads the macro keys of classicuo or tazuo from <file>, a macros.xml."),
        QStringLiteral("file")};
    const QCommandLineOption chat{
        QStringLiteral("enter-opens-chat"),
        QObject::tr("Enter opens the chat line, as classicuo and tazuo can be set to.")};
    QCommandLineParser parser;
};

// What to play; nothing, with the reason in `trouble`, if the options do not fit together.
std::optional<Play> ReadPlay(const Options& options, Client client, const char*& trouble) {
    const QCommandLineParser& parser = options.parser;
    if (!spellwick::practice::ClientOfName(parser.value(options.client).toStdString())) {
        trouble = "unknown client";
        return std::nullopt;
    }
    Play play{.client = client};
    play.keys.emptyEnter = spellwick::practice::EmptyEnterOf(client, parser.isSet(options.chat));
    if (!parser.isSet(options.macros)) {
        return play;
    }
    const auto macros = ReadMacros(parser.value(options.macros));
    if (!spellwick::practice::HasMacroFile(client) || !macros) {
        trouble = macros ? "this client has no macros.xml" : "cannot read the macros";
        return std::nullopt;
    }
    play.keys.spellOf = [keys = *macros](Modifiers modifiers, const std::string& key) {
        for (const MacroKey& macro : keys) {
            if (macro.modifiers == modifiers && macro.key == key) {
                return macro.spell;
            }
        }
        return std::string();
    };
    return play;
}

int Refuse(const char* reason) {
    std::fprintf(stderr, "spellwick-practice-game: %s\n", reason);
    return 2;
}

}  // namespace

int main(int argc, char* argv[]) {
    const Client client = NamedClient({argv, argv + argc});
    // Qt makes the window class, which must be the game's, from these two names unchanged.
    std::string name(spellwick::practice::WindowClassOf(client));
    QCoreApplication::setApplicationName(QString::fromStdString(name));
    std::string nameOption = "-name";
    std::vector<char*> arguments{argv[0], nameOption.data(), name.data()};
    for (int index = 1; index < argc; ++index) {
        arguments.push_back(argv[index]);
    }
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    const QApplication application(count, arguments.data());

    Options options;
    options.parser.process(application);
    std::ofstream journal;
    if (options.parser.isSet(options.journal)) {
        journal.open(options.parser.value(options.journal).toStdString(), std::ios::app);
        if (!journal) {
            return Refuse("cannot write the journal file");
        }
    }
    const char* trouble = nullptr;
    std::optional<Play> play = ReadPlay(options, client, trouble);
    if (!play) {
        return Refuse(trouble);
    }

    GameWindow window(
        [&journal](const JournalEntry& entry) {
            const std::string line = WrittenEntry(entry);
            WriteLine(line);
            if (journal.is_open()) {
                journal << line << '\n' << std::flush;
            }
        },
        std::move(*play));
    window.show();
    WriteLine("window " + std::to_string(window.winId()));

    spellwick::practice::Console console([&](const std::string& line) { Obey(line, window); });
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (!console.Read()) {
            input.setEnabled(false);
        }
    });
    return QApplication::exec();
}
