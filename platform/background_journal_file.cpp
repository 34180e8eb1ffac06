#include "platform/background_journal_file.h"

#include <chrono>
#include <system_error>

namespace spellwick {

bool BackgroundJournalFile::Append(std::string_view bytes) {
    m_changed = true;
    return m_file->Append(bytes);
}

bool BackgroundJournalFile::Replace(std::string_view bytes) {
    if (m_sync.valid()) {
        m_sync.wait();
    }
    m_changed = true;
    return m_file->Replace(bytes);
}

bool BackgroundJournalFile::Sync() {
    m_sync = {};  // waits for it
    m_changed = !m_file->Sync();
    return !m_changed;
}

bool BackgroundJournalFile::SyncByAndBy() {
    if (m_sync.valid()) {
        if (m_sync.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            return false;
        }
        m_changed = !m_sync.get() || m_changed;
    }
    if (!m_changed) {
        return true;
    }
    m_changed = false;
    try {
        m_sync = std::async(std::launch::async, [this] { return m_file->Sync(); });
    } catch (const std::system_error&) {
        return Sync();  // without a thread it is waited for
    }
    return false;
}

}  // namespace spellwick
