// Running wineservers, in a made-up folder of processes.
#include "bridge/wine_servers.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace spellwick::bridge {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// A process that holds a lock as a wineserver does.
class ServerLockHolder {
  public:
    explicit ServerLockHolder(const fs::path& lockFile) {
        std::array<int, 2> ready{};
        EXPECT_EQ(pipe(ready.data()), 0);
        m_process = fork();
        if (m_process == 0) {
            const int file = open(lockFile.c_str(), O_RDWR | O_CREAT, S_IRUSR | S_IWUSR);
            struct flock lock {};
            lock.l_type = F_WRLCK;
            lock.l_whence = SEEK_SET;
            lock.l_len = 1;
            if (fcntl(file, F_SETLK, &lock) == 0 && write(ready[1], "", 1) == 1) {
                pause();
            }
            _exit(1);
        }
        close(ready[1]);
        char sign = 0;
        EXPECT_EQ(read(ready[0], &sign, 1), 1) << "it has no lock";
        close(ready[0]);
    }
    ServerLockHolder(const ServerLockHolder&) = delete;
    ServerLockHolder& operator=(const ServerLockHolder&) = delete;
    ~ServerLockHolder() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }

    pid_t Process() const { return m_process; }

  private:
    pid_t m_process = 0;
};

class WineServers : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(m_prefix);
        fs::create_directories(m_processes);
        WriteProgram("wineserver64");
    }

    void WriteProgram(const std::string& name) {
        fs::create_directories(m_wine);
        std::ofstream(m_wine / name) << "#!/bin/sh\n";
        fs::permissions(m_wine / name, fs::perms::owner_all);
    }

    std::string NameOf(const fs::path& prefix) {
        struct stat facts {};
        EXPECT_EQ(stat(prefix.c_str(), &facts), 0);
        std::array<char, 64> name{};
        std::snprintf(name.data(), name.size(), "%llx-%llx",
                      static_cast<unsigned long long>(facts.st_dev),
                      static_cast<unsigned long long>(facts.st_ino));
        return name.data();
    }

    void AddProcess(int number, const std::string& program, const std::string& workingFolder,
                    const std::vector<std::string>& variables = {}) {
        const fs::path process = m_processes / std::to_string(number);
        fs::create_directories(process);
        fs::create_symlink(program, process / "exe");
        fs::create_symlink(workingFolder, process / "cwd");
        std::ofstream environment(process / "environ", std::ios::binary);
        for (const std::string& variable : variables) {
            environment << variable << '\0';
        }
    }

    WineServer AddServer(const std::vector<std::string>& variables) {
        const std::string name = NameOf(m_prefix);
        AddProcess(77, (m_wine / "wineserver64").string(), "/tmp/any/server-" + name, variables);
        return {77, name};
    }

    std::optional<WinePrefix> Find(const WineServer& server) {
        return FindPrefix(server, m_trouble, m_processes);
    }

    TemporaryFolder m_folder;
    fs::path m_prefix = m_folder.Path() / "a prefix";
    fs::path m_processes = m_folder.Path() / "proc";
    fs::path m_wine = m_folder.Path() / "wine";
    std::string m_trouble;
};

TEST_F(WineServers, Search_FindsServersAloneInTheirOrder) {
    AddProcess(300, "/opt/wine/bin/wineserver", "/tmp/.wine-1000/server-801-1a");
    AddProcess(20, "/usr/lib/wine/wineserver64 (deleted)", "/tmp/wine-X/server-801-2b (deleted)");
    AddProcess(21, "/usr/lib/wine/wine64", "/tmp/wine-X/server-801-2b");
    AddProcess(22, "/usr/lib/wine/wineserver64", "/home");
    fs::create_directories(m_processes / "30");
    std::ofstream(m_processes / "uptime") << "1";
    EXPECT_THAT(FindWineServers(m_processes),
                ElementsAre(WineServer{20, "801-2b"}, WineServer{300, "801-1a"}));
    EXPECT_TRUE(IsRunning({300, "801-1a"}, m_processes));
    EXPECT_FALSE(IsRunning({300, "801-1b"}, m_processes));
    EXPECT_FALSE(IsRunning({21, "801-2b"}, m_processes));
    EXPECT_THAT(FindWineServers(m_folder.Path() / "none"), ElementsAre());
}

TEST_F(WineServers, ProgramsThatEndAServerOrWaitForItsEnd_AreNone) {
    const std::string folder = "/tmp/.wine-1000/server-801-1a";
    const std::vector<std::vector<std::string>> servers{
        {}, {"-p"}, {"-f", "-d2"}, {"--persistent=3"}};
    const std::vector<std::vector<std::string>> others{
        {"-k"}, {"-k9"}, {"-w"}, {"-fw"}, {"-d", "-w"}, {"--kill"}, {"--kill=15"}, {"--wait"}};
    int number = 0;
    for (const auto* commands : {&servers, &others}) {
        for (const auto& options : *commands) {
            AddProcess(++number, "/opt/k/wineserver", folder);
            std::ofstream command(m_processes / std::to_string(number) / "cmdline",
                                  std::ios::binary);
            command << "/opt/-w/wineserver" << '\0';
            for (const std::string& option : options) {
                command << option << '\0';
            }
        }
    }
    const std::string name = "801-1a";
    EXPECT_THAT(FindWineServers(m_processes),
                ElementsAre(WineServer{1, name}, WineServer{2, name}, WineServer{3, name},
                            WineServer{4, name}));
}

