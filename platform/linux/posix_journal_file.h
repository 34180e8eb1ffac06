// The recovery journal's file.
#pragma once

#include <atomic>
#include <filesystem>

#include "platform/journal_file.h"

namespace spellwick {

class PosixJournalFile final : public JournalFile {
  public:
    // Opens nothing yet. The folder must exist when something is written.
    explicit PosixJournalFile(std::filesystem::path file) : m_file(std::move(file)) {}

    std::string Read() override;
    // False too when the file is not as this object left it: somebody else has written or removed
    // it.
    bool Append(std::string_view bytes) override;
    bool Replace(std::string_view bytes) override;
    bool Sync() override;

  private:
    std::filesystem::path m_file;
    std::size_t m_size = 0;
    std::atomic<bool> m_newName = false;  // the folder may not be on the disk with it
};

}  // namespace spellwick
