// Start of the program.
#include <QApplication>
#include <cstdio>
#include <exception>
#include <future>

#include "app/application.h"
#include "app/command_line.h"
#include "app/event_log.h"
#include "platform/system.h"

namespace {

constexpr int kCannotStart = 2;

int Refuse(const std::string& trouble) {
    std::fprintf(stderr, "spellwick: %s\n", trouble.c_str());
    return kCannotStart;
}

int Run(int argc, char** argv, const spellwick::Options& options,
        std::shared_ptr<const void> display, std::unique_ptr<spellwick::SettingsOwner> owner) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    // What is left may be an option of nobody, which must open nothing.
    std::future<spellwick::System> opening;
    if (argc <= 1) {
        opening = spellwick::OpenSystem(options, std::move(display));
    }
    QApplication toolkit(argc, argv);
    if (const std::string unknown = spellwick::UnknownArgument(argc, argv); !unknown.empty()) {
        return Refuse(unknown);
    }
    QApplication::setApplicationName(QStringLiteral("spellwick"));
    QGuiApplication::setDesktopFileName(QStringLiteral("spellwick"));
    QApplication::setQuitOnLastWindowClosed(false);
    if (!opening.valid()) {
        opening = spellwick::OpenSystem(options, std::move(display));
    }
    spellwick::System system = opening.get();
    system.owner = std::move(owner);
    spellwick::Application application(std::move(system));
    if (const std::optional<int> exitCode = application.Start()) {
        return *exitCode;
    }
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const spellwick::CommandLine line = spellwick::TakeOptions(arguments);
    if (!line.trouble.empty()) {
        return Refuse(line.trouble);
    }
    if (!line.answer.empty()) {
        std::fputs(line.answer.c_str(), stdout);
        return 0;
    }
    std::optional<spellwick::EventLog> log;
    if (line.log.file) {
        log.emplace(*line.log.file, line.log.details);
        if (!log->Trouble().empty()) {
            return Refuse(log->Trouble());
        }
    }
    spellwick::Preparation prepared = spellwick::PrepareProcess();
    if (!prepared.trouble.empty()) {
        return Refuse(prepared.trouble);
    }
    try {
        spellwick::Ownership settings = spellwick::OwnSettings(line.options);
        if (settings.another) {
            return 0;
        }
        const int left = static_cast<int>(arguments.size());
        arguments.push_back(nullptr);
        return Run(left, arguments.data(), line.options, std::move(prepared.display),
                   std::move(settings.owner));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "spellwick: %s\n", failure.what());
        return 1;
    }
}
