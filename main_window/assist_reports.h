// What the reports of the assist tool show and start in the main window.
#pragma once

#include "link/assist_view.h"
#include "main_window/form_main.h"

namespace spellwick {

class AssistReports : public AssistView {
  public:
    // All outlive it.
    AssistReports(FormMain& form, MessageBoxes& boxes, SettingsPort& settings, TimersPort& timers)
        : m_form(form), m_boxes(boxes), m_settings(settings), m_timers(timers) {}

    void ShowCounter(i32 reagent, const std::string& text) override;
    void ShowTithes(const std::string& text) override;
    void ShowCurrentMana() override;
    void UpdateAmounts() override;
    void UpdateChances() override;
    void DebitSpell(i32 row) override;
    void StartTimer(i32 row) override { m_timers.StartTimer(row); }
    void EnableCount(bool enabled) override;
    void CaptionCount(const std::string& caption) override;
    void ArmMeditation() override;
    void ShowMinimumSkill(const std::string& text) override { m_settings.ShowMinimumSkill(text); }
    void ShowMinimumInt(const std::string& text) override { m_settings.ShowMinimumInt(text); }
    void ShowBox(const std::string& text) override;
    void YieldEvents() override;

  private:
    FormMain& m_form;
    MessageBoxes& m_boxes;
    SettingsPort& m_settings;
    TimersPort& m_timers;
};

}  // namespace spellwick
