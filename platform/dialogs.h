// Modal dialogs that ask for a colour or a file. The real ones are the toolkit's; a test answers
// them.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "text/number_types.h"

namespace spellwick {

struct FileQuestion {
    std::string title;
    std::string filterName;          // for example "Text (*.txt)"
    std::string filterPattern;       // for example "*.txt"
    std::string otherFilterName;     // a second choice, if not empty; its pattern gives the default
    std::string otherFilterPattern;  // extension while it is chosen
    bool startsWithOther = false;    // the second one is chosen at first
    std::string defaultExtension;    // with its dot, added to a name without one; may be empty
    std::filesystem::path folder;    // where the dialog starts; empty: the home folder
    std::string fileName;            // the name or path that stands in the dialog; may be empty

    bool operator==(const FileQuestion&) const = default;
};

// Every call serves the event queue until it is answered; nothing when the user cancels.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    // Colours are 0x00BBGGRR; the dialog starts from `start`.
    [[nodiscard]] virtual std::optional<i32> PickColour(i32 start) = 0;

    // One of several choices, by its index; `text` says what is chosen. Nothing by default, as if
    // the user had cancelled.
    [[nodiscard]] virtual std::optional<std::size_t> PickOne(
        const std::string& /*title*/, const std::string& /*text*/,
        const std::vector<std::string>& /*choices*/) {
        return std::nullopt;
    }

    // The whole path of a file, which need not be there or readable.
    [[nodiscard]] virtual std::optional<std::filesystem::path> PickFileToOpen(
        const FileQuestion& question) = 0;

    // The whole path to save under, without a question about a file that is there.
    [[nodiscard]] virtual std::optional<std::filesystem::path> PickFileToSave(
        const FileQuestion& question) = 0;
};

}  // namespace spellwick
