// How the practice assist tool behaves: what it answers, and what it reports when. Time is a
// parameter, so that a test can advance it.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "practice/spell_costs.h"
#include "practice/tool_lines.h"
#include "practice/tool_numbers.h"

namespace spellwick::practice {

// Measured from any fixed moment.
using ToolTime = std::chrono::milliseconds;

class ToolScript {
  public:
    // A whole number from `lowest` to `highest`.
    using Random = std::function<int(int lowest, int highest)>;
    enum class Answers { kScript, kTwoThenOne, kZero, kTwo };
    enum class CastOutcome { kCast, kFizzled, kNoMana, kNoReagents, kLoggedOut };
    enum class Fizzle { kNone, kBeforeTheReport, kAfterTheReport };

    explicit ToolScript(Random random);
    ToolScript(const ToolScript&) = delete;
    ToolScript& operator=(const ToolScript&) = delete;
    ~ToolScript() = default;

    // The answer to a program's message; 0 if the tool does not know the message.
    int Answer(const ToolMessage& message, ToolTime now);

    CastOutcome Cast(const SpellCost& spell, ToolTime now);
    // Adds to the stock or takes from it, down to 0. `item` is an index in kStockItems.
    void Change(std::size_t item, int amount, ToolTime now);
    void SetMana(int mana, ToolTime now);
    // In tenths of a point.
    void SetSkill(int skill, int tenths, ToolTime now);
    // The character leaves the game and is back after five seconds.
    void Logout(ToolTime now);
    // The game shows its login screen until EnterGame.
    void LeaveGame(ToolTime now);
    // A character enters the game; everything about it is reported to the registered programs.
    void EnterGame(ToolTime now);
    // The tool starts again and has forgotten who was registered. The character belongs to the game
    // and does not change.
    void Restart();

    // Takes over stock, skills and mana from another tool of the same character.
    void CopyCharacter(const ToolScript& other);

    // Turns unasked reports on or off: mana that regenerates, skills that rise.
    void SetIdle(bool on) { m_idle = on; }
    void SetAnswers(Answers answers) { m_answers = answers; }
    void SetSilentCount(bool silent) { m_silentCount = silent; }
    // Whether the stock is reported before the request for it is answered.
    void SetEarlyCount(bool early) { m_earlyCount = early; }
    // How the next cast fizzles.
    void SetFizzle(Fizzle fizzle) { m_fizzle = fizzle; }

    // When the next report is due; nothing if none is.
    std::optional<ToolTime> NextDue(ToolTime now);
    // The reports that are due now, in order, for every registered window.
    std::vector<ToolMessage> TakeDue(ToolTime now);
    // The number of reports to come, without the unasked ones.
    std::size_t Scheduled() const { return m_due.size(); }

    int Stock(std::size_t item) const { return m_stock.at(item); }
    // In tenths of a point.
    int Skill(int skill) const { return m_skills.at(static_cast<std::size_t>(skill)); }
    int Intelligence() const { return m_intelligence; }
    int Mana() const { return m_mana; }
    bool LoggedIn() const { return m_loggedIn; }
    Fizzle NextFizzle() const { return m_fizzle; }
    const std::vector<int>& Registered() const { return m_registered; }

  private:
    struct Due {
        ToolTime at;
        // Makes the report when it is due.
        std::function<ToolMessage()> report;
        bool logsIn = false;
    };

    int Register(int window, ToolTime now);
    void Remember(int window, ToolTime now);
    void Count(ToolTime now);
    void ScheduleLogin(ToolTime now);
    void Schedule(ToolTime at, const ToolMessage& message, bool logsIn = false);
    void ScheduleStock(ToolTime at, std::size_t item);
    void ScheduleMana(ToolTime at);
    void ScheduleSkill(ToolTime at, int skill);
    void PlanIdle(ToolTime now);
    void GainMana(std::vector<ToolMessage>& reports);
    void GainSkill(std::vector<ToolMessage>& reports);
    ToolMessage StockReport(std::size_t item) const;
    ToolMessage ManaReport() const;
    ToolMessage SkillReport(int skill) const;
    ToolMessage MageryReport() const;

    Random m_random;
    std::vector<Due> m_due;  // in order of time
    std::optional<ToolTime> m_manaAt;
    std::optional<ToolTime> m_skillAt;

    std::array<int, kStockItems.size()> m_stock{};
    std::array<int, kSkillCount> m_skills{};
    int m_intelligence = 100;
    int m_mana = 100;

    std::vector<int> m_registered;
    bool m_loginTold = false;
    bool m_loggedIn = false;
    bool m_loggedOut = false;

    bool m_idle = true;
    bool m_silentCount = false;
    bool m_earlyCount = false;
    Answers m_answers = Answers::kScript;
    bool m_secondAnswer = false;  // for kTwoThenOne
    Fizzle m_fizzle = Fizzle::kNone;
};

}  // namespace spellwick::practice
