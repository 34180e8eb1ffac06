// Colour and file dialogs that a test answers, and the record of what they asked.
#pragma once

#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "platform/dialogs.h"

namespace spellwick {

class RecordingDialogs : public Dialogs {
  public:
    // Cancels unless an answer is prepared.
    std::optional<i32> PickColour(i32 start) override {
        colourStarts.push_back(start);
        return Take(colours);
    }
    std::optional<std::size_t> PickOne(const std::string& /*title*/, const std::string& /*text*/,
                                       const std::vector<std::string>& choices) override {
        offered = choices;
        return std::exchange(pick, std::nullopt);
    }
    std::optional<std::filesystem::path> PickFileToOpen(const FileQuestion& question) override {
        opens.push_back(question);
        return Take(files);
    }
    std::optional<std::filesystem::path> PickFileToSave(const FileQuestion& question) override {
        saves.push_back(question);
        return Take(files);
    }

    std::vector<i32> colourStarts;
    std::vector<std::string> offered;  // the choices of the last time
    std::optional<std::size_t> pick;   // the next one
    std::vector<FileQuestion> opens;
    std::vector<FileQuestion> saves;
    // The next answers; an empty one is a cancel.
    std::deque<std::optional<i32>> colours;
    std::deque<std::optional<std::filesystem::path>> files;

  private:
    template <typename Answer>
    static std::optional<Answer> Take(std::deque<std::optional<Answer>>& answers) {
        if (answers.empty()) {
            return std::nullopt;
        }
        std::optional<Answer> answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }
};

}  // namespace spellwick
