#include "tests/support/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace spellwick::testing_support {

using namespace std::chrono_literals;

namespace {

constexpr int kExecFailed = 127;

[[noreturn]] void BecomeProgram(const std::vector<std::string>& command,
                                const Environment& environment, int outputFile, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(kExecFailed);
    }
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(outputFile, STDOUT_FILENO);
    dup2(outputFile, STDERR_FILENO);
    for (const auto& [name, value] : environment) {
        if (value.empty()) {
            unsetenv(name.c_str());
        } else {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(kExecFailed);
}

// Waits until nobody has the other end of the pipe.
void AwaitEnd(int pipeEnd) {
    char nothing = 0;
    while (read(pipeEnd, &nothing, 1) < 0 && errno == EINTR) {
    }
}

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::Start(const std::vector<std::string>& command,
                                                  const Environment& environment) {
    // The child's end closes when it becomes the program. Until then it is this program once more.
    std::array<int, 2> start{};
    if (pipe2(start.data(), O_CLOEXEC) != 0) {
        return nullptr;
    }
    const int outputFile = memfd_create("output", MFD_CLOEXEC);
    if (outputFile < 0) {
        close(start[0]);
        close(start[1]);
        return nullptr;
    }
    fcntl(outputFile, F_SETFL, O_APPEND);
    const pid_t parent = getpid();
    const pid_t id = fork();
    if (id == 0) {
        BecomeProgram(command, environment, outputFile, parent);
    }
    close(start[1]);
    AwaitEnd(start[0]);
    close(start[0]);
    if (id < 0) {
        close(outputFile);
        return nullptr;
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(id, outputFile));
}

ChildProcess::~ChildProcess() {
    if (Runs()) {
        Signal(SIGTERM);
        if (!WaitForEnd(2s)) {
            Signal(SIGKILL);
            WaitForEnd(5s);
        }
    }
    close(m_outputFile);
}

bool ChildProcess::Runs() {
    return !WaitForEnd(0ms);
}

std::string ChildProcess::Output() const {
    std::string output;
    std::array<char, 65536> piece{};
    off_t position = 0;
    for (;;) {
        const ssize_t count = pread(m_outputFile, piece.data(), piece.size(), position);
        if (count <= 0) {
            return output;
        }
        output.append(piece.data(), static_cast<std::size_t>(count));
        position += count;
    }
}

std::optional<int> ChildProcess::WaitForEnd(std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!m_exitCode) {
        int status = 0;
        if (waitpid(m_id, &status, WNOHANG) == m_id) {
            m_exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
        } else if (std::chrono::steady_clock::now() >= deadline) {
            break;
        } else {
            std::this_thread::sleep_for(2ms);
        }
    }
    return m_exitCode;
}

void ChildProcess::Signal(int number) const {
    if (!m_exitCode) {
        kill(m_id, number);
    }
}

RunResult RunToEnd(const std::vector<std::string>& command, const Environment& environment,
                   std::chrono::milliseconds patience) {
    const auto child = ChildProcess::Start(command, environment);
    if (!child) {
        return {};
    }
    const std::optional<int> exitCode = child->WaitForEnd(patience);
    return {exitCode.value_or(-1), child->Output()};
}

bool HasProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "/usr/bin:/bin" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access(folder.append("/").append(name).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace spellwick::testing_support
