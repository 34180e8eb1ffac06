#include "link/profile_folder.h"

#include <fstream>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"
#include "tests/support/write_time.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

class NewestProfileTest : public testing::Test {
  protected:
    fs::path Make(const char* profile, int minutes) {
        fs::path folder = m_folder.Path() / "Data" / "Profiles" / fs::path(profile);
        fs::create_directories(folder);
        SetWriteTime(folder, m_start + std::chrono::minutes(minutes));
        return folder;
    }

    std::string ShardOf(const std::string& name) {
        const auto found = NewestProfile({m_folder.Path()}, name);
        return found ? found->shard : "";
    }

    TemporaryFolder m_folder;
    fs::file_time_type m_start = fs::file_time_type::clock::now() - std::chrono::hours(5);
};

TEST_F(NewestProfileTest, TheLastOneOfTheName) {
    const fs::path bran = Make("one/Oak Hill/Bran", 1);
    Make("two/Atlantic/Bran", 2);
    Make("two/Pacific/Mira", 3);
    EXPECT_EQ(ShardOf("Bran"), "Atlantic");
    EXPECT_EQ(ShardOf("Mira"), "Pacific");
    // A system that does not tell the case of names apart finds the folder by either.
    const bool isSame = fs::exists(bran.parent_path() / "bran");
    EXPECT_EQ(ShardOf("bran"), isSame ? "Atlantic" : "");
    EXPECT_EQ(NewestProfile({m_folder.Path()}, "Bran", "Oak Hill"),
              (ProfileFolder{bran, "Oak Hill"}));
    EXPECT_EQ(NewestProfile({m_folder.Path()}, "Bran", "Pacific"), std::nullopt);
}

TEST_F(NewestProfileTest, AFileInItThatIsWrittenAnew_CountsToo) {
    const fs::path older = Make("one/Oak/Bran", 1);
    Make("one/Atlantic/Bran", 2);
    std::ofstream(older / "macros.xml") << "x";
    SetWriteTime(older / "macros.xml", m_start + std::chrono::minutes(3));
    SetWriteTime(older, m_start + std::chrono::minutes(1));
    EXPECT_EQ(ShardOf("Bran"), "Oak");
}

TEST_F(NewestProfileTest, NamesThatLeadElsewhere_AreNone) {
    Make("one/Oak/Bran", 1);
    for (const char* name : {"", ".", "..", "../Oak/Bran", "/tmp", "a\\b", "c:"}) {
        EXPECT_EQ(ShardOf(name), "") << name;
    }
}

TEST_F(NewestProfileTest, OtherScripts_AreFound) {
    const fs::path folder = m_folder.Path() / "Data" / "Profiles" / "one" / u8"Größe" / u8"Zoë 🔥";
    fs::create_directories(folder);
    EXPECT_EQ(ShardOf("Zoë 🔥"), "Größe");
}

TEST_F(NewestProfileTest, NoFolder_IsNothing) {
    EXPECT_EQ(NewestProfile({}, "Bran"), std::nullopt);
    EXPECT_EQ(NewestProfile({m_folder.Path() / "gone"}, "Bran"), std::nullopt);
    std::ofstream(m_folder.Path() / "Data") << "a file";
    EXPECT_EQ(ShardOf("Bran"), "");
}

}  // namespace
}  // namespace spellwick
