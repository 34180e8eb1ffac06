#include "tests/bridge/wine_desk.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/support/x_session.h"

namespace spellwick::testing_support {

using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

constexpr const char* kWine = "/usr/lib/wine/wine64";
constexpr const char* kWineServer = "/usr/lib/wine/wineserver";

std::string ReadFile(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
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
    for (const fs::directory_entry& process : fs::directory_iterator("/proc", trouble)) {
        const std::string variables = ReadFile(process.path() / "environ");
        if (variables.find("WINEPREFIX=" + m_path.string()) == std::string::npos) {
            continue;
        }
        std::string command = ReadFile(process.path() / "cmdline");
        std::ranges::replace(command, '\0', ' ');
        for (const fs::directory_entry& thread :
             fs::directory_iterator(process.path() / "task", trouble)) {
            lines += process.path().filename().string() + ' ' + command + "thread " +
                     thread.path().filename().string() + ": " + ReadFile(thread.path() / "wchan") +
                     ' ' + ReadFile(thread.path() / "syscall");
        }
    }
    return lines;
}

void WinePrefixFolder::ShutDown() const {
    RunToEnd({kWineServer, "-k"}, Variables({}));
    RunToEnd({kWineServer, "-w"}, Variables({}));
}

}  // namespace spellwick::testing_support
