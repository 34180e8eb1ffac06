// The settings dialog: the general options of the main window.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <functional>

#include "model/failure_guard.h"
#include "model/shared_state.h"

namespace spellwick {

// What the dialog asks of the main window.
struct SettingsActions {
    std::function<void()> layOutVertically;
    std::function<void()> layOutHorizontally;
    // Saves one option of the global section at once.
    std::function<void(std::string_view key, const std::string& value)> saveOption;
    // Saves all settings.
    std::function<void()> saveAll;
    // Keeps a window above the others, or lets it go.
    std::function<void(WindowHandle window, bool topMost)> setTopMost;
};

class FormSettings : public QDialog {
    Q_OBJECT

  public:
    FormSettings(SharedState& state, FailureSink& failures, SettingsActions actions,
                 QWidget* parent);

    // Fills the boxes from the options; no handler runs.
    void RefreshDialog();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QCheckBox* MakeOption(const char* name, const char* caption, void (FormSettings::*clicked)());
    void ClickAlwaysOnTop();
    void ClickDisplayVertical();
    void ClickShowNecroRegs();
    void ClickOk();

    SharedState& m_state;
    FailureSink& m_failures;
    SettingsActions m_actions;
    QCheckBox* m_alwaysOnTop = nullptr;
    QCheckBox* m_displayVertical = nullptr;
    QCheckBox* m_showNecroRegs = nullptr;
};

}  // namespace spellwick
