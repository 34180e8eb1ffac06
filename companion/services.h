// Everything that the companion asks from outside itself.
#pragma once

#include <filesystem>
#include <optional>

#include "link/assist_link.h"
#include "link/cast_payment.h"
#include "link/key_sender.h"
#include "link/link_status.h"
#include "link/translated_windows.h"
#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/client_windows.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/journal_file.h"
#include "platform/message_boxes.h"
#include "platform/settings_file.h"
#include "platform/settings_store.h"
#include "platform/wine_tools.h"
#include "store/conversion.h"

namespace spellwick {

// All references outlive the companion.
struct CompanionServices {
    SharedState& state;
    SettingsStore& store;
    ClientWindows& clients;
    KeySender& keys;
    Desktop& desktop;
    MessageBoxes& boxes;
    AssistLink& assist;
    CastPayment& payment;
    const LinkStatus& link;
    WaitWindow& wait;
    const Clock& clock;
    FailureSink& failures;
    JournalFile* journal = nullptr;            // null where the store does not last
    const TranslatedWindows* games = nullptr;  // null: the classic client is the only one
    const SettingsFile* files = nullptr;       // null: the data cannot be taken in or out
    WineTools* wineTools = nullptr;            // null where there is no such search
    std::filesystem::path folder;              // of the executable, with the files beside it
    std::optional<std::filesystem::path> settingsFolder{};  // with the player's own tables
};

}  // namespace spellwick
