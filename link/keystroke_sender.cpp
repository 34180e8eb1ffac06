#include "link/keystroke_sender.h"

#include <algorithm>
#include <optional>
#include <variant>

#include "link/keystroke_parse.h"
#include "link/keystroke_plan.h"

namespace spellwick {

KeystrokeSender::~KeystrokeSender() {
    if (m_borrowed.empty()) {
        return;
    }
    const auto last = std::ranges::max_element(m_borrowed, {}, &Borrowed::lastUse)->lastUse;
    const auto rest = last + m_borrowedFor - m_keyboard.Now();
    if (rest > std::chrono::milliseconds(0)) {
        m_keyboard.Pause(std::chrono::ceil<std::chrono::milliseconds>(rest));
    }
    Tick();
}

SendResult KeystrokeSender::SendKeys(std::string_view text, bool wait, KeyTarget& target) {
    Tick();
    const std::optional<Keymap> keymap = m_keyboard.ReadKeymap();
    if (!keymap) {
        return {"The connection to the keyboard is lost."};
    }
    const auto planned = PlanKeystrokes(ParseKeystrokes(text), *keymap);
    if (const auto* error = std::get_if<PlanError>(&planned)) {
        return {*error};
    }
    const KeyPlan& plan = std::get<KeyPlan>(planned);
    if (plan.events.empty()) {
        return {};
    }
    SendResult result = RunKeyPlan(plan, *keymap, m_keyboard, m_pace, target);
    NoteBorrowed(plan);
    if (wait && result.Ok() && !m_keyboard.Sync()) {
        result.error = "The connection to the keyboard is lost.";
    }
    return result;
}

void KeystrokeSender::Tick() {
    const auto due = m_keyboard.Now() - m_borrowedFor;
    std::vector<SpareBinding> giveBack;
    for (const Borrowed& borrowed : m_borrowed) {
        if (borrowed.lastUse <= due) {
            giveBack.push_back(borrowed.binding);
        }
    }
    if (giveBack.empty()) {
        return;
    }
    // Fails only with the connection; the next send reports that.
    static_cast<void>(m_keyboard.Unbind(giveBack));
    std::erase_if(m_borrowed, [due](const Borrowed& borrowed) { return borrowed.lastUse <= due; });
}

void KeystrokeSender::NoteBorrowed(const KeyPlan& plan) {
    for (const SpareBinding& binding : plan.bindings) {
        std::erase_if(m_borrowed, [&](const Borrowed& borrowed) {
            return borrowed.binding.code == binding.code;
        });
        m_borrowed.push_back({binding, {}});
    }
    for (Borrowed& borrowed : m_borrowed) {
        if (std::ranges::find(plan.events, borrowed.binding.code, &KeyEvent::code) !=
            plan.events.end()) {
            borrowed.lastUse = m_keyboard.Now();
        }
    }
}

}  // namespace spellwick
