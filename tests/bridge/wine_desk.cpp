#include "tests/bridge/wine_desk.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "tests/support/file_bytes.h"
#include "tests/support/x_session.h"

namespace spellwick::testing_support {

using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

constexpr const char* kWine = "/usr/lib/wine/wine64";
constexpr const char* kWineServer = "/usr/lib/wine/wineserver";

// Their folders in /proc.
std::vector<fs::path> ProcessesIn(const fs::path& prefix) {
    std::vector<fs::path> processes;
    std::error_code trouble;
    for (const fs::directory_entry& process : fs::directory_iterator("/proc", trouble)) {
        const std::string variables = BytesOf(process.path() / "environ");
        if (variables.find("WINEPREFIX=" + prefix.string()) != std::string::npos) {
            processes.push_back(process.path());
        }
    }
    return processes;
}

// Each word with a blank behind it. Wine leaves more room behind the last than it takes.
std::string Command(const fs::path& process) {
    std::string command = BytesOf(process / "cmdline");
    command.resize(command.find_last_not_of('\0') + 2);
    std::ranges::replace(command, '\0', ' ');
    return command;
}

fs::path Programs() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

}  // namespace

std::string WinePrefixFolder::WhatIsMissing() {
    if (std::string missing = XSession::WhatIsMissing(); !missing.empty()) {
        return missing;
    }
    if (!fs::exists(kWine)) {
        return "not installed: wine64";
    }
    const bool built =
        fs::exists(Programs() / "wine_tool.exe") && fs::exists(Programs() / "spellwick-bridge.exe");
    return built ? "" : "not installed when this was built: g++-mingw-w64-x86-64-posix";
}

WinePrefixFolder::WinePrefixFolder() {
    std::string name = (fs::temp_directory_path() / "spellwick-prefix-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) {
        m_path = name;
        // What fails here fails in the first test.
        const Environment variables = Variables({{"DISPLAY", ""}});
        RunToEnd({SPELLWICK_UNDER_WINE, "wineboot", "-i"}, variables, 2min);
        RunToEnd({kWineServer, "-w"}, variables, 2min);
    }
}

WinePrefixFolder::~WinePrefixFolder() {
    if (!m_path.empty()) {
        ShutDown();
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
}

Environment WinePrefixFolder::Variables(Environment variables) const {
    variables["WINEPREFIX"] = m_path.string();
    return variables;
}

std::unique_ptr<ChildProcess> WinePrefixFolder::StartTool(const Environment& session,
                                                          const WineToolForm& form) const {
    return ChildProcess::Start({SPELLWICK_UNDER_WINE, (Programs() / "wine_tool.exe").string(),
                                form.kind, form.windowClass, form.title},
                               Variables(session));
}

std::unique_ptr<ChildProcess> WinePrefixFolder::StartBridge(const Environment& session) const {
    return ChildProcess::Start(
        {(Programs() / "spellwick-bridge").string(), "--verbose", "--prefix", m_path.string()},
        session);
}

std::string WinePrefixFolder::Threads() const {
    std::string lines;
    std::error_code trouble;
    for (const fs::path& process : ProcessesIn(m_path)) {
        for (const fs::directory_entry& thread :
             fs::directory_iterator(process / "task", trouble)) {
            lines += process.filename().string() + ' ' + Command(process) + "thread " +
                     thread.path().filename().string() + ": " + BytesOf(thread.path() / "wchan") +
                     ' ' + BytesOf(thread.path() / "syscall");
        }
    }
    return lines;
}

pid_t WinePrefixFolder::ProcessOf(const std::string& program) const {
    for (const fs::path& process : ProcessesIn(m_path)) {
        if (Command(process).ends_with(program + ' ')) {
            return std::stoi(process.filename().string());
        }
    }
    return 0;
}

void WinePrefixFolder::ShutDown() const {
    RunToEnd({kWineServer, "-k"}, Variables({}));
    RunToEnd({kWineServer, "-w"}, Variables({}));
}

}  // namespace spellwick::testing_support
