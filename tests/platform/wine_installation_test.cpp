// The registry and the drives of a Wine prefix, made by hand as Wine writes them.
#include "platform/linux/wine_installation.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <unistd.h>

#include "store/macro_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

constexpr const char* kGame = "Software\\Origin Worlds Online\\Ultima Online\\1.0";
constexpr const char* kThirdDawn = "Software\\Origin Worlds Online\\Ultima Online Third Dawn\\1.0";

class WineInstallationTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "wine-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_prefix = fs::canonical(name);
        fs::create_directories(m_prefix / "dosdevices");
        fs::create_directories(m_prefix / "drive_c" / "Program Files" / "UO" / "Desktop");
        fs::create_directory_symlink("../drive_c", m_prefix / "dosdevices" / "c:");
        fs::create_directory_symlink("/", m_prefix / "dosdevices" / "z:");
    }
    void TearDown() override { fs::remove_all(m_prefix); }

    void WriteRegistry(const std::string& text) const {
        std::ofstream(m_prefix / "system.reg", std::ios::binary)
            << "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n"
            << text;
    }
    WineInstallation Installed() const { return WineInstallation(m_prefix); }

    fs::path m_prefix;
};

TEST_F(WineInstallationTest, PlainPlace_GivesTheFolderOfTheMacros) {
    WriteRegistry(
        "[Software\\\\Other\\\\Thing] 1700000000\n#time=1da0\n\"StartExePath\"=\"no\"\n\n"
        "[Software\\\\Origin Worlds Online\\\\Ultima Online\\\\1.0] 1700000000\n#time=1da0\n"
        "@=\"\"\n\"InstCDPath\"=\"D:\\\\\"\n\"Level\"=dword:00000003\n"
        "\"StartExePath\"=\"C:\\\\Program Files\\\\UO\\\\uo.exe\"\n");
    WineInstallation installed = Installed();
    EXPECT_TRUE(installed.HasKey(kGame));
    EXPECT_FALSE(installed.HasKey(kThirdDawn));
    EXPECT_EQ(installed.ReadText(kGame, "StartExePath"), "C:\\Program Files\\UO\\uo.exe");
    EXPECT_EQ(installed.ReadText(kGame, "Level"), "");
    EXPECT_EQ(installed.ReadText(kGame, "Missing"), "");
    EXPECT_EQ(FindMacroFolder(installed),
              m_prefix / "drive_c" / "Program Files" / "UO" / "Desktop");
}

TEST_F(WineInstallationTest, PlaceOf32Bits_IsReadWhereThePlainOneIsMissing) {
    WriteRegistry(
        "[Software\\\\Wow6432Node\\\\Origin Worlds Online\\\\Ultima Online Third Dawn\\\\1.0] 17\n"
        "\"StartExePath\"=str(2):\"Z:\\\\games\\\\uo.exe\"\n");
    WineInstallation installed = Installed();
    EXPECT_TRUE(installed.HasKey(kThirdDawn));
    EXPECT_EQ(FindMacroFolder(installed), "/games/Desktop");
}

TEST_F(WineInstallationTest, BothPlaces_ThePlainOneCountsIfItHasTheValue) {
    const std::string wow =
        "[Software\\\\Wow6432Node\\\\Origin Worlds Online\\\\Ultima Online\\\\1.0] 17\n"
        "\"StartExePath\"=\"Z:\\\\b\\\\uo.exe\"\n\n";
    const std::string plain = "[Software\\\\Origin Worlds Online\\\\Ultima Online\\\\1.0] 17\n";
    WriteRegistry(wow + plain + "\"StartExePath\"=\"Z:\\\\a\\\\uo.exe\"\n");
    EXPECT_EQ(Installed().ReadText(kGame, "StartExePath"), "Z:\\a\\uo.exe");
    WriteRegistry(plain + "\n" + wow);
    EXPECT_EQ(Installed().ReadText(kGame, "StartExePath"), "Z:\\b\\uo.exe");
}

TEST_F(WineInstallationTest, Keys_DoNotDifferByCase) {
    WriteRegistry(
        "[software\\\\origin worlds online\\\\ULTIMA Online\\\\1.0]\n"
        "\"startexepath\"=\"C:\\\\X\\\\uo.exe\"\n");
    EXPECT_TRUE(Installed().HasKey(kGame));
    EXPECT_EQ(Installed().ReadText(kGame, "StartExePath"), "C:\\X\\uo.exe");
}

