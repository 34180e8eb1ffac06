// Follows the journal file of the practice game, line by line, while the game writes it.
#pragma once

#include <QFile>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

namespace spellwick::practice {

class JournalWatch : public QObject {
    Q_OBJECT

  public:
    // Creates the file if it is missing; skips what is already in it. False if the file cannot be
    // read.
    bool Follow(const QString& path);

  signals:
    // Without the line end.
    void Line(const QString& line);

  private:
    bool OpenFile();
    void Read();

    QFile m_file;
    QFileSystemWatcher m_watcher;
    QByteArray m_unfinished;
};

}  // namespace spellwick::practice
