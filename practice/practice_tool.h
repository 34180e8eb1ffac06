// The practice assist tool without its window: script, socket and faults.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "practice/assist_server.h"
#include "practice/tool_commands.h"
#include "practice/tool_faults.h"
#include "practice/tool_roles.h"
#include "practice/tool_script.h"

namespace spellwick::practice {

struct ToolEvent {
    enum class Way { kIn, kOut, kNote };
    Way way;
    // A line as it was sent, or a note: a keyword and what it is about.
    QString text;
    // From the second of two tools.
    bool second = false;
};

class PracticeTool : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        QString folder;
        // The socket's name, without the extension.
        QString name;
        std::function<ToolTime()> clock;
        ToolScript::Random random;
        // The tool that it pretends to be; not null.
        const ToolRole* role = kToolRoles.data();
    };

    explicit PracticeTool(Parts parts);

    // False if it cannot listen; a note gives the reason.
    bool Open();
    void Close();
    bool IsOpen() const { return m_server.IsOpen(); }
    const QString& Path() const { return m_server.Path(); }
    // Of its window, and what it tells the programs that connect.
    QString Title() const { return QString::fromUtf8(m_parts.role->title); }

    // Handles every command but kState, kWait and kQuit, which are left to the caller.
    void Obey(const ToolCommand& command);
    // Takes a line of the game's journal: a cast, or a title that says who is in the game. Any
    // other line is ignored.
    void Watch(const QString& line);
    // An unknown name is ignored.
    void Cast(const QString& spell);
    void Play(Fault fault);
    // Ends a lasting fault.
    void Mend(Fault fault);
    void MendAll();
    bool Lasts(Fault fault) const { return m_lasting.contains(fault); }

    ToolScript& Script() { return m_script; }
    const ToolScript& Script() const { return m_script; }
    // Whether the program that registered the window is still there.
    bool Reaches(int window) const;
    int Connections() const { return m_server.Connections(); }
    // Whether nothing is left to send and everything has been answered.
    bool Quiet() const;

  signals:
    void Happened(const spellwick::practice::ToolEvent& event);
    // Anything that a window shows may have changed.
    void Changed();

  private:
    std::optional<int> Answer(int peer, const ToolMessage& message);
    void Arm();
    void SendDue();
    void Report(const ToolMessage& message);
    void Note(const QString& text);
    void CloseFor(ToolTime time);
    void StartSecond();
    void Retitle();
    void Burst();
    void StreamOne();
    ToolTime Now() const { return m_parts.clock(); }

    Parts m_parts;
    ToolScript m_script;
    AssistServer m_server;
    QTimer m_due;
    QTimer m_back;
    QTimer m_stream;
    int m_streamed = 0;
    // The connection by which each window was registered.
    std::map<int, int> m_peerOf;
    std::set<Fault> m_lasting;
    std::unique_ptr<PracticeTool> m_second;
};

}  // namespace spellwick::practice
