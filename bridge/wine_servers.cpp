#include "bridge/wine_servers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/file_descriptor.h"

namespace spellwick::bridge {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kProgram = "wineserver";
constexpr std::string_view kFolder = "server-";
constexpr int kHex = 16;

fs::path LinkOf(const fs::path& link) {
    std::error_code trouble;
    return fs::read_symlink(link, trouble);
}

// A program that has been replaced by an update while it runs.
std::string WithoutDeleted(std::string path) {
    constexpr std::string_view kDeleted = " (deleted)";
    if (path.ends_with(kDeleted)) {
        path.resize(path.size() - kDeleted.size());
    }
    return path;
}

std::vector<std::string> ReadTexts(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<std::string> texts;
    for (std::string text; std::getline(stream, text, '\0');) {
        texts.push_back(text);
    }
    return texts;
}

// `wineserver -k` and `wineserver -w` end a server and wait for its end. Launchers run them, and
// they work in the server's folder.
bool IsAboutAServer(const std::vector<std::string>& command) {
    return !command.empty() &&
           std::any_of(command.begin() + 1, command.end(), [](const std::string& option) {
               const bool isShort = option.starts_with('-') && !option.starts_with("--");
               return isShort ? option.find_first_of("kw") != std::string::npos
                              : option.starts_with("--kill") || option.starts_with("--wait");
           });
}

// While a wineserver starts, there are more of them: the one that forks the server waits for it,
// and one that came second ends again. The server is the one that holds the lock in its folder.
// Where locks cannot be read, each counts.
bool HoldsItsLock(const fs::path& process, pid_t number) {
    const fs::path folder = process / "cwd";
    const FileDescriptor file(open((folder / "lock").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file) {
        // The server makes the file before it serves, and the folder may be removed later.
        struct stat facts {};
        return errno != ENOENT || stat(folder.c_str(), &facts) != 0 || facts.st_nlink == 0;
    }
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    if (fcntl(file.Number(), F_GETLK, &lock) != 0) {
        return true;
    }
    // A holder in another namespace has no number here.
    return lock.l_type != F_UNLCK && (lock.l_pid <= 0 || lock.l_pid == number);
}

std::optional<WineServer> ReadServer(const fs::path& processes, const std::string& number) {
    WineServer server;
    const auto [end, error] =
        std::from_chars(number.data(), number.data() + number.size(), server.process);
    if (error != std::errc() || *end != '\0') {
        return std::nullopt;
    }
    const fs::path process = processes / number;
    // wineserver, wineserver32, wineserver64 and the like.
    if (!LinkOf(process / "exe").filename().string().starts_with(kProgram)) {
        return std::nullopt;
    }
    struct stat facts {};
    if (stat(process.c_str(), &facts) != 0 || facts.st_uid != geteuid()) {
        return std::nullopt;
    }
    // It works in the folder of its socket, wherever that is.
    const std::string folder = WithoutDeleted(LinkOf(process / "cwd").filename().string());
    if (!folder.starts_with(kFolder)) {
        return std::nullopt;
    }
    if (IsAboutAServer(ReadTexts(process / "cmdline")) || !HoldsItsLock(process, server.process)) {
        return std::nullopt;
    }
    server.name = folder.substr(kFolder.size());
    return server;
}

std::string ValueOf(const std::vector<std::string>& variables, const std::string& name) {
    const std::string start = name + '=';
    const auto found = std::ranges::find_if(
        variables, [&start](const std::string& variable) { return variable.starts_with(start); });
    return found == variables.end() ? "" : found->substr(start.size());
}

void Remove(std::vector<std::string>& variables, std::string_view name) {
    std::erase_if(variables, [name](const std::string& variable) {
        return variable.starts_with(name) && variable.size() > name.size() &&
               variable[name.size()] == '=';
    });
}

// A server of 32 bits serves no other programs.
bool Is32BitProgram(const fs::path& file) {
    constexpr std::string_view k32Bit{
        "\x7F"
        "ELF\x01"};
    std::array<char, k32Bit.size()> start{};
    std::ifstream(file, std::ios::binary).read(start.data(), start.size());
    return std::string_view(start.data(), start.size()) == k32Bit;
}

// `arch` is the value of WINEARCH.
bool Is32BitPrefix(const fs::path& prefix, std::string_view arch) {
    std::ifstream registry(prefix / "system.reg");
    if (!registry) {
        // The server writes it half a minute after it has made the prefix.
        return arch == "win32";
    }
    constexpr int kHeader = 8;
    std::string line;
    for (int i = 0; i < kHeader && std::getline(registry, line); ++i) {
        if (line.starts_with("#arch=win32")) {
            return true;
        }
    }
    return false;
}

// The Wine to which a wineserver belongs lies beside it.
fs::path FindWine(const fs::path& serverProgram, bool is32Bit) {
    constexpr std::array k64{"wine64", "wine"};
    constexpr std::array k32{"wine", "wine32"};
    for (const char* name : is32Bit ? k32 : k64) {
        fs::path wine = serverProgram.parent_path() / name;
        if (access(wine.c_str(), X_OK) == 0) {
            return wine;
        }
    }
    return {};
}

}  // namespace

bool IsPrefixOf(const fs::path& folder, std::string_view serverName) {
    struct stat facts {};
    if (stat(folder.c_str(), &facts) != 0) {
        return false;
    }
    unsigned long long device = 0;
    unsigned long long inode = 0;
    const char* const last = serverName.data() + serverName.size();
    const auto [dash, first] = std::from_chars(serverName.data(), last, device, kHex);
    if (first != std::errc() || dash == last || *dash != '-') {
        return false;
    }
    const auto [end, second] = std::from_chars(dash + 1, last, inode, kHex);
    return second == std::errc() && end == last && device == facts.st_dev && inode == facts.st_ino;
}

std::vector<WineServer> FindWineServers(const fs::path& processes) {
    std::vector<WineServer> servers;
    std::error_code trouble;
    for (const fs::directory_entry& entry : fs::directory_iterator(processes, trouble)) {
        if (auto server = ReadServer(processes, entry.path().filename().string())) {
            servers.push_back(std::move(*server));
        }
    }
    std::ranges::sort(servers, {}, &WineServer::process);
    return servers;
}

bool IsRunning(const WineServer& server, const fs::path& processes) {
    return ReadServer(processes, std::to_string(server.process)) == server;
}

std::optional<WinePrefix> FindPrefix(const WineServer& server, std::string& trouble,
                                     const fs::path& processes) {
    const fs::path process = processes / std::to_string(server.process);
    WinePrefix prefix;
    prefix.variables = ReadTexts(process / "environ");
    const std::string named = ValueOf(prefix.variables, "WINEPREFIX");
    prefix.folder =
        named.empty() ? fs::path(ValueOf(prefix.variables, "HOME")) / ".wine" : fs::path(named);
    if (!IsPrefixOf(prefix.folder, server.name)) {
        trouble = "its prefix cannot be made out";
        return std::nullopt;
    }
    prefix.is32Bit = Is32BitProgram(process / "exe") ||
                     Is32BitPrefix(prefix.folder, ValueOf(prefix.variables, "WINEARCH"));
    const fs::path program = WithoutDeleted(LinkOf(process / "exe").string());
    prefix.wine = FindWine(program, prefix.is32Bit);
    if (prefix.wine.empty()) {
        trouble = "no Wine lies beside " + program.string();
        return std::nullopt;
    }
    // What Wine's loader leaves to its own children only, and what names another prefix or Wine.
    for (const char* name : {"WINELOADERNOEXEC", "WINEPRELOADRESERVE", "WINESERVERSOCKET",
                             "WINELOADER", "WINEPREFIX", "WINEDEBUG"}) {
        Remove(prefix.variables, name);
    }
    prefix.variables.push_back("WINEPREFIX=" + prefix.folder.string());
    prefix.variables.emplace_back("WINEDEBUG=-all");
    return prefix;
}

}  // namespace spellwick::bridge
