// First steps: what a new player does before the first cast, and which of it is done. It changes
// nothing itself; its buttons go to the controls that do.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <array>

#include "companion/first_steps.h"
#include "widgets/guarded_events.h"

namespace spellwick {

// A tick in a disc for what is done, an empty ring for what is to do.
class StepMark : public QWidget {
    Q_OBJECT

  public:
    explicit StepMark(QWidget* parent);

    void SetDone(bool done);
    bool IsDone() const { return m_done; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool m_done = false;
};

class FirstSteps : public QDialog {
    Q_OBJECT

  public:
    // Both references outlive the dialog.
    FirstSteps(const SharedState& state, FailureSink& failures, QWidget* parent);

    // Says anew which steps are done; once a second while it is shown.
    void ShowStates();

    std::array<StepMark*, kFirstStepCount> Mark{};
    std::array<QLabel*, kFirstStepCount> LabelState{};
    std::array<QLabel*, kFirstStepCount> LabelStep{};
    std::array<QPushButton*, kFirstStepCount> CommandStep{};

  signals:
    void Wanted(const spellwick::Target& target);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void MakeStep(int step);

    const SharedState& m_state;
    const GuardedEvents m_events;
    QTimer m_look;
};

}  // namespace spellwick
