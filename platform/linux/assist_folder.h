// The folder in which assist tools listen, each on a socket of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/file_descriptor.h"

namespace spellwick {

// From the environment: $XDG_RUNTIME_DIR/spellwick/assist, or /tmp/spellwick-<uid>/assist.
std::filesystem::path AssistFolder();

// Opens the folder; none if it is missing or not private: it and its parent must belong to this
// user, it must be closed to others, and nobody else may write to its parent.
FileDescriptor OpenAssistFolder(const std::filesystem::path& folder);

// The names of the sockets in an open folder, in byte order; those that nobody listens on too.
std::vector<std::string> SocketNames(const FileDescriptor& folder);

// A non-blocking connection to one of them; none if nobody or another user is listening.
FileDescriptor ConnectToSocket(const FileDescriptor& folder, const std::string& name);

}  // namespace spellwick
