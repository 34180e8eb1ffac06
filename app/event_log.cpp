#include "app/event_log.h"

#include <QDateTime>
#include <QString>
#include <cerrno>
#include <cstring>

#include "model/shared_state.h"

namespace spellwick {

namespace {

// In the order of LogTopic.
constexpr std::array kCategories{"spellwick.trouble", "spellwick.found",   "spellwick.linked",
                                 "spellwick.typed",   "spellwick.refused", "spellwick.dropped"};
constexpr std::string_view kOwnStart = "spellwick.";

// The toolkit passes messages to a function, not to an object.
EventLog*& Current() {
    static EventLog* current = nullptr;
    return current;
}

std::FILE* OpenToAppend(const std::filesystem::path& file) {
#ifdef _WIN32
    return _wfopen(file.c_str(), L"ab");
#else
    return std::fopen(file.c_str(), "abe");
#endif
}

}  // namespace

EventLog::EventLog(const std::filesystem::path& file, bool details) {
    if (file == "-") {
        m_output = stdout;
    } else {
        m_file.reset(OpenToAppend(file));
        m_output = m_file.get();
    }
    if (m_output == nullptr) {
        m_trouble = "The log cannot be written: " + file.string() + ": " + std::strerror(errno);
        return;
    }
    for (std::size_t topic = 0; topic < kTopics; ++topic) {
        m_categories[topic] = std::make_unique<QLoggingCategory>(kCategories[topic], QtInfoMsg);
        if (details) {
            m_categories[topic]->setEnabled(QtDebugMsg, true);
        }
    }
    Current() = this;
    m_before = qInstallMessageHandler(TakeMessage);
    SetLog(this);
    WriteLine("spellwick", QStringLiteral("Spellwick %1").arg(QLatin1String(kVersion)));
}

EventLog::~EventLog() {
    if (m_output != nullptr) {
        SetLog(nullptr);
        qInstallMessageHandler(m_before);
        Current() = nullptr;
    }
}

bool EventLog::Wants(LogTopic topic, LogDepth depth) const {
    return m_categories[static_cast<std::size_t>(topic)]->isEnabled(
        depth == LogDepth::kDetail ? QtDebugMsg : QtInfoMsg);
}

void EventLog::Write(LogTopic topic, LogDepth depth, std::string_view line) {
    const QMessageLogger logger(nullptr, 0, nullptr, kCategories[static_cast<std::size_t>(topic)]);
    const QString text =
        QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())).simplified();
    (depth == LogDepth::kDetail ? logger.debug() : logger.info()).noquote() << text;
}

void EventLog::TakeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    EventLog* const log = Current();
    const char* const category = context.category != nullptr ? context.category : "default";
    if (log != nullptr) {
        log->WriteLine(category, text);
        if (log->m_before != nullptr && !std::string_view(category).starts_with(kOwnStart)) {
            log->m_before(type, context, text);
        }
    }
}

void EventLog::WriteLine(const char* category, const QString& text) {
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    const QByteArray line =
        QStringLiteral("%1 %2: %3\n").arg(time, QLatin1String(category), text).toUtf8();
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), m_output);
    // Each line counts: the next thing may be a crash.
    std::fflush(m_output);
}

}  // namespace spellwick
