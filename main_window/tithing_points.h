// The controls of the tithing points: a label, and an edit that lies over it while they are
// changed.
#pragma once

#include <QLabel>
#include <QObject>

#include "main_window/services.h"
#include "widgets/counter_box.h"
#include "widgets/guarded_events.h"
#include "widgets/spoken.h"

namespace spellwick {

// The place of the ankh, which the form draws: it takes the focus by Tab and shows it.
class AnkhPlace : public QLabel, public Spoken {
    Q_OBJECT

  public:
    explicit AnkhPlace(QWidget* parent) : QLabel(parent) { setFocusPolicy(Qt::TabFocus); }

    QAccessible::Role SpokenRole() const override { return QAccessible::Button; }
    QString SpokenName() const override { return accessibleName(); }
    bool CanPress() const override { return true; }
    void Press() override { emit Pressed(); }

  signals:
    // By a screen reader.
    void Pressed();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

class TithingPoints : public QObject {
    Q_OBJECT

  public:
    TithingPoints(const MainWindowServices& services, QWidget* form);

    void Show(const Screen& screen, const Changes& changes);

    // Due when the label's width or the window's font has changed.
    void FitLabel();

    QLabel* LabelTithes = nullptr;
    CounterBox* TxtTithes = nullptr;
    QLabel* ImageAnkh = nullptr;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Companion& m_companion;
    GuardedEvents m_events;
};

}  // namespace spellwick
