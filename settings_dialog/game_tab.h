// The Game tab: which window the game is, and how Spellwick and that window work together.
#pragma once

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <vector>

#include "platform/client_windows.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/icon_options.h"
#include "settings_dialog/own_spell_table.h"
#include "settings_dialog/settings_tab.h"
#include "settings_dialog/typing_options.h"
#include "settings_dialog/wine_tools_option.h"
#include "settings_dialog/your_data.h"

namespace spellwick {

class GameTab : public SettingsTab {
    Q_OBJECT

  public:
    GameTab(const SettingsServices& services, QWidget* parent);

    void Load() override;
    QWidget* FirstControl() override { return ListWindows; }

    void ClickFront();
    // Says anew what is found.
    void ShowFound();
    // Lists the desktop's windows anew; no window is chosen then.
    void LookAgain();
    // Fills the row's edits for the window that is chosen.
    void ProposeRow();
    void ClickMyGame();
    void ClickTable();

    QPushButton* CommandFirstSteps;
    QLabel* LabelGame;
    QLabel* LabelNotice;
    QTreeWidget* ListWindows;
    QLineEdit* TextRowName;
    QLineEdit* TextRowClass;
    QLineEdit* TextRowTitle;
    QLineEdit* TextRowLogin;
    QLineEdit* TextRowShard;
    QCheckBox* CheckRowEnter;
    QPushButton* CommandMyGame;
    QPushButton* CommandTable;
    QPushButton* CommandLook;
    QLabel* LabelTool;  // the link with the assist tool
    QCheckBox* CheckFront;
    TypingOptions* Typing;
    WineToolsOption* ToolsInWine;
    OwnSpellTable* Spells;
    IconOptions* Icons;
    YourData* Data;

  signals:
    void FirstStepsWanted();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QLineEdit* MakeEdit(const char* name, const char* caption, const char* hint);
    QPushButton* MakeButton(const char* name, const char* caption);
    QGroupBox* MakeGroup(const char* caption);
    QWidget* MakeRowEdits();
    void MakePage();
    void ConnectAll();

    QFormLayout* m_row = nullptr;
    QVBoxLayout* m_groups = nullptr;
    QVBoxLayout* m_options = nullptr;  // of the last group
    QTimer m_look;
    std::vector<TopLevelWindow> m_windows;  // as listed
};

}  // namespace spellwick
