#include "practice/assist_server.h"

#include <QDir>
#include <QFile>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace spellwick::practice {
namespace {

constexpr int kWaiting = 8;

bool IsOurs(const QLocalSocket& socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

// Opens a folder that belongs to this user and is closed to others; makes it if it is missing.
bool MakeOwnFolder(const QByteArray& path) {
    if (mkdir(path.constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return false;
    }
    struct stat facts {};
    return lstat(path.constData(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           facts.st_uid == geteuid() && chmod(path.constData(), S_IRWXU) == 0;
}

bool SomebodyListens(const sockaddr_un& address) {
    const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool listens = probe >= 0 && connect(probe, reinterpret_cast<const sockaddr*>(&address),
                                               sizeof address) == 0;
    if (probe >= 0) {
        close(probe);
    }
    return listens;
}

}  // namespace

QString ToolFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString parent = runtime.startsWith(u'/')
                               ? runtime + QStringLiteral("/spellwick")
                               : QStringLiteral("/tmp/spellwick-%1").arg(geteuid());
    return parent + QStringLiteral("/assist");
}

AssistServer::AssistServer(QString folder, const QString& name, Answerer answerer)
    : m_folder(std::move(folder)),
      m_path(m_folder + u'/' + name + QStringLiteral(".sock")),
      m_answerer(std::move(answerer)) {
    connect(&m_server, &QLocalServer::newConnection, this, &AssistServer::TakeConnections);
}

AssistServer::~AssistServer() {
    disconnect(&m_server, nullptr, this, nullptr);
    blockSignals(true);
    Close();
}

bool AssistServer::Open() {
    if (IsOpen()) {
        return true;
    }
    const QByteArray parent = QFile::encodeName(QFileInfo(m_folder).path());
    if (!MakeOwnFolder(parent) || !MakeOwnFolder(QFile::encodeName(m_folder))) {
        return Fail(
            tr("The folder %1 cannot be made, or it belongs to another user.").arg(m_folder));
    }
    const int folder =
        ::open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool listens = folder >= 0 && Listen(folder);
    if (folder >= 0) {
        close(folder);
    }
    return listens;
}

bool AssistServer::Fail(const QString& trouble) {
    m_trouble = trouble;
    return false;
}

bool AssistServer::Listen(int folder) {
    // Go through the open folder: its own path may be too long for a socket address.
    const QByteArray path = QStringLiteral("/proc/self/fd/%1/%2")
                                .arg(folder)
                                .arg(QFileInfo(m_path).fileName())
                                .toLocal8Bit();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        return Fail(tr("The name %1 is too long.").arg(m_path));
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()) + 1);
    if (SomebodyListens(address)) {
        return Fail(tr("Another tool listens on %1.").arg(m_path));
    }
    unlink(path.constData());
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (listener < 0 ||
        bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, kWaiting) != 0 || !m_server.listen(listener)) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        if (listener >= 0) {
            close(listener);
        }
        return Fail(tr("Cannot listen on %1: %2.").arg(m_path, reason));
    }
    m_trouble.clear();
    return true;
}

void AssistServer::Close() {
    if (IsOpen()) {
        m_server.close();
        QFile::remove(m_path);
    }
    while (!m_peers.empty()) {
        Drop(m_peers.begin()->first, tr("the tool closes"));
    }
}

void AssistServer::TakeConnections() {
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        if (!IsOurs(*socket)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        const int peer = ++m_lastPeer;
        m_peers[peer].socket = socket;
        connect(socket, &QLocalSocket::readyRead, this, [this, peer] { Read(peer); });
        connect(socket, &QLocalSocket::disconnected, this, [this, peer] { Drop(peer, {}); });
        emit Connected(peer);
        Write(peer, WrittenTitle(m_title.toStdString()));
    }
}

bool AssistServer::Send(int peer, const ToolMessage& message) {
    const auto found = m_peers.find(peer);
    if (found == m_peers.end()) {
        return false;
    }
    ++found->second.unanswered;
    Write(peer, WrittenMessage(message));
    return true;
}

int AssistServer::Unanswered() const {
    int sum = 0;
    for (const auto& [number, peer] : m_peers) {
        sum += peer.unanswered;
    }
    return sum;
}

void AssistServer::Read(int peer) {
    // Handling a line may end the connection.
    for (auto found = m_peers.find(peer); found != m_peers.end(); found = m_peers.find(peer)) {
        QLocalSocket& socket = *found->second.socket;
        const QByteArray start = socket.peek(kLongestToolLine);
        const qsizetype end = start.indexOf('\n');
        if (end < 0) {
            if (start.size() >= static_cast<qsizetype>(kLongestToolLine)) {
                Drop(peer, tr("a line is too long"));
            }
            return;
        }
        socket.skip(end + 1);
        const std::string line = start.left(end).toStdString();
        const auto parsed = ParseToolLine(line);
        if (!parsed) {
            Drop(peer, tr("a line is malformed"));
            return;
        }
        const auto* const message = std::get_if<ToolMessage>(&*parsed);
        if (message == nullptr && found->second.unanswered > 0) {
            --found->second.unanswered;
        }
        emit LineIn(peer, QString::fromStdString(line));
        if (message != nullptr) {
            const std::optional<int> answer = m_answerer(peer, *message);
            if (answer && m_peers.contains(peer)) {
                Write(peer, WrittenResult(*answer));
            }
        }
    }
}

void AssistServer::Write(int peer, const std::string& line) {
    const std::string whole = line + '\n';
    QLocalSocket* socket = m_peers.at(peer).socket;
    socket->write(whole.data(), static_cast<qint64>(whole.size()));
    socket->flush();
    emit LineOut(peer, QString::fromStdString(line));
}

void AssistServer::Drop(int peer, const QString& reason) {
    const auto found = m_peers.find(peer);
    if (found == m_peers.end()) {
        return;
    }
    QLocalSocket* socket = found->second.socket;
    m_peers.erase(found);
    disconnect(socket, nullptr, this, nullptr);
    socket->abort();
    socket->deleteLater();
    emit Gone(peer, reason);
}

}  // namespace spellwick::practice
