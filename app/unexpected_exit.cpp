#include "app/unexpected_exit.h"

#include <cstdlib>
#include <utility>

namespace spellwick {

namespace {

// exit() passes nothing to what it calls.
std::function<void()>& Action() {
    // Never destroyed: exit() destroys what is static before it comes to handlers that were
    // registered earlier.
    static auto* const kAction = new std::function<void()>;
    return *kAction;
}

void OnExit() {
    if (const std::function<void()> action = std::exchange(Action(), nullptr)) {
        action();
        std::_Exit(1);
    }
}

}  // namespace

UnexpectedExit::UnexpectedExit(std::function<void()> action) {
    static const int kRegistered = std::atexit(OnExit);
    static_cast<void>(kRegistered);
    Action() = std::move(action);
}

UnexpectedExit::~UnexpectedExit() {
    Action() = nullptr;
}

}  // namespace spellwick
