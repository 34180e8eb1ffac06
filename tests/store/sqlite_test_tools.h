// A raw connection to a store's file, and running code in a second process.
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

// Opens the store in a folder and expects no trouble.
std::unique_ptr<SettingsStore> OpenWell(const std::filesystem::path& folder);

class RawDatabase {
  public:
    explicit RawDatabase(const std::filesystem::path& file);
    void Run(const std::string& sql);
    Rows Query(const std::string& sql);

  private:
    SqliteDatabase m_database;
};

void WriteFile(const std::filesystem::path& file, const std::string& bytes);

// Runs `work` in a child process, which must open its own connections; the returned function waits
// for it and returns its result, or how it ended. Do not call it while there are other threads: a
// lock that one of them holds would stay locked in the child forever.
std::function<std::string()> StartChild(const std::function<std::string()>& work);

// The same, and waits for it.
inline std::string InChild(const std::function<std::string()>& work) {
    return StartChild(work)();
}

}  // namespace spellwick
