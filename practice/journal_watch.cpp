#include "practice/journal_watch.h"

#include <QTimer>

namespace spellwick::practice {
namespace {

constexpr int kSettleMs = 50;

}  // namespace

bool JournalWatch::Follow(const QString& path) {
    m_file.setFileName(path);
    if (!OpenFile()) {
        return false;
    }
    m_file.seek(m_file.size());
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &JournalWatch::Read);
    return true;
}

bool JournalWatch::OpenFile() {
    m_unfinished.clear();
    // Opening for append creates the file without truncating what another program has written.
    QFile made(m_file.fileName());
    return made.open(QIODevice::Append) && m_file.open(QIODevice::ReadOnly) &&
           (m_watcher.files().contains(m_file.fileName()) || m_watcher.addPath(m_file.fileName()));
}

void JournalWatch::Read() {
    if (!QFile::exists(m_file.fileName())) {
        // The watcher still has a pending change of the old file and would take the new one for it.
        m_watcher.removePath(m_file.fileName());
        m_file.close();
        QTimer::singleShot(kSettleMs, this, [this] {
            if (!m_file.isOpen() && OpenFile()) {
                Read();
            }
        });
        return;
    }
    if (m_file.size() < m_file.pos()) {
        m_unfinished.clear();
        m_file.seek(0);
    }
    m_unfinished += m_file.readAll();
    for (qsizetype end = m_unfinished.indexOf('\n'); end >= 0; end = m_unfinished.indexOf('\n')) {
        const QString line = QString::fromUtf8(m_unfinished.left(end));
        m_unfinished.remove(0, end + 1);
        emit Line(line);
    }
}

}  // namespace spellwick::practice
