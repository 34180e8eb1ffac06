// The log: what happened, for whoever looks after a trouble. Troubles go to standard error as well;
// all else is made only while somebody listens.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace spellwick {

enum class LogTopic : std::uint8_t {
    kTrouble,  // something could not be done
    kFound,    // the game, its characters
    kLinked,   // the assist tool
    kTyped,    // keys by their names; never a spoken text
    kRefused,  // what a box or a hint told the user
    kDropped,  // reports and peers that are not taken
};

// Details are for those who know the program's inside.
enum class LogDepth : std::uint8_t { kEvent, kDetail };

class Log {
  public:
    virtual ~Log() = default;

    virtual bool Wants(LogTopic topic, LogDepth depth) const = 0;
    // A line without an end, in UTF-8.
    virtual void Write(LogTopic topic, LogDepth depth, std::string_view line) = 0;
};

// Sends everything to a log, which outlives its use, or to none, as at the start. Like standard
// error there is one for the process, so that every floor can write to it.
void SetLog(Log* log);

// Null while nobody listens.
Log* CurrentLog();

// Says a trouble on standard error, in one line, and in the log.
void LogLine(std::string_view line, LogTopic topic = LogTopic::kTrouble);

// Logs what `makeLine` returns; it is called only where somebody wants it.
template <class MakeLine>
void LogEvent(LogTopic topic, MakeLine&& makeLine, LogDepth depth = LogDepth::kEvent) {
    Log* const log = CurrentLog();
    if (log != nullptr && log->Wants(topic, depth)) {
        log->Write(topic, depth, makeLine());
    }
}

template <class MakeLine>
void LogDetail(LogTopic topic, MakeLine&& makeLine) {
    LogEvent(topic, static_cast<MakeLine&&>(makeLine), LogDepth::kDetail);
}

}  // namespace spellwick
