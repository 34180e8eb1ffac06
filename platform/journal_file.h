// The file of the recovery journal: bytes that are only appended, until a save makes them needless.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

class JournalFile {
  public:
    virtual ~JournalFile() = default;

    // The whole content; empty when there is no file or it cannot be read. Reads no more than 64
    // MB.
    virtual std::string Read() = 0;

    // Adds bytes at the end, and makes the file if there is none. False when they could not all be
    // written; the end of the file may then hold a part of them.
    [[nodiscard]] virtual bool Append(std::string_view bytes) = 0;

    // Puts other content in place of the old, whole or not at all; false when it could not.
    [[nodiscard]] virtual bool Replace(std::string_view bytes) = 0;

    // Waits until what was appended is on the disk; false when the system does not say so. Another
    // thread may append meanwhile.
    [[nodiscard]] virtual bool Sync() = 0;

    // Has what was appended brought onto the disk, in the background where the file can do that.
    // False as long as it is not known of all; it is to be called again then.
    [[nodiscard]] virtual bool SyncByAndBy() { return Sync(); }
};

}  // namespace spellwick
