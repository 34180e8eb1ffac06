// The search for assist tools in Wine: spellwick-bridge, a program of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

#include "platform/linux/file_descriptor.h"
#include "platform/wine_tools.h"

namespace spellwick {

class BridgeProcess : public WineTools {
  public:
    // Looks for the program in these folders in turn, then on the search path.
    explicit BridgeProcess(std::vector<std::filesystem::path> folders);
    BridgeProcess(const BridgeProcess&) = delete;
    BridgeProcess& operator=(const BridgeProcess&) = delete;
    // The bridge ends with its input, also when this program is killed.
    ~BridgeProcess() override { Stop(); }

    void Start() override;
    void Stop() override;
    std::string Trouble() override;

  private:
    std::string FindProgram() const;
    // Takes what has ended out of the system's list.
    void Reap();

    std::vector<std::filesystem::path> m_folders;
    pid_t m_process = 0;          // 0 if none runs
    std::vector<pid_t> m_ending;  // told to end
    FileDescriptor m_input;       // the writing end
    FileDescriptor m_words;       // what it writes to its standard error
    std::string m_trouble;
};

// Beside this program, then where the package has it.
std::vector<std::filesystem::path> BridgeFolders();

}  // namespace spellwick
