// SettingsIo between a state and a store in memory.
#pragma once

#include <optional>

#include <gtest/gtest.h>

#include "store/settings_io.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/failures.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {

class SettingsIoTest : public testing::Test {
  protected:
    std::optional<FailureKind> FailureOfGlobalLoad() {
        return FailureOf([this] { io.LoadGlobalSettings(); });
    }
    std::optional<FailureKind> FailureOfPlayerLoad() {
        return FailureOf([this] { io.LoadPlayerSettings("Mira"); });
    }

    SharedState state = StartedState();
    MemorySettingsStore store;
    RecordingView view;
    SettingsIo io{state, store, view};
};

}  // namespace spellwick
