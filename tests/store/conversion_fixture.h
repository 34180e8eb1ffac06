// The conversion of a store in memory, with the boxes and the wait window that it shows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "store/conversion.h"
#include "store/section_name.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/failures.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {

class AnsweringBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& box) override {
        shown.push_back(box);
        return answer;
    }
    std::vector<Box> shown;
    BoxAnswer answer = BoxAnswer::kYes;
};

class NotingWait final : public WaitWindow {
  public:
    void ShowWait() override { notes.emplace_back("show"); }
    void ShowPercent(i32 percent) override { notes.push_back(std::to_string(percent)); }
    void CloseWait() override { notes.emplace_back("close"); }
    void ServeEvents() override { notes.emplace_back("events"); }
    std::vector<std::string> notes;
};

// A store from which nothing can be removed.
class KeepingStore final : public SettingsStore {
  public:
    explicit KeepingStore(MemorySettingsStore& inner) : m_inner(inner) {}
    std::optional<std::string> Read(std::string_view section, std::string_view key) const override {
        return m_inner.Read(section, key);
    }
    SectionValues ReadSection(std::string_view section) const override {
        return m_inner.ReadSection(section);
    }
    StoreResult Apply(const std::vector<SettingChange>& changes) override {
        for (const SettingChange& change : changes) {
            if (!change.value) {
                return {false, "no"};
            }
        }
        return m_inner.Apply(changes);
    }
    StoreResult RemoveSection(std::string_view /*section*/) override { return {false, "no"}; }
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override {
        return m_inner.KeepCopy(now);
    }
    std::vector<std::string> Sections() const override { return m_inner.Sections(); }

  private:
    MemorySettingsStore& m_inner;
};

class ConversionTest : public testing::Test {
  protected:
    // Converts as the start does; returns the failure that ends it, if any.
    std::optional<FailureKind> Convert() { return ConvertOn(store); }
    std::optional<FailureKind> ConvertOn(SettingsStore& on) {
        SettingsIo io(state, on, view);
        io.Progress() = progress;
        Conversion conversion(
            {.state = state, .store = on, .io = io, .boxes = boxes, .wait = wait});
        const std::optional<FailureKind> failure = FailureOf([&] { conversion.ConvertOldData(); });
        progress = io.Progress();
        return failure;
    }
    void FillSpellTable() { state.Spells.GrowTo(104); }

    void Mark(std::string_view mark) { store.Put(kGlobalSection, "Conversion", mark); }
    std::string Mark() { return Value("Conversion"); }
    std::string Value(std::string_view key, std::string_view section = kGlobalSection) {
        return store.Read(section, key).value_or("(none)");
    }
    // One player's data in the form of the oldest versions.
    void PutOldData() {
        Mark("Done 1.1");
        store.Put(kGlobalSection, "CurrentReagentBag", "2");
        store.Put(kGlobalSection, "MR 0", "17");
        store.Put(kGlobalSection, "NC 0", "5");
        store.Put(kGlobalSection, "Bag 0", "Sack");
        store.Put(kGlobalSection, "Magery", "77");
        store.Put(kGlobalSection, "EvalInt", "66");
        store.Put(kGlobalSection, "Spellbook 63", "0");
        store.Put(kGlobalSection, "Spellbook 64", "0");
        store.Put(kGlobalSection, "User16", "9");
        store.Put(kGlobalSection, "SpellText 7 7", "Boo");
        store.Put(kGlobalSection, "SpellText 8 0", "Far");
        store.Put(kGlobalSection, "Macro 14", "A--X");
    }

    SharedState state;
    ConversionProgress progress;  // as the last Convert left it
    MemorySettingsStore store;
    RecordingView view;
    AnsweringBoxes boxes;
    NotingWait wait;
};

}  // namespace spellwick
