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

// Runs work in a child process; what it returns, or how it ended. The child must bring its own
// connections.
std::string InChild(const std::function<std::string()>& work);

}  // namespace spellwick