TEST_F(WineServers, ServerThatStarts_CountsOnceItHoldsTheLock) {
    const fs::path folder = m_folder.Path() / "server-801-1a";
    fs::create_directories(folder);
    const auto add = [&](pid_t number) {
        AddProcess(number, "/opt/wine/bin/wineserver", folder.string());
    };
    add(1);
    EXPECT_THAT(FindWineServers(m_processes), ElementsAre()) << "there is no lock yet";
    std::optional<ServerLockHolder> holder;
    holder.emplace(folder / "lock");
    const pid_t number = holder->Process();
    add(number);
    add(number + 1);
    EXPECT_THAT(FindWineServers(m_processes), ElementsAre(WineServer{number, "801-1a"}));
    EXPECT_TRUE(IsRunning({number, "801-1a"}, m_processes));
    EXPECT_FALSE(IsRunning({number + 1, "801-1a"}, m_processes));
    holder.reset();
    EXPECT_THAT(FindWineServers(m_processes), ElementsAre()) << "nobody holds it";
}

TEST_F(WineServers, Prefix_IsTheNamedOneWithTheServersEnvironmentAndItsOwnWine) {
    WriteProgram("wine64");
    const WineServer server = AddServer({"DISPLAY=:7", "WINEPREFIX=" + m_prefix.string(),
                                         "WINELOADERNOEXEC=1", "WINEESYNC=1", "WINEDEBUG=+all"});
    const auto prefix = Find(server);
    ASSERT_TRUE(prefix) << m_trouble;
    EXPECT_EQ(prefix->folder, m_prefix);
    EXPECT_EQ(prefix->wine, m_wine / "wine64");
    EXPECT_FALSE(prefix->is32Bit);
    EXPECT_THAT(prefix->variables,
                ElementsAre("DISPLAY=:7", "WINEESYNC=1", "WINEPREFIX=" + m_prefix.string(),
                            "WINEDEBUG=-all"));
}

TEST_F(WineServers, PrefixWithoutAName_IsTheOneAtHome) {
    WriteProgram("wine");
    fs::create_directory_symlink(m_prefix, m_folder.Path() / ".wine");
    const auto prefix = Find(AddServer({"HOME=" + m_folder.Path().string()}));
    ASSERT_TRUE(prefix) << m_trouble;
    EXPECT_EQ(prefix->folder, m_folder.Path() / ".wine");
    EXPECT_EQ(prefix->wine, m_wine / "wine");
}

TEST_F(WineServers, PrefixOf32Bits_IsToldByItsRegistry) {
    WriteProgram("wine64");
    WriteProgram("wine");
    std::ofstream(m_prefix / "system.reg") << "WINE REGISTRY Version 2\n;; All keys\n\n"
                                              "#arch=win32\n\n[A]\n";
    const auto prefix = Find(AddServer({"WINEPREFIX=" + m_prefix.string()}));
    ASSERT_TRUE(prefix) << m_trouble;
    EXPECT_TRUE(prefix->is32Bit);
    EXPECT_EQ(prefix->wine, m_wine / "wine");
}

TEST_F(WineServers, NewPrefixOf32Bits_IsToldBeforeItsRegistryIsWritten) {
    WriteProgram("wine64");
    WriteProgram("wine");
    const auto prefix = Find(AddServer({"WINEPREFIX=" + m_prefix.string(), "WINEARCH=win32"}));
    ASSERT_TRUE(prefix) << m_trouble;
    EXPECT_TRUE(prefix->is32Bit);
}

TEST_F(WineServers, ServerOf32Bits_HasPrefixesOf32BitsOnly) {
    WriteProgram("wine");
    std::ofstream(m_wine / "wineserver64", std::ios::binary) << "\x7F"
                                                                "ELF\x01\x01";
    const auto prefix = Find(AddServer({"WINEPREFIX=" + m_prefix.string()}));
    ASSERT_TRUE(prefix) << m_trouble;
    EXPECT_TRUE(prefix->is32Bit);
    std::ofstream(m_wine / "wineserver64", std::ios::binary) << "\x7F"
                                                                "ELF\x02\x01";
    EXPECT_FALSE(Find({77, NameOf(m_prefix)})->is32Bit);
}

TEST_F(WineServers, PrefixThatIsAnother_IsRefused) {
    WriteProgram("wine64");
    EXPECT_FALSE(Find(AddServer({"WINEPREFIX=" + m_folder.Path().string()})));
    EXPECT_EQ(m_trouble, "its prefix cannot be made out");
}

TEST_F(WineServers, ServerWithoutAWine_IsRefused) {
    EXPECT_FALSE(Find(AddServer({"WINEPREFIX=" + m_prefix.string()})));
    EXPECT_THAT(m_trouble, StartsWith("no Wine lies beside "));
    EXPECT_THAT(m_trouble, HasSubstr("wineserver64"));
}

TEST_F(WineServers, NamesOfOtherForms_AreNoPrefixes) {
    const std::string name = NameOf(m_prefix);
    EXPECT_TRUE(IsPrefixOf(m_prefix, name));
    for (const std::string& other : {std::string(), std::string("1"), std::string("x-y"),
                                     name + "0", name + "-1", name.substr(1)}) {
        EXPECT_FALSE(IsPrefixOf(m_prefix, other)) << other;
    }
    EXPECT_FALSE(IsPrefixOf(m_folder.Path() / "none", name));
}

}  // namespace
}  // namespace spellwick::bridge
