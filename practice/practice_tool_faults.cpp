// The faults of the practice assist tool.

#include <array>

#include "practice/practice_tool.h"

namespace spellwick::practice {
namespace {

using namespace std::chrono_literals;

constexpr int kTooMuch = 40000;
constexpr int kBurstReports = 200;
// The last reports of the burst are true; one for each item would do.
constexpr int kTrueReports = 60;
constexpr int kStreamReports = 600;
constexpr auto kBetweenStreamed = 5ms;
constexpr std::array<int, 4> kUnknownItems{9, 99, 105, 201};

}  // namespace

void PracticeTool::Play(Fault fault) {
    const int intelligence = m_script.Intelligence();
    switch (fault) {
        case Fault::kAnswersTwoThenOne:
            m_script.SetAnswers(ToolScript::Answers::kTwoThenOne);
            break;
        case Fault::kAnswersZero:
            m_script.SetAnswers(ToolScript::Answers::kZero);
            m_lasting.erase(Fault::kAnswersTwo);
            break;
        case Fault::kAnswersTwo:
            m_script.SetAnswers(ToolScript::Answers::kTwo);
            m_lasting.erase(Fault::kAnswersZero);
            break;
        case Fault::kMute:
            m_lasting.insert(fault);
            break;
        case Fault::kGoneLong:
            CloseFor(3000ms);
            break;
        case Fault::kGoneShort:
            CloseFor(500ms);
            break;
        case Fault::kSecondTool:
            StartSecond();
            break;
        case Fault::kLowerCaseTitle:
            m_lasting.insert(fault);
            Retitle();
            break;
        case Fault::kSilentCount:
            m_script.SetSilentCount(true);
            break;
        case Fault::kEarlyCount:
            m_script.SetEarlyCount(true);
            break;
        case Fault::kUnknownItems:
            for (const int item : kUnknownItems) {
                Report({kStockMessage, item, 5});
            }
            break;
        case Fault::kSameTwice:
            Report({kStockMessage, kStockItems[0].number, m_script.Stock(0)});
            Report({kStockMessage, kStockItems[0].number, m_script.Stock(0)});
            break;
        case Fault::kMuchTithing:
            Report({kStockMessage, kStockItems[kTithing].number, kTooMuch});
            break;
        case Fault::kBurst:
            Burst();
            break;
        case Fault::kStream:
            m_streamed = 0;
            m_stream.start(kBetweenStreamed);
            break;
        case Fault::kFizzleAfterReport:
            m_script.SetFizzle(ToolScript::Fizzle::kAfterTheReport);
            break;
        case Fault::kCast0:
            Report({kCastMessage, 0, 0});
            break;
        case Fault::kCast118:
            Report({kCastMessage, 118, 0});
            break;
        case Fault::kCast211:
            Report({kCastMessage, 211, 0});
            break;
        case Fault::kCast250:
            Report({kCastMessage, 250, 0});
            break;
        case Fault::kBigStock:
            Report({kStockMessage, kStockItems[0].number, kTooMuch});
            break;
        case Fault::kBigMagery:
            Report({kMageryMessage, kTooMuch, 0});
            break;
        case Fault::kBigIntelligence:
            Report({kManaMessage, kTooMuch, m_script.Mana()});
            break;
        case Fault::kBigMana:
            Report({kManaMessage, intelligence, kTooMuch});
            break;
        case Fault::kBigSkill:
            Report({kSkillMessage, kCasterSkills[0].number, kTooMuch * 10});
            break;
    }
    for (const FaultRow& row : AllFaults()) {
        if (row.fault == fault && row.lasts) {
            m_lasting.insert(fault);
        }
    }
    emit Changed();
}

void PracticeTool::Mend(Fault fault) {
    if (m_lasting.erase(fault) == 0) {
        return;
    }
    if (fault == Fault::kAnswersZero || fault == Fault::kAnswersTwo) {
        m_script.SetAnswers(ToolScript::Answers::kScript);
    } else if (fault == Fault::kSecondTool) {
        m_second.reset();
    } else if (fault == Fault::kLowerCaseTitle) {
        Retitle();
    } else if (fault == Fault::kSilentCount) {
        m_script.SetSilentCount(false);
    } else if (fault == Fault::kEarlyCount) {
        m_script.SetEarlyCount(false);
    }
    emit Changed();
}

void PracticeTool::MendAll() {
    for (const FaultRow& row : AllFaults()) {
        Mend(row.fault);
    }
}

void PracticeTool::CloseFor(ToolTime time) {
    Close();
    m_back.start(time);
}

void PracticeTool::StartSecond() {
    Parts parts = m_parts;
    // After the first tool in the order of names: programs use the last.
    parts.name += QStringLiteral("2");
    m_second = std::make_unique<PracticeTool>(std::move(parts));
    connect(m_second.get(), &PracticeTool::Changed, this, &PracticeTool::Changed);
    connect(m_second.get(), &PracticeTool::Happened, this, [this](const ToolEvent& event) {
        emit Happened({event.way, event.text, true});
    });
    m_second->m_script.CopyCharacter(m_script);
    m_second->Open();
}

// Programs read the title only when they connect.
void PracticeTool::Retitle() {
    const QString title = Title();
    const bool open = IsOpen();
    Close();
    m_server.SetTitle(Lasts(Fault::kLowerCaseTitle) ? title.toLower() : title);
    if (open) {
        Open();
    }
}

void PracticeTool::Burst() {
    int stock = 0;
    for (int report = 0; report < kBurstReports; ++report) {
        const int left = kBurstReports - report;
        if (report % 4 == 1) {
            Report({kManaMessage, m_script.Intelligence(), m_script.Mana()});
        } else if (report % 8 == 3) {
            const KnownSkill& known =
                kCasterSkills.at(static_cast<std::size_t>(report) % kCasterSkills.size());
            Report({kSkillMessage, known.number, m_script.Skill(known.number)});
        } else if (report % 8 == 7) {
            Report({kHitsMessage, 100, 100});
        } else {
            const auto item = static_cast<std::size_t>(stock++) % kStockItems.size();
            Report({kStockMessage, kStockItems.at(item).number,
                    m_script.Stock(item) + (left > kTrueReports ? left : 0)});
        }
    }
}

void PracticeTool::StreamOne() {
    if (++m_streamed > kStreamReports) {
        m_stream.stop();
        Note(QStringLiteral("streamed"));
        return;
    }
    const auto turn = static_cast<std::size_t>(m_streamed) % (kStockItems.size() + 1);
    if (turn == kStockItems.size()) {
        Report({kManaMessage, m_script.Intelligence(), m_script.Mana()});
    } else {
        Report({kStockMessage, kStockItems.at(turn).number, m_script.Stock(turn)});
    }
}

}  // namespace spellwick::practice
