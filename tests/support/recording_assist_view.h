// A view that writes down what the reports of the assist tool ask of it, one line a call.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "link/assist_link.h"
#include "link/assist_view.h"
#include "model/cast_rules.h"

namespace spellwick {

class RecordingAssistView : public AssistView, public AssistLink {
  public:
    void ShowCounter(i32 reagent, i32 count) override {
        Log("counter " + std::to_string(reagent) + ' ' + std::to_string(count));
    }
    void ShowTithes(i32 points) override { Log("tithes " + std::to_string(points)); }
    void ShowCurrentMana() override { Log("mana"); }
    void ShowAmounts() override { Log("amounts"); }
    void ShowChances() override { Log("chances"); }
    void DebitSpell(i32 row) override {
        Log("debit " + std::to_string(row));
        RequireSpellRow(row);
    }
    void StartTimer(i32 row) override { Log("timer " + std::to_string(row)); }
    void EnableCount(bool enabled) override { Log(enabled ? "enable" : "disable"); }
    void CaptionCount(const std::string& caption) override { Log("caption " + caption); }
    void ArmMeditation() override { Log("meditate"); }
    void ShowReportedMagery(i32 points) override { Log("skill " + std::to_string(points)); }
    void ShowReportedIntelligence(i32 points) override { Log("int " + std::to_string(points)); }
    void ShowBox(const std::string& text) override { Log("box " + text); }
    void YieldEvents() override {
        Log("yield");
        if (duringYield) {
            duringYield();
        }
    }

    void EndReport() override {}

    void FindAssist() override { Log("search"); }
    void HookWindow() override { Log("hook"); }
    void UnhookWindow() override { Log("unhook"); }
    void TakeReports() override { Log("take reports"); }
    void RequestCount() override { Log("count"); }

    std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

    std::vector<std::string> log;
    std::function<void()> duringYield;

  private:
    void Log(std::string line) { log.push_back(std::move(line)); }
};

}  // namespace spellwick
