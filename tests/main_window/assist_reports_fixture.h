// The real main window on recording parts, joined to an assist tool of the test's own.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "main_window/assist_reports.h"
#include "tests/support/main_window_fixture.h"
#include "tests/support/recording_assist_transport.h"

namespace spellwick {

class AssistReportsTest : public MainWindowFixture {
  protected:
    static constexpr WindowHandle kTool = 9;
    static constexpr int kCount = 3;
    static constexpr i32 kTithes = 200;  // what a stock report calls the tithing points

    // Slots of the first circle, and the cost of each: one of each reagent named.
    static constexpr int kClumsy = 0;  // Bloodmoss (3), Nightshade (7)
    static constexpr int kHeal = 3;    // Spider Silk (4), Garlic (5), Ginseng (8)

    AssistReportsTest() { m_assist = &m_search; }

    // Makes the window and joins the tool to it, without loading.
    void MakeBeside(bool tool) {
        SavePlayer(kMira);
        OpenClient(kMira);
        ShowTool(tool);
        Make();
        m_reports = std::make_unique<AssistReports>(Form(), m_boxes, m_parts, m_parts);
        m_dispatcher =
            std::make_unique<AssistDispatcher>(m_state, *m_reports, m_search, failureSink);
        m_search.SetReceiver(*m_dispatcher);
        m_search.SetCountButton([this](bool enabled) { m_reports->EnableCount(enabled); });
    }

    // As StartWithMira, with a tool that is there from the start or not.
    FormMain& StartBeside(bool tool) {
        MakeBeside(tool);
        Start();
        Tick(1);
        TakeLog();
        return Form();
    }
    FormMain& StartLinked() { return StartBeside(true); }

    void ShowTool(bool there) {
        m_transport.windows.clear();
        if (there) {
            m_transport.windows.push_back({kTool, "UOAssist - Mira Talon"});
        }
    }

    void Report(std::uint32_t number, i32 wParam, i32 lParam = 0) {
        EXPECT_EQ(m_transport.Deliver({number, wParam, lParam}), 0);
    }
    void ReportMana(i32 mana) { Report(kAssistStats, 100, mana); }

    std::vector<std::string> Counters() {
        std::vector<std::string> texts;
        for (int reagent = 1; reagent <= kReagentCount; ++reagent) {
            texts.push_back(Text("Reagent", reagent));
        }
        return texts;
    }
    // The counters of bag 0 with one less at some reagents.
    static std::vector<std::string> FiftyLessOneAt(std::initializer_list<int> reagents) {
        std::vector<std::string> texts(static_cast<std::size_t>(kReagentCount), "50");
        for (const int reagent : reagents) {
            texts[static_cast<std::size_t>(reagent) - 1] = "49";
        }
        return texts;
    }
    std::vector<std::string> Amounts() {
        std::vector<std::string> texts;
        for (int slot = 0; slot < kSlotCount; ++slot) {
            texts.push_back(Text("LabelAmount", slot));
        }
        return texts;
    }
    std::vector<std::string> Timers() {
        std::vector<std::string> timers;
        for (const std::string& line : m_log) {
            if (line.starts_with("timer ")) {
                timers.push_back(line);
            }
        }
        return timers;
    }
    std::string CountCaption() { return Text("Command", kCount); }
    bool CountEnabled() { return Form().CountButton().isEnabled(); }

    FailureSink& failureSink = *this;
    RecordingAssistTransport m_transport;
    AssistSearch m_search{m_state, m_transport};
    std::unique_ptr<AssistReports> m_reports;
    std::unique_ptr<AssistDispatcher> m_dispatcher;
};

}  // namespace spellwick
