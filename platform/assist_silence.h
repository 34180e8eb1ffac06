// How long the program waits for the answers of an assist tool, and when it asks one again that has
// left a message unanswered.
#pragma once

#include <chrono>

namespace spellwick {

struct AssistPatience {
    // For the answer to one message.
    std::chrono::milliseconds answer{1000};
    // The same during the start, and for a tool that is silent already.
    std::chrono::milliseconds shortAnswer{250};
    // Between an answer given up and the next message: the first interval, which doubles each time,
    // and the longest.
    std::chrono::milliseconds firstPause{2000};
    std::chrono::milliseconds longestPause{60000};
};

// The silence of one tool: it begins with an answer that did not come in time, and ends with one
// that does.
class AssistSilence {
  public:
    using Time = std::chrono::steady_clock::time_point;

    // Whether the tool may be sent a message.
    bool MayAsk(Time now) const { return now >= m_until; }
    // How long to wait for the answer to it.
    std::chrono::milliseconds Wait(const AssistPatience& patience, bool starting) const;

    // An answer came in time.
    void End() { *this = {}; }
    // No answer came in time.
    void GiveUp(Time now, const AssistPatience& patience);
    // A sign of life, such as an answer that comes too late: the tool may have hung, and is asked
    // again at once. If it is late then too it is a slow one, and waits for its interval.
    void Stir();

  private:
    Time m_until{};
    int m_times = 0;         // answers given up, one after the other
    bool m_hasHung = false;  // it was asked again at once
    bool m_mayBeBack = false;
};

}  // namespace spellwick
