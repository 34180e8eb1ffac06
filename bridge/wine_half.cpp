#include "bridge/wine_half.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/pipe.h"

namespace spellwick::bridge {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kGoodbye{1};
constexpr std::chrono::milliseconds kBetweenLooks{5};

void StopBlocking(const FileDescriptor& descriptor) {
    fcntl(descriptor.Number(), F_SETFL, fcntl(descriptor.Number(), F_GETFL) | O_NONBLOCK);
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Its own group, so that Ctrl+C in a terminal reaches this half alone, and signals as they are at a
// program's start.
class SpawnSettings {
  public:
    SpawnSettings(int input, int output) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addchdir_np(&m_actions, "/");
        posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    const posix_spawn_file_actions_t* Actions() const { return &m_actions; }
    const posix_spawnattr_t* Attributes() const { return &m_attributes; }

  private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

}  // namespace

std::unique_ptr<WineHalf> WineHalf::Start(const WinePrefix& prefix,
                                          const std::filesystem::path& program,
                                          std::string& trouble) {
    Pipe in = MakePipe();
    Pipe out = MakePipe();
    if (!in.reader || !out.reader) {
        trouble = std::strerror(errno);
        return nullptr;
    }
    std::vector<std::string> command{prefix.wine.string(), program.string()};
    std::vector<std::string> variables = prefix.variables;
    const SpawnSettings settings(in.reader.Number(), out.writer.Number());
    pid_t process = 0;
    const int error =
        posix_spawn(&process, prefix.wine.c_str(), settings.Actions(), settings.Attributes(),
                    Pointers(command).data(), Pointers(variables).data());
    if (error != 0) {
        trouble = prefix.wine.string() + ": " + std::strerror(error);
        return nullptr;
    }
    StopBlocking(out.reader);
    StopBlocking(in.writer);
    return std::unique_ptr<WineHalf>(
        new WineHalf(process, std::move(out.reader), std::move(in.writer)));
}

WineHalf::~WineHalf() {
    m_lines.End();
    if (!m_isUp) {
        return;
    }
    const auto deadline = steady_clock::now() + kGoodbye;
    while (Runs() && steady_clock::now() < deadline) {
        std::this_thread::sleep_for(kBetweenLooks);
    }
    if (Runs()) {
        Kill();
        waitpid(m_process, nullptr, 0);
    }
}

void WineHalf::Kill() {
    if (Runs()) {
        kill(m_process, SIGKILL);
    }
}

bool WineHalf::Runs() {
    // An error says that it has been waited for elsewhere.
    m_runs = m_runs && waitpid(m_process, nullptr, WNOHANG) == 0;
    return m_runs;
}

}  // namespace spellwick::bridge
