// A pipe between processes.
#pragma once

#include <array>

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/file_descriptor.h"

namespace spellwick {

struct Pipe {
    FileDescriptor reader;
    FileDescriptor writer;
};

// Closed in programs that are started, but for what they are given. Without ends on failure, of
// which errno tells.
inline Pipe MakePipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

}  // namespace spellwick
