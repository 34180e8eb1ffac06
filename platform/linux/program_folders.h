// The folders that a running program may keep its data in.
#pragma once

#include <filesystem>
#include <vector>

#include <sys/types.h>

namespace spellwick {

// The folders of a process: of its Windows program if it runs under Wine, of its own file, and the
// one that it works in; each once. Empty if it is gone or belongs to another user. `proc` is where
// the system shows its processes.
std::vector<std::filesystem::path> ProgramFoldersOf(pid_t process,
                                                    const std::filesystem::path& proc = "/proc");

}  // namespace spellwick
