// The half of the bridge that runs in a Wine prefix, as a child process.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <sys/types.h>

#include "bridge/line_stream.h"
#include "bridge/wine_servers.h"

namespace spellwick::bridge {

class WineHalf {
  public:
    // Null, with the reason in `trouble`, if it cannot be started.
    static std::unique_ptr<WineHalf> Start(const WinePrefix& prefix,
                                           const std::filesystem::path& program,
                                           std::string& trouble);

    WineHalf(const WineHalf&) = delete;
    WineHalf& operator=(const WineHalf&) = delete;
    // Ends it by the end of its input, and by a signal if that takes longer than a second.
    ~WineHalf();

    LineStream& Lines() { return m_lines; }
    bool Runs();

  private:
    WineHalf(pid_t process, FileDescriptor input, FileDescriptor output)
        : m_process(process), m_lines(std::move(input), std::move(output)) {}

    pid_t m_process;
    bool m_runs = true;
    LineStream m_lines;
};

}  // namespace spellwick::bridge
