// The toolkit ends the process by exit() when the display's connection breaks, from the middle of
// the event loop. This runs something first.
#pragma once

#include <functional>

namespace spellwick {

// There is one at a time. While it lives, exit() runs the action and ends the process with code 1.
class UnexpectedExit {
  public:
    explicit UnexpectedExit(std::function<void()> action);
    ~UnexpectedExit();
    UnexpectedExit(const UnexpectedExit&) = delete;
    UnexpectedExit& operator=(const UnexpectedExit&) = delete;
    UnexpectedExit(UnexpectedExit&&) = delete;
    UnexpectedExit& operator=(UnexpectedExit&&) = delete;
};

}  // namespace spellwick
