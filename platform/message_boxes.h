// Modal message boxes. The real ones are the toolkit's; a test answers them and reads their texts.
#pragma once

#include <string>

namespace spellwick {

enum class BoxIcon { kNone, kCritical, kQuestion, kExclamation, kInformation };
enum class BoxButtons {
    kOk,
    kYesNo,
    kTryAgainOrClose,  // "Try again" and "Close"
    kTryAgainOrEnd,    // "Try again" and "End without saving"
};
enum class BoxAnswer { kOk, kYes, kNo, kTryAgain };

struct Box {
    std::string text;
    BoxIcon icon = BoxIcon::kNone;
    BoxButtons buttons = BoxButtons::kOk;
    std::string title = "Spellwick";
    std::string details{};  // if not empty, a further button copies it and leaves the box open

    bool operator==(const Box&) const = default;
};

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    // Shows the box and serves the event queue until it is answered. A box closed without an answer
    // counts as Ok, or as No if it asks: as anything but "Try again".
    virtual BoxAnswer Show(const Box& box) = 0;
};

}  // namespace spellwick
