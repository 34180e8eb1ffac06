// The real key input of Windows, and another program's window that reports what arrived.
#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "link/keystroke_sender.h"
#include "platform/windows/windows_client_windows.h"
#include "platform/windows/windows_keyboard.h"
#include "tests/platform/windows/peer_process.h"
#include "tests/support/any_target.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::PeerProcess;
using testing_support::WaitUntil;

constexpr UINT kHangClient = 1;
constexpr UINT kLockState = 4;
constexpr const wchar_t* kClientTitle = L"Ultima Online - Mira Talon (Atlantic)";

// The window's record: the names of its messages, with the virtual keys of key messages and the
// characters of the others.
struct Noted {
    std::string what;
    unsigned number = 0;
    unsigned scan = 0;
    bool prefixed = false;
};

class WindowsTyping : public testing::Test {
  protected:
    void SetUp() override {
        m_client = std::make_unique<PeerProcess>(
            L"client_window",
            std::vector<std::wstring>{L"Ultima Online", kClientTitle, m_journal.wstring()},
            kClientTitle);
        WindowsClientWindows windows;
        ASSERT_TRUE(windows.SetForegroundWindow(m_client->Handle()));
        ASSERT_TRUE(windows.SetFocus(m_client->Handle()));
    }

    void TearDown() override {
        for (int key = 1; key < 255; ++key) {
            EXPECT_GE(GetAsyncKeyState(key), 0) << "still down: " << key;
        }
    }

    std::vector<Noted> Journal() const {
        std::vector<Noted> notes;
        std::ifstream journal(m_journal);
        for (std::string line; std::getline(journal, line);) {
            Noted noted;
            std::istringstream words(line);
            std::string prefixed;
            words >> noted.what >> noted.number >> noted.scan >> prefixed;
            noted.prefixed = !prefixed.empty();
            notes.push_back(noted);
        }
        return notes;
    }

    // The characters that arrived, with "Alt" before those that came with Alt.
    std::string Characters() const {
        std::wstring text;
        for (const Noted& noted : Journal()) {
            if (noted.what == "syschar") {
                text += L"<Alt>";
            }
            if (noted.what == "char" || noted.what == "syschar") {
                text.push_back(static_cast<wchar_t>(noted.number));
            }
        }
        return Utf8FromWide(text);
    }

    // The virtual keys that went down (+) and up (-), as signed numbers.
    std::vector<int> Keys() const {
        std::vector<int> keys;
        for (const Noted& noted : Journal()) {
            const int key = static_cast<int>(noted.number);
            if (noted.what == "down" || noted.what == "sysdown") {
                keys.push_back(key);
            } else if (noted.what == "up" || noted.what == "sysup") {
                keys.push_back(-key);
            }
        }
        return keys;
    }

    void ExpectTyped(const std::string& text, const std::string& characters) {
        SCOPED_TRACE(text);
        const std::string before = Characters();
        KeystrokeSender sender(m_keyboard, {5ms, 5ms}, 0ms);
        const SendResult result = sender.SendKeys(text, true, anywhere);
        EXPECT_TRUE(result.Ok()) << result.error;
        WaitUntil([&] { return Characters() == before + characters; }, 1s);
        EXPECT_EQ(Characters(), before + characters);
    }

