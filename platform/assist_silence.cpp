#include "platform/assist_silence.h"

#include <algorithm>

namespace spellwick {

std::chrono::milliseconds AssistSilence::Wait(const AssistPatience& patience, bool starting) const {
    const bool silent = m_times > 0 && !m_mayBeBack;
    return starting || silent ? patience.shortAnswer : patience.answer;
}

void AssistSilence::GiveUp(Time now, const AssistPatience& patience) {
    constexpr int kMostDoublings = 20;  // more would overflow
    const auto pause = patience.firstPause * (1 << std::min(m_times, kMostDoublings));
    m_until = now + std::min<std::chrono::milliseconds>(pause, patience.longestPause);
    ++m_times;
    m_mayBeBack = false;
}

void AssistSilence::Stir() {
    if (m_times > 0 && !m_hasHung) {
        m_hasHung = true;
        m_mayBeBack = true;
        m_until = {};
    }
}

}  // namespace spellwick
