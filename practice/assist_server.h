// The socket on which the practice assist tool listens, and the programs connected to it.
#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "practice/tool_lines.h"

namespace spellwick::practice {

// Where programs look for assist tools: $XDG_RUNTIME_DIR/spellwick/assist, or
// /tmp/spellwick-<uid>/assist.
QString ToolFolder();

class AssistServer : public QObject {
    Q_OBJECT

  public:
    // Called for a message, with the number of its connection; returns the answer, or nothing to
    // leave it unanswered.
    using Answerer = std::function<std::optional<int>(int peer, const ToolMessage& message)>;

    // Does not listen yet. `name` is the socket's, without the extension.
    AssistServer(QString folder, const QString& name, Answerer answerer);
    AssistServer(const AssistServer&) = delete;
    AssistServer& operator=(const AssistServer&) = delete;
    ~AssistServer() override;

    // Greets each program with this title from now on.
    void SetTitle(const QString& title) { m_title = title; }

    // Makes the folder, for this user alone, and listens; a stale socket is replaced. False, with
    // the reason in Trouble, if that fails.
    bool Open();
    // Ends all connections and removes the socket.
    void Close();
    bool IsOpen() const { return m_server.isListening(); }
    const QString& Trouble() const { return m_trouble; }
    const QString& Path() const { return m_path; }

    // False if the program has gone.
    bool Send(int peer, const ToolMessage& message);
    bool IsConnected(int peer) const { return m_peers.contains(peer); }
    int Connections() const { return static_cast<int>(m_peers.size()); }
    // Messages that programs still connected have not answered yet.
    int Unanswered() const;

  signals:
    void Connected(int peer);
    // `reason` is empty for a program that closed the connection itself.
    void Gone(int peer, const QString& reason);
    // A line in either direction, after it has been handled.
    void LineIn(int peer, const QString& line);
    void LineOut(int peer, const QString& line);

  private:
    struct Peer {
        QLocalSocket* socket = nullptr;
        int unanswered = 0;
    };

    bool Fail(const QString& trouble);
    bool Listen(int folder);
    void TakeConnections();
    void Read(int peer);
    void Write(int peer, const std::string& line);
    void Drop(int peer, const QString& reason);

    QString m_folder;
    QString m_path;
    QString m_title;
    QString m_trouble;
    Answerer m_answerer;
    QLocalServer m_server;
    std::map<int, Peer> m_peers;
    int m_lastPeer = 0;
};

}  // namespace spellwick::practice
