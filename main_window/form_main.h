// The main window: draws the companion's screen and passes its events in.
#pragma once

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <array>

#include "main_window/circle_page.h"
#include "main_window/counters.h"
#include "main_window/layout_plan.h"
#include "main_window/link_mark.h"
#include "main_window/services.h"
#include "main_window/tithing_points.h"
#include "main_window/undo_note.h"
#include "widgets/guarded_events.h"
#include "widgets/pictures.h"
#include "widgets/spoken.h"

namespace spellwick {

// Of FormMain::Command.
inline constexpr int kUndoCommand = 0;
inline constexpr int kHelpCommand = 1;
inline constexpr int kSettingsCommand = 2;

class FormMain : public QWidget, public Spoken {
    Q_OBJECT

  public:
    // `services` is copied; what it refers to outlives the window.
    explicit FormMain(const MainWindowServices& services);

    // Starts the companion, and the watch if that went well.
    LoadOutcome Form_Load();

    // Comes to the screen in its place and arrangement, once; what it shows may follow before
    // events are served.
    void Appear();

    // The top-most state and, the first time, the figures; the window appears if it has not yet.
    void Form_Activate();

    // Paints all of a window that is shown but not on the screen yet. When it comes there, the
    // toolkit has nothing left to paint.
    void PaintAhead();

    // Draws what has changed.
    void Show(const Changes& changes);

    // Takes the saved place and a handle, which it returns.
    WindowHandle MakeHandle();
    // Where it stands; without a place while it is not in its normal state.
    WindowPlaces Places() const;

    void FocusPage();
    void FocusCounter(i32 reagent) { m_counters.Focus(reagent); }
    void FocusHelp();

    // The pause between the focus change and the typing: one tick of a timer of 100 ms, with the
    // event queue served throughout. An inner pause ends the outer one too.
    void Pause();

    // A click on Command(index), 0 to 4.
    void ClickCommand(int index);

    QAccessible::Role SpokenRole() const override { return QAccessible::Window; }
    // With character and server.
    QString SpokenName() const override { return windowTitle(); }

    CirclePage& Page() { return m_page; }
    Pictures& PictureStrips() { return m_pictures; }
    QTimer& Timer1(int index);
    QWidget& StockCounter(i32 reagent) { return m_counters.Reagent(reagent); }  // 1 to 13
    QWidget& TithesLabel() { return *m_tithes.LabelTithes; }
    QPushButton& Command(int index) { return *m_command[static_cast<std::size_t>(index)]; }

  signals:
    // Asks for the settings dialog; whoever shows it returns when it has closed.
    void SettingsWanted();
    // The mouse is over the button that asks for it: there is time to make it.
    void SettingsNear();
    void InfoWanted(spellwick::i32 row);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void ConnectCommands();
    void MakeTimers();
    void ShowCommands(const Screen& screen, const Changes& changes);
    void OpenSettings();
    void Undo();
    // The tooltip of a control: its own, else one that is made now. It lets clicks through.
    void ShowTip(QWidget& control, QPoint place);
    QString TipOf(const QWidget& control);
    void SetTabOrder(bool vertical);
    QPoint SavedPlace();
    // The place for the window as it is arranged now, on a screen; frame included.
    QPoint PlaceFor(QPoint wanted) const;
    void TakePlace(QPoint wanted);
    // The window is on the screen for the first time.
    void TakeFrame();
    void FitFrame(QPoint place);
    // Gives the controls and the window the places and sizes of the arrangement.
    void Arrange();
    // The same, and moves the window if it would leave the screen.
    void LayoutAgain();
    void Apply(const LayoutPlan& plan);
    // In pixels of the design.
    TextSizes MeasureTexts() const;
    LayoutPlan Plan() const;
    // Pixels of the design in pixels of the window.
    int InWindow(int pixels) const;
    void DrawReagents(QPainter& painter);

    MainWindowServices m_services;
    Companion& m_companion;
    SharedState& m_state;
    GuardedEvents m_events;
    Pictures m_pictures;
    CirclePage m_page;
    Counters m_counters;
    TithingPoints m_tithes;
    std::array<QPushButton*, 5> m_command;
    LinkMark* m_linkMark;
    UndoNote m_undoNote;
    QTimer m_pauseTimer;       // Timer1(0)
    QTimer m_watchTimer;       // Timer1(1)
    QTimer m_meditationTimer;  // Timer1(2)
    int m_fontPixels;
    bool m_appeared = false;
    bool m_activated = false;  // the first activation has run
    bool m_mapped = false;     // the window has been on the screen
};

}  // namespace spellwick
