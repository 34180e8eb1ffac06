// A raw connection to a store's file, and work in a second process.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/open_settings_store.h"
#include "platform/linux/sqlite_handles.h"

namespace spellwick {

using Rows = std::vector<std::vector<std::string>>;

// Opens the store in a folder and expects that nothing is wrong with it.
std::unique_ptr<SettingsStore> OpenWell(const std::filesystem::path& folder);

class RawDatabase {
  public:
    explicit RawDatabase(const std::filesystem::path& file);
    void Run(const std::string& sql);
    Rows Query(const std::string& sql);

  private:
    SqliteDatabase m_database;
};

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

// Starts work in a child process, which must bring its own connections; the returned function waits
// for it and gives what it returned, or how it ended. Not to be called while there are other
// threads: a lock that one of them holds would stay taken in the child for ever.
std::function<std::string()> StartChild(const std::function<std::string()>& work);

// The same, waited for at once.
inline std::string InChild(const std::function<std::string()>& work) {
    return StartChild(work)();
}

}  // namespace spellwick
