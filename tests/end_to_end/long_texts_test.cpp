// A text of a million characters in a store of 50 MB: every act on it takes less than a second, and
// it comes back as it was.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/end_to_end/settings_desk.h"
#include "tests/support/pace.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kLength = 1'000'000;

// Words, so that the text is broken and drawn as one that somebody wrote.
std::string LongText(int seed) {
    std::string text;
    for (int word = seed; text.size() < kLength; ++word) {
        text += "word ";
        text += static_cast<char>('a' + word * 7 % 26);
    }
    text.resize(kLength - 1);
    return text + "e";
}

class LongTexts : public SettingsInTheProgram {
  protected:
    void PrepareStore() {
        PrepareMage(kMira, 10);
        Prepare(kMira, {{"SpellTextSuffix", LongText(1)}, {"SendSpellSuffix", "1"}});
        Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
        for (int other = 0; other < 50; ++other) {
            Prepare("Ultima Online - Other" + std::to_string(other) + " (Atlantic)",
                    {{"SpellTextSuffix", LongText(other)}});
        }
        ASSERT_GT(std::filesystem::file_size(StoreFile()), 50'000'000U);
    }
    // The processor time of the program's only thread that draws and counts, in milliseconds. It
    // does not grow with the load of the machine, as the time on the clock does.
    double Used() {
        const std::string id = std::to_string(Spellwick().Id());
        std::ifstream statistics("/proc/" + id + "/task/" + id + "/schedstat");
        double nanoseconds = 0;
        statistics >> nanoseconds;
        return nanoseconds / 1e6;
    }
    template <typename Act>
    void ExpectQuick(const char* name, Act act) {
        const double before = Used();
        act();
        EXPECT_LT(Used() - before, 1000.0 * kPace) << name;
    }
    std::uintmax_t JournalSize() const {
        std::error_code ignored;
        const std::uintmax_t size =
            std::filesystem::file_size(StoreFile().parent_path() / "journal", ignored);
        return ignored ? 0 : size;
    }
};

TEST_F(LongTexts, MillionCharactersInAStoreOf50Megabytes_AreEditedQuicklyAndKeptWhole) {
    PrepareStore();
    StartSpellwick();
    EXPECT_LT(Used(), 2000.0 * kPace) << "the start";
    OpenDialog();
    Tabs(kSpellTexts);
    ExpectQuick("opening the tab", [this] {
        m_desk->Tap(XKB_KEY_space);
        m_desk->RestingPicture(m_dialog);
    });
    constexpr int kToTheSuffix = 11;
    ExpectQuick("giving the edit the focus", [this] {
        Tabs(kToTheSuffix);
        m_desk->RestingPicture(m_dialog);
    });
    m_desk->Tap(XKB_KEY_End);
    ExpectQuick("typing into it, and the journal's note", [this] {
        m_desk->Tap(XKB_KEY_x);
        EXPECT_TRUE(WaitUntil([this] { return JournalSize() > kLength; }));
    });
    ExpectQuick("closing the settings", [this] { PressOk(); });
    const std::uintmax_t noted = JournalSize();
    ExpectQuick("counting beside it", [&] {
        Credit(kHeal);
        EXPECT_TRUE(WaitUntil([&] { return JournalSize() > noted; }));
    });
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_TRUE(Stored(kMira, "SpellTextSuffix") == LongText(1) + "x");
    EXPECT_TRUE(Stored("Ultima Online - Other7 (Atlantic)", "SpellTextSuffix") == LongText(7));
}

}  // namespace
}  // namespace spellwick::testing_support
