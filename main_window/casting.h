// Casting a spell: the tests in their order, the keys, the debit; undo, credit and meditation.
#pragma once

#include <QObject>
#include <QTimer>

#include "link/client_watch.h"
#include "main_window/circle_page.h"
#include "main_window/purse.h"
#include "main_window/services.h"
#include "main_window/tithes.h"

namespace spellwick {

class Casting : public QObject {
    Q_OBJECT

  public:
    // What the pipeline works on; all outlive it.
    struct Parts {
        CirclePage& page;
        Purse& purse;
        Tithes& tithes;
        ClientWatch& watch;
        QWidget& helpButton;  // takes the focus after meditation
    };

    Casting(const MainWindowServices& services, Parts parts, QObject* parent);

    // Casts the spell of a slot, 0 to 7.
    void CastSpell(int slot);

    // Takes the cost of one cast off the counters; row 0 to 96.
    void DebitSpell(i32 row);

    // Gives the cost of one cast back.
    void CreditSpell(i32 row);

    // Gives the amounts of the last debit back.
    void Undo();

    // Presses the macro of the Meditation skill.
    void Meditate();

    // The box for an act that needs the client.
    void ShowClientNotFound();

    // Moves the focus to the first page button, so that an unfinished entry is committed.
    void CommitEntries();

    // The pause between the focus change and the typing: one tick of a timer of 100 ms, with the
    // event queue served throughout. An inner pause ends the outer one too.
    void WaitTick();

    // Timer1(0).
    QTimer& WaitTimer() { return m_waitTimer; }

  private:
    bool WarnOfNoChance(i32 row);
    bool AskForBook(i32 row);
    bool RefuseForStock(int slot, i32 row);
    void SendToClient();
    void BringClientForward();

    const MainWindowServices& m_services;
    SharedState& m_state;
    Parts m_parts;
    QTimer m_waitTimer;
};

}  // namespace spellwick
