// The folder in which assist tools listen, each on a socket of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/file_descriptor.h"

namespace spellwick {

// From the environment: $XDG_RUNTIME_DIR/spellwick/assist, or /tmp/spellwick-<uid>/assist.
std::filesystem::path AssistFolder();

// Opens the folder; none if it is not there, or not ours alone: it and its parent must be folders
// of this user, it for nobody else and its parent writable by nobody else.
FileDescriptor OpenAssistFolder(const std::filesystem::path& folder);

// Names of the sockets in an open folder, in the order of their bytes; at most 64.
std::vector<std::string> SocketNames(const FileDescriptor& folder);

// A connection to one of them, not blocking; none if nobody listens or another user does.
FileDescriptor ConnectToSocket(const FileDescriptor& folder, const std::string& name);

}  // namespace spellwick
