// A log that a test reads.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "text/log.h"

namespace spellwick {

// Listens for as long as it lives.
class RecordingLog : public Log {
  public:
    explicit RecordingLog(bool details = false) : m_details(details) { SetLog(this); }
    ~RecordingLog() override { SetLog(nullptr); }
    RecordingLog(const RecordingLog&) = delete;
    RecordingLog& operator=(const RecordingLog&) = delete;
    RecordingLog(RecordingLog&&) = delete;
    RecordingLog& operator=(RecordingLog&&) = delete;

    bool Wants(LogTopic /*topic*/, LogDepth depth) const override {
        return m_details || depth == LogDepth::kEvent;
    }
    void Write(LogTopic topic, LogDepth /*depth*/, std::string_view line) override {
        lines.emplace_back(topic, line);
    }

    std::vector<std::pair<LogTopic, std::string>> lines;

  private:
    bool m_details;
};

}  // namespace spellwick
