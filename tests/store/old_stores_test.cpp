// Whole stores with every mark, after one start and after two.
#include <algorithm>
#include <fstream>
#include <map>

#include <gmock/gmock.h>

#include "store/conversion.h"
#include "tests/store/sqlite_test_tools.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

using testing::ElementsAreArray;

// Lines of "section|key|value", in alphabetical order.
using Lines = std::vector<std::string>;

class YesBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& /*box*/) override {
        ++shown;
        return BoxAnswer::kYes;
    }
    int shown = 0;
};

class SilentWait final : public WaitWindow {
  public:
    void ShowWait() override { isShown = true; }
    void ShowPercent(i32 /*percent*/) override {}
    void CloseWait() override { isShown = false; }
    void ServeEvents() override {}
    bool isShown = false;
};

struct OldStore {
    const char* file;
    std::optional<FailureKind> failure;  // ends the conversion at each start
    int questions;                       // asked at each start
};

void PrintTo(const OldStore& old, std::ostream* out) {
    *out << old.file;
}

class OldStoresTest : public testing::TestWithParam<OldStore> {
  protected:
    OldStoresTest() {
        std::ifstream file(std::filesystem::path(STORE_TEST_DATA) / "old_stores" / GetParam().file);
        EXPECT_TRUE(file);
        std::string line;
        std::string part;
        while (std::getline(file, line)) {
            if (line == "before" || line.starts_with("after ")) {
                part = line;
                m_parts[part];
            } else if (line.starts_with("as ")) {
                m_parts[part] = m_parts.at(line.substr(3));
            } else {
                m_parts[part].push_back(line);
            }
        }
        for (auto& [name, lines] : m_parts) {
            std::sort(lines.begin(), lines.end());
        }
        Fill();
    }

    void Fill() {
        const auto store = OpenWell(m_folder.Path());
        for (const std::string& line : m_parts.at("before")) {
            const std::size_t first = line.find('|');
            const std::size_t second = line.find('|', first + 1);
            ASSERT_TRUE(
                store
                    ->Apply({{line.substr(0, first), line.substr(first + 1, second - first - 1),
                              line.substr(second + 1)}})
                    .ok);
        }
    }

    // The part of a start before the spell table is read, on the store on disk.
    void Start() {
        const auto store = OpenWell(m_folder.Path());
        SharedState state;
        RecordingView view;
        SettingsIo io(state, *store, view);
        YesBoxes boxes;
        SilentWait wait;
        Conversion conversion(
            {.state = state, .store = *store, .io = io, .boxes = boxes, .wait = wait});
        EXPECT_EQ(FailureOf([&] { conversion.ConvertOldData(); }), GetParam().failure);
        EXPECT_EQ(boxes.shown, GetParam().questions);
        EXPECT_EQ(wait.isShown, GetParam().questions > 0);
        EXPECT_EQ(io.Progress().Converting, GetParam().questions > 0);
    }

    Lines Stored() const {
        Lines lines;
        for (const auto& row : RawDatabase(m_folder.Path() / "settings.db")
                                   .Query("SELECT section, key, value FROM setting")) {
            lines.push_back(row[0] + "|" + row[1] + "|" + row[2]);
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    TemporaryFolder m_folder;
    std::map<std::string, Lines> m_parts;
};

TEST_P(OldStoresTest, TwoStarts_LeaveTheStoreAsTold) {
    EXPECT_THAT(Stored(), ElementsAreArray(m_parts.at("before")));
    Start();
    EXPECT_THAT(Stored(), ElementsAreArray(m_parts.at("after one start")));
    Start();
    EXPECT_THAT(Stored(), ElementsAreArray(m_parts.at("after two starts")));
}

INSTANTIATE_TEST_SUITE_P(Marks, OldStoresTest,
                         testing::Values(OldStore{"no_mark.txt", std::nullopt, 0},
                                         OldStore{"done_7_13.txt", std::nullopt, 0},
                                         OldStore{"done_5_0.txt", std::nullopt, 0},
                                         OldStore{"done_4_4.txt", FailureKind::kSubscript, 0},
                                         OldStore{"done_4_0.txt", FailureKind::kSubscript, 0},
                                         OldStore{"done_2_3.txt", FailureKind::kTypeMismatch, 0},
                                         OldStore{"done_1_0_one_player.txt",
                                                  FailureKind::kSubscript, 1},
                                         OldStore{"done_1_0_no_player.txt", std::nullopt, 0}),
                         [](const testing::TestParamInfo<OldStore>& old) {
                             const std::string file = old.param.file;
                             return file.substr(0, file.find('.'));
                         });

}  // namespace
}  // namespace spellwick
