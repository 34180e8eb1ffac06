// A program that connects to the practice assist tool, for tests: sends lines and keeps the
// replies.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QStringList>
#include <QThread>
#include <functional>
#include <string>
#include <vector>

namespace spellwick::practice {

// Serves events until `holds` is true or five seconds have passed; returns whether it holds.
inline bool ServeUntil(const std::function<bool()>& holds) {
    QElapsedTimer time;
    time.start();
    while (!holds()) {
        if (time.elapsed() > 5000) {
            return false;
        }
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

class ToolClient {
  public:
    explicit ToolClient(const QString& path) { m_socket.connectToServer(path); }

    void Write(const std::string& line) {
        m_socket.write((line + "\n").data(), static_cast<qint64>(line.size()) + 1);
        m_socket.flush();
    }

    // All lines received so far.
    const std::vector<std::string>& Lines() {
        m_bytes += m_socket.readAll().toStdString();
        for (std::size_t end = m_bytes.find('\n'); end != std::string::npos;
             end = m_bytes.find('\n')) {
            m_lines.push_back(m_bytes.substr(0, end));
            m_bytes.erase(0, end + 1);
        }
        return m_lines;
    }

    bool WaitLines(std::size_t count) {
        return ServeUntil([&] { return Lines().size() >= count; });
    }
    bool WaitGone() {
        return ServeUntil([&] { return m_socket.state() == QLocalSocket::UnconnectedState; });
    }
    bool IsConnected() const { return m_socket.state() == QLocalSocket::ConnectedState; }
    void Leave() { m_socket.disconnectFromServer(); }

  private:
    QLocalSocket m_socket;
    std::string m_bytes;
    std::vector<std::string> m_lines;
};

}  // namespace spellwick::practice
