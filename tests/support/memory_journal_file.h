// The file of the recovery journal in memory, which fails when a test says so.
#pragma once

#include <string>

#include "platform/journal_file.h"

namespace spellwick {

class MemoryJournalFile : public JournalFile {
  public:
    std::string Read() override { return content; }
    bool Append(std::string_view bytes) override {
        ++writes;
        content += bytes.substr(0, fails ? bytes.size() / 2 : bytes.size());
        return !fails;
    }
    bool Replace(std::string_view bytes) override {
        ++writes;
        if (!fails) {
            content = bytes;
        }
        return !fails;
    }
    bool Sync() override {
        ++syncs;
        return !fails;
    }

    std::string content;
    bool fails = false;  // an append then writes half of its bytes
    int writes = 0;
    int syncs = 0;
};

}  // namespace spellwick
