#include "practice/tool_script.h"

#include <algorithm>
#include <utility>

namespace spellwick::practice {
namespace {

using namespace std::chrono_literals;

constexpr int kForgotten = 2;
constexpr int kAccepted = 1;
constexpr int kNoRoom = 0;
constexpr std::size_t kMostWindows = 16;
constexpr int kSerial = 0x0001A2B3;
constexpr int kMostTenths = 1200;
constexpr int kTenths = 10;

constexpr auto kBetweenCounts = 30ms;
constexpr auto kCastToMana = 250ms;
constexpr auto kManaToStock = 300ms;
constexpr auto kLoginToHits = 150ms;
constexpr auto kHitsToMana = 10ms;
constexpr auto kManaToSkills = 2000ms;
constexpr auto kLogoutToLogin = 5000ms;
constexpr auto kBetweenGains = 10min;

// The value of skills that the script does not set.
int OtherSkill(int skill) {
    return skill * 37 % 501;
}

}  // namespace

ToolScript::ToolScript(Random random) : m_random(std::move(random)) {
    for (std::size_t item = 0; item < kStockItems.size(); ++item) {
        m_stock.at(item) = kStockItems.at(item).atStart;
    }
    for (int skill = 0; skill < kSkillCount; ++skill) {
        m_skills.at(static_cast<std::size_t>(skill)) = OtherSkill(skill);
    }
    for (const KnownSkill& known : kCasterSkills) {
        m_skills.at(static_cast<std::size_t>(known.number)) = known.atStart;
    }
}

int ToolScript::Answer(const ToolMessage& message, ToolTime now) {
    if (message.number == kRegisterMessage) {
        return Register(message.wParam, now);
    }
    if (message.number == kCountMessage && !m_silentCount) {
        Count(now);
    }
    return 0;
}

int ToolScript::Register(int window, ToolTime now) {
    switch (m_answers) {
        case Answers::kTwoThenOne:
            m_secondAnswer = !m_secondAnswer;
            std::erase(m_registered, window);
            if (m_secondAnswer) {
                return kForgotten;
            }
            m_answers = Answers::kScript;
            Remember(window, now);
            return kAccepted;
        case Answers::kZero:
            return kNoRoom;
        case Answers::kTwo:
            std::erase(m_registered, window);
            return kForgotten;
        case Answers::kScript:
            break;
    }
    if (std::erase(m_registered, window) > 0) {
        return kForgotten;
    }
    if (m_registered.size() >= kMostWindows) {
        return kNoRoom;
    }
    Remember(window, now);
    return kAccepted;
}

void ToolScript::Remember(int window, ToolTime now) {
    m_registered.push_back(window);
    if (!m_loginTold && !m_loggedOut) {
        m_loginTold = true;
        ScheduleLogin(now);
    }
}

void ToolScript::ScheduleLogin(ToolTime now) {
    Schedule(now, {kLoginMessage, kSerial, 0}, true);
    Schedule(now + kLoginToHits, {kHitsMessage, 100, 100});
    Schedule(now + kLoginToHits, {kStaminaMessage, 80, 80});
    const ToolTime mana = now + kLoginToHits + kHitsToMana;
    ScheduleMana(mana);
    for (int skill = 0; skill < kSkillCount; ++skill) {
        ScheduleSkill(mana + kManaToSkills, skill);
    }
}

void ToolScript::Count(ToolTime now) {
    ToolTime at = now;
    for (std::size_t item = 0; item < kStockItems.size(); ++item) {
        at += m_earlyCount ? 0ms : kBetweenCounts;
        ScheduleStock(at, item);
    }
}

ToolScript::CastOutcome ToolScript::Cast(const SpellCost& spell, ToolTime now) {
    if (m_loggedOut) {
        return CastOutcome::kLoggedOut;
    }
    std::vector<std::size_t> used;
    for (std::size_t item = 0; item < kTithing; ++item) {
        if (spell.reagents.find(kStockItems.at(item).code) != std::string_view::npos) {
            used.push_back(item);
        }
    }
    if (spell.mana > m_mana) {
        return CastOutcome::kNoMana;
    }
    if (spell.tithing > m_stock.at(kTithing) ||
        std::ranges::any_of(used, [&](std::size_t item) { return m_stock.at(item) < 1; })) {
        return CastOutcome::kNoReagents;
    }
    const Fizzle fizzle = std::exchange(m_fizzle, Fizzle::kNone);
    if (fizzle == Fizzle::kBeforeTheReport) {
        return CastOutcome::kFizzled;
    }
    Schedule(now, {kCastMessage, spell.number, 0});
    m_mana -= spell.mana;
    ScheduleMana(now + kCastToMana);
    if (fizzle == Fizzle::kAfterTheReport) {
        return CastOutcome::kFizzled;
    }
    for (const std::size_t item : used) {
        --m_stock.at(item);
        ScheduleStock(now + kCastToMana + kManaToStock, item);
    }
    if (spell.tithing > 0) {
        m_stock.at(kTithing) -= spell.tithing;
        ScheduleStock(now + kCastToMana + kManaToStock, kTithing);
    }
    return CastOutcome::kCast;
}

void ToolScript::Change(std::size_t item, int amount, ToolTime now) {
    m_stock.at(item) = std::max(0, m_stock.at(item) + amount);
    ScheduleStock(now, item);
}

void ToolScript::SetMana(int mana, ToolTime now) {
    m_mana = mana;
    ScheduleMana(now);
}

void ToolScript::SetSkill(int skill, int tenths, ToolTime now) {
    m_skills.at(static_cast<std::size_t>(skill)) = tenths;
    ScheduleSkill(now, skill);
}

void ToolScript::Logout(ToolTime now) {
    LeaveGame(now);
    Schedule(now + kLogoutToLogin, {kLoginMessage, kSerial, 0}, true);
}

void ToolScript::LeaveGame(ToolTime now) {
    m_due.clear();
    Schedule(now, {kLogoutMessage, 0, 0});
    m_loggedIn = false;
    m_loggedOut = true;
    m_manaAt.reset();
    m_skillAt.reset();
}

void ToolScript::EnterGame(ToolTime now) {
    m_due.clear();
    m_loggedOut = false;
    m_loginTold = !m_registered.empty();
    if (m_loginTold) {
        ScheduleLogin(now);
    }
}

void ToolScript::Restart() {
    m_due.clear();
    m_registered.clear();
    m_manaAt.reset();
    m_skillAt.reset();
    m_loginTold = false;
    m_loggedIn = false;
    m_loggedOut = false;
    m_secondAnswer = false;
}

void ToolScript::CopyCharacter(const ToolScript& other) {
    m_stock = other.m_stock;
    m_skills = other.m_skills;
    m_intelligence = other.m_intelligence;
    m_mana = other.m_mana;
}

std::optional<ToolTime> ToolScript::NextDue(ToolTime now) {
    PlanIdle(now);
    std::optional<ToolTime> next = m_due.empty() ? std::nullopt : std::optional(m_due.front().at);
    for (const auto& other : {m_manaAt, m_skillAt}) {
        if (other && (!next || *other < *next)) {
            next = other;
        }
    }
    return next;
}

std::vector<ToolMessage> ToolScript::TakeDue(ToolTime now) {
    std::vector<ToolMessage> reports;
    std::optional<ToolTime> next = NextDue(now);
    while (next && *next <= now) {
        const ToolTime at = *next;
        if (!m_due.empty() && m_due.front().at == at) {
            const Due due = std::move(m_due.front());
            m_due.erase(m_due.begin());
            if (due.logsIn) {
                m_loggedIn = true;
                m_loggedOut = false;
            }
            reports.push_back(due.report());
        } else if (m_manaAt == at) {
            GainMana(reports);
        } else {
            GainSkill(reports);
        }
        next = NextDue(at);
    }
    return reports;
}

void ToolScript::PlanIdle(ToolTime now) {
    if (!m_idle || !m_loggedIn) {
        m_manaAt.reset();
        m_skillAt.reset();
        return;
    }
    if (m_mana >= m_intelligence) {
        m_manaAt.reset();
    } else if (!m_manaAt) {
        m_manaAt = now + ToolTime(m_random(1000, 4000));
    }
    if (!m_skillAt) {
        m_skillAt = now + kBetweenGains;
    }
}

void ToolScript::GainMana(std::vector<ToolMessage>& reports) {
    m_manaAt.reset();
    m_mana = std::min(m_intelligence, m_mana + m_random(1, 3));
    reports.push_back(ManaReport());
}

void ToolScript::GainSkill(std::vector<ToolMessage>& reports) {
    m_skillAt.reset();
    const int place = m_random(0, static_cast<int>(kCasterSkills.size()) - 1);
    const int skill = kCasterSkills.at(static_cast<std::size_t>(place)).number;
    int& tenths = m_skills.at(static_cast<std::size_t>(skill));
    tenths = std::min(kMostTenths, tenths + 1);
    reports.push_back(SkillReport(skill));
    if (skill == kMagerySkill) {
        reports.push_back(MageryReport());
    }
}

void ToolScript::Schedule(ToolTime at, const ToolMessage& message, bool logsIn) {
    const auto place = std::ranges::upper_bound(m_due, at, {}, &Due::at);
    m_due.insert(place, {at, [message] { return message; }, logsIn});
}

void ToolScript::ScheduleStock(ToolTime at, std::size_t item) {
    const auto place = std::ranges::upper_bound(m_due, at, {}, &Due::at);
    m_due.insert(place, {at, [this, item] { return StockReport(item); }});
}

void ToolScript::ScheduleMana(ToolTime at) {
    const auto place = std::ranges::upper_bound(m_due, at, {}, &Due::at);
    m_due.insert(place, {at, [this] { return ManaReport(); }});
}

void ToolScript::ScheduleSkill(ToolTime at, int skill) {
    const auto place = std::ranges::upper_bound(m_due, at, {}, &Due::at);
    const auto after = m_due.insert(place, {at, [this, skill] { return SkillReport(skill); }});
    if (skill == kMagerySkill) {
        m_due.insert(after + 1, {at, [this] { return MageryReport(); }});
    }
}

ToolMessage ToolScript::StockReport(std::size_t item) const {
    return {kStockMessage, kStockItems.at(item).number, m_stock.at(item)};
}

ToolMessage ToolScript::ManaReport() const {
    return {kManaMessage, m_intelligence, m_mana};
}

ToolMessage ToolScript::SkillReport(int skill) const {
    return {kSkillMessage, skill, m_skills.at(static_cast<std::size_t>(skill))};
}

ToolMessage ToolScript::MageryReport() const {
    const int tenths = m_skills.at(static_cast<std::size_t>(kMagerySkill));
    return {kMageryMessage, tenths / kTenths, tenths % kTenths};
}

}  // namespace spellwick::practice
