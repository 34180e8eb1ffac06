// The practice assist tool without its window: the script, the socket, and the faults.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "practice/assist_server.h"
#include "practice/tool_commands.h"
#include "practice/tool_faults.h"
#include "practice/tool_script.h"

namespace spellwick::practice {

inline constexpr const char* kToolTitle = "UOAssist - Practice";

struct ToolEvent {
    enum class Way { kIn, kOut, kNote };
    Way way;
    // Of a line: the line as it stands. Of a note: a word and what it is about, in English.
    QString text;
    // The second of two tools.
    bool second = false;
};

class PracticeTool : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        QString folder;
        // Of the socket, without its ending.
        QString name;
        std::function<ToolTime()> clock;
        ToolScript::Random random;
    };

    explicit PracticeTool(Parts parts);

    // False if it cannot listen; the reason is a note.
    bool Open();
    void Close();
    bool IsOpen() const { return m_server.IsOpen(); }
    const QString& Path() const { return m_server.Path(); }

    // Does everything but kState, kWait and kQuit, which are for the owner of the program.
    void Obey(const ToolCommand& command);
    // A line of the game's journal: a cast, or a title that tells who is in the game. Any other
    // line is passed over.
    void Watch(const QString& line);
    // A name that is no spell's is passed over.
    void Cast(const QString& spell);
    void Play(Fault fault);
    // Ends a fault that lasts.
    void Mend(Fault fault);
    void MendAll();
    bool Lasts(Fault fault) const { return m_lasting.contains(fault); }

    ToolScript& Script() { return m_script; }
    const ToolScript& Script() const { return m_script; }
    // Whether the program that registered the window is still there.
    bool Reaches(int window) const;
    int Connections() const { return m_server.Connections(); }
    // Nothing is to be sent any more, and everything has been answered.
    bool Quiet() const;

  signals:
    void Happened(const spellwick::practice::ToolEvent& event);
    // Anything that a window shows may have changed.
    void Changed();

  private:
    int Answer(int peer, const ToolMessage& message);
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
