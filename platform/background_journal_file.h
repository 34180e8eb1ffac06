// A journal's file that is synced in the background: a disk may take seconds for that, and the
// thread that notes what has changed is the one that takes the clicks.
#pragma once

#include <future>
#include <memory>

#include "platform/journal_file.h"

namespace spellwick {

class BackgroundJournalFile final : public JournalFile {
  public:
    explicit BackgroundJournalFile(std::unique_ptr<JournalFile> file) : m_file(std::move(file)) {}

    std::string Read() override { return m_file->Read(); }
    bool Append(std::string_view bytes) override;
    bool SyncByAndBy() override;
    // Wait for a sync that is under way, as the destructor does.
    bool Replace(std::string_view bytes) override;
    bool Sync() override;

  private:
    std::unique_ptr<JournalFile> m_file;
    bool m_changed = false;    // since the last sync began
    std::future<bool> m_sync;  // under way, or its result not taken yet; ends before the file
};

}  // namespace spellwick
