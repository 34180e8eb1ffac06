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
    // Ends it by the end of its input, and by a signal if that takes longer than a second. One that
    // is not up yet may be starting Wine itself: a signal would leave the prefix half started, and
    // the player's programs waiting for it. It is not waited for, and sees the end later.
    ~WineHalf();

    LineStream& Lines() { return m_lines; }
    bool Runs();
    // For one that hangs.
    void Kill();
    // It has written its first line.
    void NoteUp() { m_isUp = true; }

  private:
    WineHalf(pid_t process, FileDescriptor input, FileDescriptor output)
        : m_process(process), m_lines(std::move(input), std::move(output)) {}

    pid_t m_process;
    bool m_runs = true;
    bool m_isUp = false;
    LineStream m_lines;
};

}  // namespace spellwick::bridge
