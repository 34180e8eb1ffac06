// The kind of RuntimeFailure that an action ends with.
#pragma once

#include <optional>

#include "text/runtime_failure.h"

namespace spellwick {

// The kind of the failure that `action` throws; nothing if it succeeds.
template <typename Action>
std::optional<FailureKind> FailureOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeFailure& failure) {
        return failure.Kind();
    }
    return std::nullopt;
}

}  // namespace spellwick
