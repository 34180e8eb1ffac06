#include "platform/windows/windows_desktop.h"

#include <fstream>

#include <gtest/gtest.h>

#include "platform/windows/registry_installation.h"
#include "platform/windows/registry_key.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_clock.h"
#include "store/macro_folder.h"
#include "tests/platform/windows/peer_process.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

TEST(WindowsClock, Time_IsThatOfTheDayAndGoesOn) {
    const WindowsClock clock;
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const float expected = static_cast<float>((now.wHour * 60 + now.wMinute) * 60 + now.wSecond);
    const float first = clock.SecondsSinceMidnight();
    if (expected < 86000) {
        EXPECT_NEAR(first, expected, 3);
        Sleep(300);
        EXPECT_NEAR(clock.SecondsSinceMidnight() - first, 0.3F, 0.25F);
    }
    EXPECT_GE(first, 0);
    EXPECT_LT(first, 86400);
}

class OwnWindow : public testing::Test {
  protected:
    void TearDown() override { DestroyWindow(m_window); }

    LONG_PTR Style() const { return GetWindowLongPtrW(m_window, GWL_EXSTYLE); }

    WindowsDesktop m_desktop;
    HWND m_window = CreateWindowExW(WS_EX_APPWINDOW, L"STATIC", L"ours", WS_OVERLAPPEDWINDOW, 30,
                                    40, 200, 100, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(OwnWindow, TopMost_IsSetAndTakenBackWithoutMovingTheWindow) {
    RECT before{};
    GetWindowRect(m_window, &before);
    EXPECT_TRUE(m_desktop.SetTopMost(HandleOf(m_window), true));
    EXPECT_NE(Style() & WS_EX_TOPMOST, 0);
    EXPECT_TRUE(m_desktop.SetTopMost(HandleOf(m_window), false));
    EXPECT_EQ(Style() & WS_EX_TOPMOST, 0);
    RECT after{};
    GetWindowRect(m_window, &after);
    EXPECT_TRUE(EqualRect(&before, &after));
    EXPECT_FALSE(IsWindowVisible(m_window));
    EXPECT_FALSE(m_desktop.SetTopMost(0, true));
    EXPECT_FALSE(m_desktop.SetTopMost(0x12345678, true));
}

TEST_F(OwnWindow, LeaveTaskList_TakesTheStyleOfTheTaskBarAway) {
    EXPECT_TRUE(m_desktop.LeaveTaskList(HandleOf(m_window)));
    EXPECT_NE(Style() & WS_EX_TOOLWINDOW, 0);
    EXPECT_EQ(Style() & WS_EX_APPWINDOW, 0);
    EXPECT_FALSE(m_desktop.LeaveTaskList(0));
    EXPECT_FALSE(m_desktop.LeaveTaskList(0x12345678));
}

TEST_F(OwnWindow, OpeningWhatIsNotThere_Fails) {
    EXPECT_FALSE(m_desktop.OpenDocument(L"C:\\missing \u0141\\ReadMe.wri"));
    EXPECT_FALSE(m_desktop.OpenDocument({}));
    EXPECT_FALSE(m_desktop.OpenDocument(L"C:\\windows"));
}

// Registers a peer, which leaves a mark, as the program for rich text, and restores the old one.
class DocumentOpener : public testing::Test {
  protected:
    void SetUp() override {
        std::wstring own(MAX_PATH, L'\0');
        own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
        const std::wstring opener = own.substr(0, own.rfind(L'\\') + 1) + L"opener.exe";
        m_before = Kind();
        SetKind(L"Spellwick tests");
        LONG error = 0;
        const RegistryKey command =
            RegistryKey::Create(HKEY_LOCAL_MACHINE, kCommand, KEY_WRITE, error);
        ASSERT_EQ(command.WriteText({}, L"\"" + opener + L"\" \"%1\""), ERROR_SUCCESS);
    }
    void TearDown() override {
        SetKind(m_before);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Spellwick tests");
    }

    static std::wstring Kind() {
        const RegistryKey key = RegistryKey::Open(HKEY_LOCAL_MACHINE, kRichText, KEY_READ);
        return key.Opened() ? key.ReadText({}).value_or(L"") : L"";
    }
    static void SetKind(const std::wstring& kind) {
        LONG error = 0;
        const RegistryKey key =
            RegistryKey::Create(HKEY_LOCAL_MACHINE, kRichText, KEY_WRITE, error);
        ASSERT_EQ(key.WriteText({}, kind), ERROR_SUCCESS);
    }

    static constexpr const wchar_t* kRichText = L"Software\\Classes\\.rtf";
    static constexpr const wchar_t* kCommand =
        L"Software\\Classes\\Spellwick tests\\shell\\open\\command";
    std::wstring m_before;
    TemporaryFolder m_folder;
    WindowsDesktop m_desktop;
};

TEST_F(DocumentOpener, HelpWithoutAProgramOfItsOwn_IsOpenedAsRichText) {
    const std::filesystem::path file = m_folder.Path() / L"help \u0141 of.nokind";
    std::ofstream(file) << "{\\rtf1 help}";
    EXPECT_TRUE(m_desktop.OpenDocument(file));
    const std::filesystem::path mark = file.wstring() + L".opened";
    EXPECT_TRUE(testing_support::WaitUntil([&] { return std::filesystem::exists(mark); }));
}

constexpr REGSAM kPlaces[] = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};
constexpr const wchar_t* kPublisher = L"Software\\Origin Worlds Online";
constexpr const char* kOldKey = "Software\\Origin Worlds Online\\Ultima Online\\1.0";
constexpr const char* kNewKey = "Software\\Origin Worlds Online\\Ultima Online Third Dawn\\1.0";

class InstallationKeys : public testing::Test {
  protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }

