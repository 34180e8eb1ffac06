// The settings dialog: nine buttons and their panels, one class for each panel. Built once, when
// it is first wanted, and shown modally; every change takes effect at once.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <array>
#include <optional>

#include "companion/screen.h"
#include "companion/way.h"
#include "settings_dialog/about_tab.h"
#include "settings_dialog/common_dialog.h"
#include "settings_dialog/first_steps.h"
#include "settings_dialog/game_tab.h"
#include "settings_dialog/general_tab.h"
#include "settings_dialog/macros_tab.h"
#include "settings_dialog/reagents_tab.h"
#include "settings_dialog/services.h"
#include "settings_dialog/skills_tab.h"
#include "settings_dialog/spell_texts_tab.h"
#include "settings_dialog/spells_tab.h"
#include "settings_dialog/tab_strip.h"
#include "settings_dialog/user_spells_tab.h"
#include "widgets/guarded_events.h"
#include "widgets/page_button.h"

namespace spellwick {

inline constexpr int kTabCount = 9;
inline constexpr int kGameTab = 8;

class FormSettings : public QDialog, public TabbedDialog {
    Q_OBJECT

  public:
    // `services` is copied; what it refers to outlives the dialog.
    FormSettings(const SettingsServices& services, QWidget* parent);

    // Sets the place, fills the lists and the tabs; once per run. A step that fails is skipped.
    void Form_Load();

    // Due each time the dialog becomes active: its top-most state, the player, all tabs.
    void Form_Activate();

    // Takes the entry in use at the end of the program; one that would be refused is dropped.
    void TakeEntryAtEnd();

    // Opens the tab with the control that a hint speaks of, and gives it the focus; of a target in
    // the main window, nothing. kFirstSteps opens those, once the dialog is shown. An entry that is
    // refused keeps the focus.
    void GoTo(const Target& target);

    // Shows what a new player does first, beside the dialog.
    void OpenFirstSteps();

    // Saves the dialog's place, unless it is minimised, and all macro codes.
    StoreResult Form_Unload();

    // Refills every tab from the shared state.
    void RefreshDialog();

    // Refreshes the chances on the skills tab, even while the dialog is hidden; refreshes all tabs
    // if another player was loaded while it is shown.
    void UpdateChance();

    // Draws what an action of the companion has changed here.
    void Show(const Screen& screen, const Changes& changes);

    // Button handlers; tabs are 0 to 8.
    void ClickCheckTab(int tab);
    void ClickCommand1();
    void ClickCommandDummy();

    SpellsTab& Spells() { return *m_spells; }
    UserSpellsTab& UserSpells() { return *m_userSpells; }
    MacrosTab& Macros() { return *m_macros; }
    SkillsTab& Skills() { return *m_skills; }
    ReagentsTab& Reagents() { return *m_reagents; }
    SpellTextsTab& SpellTexts() { return *m_spellTexts; }
    AboutTab& About() { return *m_about; }
    GeneralTab& General() { return *m_general; }
    GameTab& Game() { return *m_game; }
    SettingsTab& Tab(int tab) { return *m_tabs[static_cast<std::size_t>(tab)]; }

    std::array<PageButton*, kTabCount> CheckTab{};
    QPushButton* Command1 = nullptr;
    QPushButton* CommandDummy = nullptr;

    // Escape closes the dialog as its close button does, also over a macro key that is refused: the
    // entry is dropped.
    void reject() override;

    const TabStrip* Strip() const override { return m_strip; }

    // The data were replaced while it was open: it is to be made anew.
    bool IsOutdated() const { return m_outdated; }

  signals:
    // Asks for a control of the main window.
    void MainWindowWanted(const spellwick::Target& target);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void DoWhatIsDue();
    void GoToStep(const Target& target);
    void MakeScroll();
    void MakeStrip();
    void MakeTabButton(int tab);
    void MakeTabs();
    void MakeButtons();
    void MakeShortcuts();
    void NameLists();
    void LightenBoxes();
    // Opens a tab before or after the one that is open.
    void TurnTabs(int step);
    // Moves the focus to a control, so that the edit in use takes its entry. False if it refuses
    // the entry and keeps the focus.
    bool LeaveEntryFor(QWidget& next);
    // Saves and hides, unless an entry is refused.
    void Close();
    void KeepPlace();
    QRect GameArea() const;
    QPoint PlaceToOpen();
    void PlaceFirstSteps();
    void FitSize();
    std::array<SettingsTab*, 5> TabsOfRefresh() const;
    // RefreshDialog when the user has done nothing: a tab that fails does not end the program.
    void RefreshWhatWorks();

    SettingsServices m_services;
    SharedState& m_state;
    const GuardedEvents m_events;
    CommonDialog m_commonDialog;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_content = nullptr;  // of the scroll area: strip and panels
    TabStrip* m_strip = nullptr;
    QStackedLayout* m_panels = nullptr;
    SpellsTab* m_spells = nullptr;
    UserSpellsTab* m_userSpells = nullptr;
    MacrosTab* m_macros = nullptr;
    SkillsTab* m_skills = nullptr;
    ReagentsTab* m_reagents = nullptr;
    SpellTextsTab* m_spellTexts = nullptr;
    AboutTab* m_about = nullptr;
    GeneralTab* m_general = nullptr;
    GameTab* m_game = nullptr;
    std::array<SettingsTab*, kTabCount> m_tabs{};
    WindowPlaces::Place m_place;
    QPoint m_aside;  // where the dialog has moved by itself
    std::string m_shownPlayer;
    FirstSteps* m_firstSteps = nullptr;  // null until they are wanted
    QMargins m_frame;                    // of the dialog when the first steps were placed
    Way m_due = Way::kNone;              // where a hint leads, until the dialog is shown
    bool m_justShown = false;
    bool m_outdated = false;
};

}  // namespace spellwick
