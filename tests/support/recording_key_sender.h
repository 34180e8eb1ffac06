// A key sender that records what it is told to type.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "link/key_sender.h"

namespace spellwick {

class RecordingKeySender : public KeySender {
  public:
    // Each send adds "keys <text>" to `log`, if there is one.
    explicit RecordingKeySender(std::vector<std::string>* log = nullptr) : m_log(log) {}

    SendResult SendKeys(std::string_view text, bool wait, KeyTarget& target) override {
        sent.emplace_back(text);
        allWaited = allWaited && wait;
        if (m_log != nullptr) {
            m_log->push_back("keys " + std::string(text));
        }
        if (duringSend) {
            duringSend();
        }
        mayType = target.MayType();
        if (!results.empty()) {
            const SendResult next = results.front();
            results.pop_front();
            return next;
        }
        return result;
    }

    std::vector<std::string> sent;
    bool allWaited = true;
    // The results of the next sends, and that of all others.
    std::deque<SendResult> results;
    SendResult result;
    std::function<void()> duringSend;
    // What the target of the last send said behind `duringSend`.
    bool mayType = false;

  private:
    std::vector<std::string>* m_log;
};

}  // namespace spellwick
