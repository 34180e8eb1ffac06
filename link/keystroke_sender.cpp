#include "link/keystroke_sender.h"

#include <optional>
#include <variant>

#include "link/keystroke_parse.h"
#include "link/keystroke_plan.h"

namespace spellwick {

KeystrokeSender::~KeystrokeSender() {
    if (const auto rest = m_borrowed.LongestRest(); rest > std::chrono::milliseconds(0)) {
        m_keyboard.Pause(rest);
    }
    m_borrowed.GiveBackAll();
}

SendResult KeystrokeSender::SendKeys(std::string_view text, bool wait, KeyTarget& target) {
    Tick();
    const std::optional<Keymap> keymap = m_keyboard.ReadKeymap();
    if (!keymap) {
        return {.error = "The connection to the keyboard is lost."};
    }
    const auto planned = PlanKeystrokes(ParseKeystrokes(text), *keymap, m_borrowed.Lent(*keymap));
    if (const auto* error = std::get_if<PlanError>(&planned)) {
        return {.error = error->text, .missing = error->missing};
    }
    const KeyPlan& plan = std::get<KeyPlan>(planned);
    if (plan.events.empty()) {
        return {};
    }
    SendResult result = RunKeyPlan(plan, *keymap, m_keyboard, m_borrowed, m_pace, target);
    if (wait && result.Ok() && !m_keyboard.Sync()) {
        result.error = "The connection to the keyboard is lost.";
    }
    return result;
}

}  // namespace spellwick
