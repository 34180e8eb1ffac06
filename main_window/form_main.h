// The main window: start and end of the program, the timers, the arrangements; composed of the
// page, the counters, the tithes and the casting pipeline.
#pragma once

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <array>

#include "link/client_watch.h"
#include "main_window/casting.h"
#include "main_window/circle_page.h"
#include "main_window/layout_plan.h"
#include "main_window/purse.h"
#include "main_window/services.h"
#include "main_window/tithes.h"
#include "store/settings_io.h"
#include "widgets/pictures.h"

namespace spellwick {

enum class LoadOutcome { kReady, kMissingSpellData, kBadSpellData };

class FormMain : public QWidget, private PlayerView, private PurseView, private ClientWatchHost {
    Q_OBJECT

  public:
    // `services` is copied; what it refers to outlives the window.
    explicit FormMain(const MainWindowServices& services);

    // The start-up sequence. Failures of a step are ignored; only a missing or bad spell data file
    // ends the start, after its box.
    LoadOutcome Form_Load();

    // The top-most state and, the first time, the place and arrangement of the window.
    void Form_Activate();

    // The end of the program.
    void Form_Unload();

    // Saves as at a regular end, each step on its own; for the end after a failure. True when all
    // of it was saved.
    bool SaveAfterFailure();

    void LayoutVertical();
    void LayoutHorizontal();
    // The arrangement in force, anew.
    void LayoutAgain();

    // A click on Command(index), 0 to 4.
    void ClickCommand(int index);

    CirclePage& Page() { return m_page; }
    Purse& PurseControls() { return m_purse; }
    Tithes& TithesControls() { return m_tithes; }
    Casting& Pipeline() { return m_casting; }
    ClientWatch& Watch() { return m_watch; }
    SettingsIo& Io() { return m_io; }
    Pictures& PictureStrips() { return m_pictures; }
    QTimer& Timer1(int index);
    QPushButton& Command(int index) { return *m_command[static_cast<std::size_t>(index)]; }

    QPushButton& CountButton() { return Command(3); }

    // Starts Timer1(2), at whose tick the meditation button is pressed.
    void ArmMeditation();

    // Tag of Timer1(2): "Meditate" while the button is about to be pressed.
    std::string MeditationTag;

    // Saves the global keys and the player; a box says so when it fails.
    void SaveAll();

    // Says in a box that a save failed; once for one trouble.
    void ReportSave(const StoreResult& result);

    // Writes one option at once; a box says so when it fails.
    void SaveOption(std::string_view key, const std::string& value);

    // The caption: character and server of the client.
    void ShowCaption() override;

    // Saves and loads CurrentPlayerName.
    void SavePlayer() override;
    void LoadPlayer() override;
    void UpdatePage() override { m_page.UpdatePage(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    // PlayerView
    void ShowBagNames() override { m_purse.ShowBagNames(); }
    void SelectBag() override { m_purse.SelectBag(); }
    void ShowStock() override { m_purse.ShowStock(); }
    void ShowTithes() override;
    // PurseView
    CounterTexts Counters() const override { return m_purse.Counters(); }
    void Highlight(const SpellRecord& spell) override;
    void CommitTithes() override;
    // ClientWatchHost
    void FindAssist() override { m_services.assist.FindAssist(); }

    void ConnectCommands();
    void ConnectTimers();
    void SetTabOrder(bool vertical);
    void RestorePlace();
    void TakePlace();
    void Apply(const LayoutPlan& plan);
    TextSizes MeasureTexts() const;
    WindowPlaces Places() const;     // of this window alone
    WindowPlaces AllPlaces() const;  // with the window of the timers
    void EnterKey();
    void DrawReagents(QPainter& painter);
    void OpenHelp();
    void OpenSettings();
    void Count();
    void MeditationTick();

    MainWindowServices m_services;
    SharedState& m_state;
    Pictures m_pictures;
    SettingsIo m_io;
    CirclePage m_page;
    Purse m_purse;
    Tithes m_tithes;
    std::array<QPushButton*, 5> m_command;
    ClientWatch m_watch;
    Casting m_casting;
    QTimer m_watchTimer;       // Timer1(1)
    QTimer m_meditationTimer;  // Timer1(2)
    bool m_activated = false;  // the first activation has run
    bool m_mapped = false;     // the window has been painted once
    bool m_unloading = false;
    bool m_saveTroubleShown = false;
};

}  // namespace spellwick
