// The search for assist tools in Wine, beside a program that does not run there itself. A helper
// does it, which lives as long as this program at most.
#pragma once

#include <string>

namespace spellwick {

class WineTools {
  public:
    virtual ~WineTools() = default;

    // Begins the search; nothing if it runs already. Does not wait: Trouble tells what comes of it.
    virtual void Start() = 0;
    virtual void Stop() = 0;

    // Why the search that was begun does not go on, as a sentence; empty while it does, and when
    // none is wanted.
    [[nodiscard]] virtual std::string Trouble() = 0;
};

}  // namespace spellwick
