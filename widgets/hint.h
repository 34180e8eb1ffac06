// Hints: short texts, each in a small window without a frame beside another window. A hint never
// takes the focus and goes by itself, or at a click on it.
#pragma once

#include <QLabel>
#include <QTimer>
#include <chrono>
#include <functional>
#include <vector>

#include "widgets/guarded_events.h"

namespace spellwick {

inline constexpr std::chrono::milliseconds kHintTime{8000};

// The best place for a window of this size beside `window`: right of it, else left, below or above,
// wherever it covers least of it, then least of `game`, then least of `others`, and of places that
// are as good the nearest to `beside`, a part of the window. It lies within `room`.
QPoint PlaceBeside(const QRect& window, QSize size, const QRect& room,
                   const std::vector<QRect>& others, const QRect& game = {},
                   const QRect& beside = {});

// Where a hint leads.
struct HintLead {
    QWidget* beside = nullptr;     // a control of the hints' window; null for none
    std::function<void()> follow;  // runs after a click on the hint has closed it; may be empty
    bool untilClick = false;       // stands until the next click anywhere in the program
};

// One hint.
class Hint : public QLabel {
    Q_OBJECT

  public:
    // `owner` is the window beside which it stands.
    Hint(const QString& text, QWidget* owner);

    QTimer& Time() { return m_time; }
    // Gives it a window before it is shown. winId() would give one to each control of the owner
    // too.
    void MakeWindow() { create(); }
    // Takes the lead, and shows that a click goes somewhere.
    void SetLead(HintLead lead);
    const HintLead& Lead() const { return m_lead; }

  signals:
    void Clicked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QTimer m_time;
    HintLead m_lead;
};

// The hints beside a window, the newest one lowest. They move aside when another window of the
// program's appears, moves or goes.
class Hints : public QObject {
    Q_OBJECT

  public:
    // The hints stand beside `owner`, each for `time`.
    Hints(QWidget& owner, FailureSink& failures, std::chrono::milliseconds time = kHintTime);

    // Shows a text; its time starts anew if it is shown already. While the window is hidden or
    // minimised the hint waits for it.
    void Show(const QString& text, const HintLead& lead = {});

    // Tells where the game's window is, empty without one; asked each time hints are placed.
    void SetGame(std::function<QRect()> game) { m_game = std::move(game); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Make(const QString& text, const HintLead& lead);
    void Drop(Hint* hint);
    void Follow(Hint* hint);
    void DropAtClick(const QObject* clicked);
    QRect Control() const;
    void Arrange();
    QSize FitColumn(const QRect& room);
    void Appear(Hint& hint);
    void Attach(Hint& hint);

    QWidget& m_owner;
    const GuardedEvents m_events;
    std::chrono::milliseconds m_time;
    std::function<QRect()> m_game = [] { return QRect(); };
    std::vector<Hint*> m_hints;  // children of the owner, the oldest first
};

}  // namespace spellwick
