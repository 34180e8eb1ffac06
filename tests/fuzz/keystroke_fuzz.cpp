// Any text on any of the hand-made keymaps gives either a plan, whose downs and ups mirror each
// other and which uses only the keymap, or an error for the user.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "link/keystroke_plan.h"
#include "tests/link/hand_made_keymaps.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Each is made behind the last use of its code for another symbol, and before its own first.
void CheckBindings(const KeyPlan& plan) {
    std::size_t needed = 0;
    for (std::size_t index = 0; index < plan.bindings.size(); ++index) {
        const PlannedBinding& planned = plan.bindings[index];
        Require(planned.freeFrom <= planned.neededAt && planned.neededAt >= needed &&
                planned.neededAt < plan.events.size());
        needed = planned.neededAt;
        for (std::size_t earlier = 0; earlier < index; ++earlier) {
            Require(plan.bindings[earlier].binding.code != planned.binding.code ||
                    plan.bindings[earlier].neededAt < planned.freeFrom);
        }
        for (std::size_t event = planned.freeFrom; event < planned.neededAt; ++event) {
            Require(plan.events[event].code != planned.binding.code);
        }
    }
}

void CheckPlan(const KeyPlan& plan, const Keymap& keymap) {
    std::vector<Keycode> down;
    for (const KeyEvent& event : plan.events) {
        if (event.down) {
            Require(std::ranges::find(down, event.code) == down.end());
            down.push_back(event.code);
        } else {
            Require(!down.empty() && down.back() == event.code);
            down.pop_back();
        }
        const bool known =
            std::ranges::find(keymap.keys, event.code, &Key::code) != keymap.keys.end();
        const bool borrowed =
            std::ranges::find(plan.bindings, event.code, [](const PlannedBinding& planned) {
                return planned.binding.code;
            }) != plan.bindings.end();
        Require(known != borrowed);
    }
    Require(down.empty());
    CheckBindings(plan);
    Require((plan.relock & ~plan.unlock) == 0 && (plan.relock & ~keymap.locked) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::vector<Keymap> keymaps{hand_made::Us(), hand_made::De(), hand_made::Fr(),
                                       hand_made::Ru()};
    static const std::vector<Keycode> kSpares = keymaps.front().spares;
    if (size < 2) {
        return 0;
    }
    Keymap& keymap = keymaps[data[0] % keymaps.size()];
    keymap.locked = data[1];
    keymap.spares = kSpares;
    keymap.spares.resize(data[0] % (kSpares.size() + 1));
    std::string_view text(reinterpret_cast<const char*>(data), size);  // NOLINT
    text.remove_prefix(2);
    const std::vector<Keystroke> keystrokes = ParseKeystrokes(text);
    Require(keystrokes.size() <= text.size());
    const auto result = PlanKeystrokes(keystrokes, keymap);
    if (const auto* plan = std::get_if<KeyPlan>(&result)) {
        CheckPlan(*plan, keymap);
        Require(plan->events.size() >= 2 * keystrokes.size());
    } else {
        Require(!std::get<PlanError>(result).text.empty());
    }
    return 0;
}
