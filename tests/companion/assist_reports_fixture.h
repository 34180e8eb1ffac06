// The companion on recording parts, joined to an assist tool of the test's own.
#pragma once

#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "link/translated_assist.h"
#include "tests/support/companion_fixture.h"
#include "tests/support/duration_rules.h"
#include "tests/support/recording_assist_transport.h"

namespace spellwick {

class AssistReportsTest : public CompanionFixture {
  protected:
    static constexpr WindowHandle kTool = 9;
    static constexpr int kCount = 3;
    static constexpr i32 kTithes = 200;  // what a stock report calls the tithing points

    // Slots of the first circle, and the cost of each: one of each reagent named.
    static constexpr int kClumsy = 0;  // Bloodmoss (3), Nightshade (7)
    static constexpr int kHeal = 3;    // Spider Silk (4), Garlic (5), Ginseng (8)

    AssistReportsTest() {
        m_assist = &m_search;
        m_link = &m_translated.Status();
    }

    // Makes the companion and joins the tool to it, without loading.
    void MakeBeside(bool tool) {
        SavePlayer(kMira);
        OpenClient(kMira);
        ShowTool(tool);
        Make();
        m_search.SetReceiver(Program().Reports());
        m_search.SetCountButton([this](bool enabled) { Program().EnableCount(enabled); });
    }

    // As StartWithMira, with a tool that is there from the start or not.
    void StartBeside(bool tool) {
        MakeBeside(tool);
        Start();
        // Every spell lasts, so that a timer shows which row a cast was taken for.
        for (i32 row = 0; row <= kLastRow; ++row) {
            State().Spells(row).File5 = kMagery120;
        }
        Tick(1);
        TakeLog();
    }
    void StartLinked() { StartBeside(true); }

    void ShowTool(bool there) {
        m_transport.windows.clear();
        if (there) {
            m_transport.windows.push_back({kTool, m_toolTitle});
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
        texts.reserve(kSlotCount);
        for (int slot = 0; slot < kSlotCount; ++slot) {
            texts.push_back(Text("LabelAmount", slot));
        }
        return texts;
    }
    // Running timers as "timer ROW", those that end first first.
    std::vector<std::string> Timers() {
        std::vector<std::string> timers;
        for (const TimerSlot& timer : Program().Timers().Screen().shown) {
            timers.push_back("timer " + std::to_string(timer.row));
        }
        return timers;
    }
    std::string CountCaption() { return Text("Command", kCount); }
    bool CountEnabled() { return Shown().countEnabled; }
    bool MeditationArmed() { return Shown().meditationTag == kMeditateTag; }

    std::string m_toolTitle = "UOAssist - Mira Talon";
    RecordingAssistTransport m_transport;
    TranslatedAssist m_translated{m_transport, m_state, m_payment, LoadAssistTools().rows,
                                  [this] { return m_clock.Now(); }};
    AssistSearch m_search{m_state, m_translated};
};

}  // namespace spellwick