TEST_F(WineInstallationTest, LocalPath_FindsNamesInAnotherCase) {
    WineInstallation installed = Installed();
    EXPECT_EQ(installed.LocalPath("c:\\PROGRAM FILES\\uo\\desktop"),
              m_prefix / "drive_c" / "Program Files" / "UO" / "Desktop");
    EXPECT_EQ(installed.LocalPath("C:\\Program Files\\New\\There"),
              m_prefix / "drive_c" / "Program Files" / "New" / "There");
    EXPECT_EQ(installed.LocalPath("C:"), m_prefix / "drive_c");
    EXPECT_EQ(installed.LocalPath("D:\\Nowhere"), "");
    EXPECT_EQ(installed.LocalPath("\\\\server\\share"), "");
    EXPECT_EQ(installed.LocalPath(""), "");
    EXPECT_EQ(installed.LocalPath("   "), "");
}

TEST_F(WineInstallationTest, NoRegistry_IsNothingFound) {
    WineInstallation installed = Installed();
    EXPECT_FALSE(installed.HasKey(kGame));
    EXPECT_EQ(FindMacroFolder(installed), "");
    fs::create_directory(m_prefix / "system.reg");
    EXPECT_FALSE(installed.HasKey(kGame));
    WineInstallation nowhere{fs::path()};
    EXPECT_FALSE(nowhere.HasKey(kGame));
    EXPECT_EQ(nowhere.LocalPath("C:\\a"), "");
}

TEST_F(WineInstallationTest, Prefix_FromTheEnvironmentOrTheHome) {
    const std::string home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
    setenv("HOME", "/home/mira", 1);
    unsetenv("WINEPREFIX");
    EXPECT_EQ(WinePrefix(), "/home/mira/.wine");
    setenv("WINEPREFIX", "/games/prefix", 1);
    EXPECT_EQ(WinePrefix(), "/games/prefix");
    setenv("WINEPREFIX", "relative", 1);
    EXPECT_EQ(WinePrefix(), "/home/mira/.wine");
    setenv("WINEPREFIX", "", 1);
    EXPECT_EQ(WinePrefix(), "/home/mira/.wine");
    unsetenv("HOME");
    EXPECT_EQ(WinePrefix(), "");
    unsetenv("WINEPREFIX");
    setenv("HOME", home.c_str(), 1);
}

std::string ValueOf(const std::string& line) {
    std::istringstream registry("[Key]\n" + line + "\n");
    const auto values = ReadWineKey(registry, "Key");
    return values && values->contains("v") ? values->at("v") : "(none)";
}

TEST(WineKey, Table_EscapesAndBrokenLines) {
    const struct {
        const char* name;
        const char* line;
        const char* value;
    } rows[] = {
        {"plain", R"("v"="abc")", "abc"},
        {"empty", R"("v"="")", ""},
        {"backslash and quote", R"("v"="a\\b\"c")", "a\\b\"c"},
        {"line feed and tab", R"("v"="a\nb\tc")", "a\nb\tc"},
        {"accented letter", R"("v"="caf\xe9")", "caf\u00e9"},
        {"four digits", R"("v"="\x20acx")", "\u20acx"},
        {"pair of surrogates", R"("v"="\xd83d\xde00")", "\U0001f600"},
        {"half a pair", R"("v"="a\xd83db")", "ab"},
        {"octal", R"("v"="\101b")", "Ab"},
        {"x without digits", R"("v"="\xyz")", "xyz"},
        {"other sign", R"("v"="\qz")", "qz"},
        {"expanding text", R"("v"=str(2):"%A%")", "%A%"},
        {"number", R"("v"=dword:00000001)", "(none)"},
        {"bytes", R"("v"=hex:01,02)", "(none)"},
        {"not closed", R"("v"="abc)", "(none)"},
        {"ends in a backslash", R"("v"="abc\)", "(none)"},
        {"no value", R"("v"=)", "(none)"},
        {"no equals sign", R"("v")", "(none)"},
        {"type not closed", R"("v"=str(2)", "(none)"},
        {"name not closed", R"("v=)", "(none)"},
        {"other name", R"("w"="abc")", "(none)"},
        {"line end of another system", "\"v\"=\"abc\"\r", "abc"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ValueOf(row.line), row.value) << row.name;
    }
}

TEST(WineKey, ValuesEndWithTheirKey) {
    std::istringstream registry("[Key]\n\n[Other]\n\"v\"=\"abc\"\n");
    const auto values = ReadWineKey(registry, "Key");
    ASSERT_TRUE(values);
    EXPECT_TRUE(values->empty());
    std::istringstream missing("[Keys]\n\"v\"=\"abc\"\n");
    EXPECT_FALSE(ReadWineKey(missing, "Key"));
}

}  // namespace
}  // namespace spellwick
