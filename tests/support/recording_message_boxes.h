// Message boxes that a test answers, and the record of their texts.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/message_boxes.h"

namespace spellwick {

class RecordingMessageBoxes : public MessageBoxes {
  public:
    // Each box adds "box <text>" to `log`, if there is one.
    explicit RecordingMessageBoxes(std::vector<std::string>* log = nullptr) : m_log(log) {}

    // The next prepared answer, or Ok; a box that asks is closed without an answer.
    BoxAnswer Show(const Box& box) override {
        shown.push_back(box);
        if (m_log != nullptr) {
            m_log->push_back("box " + box.text);
        }
        // Remove it first: it may show a message box itself.
        if (const std::function<void()> happens = std::exchange(whileStanding, nullptr)) {
            happens();
        }
        if (answers.empty()) {
            return box.buttons == BoxButtons::kOk ? BoxAnswer::kOk : BoxAnswer::kNo;
        }
        const BoxAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<Box> shown;
    std::deque<BoxAnswer> answers;
    // Runs while the next message box is open.
    std::function<void()> whileStanding;

  private:
    std::vector<std::string>* m_log;
};

}  // namespace spellwick
