// All settings in one SQLite file, in the form of the store.
#pragma once

#include "platform/settings_file.h"

namespace spellwick {

class SqliteSettingsFile final : public SettingsFile {
  public:
    // `store` is the file of the store in use, which is never written here.
    explicit SqliteSettingsFile(std::filesystem::path store) : m_store(std::move(store)) {}

    std::string Extension() const override { return ".db"; }
    StoreResult Write(const std::filesystem::path& file,
                      const AllSettings& settings) const override;
    // Takes a store too, and a dated copy of one.
    ReadSettings Read(const std::filesystem::path& file) const override;

  private:
    std::filesystem::path m_store;
};

}  // namespace spellwick
