#include "practice/practice_tool.h"

#include <algorithm>
#include <array>
#include <utility>

#include "practice/roster.h"

namespace spellwick::practice {
namespace {

QString OutcomeWord(ToolScript::CastOutcome outcome) {
    switch (outcome) {
        case ToolScript::CastOutcome::kCast:
            return QStringLiteral("cast %1");
        case ToolScript::CastOutcome::kFizzled:
            return QStringLiteral("fizzled %1");
        case ToolScript::CastOutcome::kNoMana:
            return QStringLiteral("refused %1: not enough mana");
        case ToolScript::CastOutcome::kNoReagents:
            return QStringLiteral("refused %1: not enough reagents");
        case ToolScript::CastOutcome::kLoggedOut:
            return QStringLiteral("refused %1: logged out");
    }
    return {};
}

}  // namespace

PracticeTool::PracticeTool(Parts parts)
    : m_parts(std::move(parts)),
      m_script(m_parts.random),
      m_server(m_parts.folder, m_parts.name,
               [this](int peer, const ToolMessage& message) { return Answer(peer, message); }) {
    m_server.SetTitle(Title());
    m_due.setSingleShot(true);
    m_due.setTimerType(Qt::PreciseTimer);
    connect(&m_due, &QTimer::timeout, this, &PracticeTool::SendDue);
    m_back.setSingleShot(true);
    m_back.setTimerType(Qt::PreciseTimer);
    connect(&m_back, &QTimer::timeout, this, &PracticeTool::Open);
    m_stream.setTimerType(Qt::PreciseTimer);
    connect(&m_stream, &QTimer::timeout, this, &PracticeTool::StreamOne);

    connect(&m_server, &AssistServer::Connected, this,
            [this](int peer) { Note(QStringLiteral("connected %1").arg(peer)); });
    connect(&m_server, &AssistServer::Gone, this, [this](int peer, const QString& reason) {
        std::erase_if(m_peerOf, [peer](const auto& entry) { return entry.second == peer; });
        Note(QStringLiteral("gone %1 %2").arg(peer).arg(reason).trimmed());
    });
    connect(&m_server, &AssistServer::LineIn, this, [this](int, const QString& line) {
        emit Happened({ToolEvent::Way::kIn, line});
        emit Changed();
    });
    connect(&m_server, &AssistServer::LineOut, this, [this](int, const QString& line) {
        emit Happened({ToolEvent::Way::kOut, line});
    });
}

bool PracticeTool::Open() {
    m_back.stop();
    if (IsOpen()) {
        return true;
    }
    if (!m_server.Open()) {
        Note(QStringLiteral("trouble ") + m_server.Trouble());
        return false;
    }
    m_script.Restart();
    Note(QStringLiteral("open ") + m_server.Path());
    Arm();
    return true;
}

void PracticeTool::Close() {
    m_back.stop();
    m_stream.stop();
    if (!IsOpen()) {
        return;
    }
    m_server.Close();
    m_script.Restart();
    Note(QStringLiteral("closed"));
    Arm();
}

void PracticeTool::Obey(const ToolCommand& command) {
    using Kind = ToolCommand::Kind;
    constexpr std::array kOfTheCharacter{Kind::kGain, Kind::kLose, Kind::kMana, Kind::kSkill};
    if (m_second && std::ranges::find(kOfTheCharacter, command.kind) != kOfTheCharacter.end()) {
        m_second->Obey(command);
    }
    switch (command.kind) {
        case Kind::kGain:
            m_script.Change(static_cast<std::size_t>(command.which), command.amount, Now());
            break;
        case Kind::kLose:
            m_script.Change(static_cast<std::size_t>(command.which), -command.amount, Now());
            break;
        case Kind::kMana:
            m_script.SetMana(command.amount, Now());
            break;
        case Kind::kSkill:
            m_script.SetSkill(command.which, command.amount, Now());
            break;
        case Kind::kCast:
            Cast(QString::fromStdString(command.name));
            break;
        case Kind::kFizzle:
            m_script.SetFizzle(ToolScript::Fizzle::kBeforeTheReport);
            break;
        case Kind::kSend:
            Report(command.message);
            break;
        case Kind::kFault:
            Play(command.fault);
            break;
        case Kind::kMend:
            MendAll();
            break;
        case Kind::kClose:
            Close();
            break;
        case Kind::kOpen:
            Open();
            break;
        case Kind::kLogout:
            m_script.Logout(Now());
            break;
        case Kind::kIdle:
            m_script.SetIdle(command.which != 0);
            break;
        case Kind::kState:
        case Kind::kWait:
        case Kind::kQuit:
            break;
    }
    SendDue();
}

void PracticeTool::Watch(const QString& line) {
    const QString cast = QStringLiteral("cast ");
    const QString title = QStringLiteral("title ");
    const QString login = QString::fromLatin1(kLoginTitle.data());
    if (line.startsWith(cast)) {
        Cast(line.mid(cast.size()));
    } else if (line == title + login) {
        m_script.LeaveGame(Now());
    } else if (line.startsWith(title + login + QStringLiteral(" - "))) {
        m_script.EnterGame(Now());
    }
    SendDue();
    if (m_second && !line.startsWith(cast)) {
        m_second->Watch(line);
    }
}

void PracticeTool::Cast(const QString& spell) {
    const SpellCost* const cost = FindSpell(spell.toStdString());
    if (cost == nullptr) {
        return;
    }
    Note(OutcomeWord(m_script.Cast(*cost, Now())).arg(spell));
    SendDue();
    if (m_second) {
        m_second->Cast(spell);
    }
}

bool PracticeTool::Reaches(int window) const {
    return m_peerOf.contains(window);
}

bool PracticeTool::Quiet() const {
    return m_script.Scheduled() == 0 && m_server.Unanswered() == 0 && !m_stream.isActive() &&
           (!m_second || m_second->Quiet());
}

std::optional<int> PracticeTool::Answer(int peer, const ToolMessage& message) {
    if (Lasts(Fault::kMute)) {
        return std::nullopt;
    }
    const int answer = m_script.Answer(message, Now());
    if (message.number == kRegisterMessage) {
        m_peerOf[message.wParam] = peer;
    }
    if (Lasts(Fault::kEarlyCount)) {
        SendDue();
    } else {
        // The answer must go out before the first report.
        QTimer::singleShot(0, this, &PracticeTool::SendDue);
    }
    return answer;
}

void PracticeTool::Arm() {
    const auto next = m_script.NextDue(Now());
    if (next) {
        m_due.start(std::max(ToolTime(0), *next - Now()));
    } else {
        m_due.stop();
    }
    emit Changed();
}

void PracticeTool::SendDue() {
    for (const ToolMessage& message : m_script.TakeDue(Now())) {
        if (const auto report = AsRole(*m_parts.role, message)) {
            Report(*report);
        }
    }
    Arm();
}

void PracticeTool::Report(const ToolMessage& message) {
    for (const int window : m_script.Registered()) {
        const auto peer = m_peerOf.find(window);
        if (peer != m_peerOf.end()) {
            m_server.Send(peer->second, message);
        }
    }
}

void PracticeTool::Note(const QString& text) {
    emit Happened({ToolEvent::Way::kNote, text});
    emit Changed();
}

}  // namespace spellwick::practice
