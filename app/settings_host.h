// The main window as the settings dialog sees it.
#pragma once

#include "app/timers_host.h"
#include "main_window/form_main.h"
#include "settings_dialog/services.h"

namespace spellwick {

class SettingsHost : public MainWindowPort {
  public:
    SettingsHost(FormMain& mainWindow, TimersHost& timers) : m_main(mainWindow), m_timers(timers) {}

    void LayoutVertical() override { m_main.LayoutVertical(); }
    void LayoutHorizontal() override { m_main.LayoutHorizontal(); }
    void UpdatePage() override { m_main.Page().UpdatePage(); }
    void UpdateAmounts() override { m_main.Page().UpdateAmounts(); }
    void ShowCounter(i32 reagent) override { m_main.PurseControls().ShowCounter(reagent); }
    void UpdateChances() override { m_main.Page().UpdateChances(); }
    void ParseClientTitle() override { m_main.Watch().ParseClientTitle(); }
    void SetTimerMode(i32 mode) override { m_timers.SetMode(mode); }
    void SavePlayer() override { m_main.SavePlayer(); }
    void LoadPlayer() override { m_main.LoadPlayer(); }
    void SaveAll() override { m_main.SaveAll(); }
    void SaveOption(std::string_view key, const std::string& value) override {
        m_main.SaveOption(key, value);
    }
    StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& dialog) override {
        return m_main.Io().SaveMacros(dialog);
    }
    void ReportSave(const StoreResult& result) override { m_main.ReportSave(result); }

  private:
    FormMain& m_main;
    TimersHost& m_timers;
};

}  // namespace spellwick
