// Hints: short texts, each in a small window without a frame beside another window. A hint never
// takes the focus and goes by itself, or at a click on it.
#pragma once

#include <QLabel>
#include <QTimer>
#include <chrono>
#include <vector>

#include "widgets/guarded_events.h"

namespace spellwick {

inline constexpr std::chrono::milliseconds kHintTime{8000};

// The best place for a window of this size beside `window`: right of it, else left, below or above,
// wherever it covers least of it and then least of `others`. It lies within `room`.
QPoint PlaceBeside(const QRect& window, QSize size, const QRect& room,
                   const std::vector<QRect>& others);

// One hint.
class Hint : public QLabel {
    Q_OBJECT

  public:
    // `owner` is the window beside which it stands.
    Hint(const QString& text, QWidget* owner);

    QTimer& Time() { return m_time; }

  signals:
    void Clicked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QTimer m_time;
};

// The hints beside a window, the newest one lowest.
class Hints : public QObject {
    Q_OBJECT

  public:
    // The hints stand beside `owner`, each for `time`.
    Hints(QWidget& owner, FailureSink& failures, std::chrono::milliseconds time = kHintTime);

    // Shows a text; its time starts anew if it is shown already. While the window is hidden or
    // minimised the hint waits for it.
    void Show(const QString& text);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Drop(Hint* hint);
    void Arrange();
    QSize FitColumn(const QRect& room);
    void Appear(Hint& hint);

    QWidget& m_owner;
    const GuardedEvents m_events;
    std::chrono::milliseconds m_time;
    std::vector<Hint*> m_hints;  // children of the owner, the oldest first
};

}  // namespace spellwick
