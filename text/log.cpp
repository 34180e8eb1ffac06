#include "text/log.h"

#include <cstdio>

namespace spellwick {

namespace {

Log*& Listener() {
    static Log* listener = nullptr;
    return listener;
}

}  // namespace

void SetLog(Log* log) {
    Listener() = log;
}

Log* CurrentLog() {
    return Listener();
}

void LogLine(std::string_view line, LogTopic topic) {
    std::fprintf(stderr, "spellwick: %.*s\n", static_cast<int>(line.size()), line.data());
    LogEvent(topic, [line] { return line; });
}

}  // namespace spellwick