    void ExpectKeys(const std::string& text, const std::vector<int>& keys) {
        SCOPED_TRACE(text);
        const std::size_t before = Keys().size();
        const auto since = [&] {
            const std::vector<int> all = Keys();
            return std::vector<int>(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
        };
        KeystrokeSender sender(m_keyboard, {5ms, 5ms}, 0ms);
        EXPECT_TRUE(sender.SendKeys(text, true, anywhere).Ok());
        WaitUntil([&] { return since() == keys; }, 1s);
        EXPECT_EQ(since(), keys);
    }

    TemporaryFolder m_folder;
    const std::filesystem::path m_journal = m_folder.Path() / "journal.txt";
    std::unique_ptr<PeerProcess> m_client;
    WindowsKeyboard m_keyboard;
};

TEST_F(WindowsTyping, FunctionKeysWithTheirModifiers_GoDownAndComeUpMirrored) {
    ExpectKeys("%{f1}{ENTER}", {VK_MENU, VK_F1, -VK_F1, -VK_MENU, VK_RETURN, -VK_RETURN});
    ExpectKeys("^{f2}", {VK_CONTROL, VK_F2, -VK_F2, -VK_CONTROL});
    ExpectKeys("+{f3}", {VK_SHIFT, VK_F3, -VK_F3, -VK_SHIFT});
    ExpectKeys("%^+{f12}",
               {VK_MENU, VK_CONTROL, VK_SHIFT, VK_F12, -VK_F12, -VK_SHIFT, -VK_CONTROL, -VK_MENU});
    ExpectKeys("%q^w", {VK_MENU, 'Q', -'Q', -VK_MENU, VK_CONTROL, 'W', -'W', -VK_CONTROL});
    ExpectKeys("%1%^5", {VK_MENU, '1', -'1', -VK_MENU, VK_MENU, VK_CONTROL, '5', -'5', -VK_CONTROL,
                         -VK_MENU});
}

TEST_F(WindowsTyping, EveryNamedKey_ArrivesAsItself) {
    const struct {
        const char* text;
        int virtualKey;
    } rows[] = {
        {"{F1}", VK_F1},       {"{F2}", VK_F2},        {"{F3}", VK_F3},     {"{F4}", VK_F4},
        {"{F5}", VK_F5},       {"{F6}", VK_F6},        {"{F7}", VK_F7},     {"{F8}", VK_F8},
        {"{F9}", VK_F9},       {"{F10}", VK_F10},      {"{F11}", VK_F11},   {"{F12}", VK_F12},
        {"{TAB}", VK_TAB},     {"{ESC}", VK_ESCAPE},   {"{BS}", VK_BACK},   {"{DEL}", VK_DELETE},
        {"{INS}", VK_INSERT},  {"{HOME}", VK_HOME},    {"{END}", VK_END},   {"{PGUP}", VK_PRIOR},
        {"{PGDN}", VK_NEXT},   {"{UP}", VK_UP},        {"{DOWN}", VK_DOWN}, {"{LEFT}", VK_LEFT},
        {"{RIGHT}", VK_RIGHT}, {"{ENTER}", VK_RETURN}, {" ", VK_SPACE},
    };
    for (const auto& row : rows) {
        ExpectKeys(row.text, {row.virtualKey, -row.virtualKey});
    }
}

TEST_F(WindowsTyping, Keys_HaveTheirScanCodes) {
    ExpectKeys("{F1}{DEL}", {VK_F1, -VK_F1, VK_DELETE, -VK_DELETE});
    std::vector<std::pair<unsigned, bool>> scans;
    for (const Noted& noted : Journal()) {
        if (noted.what == "down") {
            scans.emplace_back(noted.scan, noted.prefixed);
        }
    }
    EXPECT_EQ(scans, (std::vector<std::pair<unsigned, bool>>{{0x3b, false}, {0x53, true}}));
}

// With the prefix and a different scan code, the system finds no key.
TEST(WindowsKeymap, PrefixedKeys_AreThoseThatKeyboardsSendWithAPrefix) {
    const std::set<int> prefixed{0x37, 0x47, 0x48, 0x49, 0x4b, 0x4d, 0x4f, 0x50, 0x51, 0x52, 0x53};
    std::set<int> found;
    for (const Key& key : ReadWindowsKeymap(GetKeyboardLayout(0)).keys) {
        if (key.code < kVirtualKey && (key.code & kPrefixed) != 0) {
            found.insert(key.code & 0xff);
        }
    }
    EXPECT_EQ(found, prefixed);
    EXPECT_EQ(VirtualKeyOf(0x45, GetKeyboardLayout(0)), VK_NUMLOCK);
}

// A layout of another script gives none of these; a chord of a Latin letter means its key.
TEST(WindowsKeymap, DigitAndLetterKeys_AreKnownByTheirVirtualKeys) {
    HKL layout = GetKeyboardLayout(0);
    std::string caps;
    for (const Key& key : ReadWindowsKeymap(layout).keys) {
        if (key.cap != Symbol::kNothing) {
            const auto cap = static_cast<char>(key.cap);
            caps.push_back(cap);
            EXPECT_EQ(VirtualKeyOf(key.code, layout), cap >= 'a' ? cap - 'a' + 'A' : cap);
        }
    }
    std::ranges::sort(caps);
    EXPECT_EQ(caps, "0123456789abcdefghijklmnopqrstuvwxyz");
}

TEST_F(WindowsTyping, LockKeys_SwitchTheirLocks) {
    const struct {
        const char* text;
        int virtualKey;
    } rows[] = {{"{NUMLOCK}", VK_NUMLOCK}, {"{SCROLLLOCK}", VK_SCROLL}};
    for (const auto& row : rows) {
        const auto state = [&] {
            return m_client->Ask(kLockState, static_cast<WPARAM>(row.virtualKey));
        };
        const LRESULT before = state();
        ExpectKeys(row.text, {row.virtualKey, -row.virtualKey});
        EXPECT_TRUE(WaitUntil([&] { return state() != before; }, 3s)) << row.text;
        ExpectKeys(row.text, {row.virtualKey, -row.virtualKey});
        EXPECT_TRUE(WaitUntil([&] { return state() == before; }, 3s)) << row.text;
    }
}

TEST_F(WindowsTyping, TextWithCapitalsAndSigns_ArrivesAsWritten) {
    ExpectTyped("In Lor{ENTER}... Alakazam ...{ENTER}", "In Lor\r... Alakazam ...\r");
    ExpectTyped("abcxyz ABCXYZ 0123456789", "abcxyz ABCXYZ 0123456789");
    ExpectTyped("!\"#$&'*,-./:;<=>?@[\\]_`|{^}{+}{%}{~}{(}{)}{{}{}}",
                "!\"#$&'*,-./:;<=>?@[\\]_`|^+%~(){}");
}

TEST_F(WindowsTyping, CharactersThatTheLayoutLacks_ArriveToo) {
    ExpectTyped("\u00e4\u00d6\u00df\u20ac\u0142\u05e9", "\u00e4\u00d6\u00df\u20ac\u0142\u05e9");
    ExpectTyped("a\U0001f9d9b", "a\U0001f9d9b");
}

TEST_F(WindowsTyping, CapsLockOn_TheTextIsAsWrittenAndTheLockAsBefore) {
    const auto lock = [&] { return m_client->Ask(kLockState, VK_CAPITAL) == 1; };
    ASSERT_FALSE(lock());
    m_keyboard.Press(kCapsLockCode);
    m_keyboard.Release(kCapsLockCode);
    ASSERT_TRUE(WaitUntil(lock, 3s));
    ExpectTyped("aBc1!{ENTER}", "aBc1!\r");
    EXPECT_TRUE(WaitUntil(lock, 3s));
    m_keyboard.Press(kCapsLockCode);
    m_keyboard.Release(kCapsLockCode);
    EXPECT_TRUE(WaitUntil([&] { return !lock(); }, 3s));
    ExpectTyped("aBc1!{ENTER}", "aBc1!\r");
}

TEST_F(WindowsTyping, ModifiersHeldByTheUser_AreReleasedAndNotPressedAgain) {
    constexpr auto kAll = static_cast<ModifierMask>(kShiftMask | kControlMask | kAltMask);
    const auto hold = [&] {
        for (const HoldKey& key : {kHoldKeys[0], kHoldKeys[1], kHoldKeys[2]}) {
            m_keyboard.Press(key.code);
        }
        return WaitUntil([&] { return m_keyboard.HeldModifiers() == kAll; }, 500ms);
    };
    // Wine lets go what X does not hold, when it learns late that the window has the focus.
    ASSERT_TRUE(WaitUntil(hold, 5s));
    ASSERT_TRUE(WaitUntil([&] { return Keys().size() >= 3; }, 3s));
    ExpectTyped("ab", "ab");
    EXPECT_EQ(m_keyboard.HeldModifiers(), std::optional<ModifierMask>(0));
}

TEST_F(WindowsTyping, HungClient_GetsEverythingWhenItComesBack) {
    m_client->Tell(kHangClient, 1000);
    std::this_thread::sleep_for(50ms);
    const auto start = std::chrono::steady_clock::now();
    ExpectTyped("%{f1}ha", "ha");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 4s);
}

TEST_F(WindowsTyping, ClientGoneWhileTyping_LeavesNoKeyDown) {
    KeystrokeSender sender(m_keyboard, {20ms, 20ms}, 0ms);
    std::thread closing([this] {
        std::this_thread::sleep_for(150ms);
        m_client->End();
    });
    EXPECT_TRUE(sender.SendKeys("%^+{f1}hello hello hello", true, anywhere).Ok());
    closing.join();
    EXPECT_TRUE(sender.SendKeys("%{f1}into nothing", true, anywhere).Ok());
}

}  // namespace
}  // namespace spellwick
