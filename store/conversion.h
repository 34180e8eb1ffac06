// Brings the data that an older version saved up to date, in a chain of steps; the key "Conversion"
// tells how far the chain has come.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "store/settings_io.h"

namespace spellwick {

// The little window that asks for patience. It stays until it is closed.
class WaitWindow {
  public:
    virtual ~WaitWindow() = default;

    // Shows it without waiting for an answer.
    virtual void ShowWait() = 0;
    // 0 to 100.
    virtual void ShowPercent(i32 percent) = 0;
    virtual void CloseWait() = 0;
    // Lets what is pending be drawn.
    virtual void ServeEvents() = 0;
};

// Runs once in each start, before the spell table exists.
class Conversion {
  public:
    // All references outlive it.
    struct Parts {
        SharedState& state;
        SettingsStore& store;
        SettingsIo& io;
        MessageBoxes& boxes;
        WaitWindow& wait;
    };

    explicit Conversion(const Parts& parts)
        : m_parts(parts), m_state(parts.state), m_progress(parts.io.Progress()) {}

    // Does nothing without the key. RuntimeFailure where a step fails: what it wrote before stands,
    // and the key keeps its value.
    void ConvertOldData();

  private:
    // False when there are no data to convert and the chain ends here.
    [[nodiscard]] bool SplitIntoSlots();
    void CopyToSlots();
    void RemoveOldKeys();
    void ClearTestName();
    void SwapSpells();
    void SwapSpellsOfPlayer();
    void NameSectionsByTitle();
    void LetFileSpeak();

    // Runs a statement under the rule in force: from the end of the first step on, failures are
    // ignored.
    void Do(const std::function<void()>& statement) const;
    std::string Read(std::string_view section, std::string_view key,
                     std::string_view fallback) const;
    // RuntimeFailure (file) when the store cannot be written.
    void Write(std::string_view section, std::string_view key, std::string value) const;
    void Apply(const std::vector<SettingChange>& changes) const;
    void WriteMark(std::string_view mark) const;
    // Exchanges two values of a section.
    void Cross(std::string_view section, const std::string& first, const std::string& second,
               std::string_view fallback) const;

    Parts m_parts;
    SharedState& m_state;
    ConversionProgress& m_progress;
    bool m_ignoring = false;
};

}  // namespace spellwick
