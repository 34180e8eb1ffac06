// The log that the user asks for with --log and --debug: the toolkit's logging categories, one for
// each topic, written to a file or to standard output with the time of each line.
#pragma once

#include <QLoggingCategory>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "text/log.h"

namespace spellwick {

class EventLog : public Log {
  public:
    // Listens from now on; "-" is standard output, and a file goes on behind what it holds. With
    // `details` all that the program knows is written. There is one at a time.
    EventLog(const std::filesystem::path& file, bool details);
    ~EventLog() override;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;
    EventLog(EventLog&&) = delete;
    EventLog& operator=(EventLog&&) = delete;

    // Why there is no log, as one sentence; empty if there is one.
    const std::string& Trouble() const { return m_trouble; }

    bool Wants(LogTopic topic, LogDepth depth) const override;
    void Write(LogTopic topic, LogDepth depth, std::string_view line) override;

  private:
    static constexpr std::size_t kTopics = 6;
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    static void TakeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text);
    void WriteLine(const char* category, const QString& text);

    std::unique_ptr<std::FILE, CloseFile> m_file;
    std::FILE* m_output = nullptr;
    std::array<std::unique_ptr<QLoggingCategory>, kTopics> m_categories;
    QtMessageHandler m_before = nullptr;
    std::string m_trouble;
};

}  // namespace spellwick
