#include "platform/linux/open_settings_store.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/sqlite_settings_store.h"
#include "platform/linux/time_text.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

constexpr std::array kSideFiles{"-wal", "-shm", "-journal"};

// If two programs start at the same time, both might find the broken store and rename each other's
// new one, so only one opens it at a time. If the lock cannot be had in time, go on without it.
class FolderLock {
  public:
    explicit FolderLock(const fs::path& folder)
        : m_folder(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        for (int tries = 0; m_folder >= 0 && tries < 200; ++tries) {
            if (flock(m_folder, LOCK_EX | LOCK_NB) == 0) {
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    ~FolderLock() {
        if (m_folder >= 0) {
            close(m_folder);
        }
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    FolderLock(FolderLock&&) = delete;
    FolderLock& operator=(FolderLock&&) = delete;

  private:
    int m_folder;
};

bool Exists(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(file, ignored));
}

bool IsTaken(const fs::path& name) {
    bool taken = Exists(name);
    for (const char* side : kSideFiles) {
        taken = taken || Exists(name.string() + side);
    }
    return taken;
}

bool Rename(const fs::path& from, const fs::path& to) {
    std::error_code trouble;
    fs::rename(from, to, trouble);
    return !trouble;
}

// Renames a store with its side files; these first, since a new store must never meet an old log.
std::optional<fs::path> KeepAside(const fs::path& file, std::chrono::system_clock::time_point now) {
    const fs::path base = file.string() + ".unreadable-" + TimeText(now);
    fs::path target = base;
    for (int number = 2; IsTaken(target); ++number) {
        target = base.string() + "-" + std::to_string(number);
    }
    bool moved = true;
    for (const char* side : kSideFiles) {
        const fs::path from = file.string() + side;
        moved = moved && (!Exists(from) || Rename(from, target.string() + side));
    }
    if (moved && Rename(file, target)) {
        return target;
    }
    for (const char* side : kSideFiles) {
        if (Exists(target.string() + side)) {
            Rename(target.string() + side, file.string() + side);
        }
    }
    return std::nullopt;
}

OpenedStore InMemory(std::string trouble) {
    auto store = std::make_unique<SqliteSettingsStore>(fs::path());
    store->Connect();
    trouble += " Spellwick runs without saved settings, and nothing is kept when it ends.";
    return {std::move(store), false, std::nullopt, std::move(trouble)};
}

std::string Unavailable(const fs::path& file, const std::string& reason) {
    return "The settings in " + file.string() + " cannot be used now (" + reason +
           "). They were left as they are.";
}

OpenedStore OpenFile(const fs::path& file, std::chrono::system_clock::time_point now) {
    std::error_code ignored;
    if (fs::exists(file, ignored) && !fs::is_regular_file(file, ignored)) {
        return InMemory(Unavailable(file, "it is not a file"));
    }
    auto store = std::make_unique<SqliteSettingsStore>(file);
    switch (store->Connect()) {
        case StoreState::kReady: {
            std::string trouble;
            if (store->IsReadOnly()) {
                trouble = "The settings in " + file.string() +
                          " can be read but not written. Changes are lost when Spellwick ends.";
            }
            return {std::move(store), true, std::nullopt, std::move(trouble)};
        }
        case StoreState::kUnavailable:
            return InMemory(Unavailable(file, store->Reason()));
        case StoreState::kDamaged:
            break;
    }
    const std::optional<fs::path> aside = KeepAside(file, now);
    if (!aside) {
        return InMemory("The settings in " + file.string() +
                        " cannot be read, and could not be set aside.");
    }
    if (store->Connect() != StoreState::kReady) {
        OpenedStore memory = InMemory("New settings could not be made in " + file.string() + " (" +
                                      store->Reason() + ").");
        memory.keptAside = aside;
        return memory;
    }
    return {std::move(store), true, aside,
            "The settings could not be read. They were kept as\n" + aside->string() +
                "\nand Spellwick starts with new ones."};
}

}  // namespace

bool MakeFolder(const fs::path& folder) {
    fs::path made;
    for (const fs::path& part : folder) {
        made /= part;
        if (mkdir(made.c_str(), 0700) != 0 && errno != EEXIST && errno != EROFS &&
            errno != EACCES) {
            return false;
        }
    }
    std::error_code ignored;
    return fs::is_directory(folder, ignored);
}

std::optional<fs::path> SettingsFolder(const char* dataHome, const char* home) {
    if (dataHome != nullptr && fs::path(dataHome).is_absolute()) {
        return fs::path(dataHome) / "spellwick";
    }
    if (home != nullptr && fs::path(home).is_absolute()) {
        return fs::path(home) / ".local" / "share" / "spellwick";
    }
    return std::nullopt;
}

std::optional<fs::path> SettingsFolder() {
    return SettingsFolder(std::getenv("XDG_DATA_HOME"), std::getenv("HOME"));
}

OpenedStore OpenSettingsStore(const std::optional<fs::path>& folder,
                              std::chrono::system_clock::time_point now) {
    if (!folder) {
        return InMemory(
            "There is no folder for the settings: neither XDG_DATA_HOME nor HOME says "
            "where it is.");
    }
    if (!MakeFolder(*folder)) {
        return InMemory("The folder " + folder->string() + " for the settings cannot be made.");
    }
    // The side files are beside the file itself, not beside a link to it.
    std::error_code ignored;
    const fs::path named = *folder / "settings.db";
    const fs::path real = fs::canonical(named, ignored);
    const fs::path file = real.empty() ? named : real;
    const FolderLock lock(file.parent_path());
    return OpenFile(file, now);
}

}  // namespace spellwick
