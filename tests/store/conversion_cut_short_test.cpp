// A conversion of old data that stops in the middle of a step, as if the program had ended.
#include <gtest/gtest.h>

#include "store/conversion.h"
#include "store/section_name.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/failures.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {
namespace {

class NoBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& box) override {
        ADD_FAILURE() << box.text;
        return BoxAnswer::kNo;
    }
};

class NoWait final : public WaitWindow {
  public:
    void ShowWait() override { ADD_FAILURE(); }
    void ShowPercent(i32 /*percent*/) override {}
    void CloseWait() override {}
    void ServeEvents() override {}
};

// A store that accepts a number of changes and then no more, as if the program had been killed.
class EndedStore final : public SettingsStore {
  public:
    EndedStore(MemorySettingsStore& inner, int taken) : m_inner(inner), m_left(taken) {}
    std::optional<std::string> Read(std::string_view section, std::string_view key) const override {
        return m_inner.Read(section, key);
    }
    SectionValues ReadSection(std::string_view section) const override {
        return m_inner.ReadSection(section);
    }
    StoreResult Apply(const std::vector<SettingChange>& changes) override {
        return m_left-- > 0 ? m_inner.Apply(changes) : StoreResult{false, "ended"};
    }
    StoreResult RemoveSection(std::string_view section) override {
        return m_left-- > 0 ? m_inner.RemoveSection(section) : StoreResult{false, "ended"};
    }
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override {
        return m_inner.KeepCopy(now);
    }
    std::vector<std::string> Sections() const override { return m_inner.Sections(); }

  private:
    MemorySettingsStore& m_inner;
    int m_left;
};

class CutShortTest : public testing::Test {
  protected:
    std::optional<FailureKind> Convert(SettingsStore& on) {
        SharedState state;
        RecordingView view;
        NoBoxes boxes;
        NoWait wait;
        SettingsIo io(state, on, view);
        Conversion conversion(
            {.state = state, .store = on, .io = io, .boxes = boxes, .wait = wait});
        return FailureOf([&] { conversion.ConvertOldData(); });
    }
    void Mark(std::string_view mark) { store.Put(kGlobalSection, "Conversion", mark); }
    std::string Mark() { return Value("Conversion"); }
    std::string Value(std::string_view key) {
        return store.Read(kGlobalSection, key).value_or("(none)");
    }

    MemorySettingsStore store;
};

TEST_F(CutShortTest, LastStep_IsDoneByTheNextStart) {
    for (const int taken : {0, 1}) {
        SCOPED_TRACE(taken);
        Mark("Done 5.0");
        store.Put(kGlobalSection, "SpellRegs 64", "100000000000000");
        EndedStore ended(store, taken);
        EXPECT_EQ(Convert(ended), FailureKind::kFile);
        EXPECT_EQ(Mark(), "Done 5.0");
        EXPECT_EQ(Convert(store), std::nullopt);
        EXPECT_EQ(Value("SpellRegs 64"), "(none)");
        EXPECT_EQ(Mark(), "Done 7.13");
    }
}

TEST_F(CutShortTest, Swap_LosesNoMacro) {
    // The third change swaps the macros, both at once.
    for (const int taken : {0, 1, 2, 3}) {
        SCOPED_TRACE(taken);
        Mark("Done 4.0");
        store.Put(kGlobalSection, "Macro 14", "A--X");
        store.Put(kGlobalSection, "Macro 15", "-C-Y");
        EndedStore ended(store, taken);
        const bool swapped = taken == 3;
        EXPECT_EQ(Convert(ended), swapped ? FailureKind::kSubscript : FailureKind::kFile);
        EXPECT_EQ(Value("Macro 14"), swapped ? "-C-Y" : "A--X");
        EXPECT_EQ(Value("Macro 15"), swapped ? "A--X" : "-C-Y");
        EXPECT_EQ(Mark(), "Done 4.0");
    }
}

}  // namespace
}  // namespace spellwick
