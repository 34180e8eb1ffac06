// A desktop with a Wine prefix of its own, and assist tools in it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <sys/types.h>

#include "tests/support/child_process.h"

namespace spellwick::testing_support {

// How a tool plays, as tests/bridge/peers/wine_tool.c tells, and its window.
struct WineToolForm {
    const char* kind;
    const char* windowClass;
    const char* title;
};

inline constexpr WineToolForm kUoAssist{"uoassist", "UOAssist main", "UOAssist 2003.05"};

// Made once in a test program; the folder goes with it, and what runs in it.
class WinePrefixFolder {
  public:
    // The sentence for GTEST_SKIP if something is not installed, else empty.
    static std::string WhatIsMissing();

    // Lets Wine fill it, which takes three seconds, or a minute where the disk is slow: else the
    // first tool waits for that.
    WinePrefixFolder();
    WinePrefixFolder(const WinePrefixFolder&) = delete;
    WinePrefixFolder& operator=(const WinePrefixFolder&) = delete;
    ~WinePrefixFolder();

    const std::filesystem::path& Path() const { return m_path; }
    // With the variables of a session.
    Environment Variables(Environment variables) const;
    std::unique_ptr<ChildProcess> StartTool(const Environment& session,
                                            const WineToolForm& form = kUoAssist) const;
    // The native half, for this prefix only.
    std::unique_ptr<ChildProcess> StartBridge(const Environment& session) const;
    // What `wineserver -k` does.
    void ShutDown() const;
    // A line for each thread that runs in it, and what it waits for.
    std::string Threads() const;
    // A process in it whose command line ends with this; 0 if there is none.
    pid_t ProcessOf(const std::string& program) const;

  private:
    std::filesystem::path m_path;
};

}  // namespace spellwick::testing_support
