// Owns a settings' folder by a lock on the file "lock" in it, which ends with the process. The file
// names the owner's window.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/linux/file_descriptor.h"
#include "platform/settings_owner.h"

namespace spellwick {

class FolderOwner final : public SettingsOwner {
  public:
    void SetWindow(WindowHandle window) override;

  private:
    friend Ownership OwnFolder(const std::filesystem::path& folder);
    explicit FolderOwner(FileDescriptor lock) : m_lock(std::move(lock)) {}

    FileDescriptor m_lock;
};

// Makes the folder if there is none. Without a lock, which some network folders do not have, there
// is no owner.
Ownership OwnFolder(const std::filesystem::path& folder);

// The window of the program that has the folder. A program that is only starting has none yet; this
// waits a tenth of a second for it.
std::optional<WindowHandle> WindowOfOwner(const std::filesystem::path& folder);

}  // namespace spellwick
