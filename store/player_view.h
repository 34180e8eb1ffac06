// What the load of a player shows on the window while it reads. All of it runs in the middle of the
// load, in the order of its steps.
#pragma once

namespace spellwick {

class PlayerView {
  public:
    virtual ~PlayerView() = default;

    // Refill the list of bags from BagName.
    virtual void ShowBagNames() = 0;

    // Select CurrentReagentBag in the list, with Updating set meanwhile. A bag that is not in the
    // list selects none.
    virtual void SelectBag() = 0;

    // Show the stock of CurrentReagentBag in the counters.
    virtual void ShowStock() = 0;

    // Show CurrentTithing.
    virtual void ShowTithes() = 0;
};

}  // namespace spellwick
