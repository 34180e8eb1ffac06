#include "link/keystroke_sender.h"

#include <algorithm>
#include <optional>
#include <variant>
#include <vector>

#include "link/keystroke_parse.h"
#include "link/keystroke_plan.h"

namespace spellwick {

namespace {

// Wine numbers the keys that have characters from the lowest code up and runs out of numbers. Of
// the codes that are free in a common layout, five still get one.
constexpr std::size_t kCodesUnderWine = 4;

void KeepLowestCodes(Keymap& keymap, std::vector<SpareBinding>& lent) {
    std::vector<Keycode> codes = keymap.spares;
    for (const SpareBinding& binding : lent) {
        codes.push_back(binding.code);
    }
    std::ranges::sort(codes);
    codes.resize(std::min(codes.size(), kCodesUnderWine));
    const auto isLeftOut = [&codes](Keycode code) {
        return std::ranges::find(codes, code) == codes.end();
    };
    std::erase_if(keymap.spares, isLeftOut);
    for (const SpareBinding& binding : lent) {
        if (isLeftOut(binding.code)) {
            std::erase_if(keymap.keys, [&](const Key& key) { return key.code == binding.code; });
        }
    }
    std::erase_if(lent, [&](const SpareBinding& binding) { return isLeftOut(binding.code); });
}

}  // namespace

KeystrokeSender::~KeystrokeSender() {
    if (const auto rest = m_borrowed.LongestRest(); rest > std::chrono::milliseconds(0)) {
        m_keyboard.Pause(rest);
    }
    m_borrowed.GiveBackAll();
}

SendResult KeystrokeSender::SendKeys(std::string_view text, bool wait, KeyTarget& target) {
    Tick();
    std::optional<Keymap> keymap = m_keyboard.ReadKeymap();
    if (!keymap) {
        return {.error = "The connection to the keyboard is lost."};
    }
    std::vector<SpareBinding> lent = m_borrowed.Lent(*keymap);
    if (target.FollowsKeyMapLate()) {
        KeepLowestCodes(*keymap, lent);
    }
    const auto planned = PlanKeystrokes(ParseKeystrokes(text), *keymap, lent);
    if (const auto* error = std::get_if<PlanError>(&planned)) {
        return {.error = error->text, .missing = error->missing};
    }
    const KeyPlan& plan = std::get<KeyPlan>(planned);
    if (plan.events.empty()) {
        return {};
    }
    SendResult result = RunKeyPlan(plan, *keymap, m_keyboard, m_borrowed, m_pace(), target);
    if (wait && result.Ok() && !m_keyboard.Sync()) {
        result.error = "The connection to the keyboard is lost.";
    }
    return result;
}

}  // namespace spellwick
