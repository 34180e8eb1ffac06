#include "store/macro_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_installation.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

constexpr const char* kThirdDawn = "Software\\Origin Worlds Online\\Ultima Online Third Dawn\\1.0";
constexpr const char* kGame = "Software\\Origin Worlds Online\\Ultima Online\\1.0";
constexpr const char* kValue = "StartExePath";

TEST(MacroFolder, Table_TheClientProgramGivesWayToDesktop) {
    const struct {
        const char* name;
        const char* path;
        const char* folder;
    } rows[] = {
        {"client", "C:\\UO\\uo.exe", "C:\\UO\\Desktop"},
        {"client with words behind it", "C:\\UO\\uo.exe -x", "C:\\UO\\Desktop"},
        {"the first of two", "C:\\uo.exe\\uo.exe", "C:\\Desktop"},
        {"client alone", "uo.exe", "Desktop"},
        {"part of a name", "C:\\fluo.exe", "C:\\flDesktop"},
        {"another client", "C:\\UO\\client.exe", "C:\\UO\\client.exe"},
        {"nothing", "", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MacroFolderOf(row.path), row.folder) << row.name;
    }
}

// covers ODDITY(client-program-capitals)
TEST(MacroFolder, Oddity_ClientInCapitals_LeavesTheRawPath) {
    RecordingInstallation installed;
    installed.keys[kGame][kValue] = "C:\\UO\\UO.EXE";
    EXPECT_EQ(FindMacroFolder(installed), "/drives/C/UO/UO.EXE");
}

TEST(FindMacroFolder, TwoKeys_TheFirstThatIsThereCounts) {
    RecordingInstallation installed;
    installed.keys[kThirdDawn][kValue] = "C:\\Dawn\\uo.exe";
    installed.keys[kGame][kValue] = "C:\\UO\\uo.exe";
    EXPECT_EQ(FindMacroFolder(installed), "/drives/C/Dawn/Desktop");
    EXPECT_THAT(installed.asked,
                ElementsAre(kThirdDawn, std::string(kThirdDawn) + " : StartExePath"));
}

TEST(FindMacroFolder, SecondKey_WhenTheFirstIsMissing) {
    RecordingInstallation installed;
    installed.keys[kGame][kValue] = "C:\\UO\\uo.exe";
    EXPECT_EQ(FindMacroFolder(installed), "/drives/C/UO/Desktop");
    EXPECT_THAT(installed.asked,
                ElementsAre(kThirdDawn, kGame, std::string(kGame) + " : StartExePath"));
}

TEST(FindMacroFolder, FirstKeyWithoutTheValue_AsksNoFurther) {
    RecordingInstallation installed;
    installed.keys[kThirdDawn] = {};
    installed.keys[kGame][kValue] = "C:\\UO\\uo.exe";
    EXPECT_EQ(FindMacroFolder(installed), "");
}

TEST(FindMacroFolder, NoKey_IsNothing) {
    RecordingInstallation installed;
    EXPECT_EQ(FindMacroFolder(installed), "");
    EXPECT_THAT(installed.asked, ElementsAre(kThirdDawn, kGame));
}

}  // namespace
}  // namespace spellwick