    static void Clear() {
        for (const REGSAM place : kPlaces) {
            HKEY software = nullptr;
            RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_ALL_ACCESS | place, &software);
            RegDeleteTreeW(software, L"Origin Worlds Online");
            RegCloseKey(software);
        }
    }

    static void Write(const char* key, REGSAM place, const std::wstring& text) {
        LONG error = 0;
        const RegistryKey made = RegistryKey::Create(HKEY_LOCAL_MACHINE, WideFromUtf8(key),
                                                     KEY_READ | KEY_WRITE | place, error);
        ASSERT_EQ(error, ERROR_SUCCESS);
        ASSERT_EQ(made.WriteText(L"StartExePath", text), ERROR_SUCCESS);
    }

    RegistryInstallation m_installation;
};

TEST_F(InstallationKeys, NoGame_IsNoKeyAndNoFolder) {
    EXPECT_FALSE(m_installation.HasKey(kNewKey));
    EXPECT_EQ(m_installation.ReadText(kNewKey, "StartExePath"), "");
    EXPECT_EQ(FindMacroFolder(m_installation), std::filesystem::path());
}

TEST_F(InstallationKeys, BothPlacesOfTheRegistry_AreLookedInto) {
    for (const REGSAM place : kPlaces) {
        Clear();
        Write(kOldKey, place, L"C:\\Spiele \u0141\\UO\\uo.exe");
        EXPECT_TRUE(m_installation.HasKey(kOldKey));
        EXPECT_FALSE(m_installation.HasKey(kNewKey));
        EXPECT_EQ(m_installation.ReadText(kOldKey, "StartExePath"),
                  "C:\\Spiele \u0141\\UO\\uo.exe");
        EXPECT_EQ(FindMacroFolder(m_installation),
                  std::filesystem::path(L"C:\\Spiele \u0141\\UO\\Desktop"));
    }
    EXPECT_FALSE(
        RegistryKey::Open(HKEY_LOCAL_MACHINE, kPublisher, KEY_READ | KEY_WOW64_64KEY).Opened())
        << "the two places are one here, and nothing was shown";
}

TEST_F(InstallationKeys, LaterGame_IsAskedFirst) {
    Write(kOldKey, KEY_WOW64_32KEY, L"C:\\old\\uo.exe");
    Write(kNewKey, KEY_WOW64_32KEY, L"C:\\new\\uo.exe");
    EXPECT_EQ(FindMacroFolder(m_installation), std::filesystem::path(L"C:\\new\\Desktop"));
}

TEST_F(InstallationKeys, Paths_AreThoseOfDrivesThatAreThere) {
    EXPECT_EQ(m_installation.LocalPath("C:\\a\\b"), std::filesystem::path(L"C:\\a\\b"));
    EXPECT_EQ(m_installation.LocalPath("c:/a/b"), std::filesystem::path(L"c:\\a\\b"));
    EXPECT_EQ(m_installation.LocalPath("C:a"), std::filesystem::path(L"C:\\a"));
    EXPECT_EQ(m_installation.LocalPath("C:"), std::filesystem::path(L"C:\\"));
    for (const char* none : {"", "C", "Q:\\a", "\\a", "1:\\a", "CC:\\a", "\\\\server\\a"}) {
        EXPECT_EQ(m_installation.LocalPath(none), std::filesystem::path()) << none;
    }
}

}  // namespace
}  // namespace spellwick
