#include "platform/linux/bridge_process.h"

#include <array>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/pipe.h"

namespace spellwick {

namespace {

constexpr const char* kProgram = "spellwick-bridge";

// Signals as they are at a program's start: this one may hold some back.
int Spawn(const std::string& program, int input, int words, pid_t& process) {
    std::string name = kProgram;
    std::string option = "--end-with-input";
    std::array<char*, 3> arguments{name.data(), option.data(), nullptr};
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, words, STDERR_FILENO);
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    // A name without a slash is searched for on the path.
    const int error =
        posix_spawnp(&process, program.c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

// The first line that has come.
std::string FirstLine(const FileDescriptor& words) {
    std::array<char, 512> bytes{};
    const ssize_t count = read(words.Number(), bytes.data(), bytes.size());
    const std::string text(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return text.substr(0, text.find('\n'));
}

}  // namespace

BridgeProcess::BridgeProcess(std::vector<std::filesystem::path> folders)
    : m_folders(std::move(folders)) {}

std::string BridgeProcess::FindProgram() const {
    for (const std::filesystem::path& folder : m_folders) {
        std::string program = (folder / kProgram).string();
        if (access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return kProgram;
}

void BridgeProcess::Start() {
    Reap();
    if (m_process != 0) {
        return;
    }
    m_trouble.clear();
    Pipe input = MakePipe();
    Pipe words = MakePipe();
    pid_t process = 0;
    const int error = !input.reader || !words.reader ? EMFILE
                                                     : Spawn(FindProgram(), input.reader.Number(),
                                                             words.writer.Number(), process);
    if (error == ENOENT) {
        m_trouble = "spellwick-bridge is not installed.";
    } else if (error != 0) {
        m_trouble = std::string("spellwick-bridge cannot be started: ") + std::strerror(error);
    } else {
        m_process = process;
        m_input = std::move(input.writer);
        m_words = std::move(words.reader);
        fcntl(m_words.Number(), F_SETFL, O_NONBLOCK);
    }
}

void BridgeProcess::Stop() {
    m_input.Close();
    m_words.Close();
    if (m_process != 0) {
        m_ending.push_back(std::exchange(m_process, 0));
    }
    m_trouble.clear();
    Reap();
}

std::string BridgeProcess::Trouble() {
    Reap();
    return m_trouble;
}

void BridgeProcess::Reap() {
    std::erase_if(m_ending, [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
    if (m_process != 0 && waitpid(m_process, nullptr, WNOHANG) != 0) {
        m_process = 0;
        const std::string words = FirstLine(m_words);
        m_trouble = words.empty() ? "spellwick-bridge has ended." : words;
        m_input.Close();
        m_words.Close();
    }
}

std::vector<std::filesystem::path> BridgeFolders() {
    std::error_code ignored;
    return {std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path(),
            "/usr/lib/spellwick"};
}

}  // namespace spellwick
