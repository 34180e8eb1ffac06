#include "platform/windows/registry_settings_store.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <map>

#include <gmock/gmock.h>

#include "platform/windows/section_keys.h"
#include "platform/windows/wide_text.h"
#include "store/section_name.h"
#include "store/settings_io.h"
#include "tests/store/store_test_tools.h"
#include "text/utf8.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

class RegistryStore : public testing::Test {
  protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }

    void Clear() const { RegDeleteTreeW(HKEY_CURRENT_USER, m_root.c_str()); }

    // Writes one value of a key with its type, as another program would.
    void WriteRaw(const std::wstring& key, const std::wstring& value, DWORD type,
                  const std::string& bytes) const {
        LONG error = 0;
        const RegistryKey opened = RegistryKey::Create(HKEY_CURRENT_USER, m_root + L"\\" + key,
                                                       KEY_READ | KEY_WRITE, error);
        ASSERT_EQ(error, ERROR_SUCCESS);
        const void* untyped = bytes.data();
        ASSERT_EQ(
            RegSetValueExW(opened.Get(), value.c_str(), 0, type, static_cast<const BYTE*>(untyped),
                           static_cast<DWORD>(bytes.size())),
            ERROR_SUCCESS);
    }

    std::vector<std::wstring> RawKeys() const {
        return RegistryKey::Open(HKEY_CURRENT_USER, m_root, KEY_READ).Subkeys();
    }

    const std::wstring m_root = L"Software\\Spellwick tests";
    RegistrySettingsStore m_store{m_root};
    RecordingView m_view;
};

TEST_F(RegistryStore, Values_AreTextsUnderTheSectionsKey) {
    ASSERT_TRUE(m_store
                    .Apply({{"Settings", "RegYellow", "3"},
                            {"Ultima Online - Mira Talon (Atlantic)", "Bag 0", "M\u00fcnzen"}})
                    .ok);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER,
                            (m_root + L"\\Ultima Online - Mira Talon (Atlantic)").c_str(), 0,
                            KEY_READ, &key),
              ERROR_SUCCESS);
    wchar_t text[16] = {};
    DWORD size = sizeof text;
    DWORD type = 0;
    void* untyped = text;
    EXPECT_EQ(RegQueryValueExW(key, L"Bag 0", nullptr, &type, static_cast<BYTE*>(untyped), &size),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_STREQ(text, L"M\u00fcnzen");
    EXPECT_EQ(size, 14U);
    EXPECT_THAT(RawKeys(),
                UnorderedElementsAre(L"Settings", L"Ultima Online - Mira Talon (Atlantic)"));
}

TEST_F(RegistryStore, EmptyStore_HasNothingAndARead_MakesNothing) {
    EXPECT_EQ(m_store.Read("Settings", "RegYellow"), std::nullopt);
    EXPECT_TRUE(m_store.ReadSection("Settings").empty());
    EXPECT_THAT(m_store.Sections(), ElementsAre());
    EXPECT_TRUE(m_store.RemoveSection("Settings").ok);
    EXPECT_FALSE(RegistryKey::Open(HKEY_CURRENT_USER, m_root, KEY_READ).Opened());
}

// The registry holds characters, not bytes.
void MakeTextsValid(SharedState& state) {
    state.SpellTextSuffix = ValidUtf8(state.SpellTextSuffix);
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        state.BagName(bag) = ValidUtf8(state.BagName(bag));
    }
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        state.Spells(row).SpellText = ValidUtf8(state.Spells(row).SpellText);
    }
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        state.MacroKey(number) = ValidUtf8(state.MacroKey(number));
    }
}

TEST_F(RegistryStore, SavedState_ComesBack) {
    for (unsigned seed = 0; seed < 10; ++seed) {
        SharedState saved = StartedState();
        FillPlayer(saved, seed);
        FillGlobals(saved, seed);
        MakeTextsValid(saved);
        saved.CurrentPlayerName = "player \\ " + std::to_string(seed);
        SaveAll(saved, m_store, m_view);
        SharedState loaded = StartedState();
        SettingsIo(loaded, m_store, m_view).LoadGlobalSettings();
        ASSERT_EQ(PlayerDifferences(saved, loaded), "") << "seed " << seed;
        ASSERT_EQ(GlobalDifferences(saved, loaded), "") << "seed " << seed;
    }
    EXPECT_EQ(m_store.Sections().size(), 11U);
}

std::vector<std::string> OddSections() {
    std::string all;
    for (char byte = 1; byte < 127; ++byte) {
        all.push_back(byte);
    }
    return {"Settings",
            "a\\b",
            "\\",
            "a\\b\\",
            "a%5Cb",
            "a%5cb",
            "100%",
            "%",
            "%=1",
            "%25",
            "%00",
            "",
            " ",
            " a ",
            "a/b'\"[]()*?.",
            ".",
            "..",
            std::string("a\0b", 3),
            all,
            "Ultima Online - \u05e9\u05dc \U0001f9d9 (Atlantic)",
            "Mira",
            "mira",
            "MIRA",
            "\u00e4",
            "\u00c4",
            std::string(255, 'n'),
            std::string(255, 'N'),
            std::string(255, '\\'),
            std::string(256, 'n'),
            std::string(257, 'n'),
            std::string(5000, ')')};
}

TEST_F(RegistryStore, EverySectionName_ComesBackAsItWas) {
    const std::vector<std::string> names = OddSections();
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_TRUE(m_store.Apply({{names[i], "key", std::to_string(i)}}).ok) << names[i];
    }
    EXPECT_THAT(m_store.Sections(), UnorderedElementsAreArray(names));
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(m_store.Read(names[i], "key"), std::to_string(i)) << names[i];
        EXPECT_EQ(m_store.ReadSection(names[i]), (SectionValues{{"key", std::to_string(i)}}));
    }
    // Each can be changed and removed without affecting its neighbours.
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_TRUE(m_store.Apply({{names[i], "key", "new"}}).ok);
        EXPECT_EQ(m_store.Read(names[i], "key"), "new") << names[i];
        ASSERT_TRUE(m_store.RemoveSection(names[i]).ok);
        EXPECT_EQ(m_store.Read(names[i], "key"), std::nullopt) << names[i];
        EXPECT_EQ(m_store.Sections().size(), names.size() - i - 1);
    }
}

// The lists that a session writes on every system, as another program reads them.
TEST_F(RegistryStore, SavedLists_AreTheRegistrysContent) {
    std::map<std::string, std::map<std::string, std::string>> expected;
    for (const char* name : {"saved_settings.txt", "saved_macros.txt"}) {
        std::ifstream file(std::string(STORE_TEST_DATA) + "/" + name, std::ios::binary);
        std::vector<SettingChange> changes;
        for (std::string line; std::getline(file, line);) {
            const std::size_t first = line.find('|');
            const std::size_t second = line.find('|', first + 1);
            ASSERT_NE(second, std::string::npos) << line;
            changes.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                               line.substr(second + 1)});
            expected[changes.back().section][changes.back().key] = *changes.back().value;
        }
        ASSERT_FALSE(changes.empty());
        ASSERT_TRUE(m_store.Apply(changes).ok);
    }
    std::map<std::string, std::map<std::string, std::string>> found;
    for (const std::wstring& key : RawKeys()) {
        const RegistryKey opened =
            RegistryKey::Open(HKEY_CURRENT_USER, m_root + L"\\" + key, KEY_READ);
        for (const auto& [value, text] : opened.ReadTexts()) {
            found[Utf8FromWide(key)][Utf8FromWide(value)] = Utf8FromWide(text);
        }
    }
    EXPECT_EQ(found, expected);
}

TEST_F(RegistryStore, SectionWhoseNeighbourIsGone_IsFoundUnderItsNumber) {
    ASSERT_TRUE(m_store.Apply({{"Mira", "key", "1"}}).ok);
    ASSERT_TRUE(m_store.Apply({{"mira", "key", "2"}}).ok);
    ASSERT_TRUE(m_store.RemoveSection("Mira").ok);
    EXPECT_EQ(m_store.Read("mira", "key"), "2");
    EXPECT_EQ(m_store.Read("Mira", "key"), std::nullopt);
    ASSERT_TRUE(m_store.Apply({{"Mira", "key", "3"}}).ok);
    EXPECT_EQ(m_store.Read("mira", "key"), "2");
    EXPECT_EQ(m_store.Read("Mira", "key"), "3");
    EXPECT_THAT(m_store.Sections(), UnorderedElementsAre("Mira", "mira"));
}

TEST_F(RegistryStore, PlainNames_AreTheirKeysNames) {
    for (const char* plain : {"Settings", "Ultima Online - Mira Talon (Atlantic)", "a/b", " a "}) {
        EXPECT_EQ(KeyNameOfSection(WideFromUtf8(plain)), WideFromUtf8(plain));
    }
    EXPECT_EQ(KeyNameOfSection(L"a\\b%"), L"a%5Cb%25");
    EXPECT_EQ(KeyNameOfSection(std::wstring(255, L'x')), std::wstring(255, L'x'));
    EXPECT_EQ(KeyNameOfSection(std::wstring(256, L'x')), std::nullopt);
    EXPECT_EQ(KeyNameOfSection(std::wstring(86, L'\\')), std::nullopt);
    // As a user may write them by hand.
    EXPECT_EQ(SectionOfKeyName(L"50% off"), L"50% off");
}

TEST_F(RegistryStore, AnyText_ComesBack) {
    const std::vector<std::string> texts{"",
                                         " ",
                                         "it's \"quoted\" [here]",
                                         "%PATH%",
                                         "\U0001f525\U0001f9d9\u200d",
                                         "two\nlines\r\n",
                                         std::string("a\0b", 3),
                                         std::string("a\0", 2),
                                         std::string(1, '\0'),
                                         std::string(5000, '\\'),
                                         std::string(1000000, 'x')};
    std::vector<SettingChange> changes;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        changes.push_back({"texts", std::to_string(i), texts[i]});
    }
    ASSERT_TRUE(m_store.Apply(changes).ok);
    const SectionValues read = m_store.ReadSection("texts");
    EXPECT_EQ(read.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(m_store.Read("texts", std::to_string(i)), texts[i]) << i;
        EXPECT_EQ(read.at(std::to_string(i)), texts[i]) << i;
    }
    ASSERT_TRUE(m_store.Apply({{"texts", "bytes", "a\xff"}}).ok);
    EXPECT_EQ(m_store.Read("texts", "bytes"), "a\ufffd");
}

TEST_F(RegistryStore, ValueThatIsNoText_IsAsGood_AsNotThere) {
    const struct {
        const wchar_t* name;
        DWORD type;
        std::string bytes;
    } rows[] = {
        {L"number", REG_DWORD, std::string("\1\0\0\0", 4)},
        {L"long number", REG_QWORD, std::string(8, '\1')},
        {L"bytes", REG_BINARY, std::string(100, '\x7f')},
        {L"none", REG_NONE, ""},
        {L"texts", REG_MULTI_SZ, std::string("a\0\0\0\0\0", 6)},
        {L"link", REG_LINK, std::string("a\0", 2)},
    };
    for (const auto& row : rows) {
        WriteRaw(L"Settings", row.name, row.type, row.bytes);
        EXPECT_EQ(m_store.Read("Settings", Utf8FromWide(row.name)), std::nullopt) << row.bytes;
    }
    EXPECT_TRUE(m_store.ReadSection("Settings").empty());
    EXPECT_EQ(RawKeys().size(), 1U);
    ASSERT_TRUE(m_store.Apply({{"Settings", "number", "7"}}).ok);
    EXPECT_EQ(m_store.Read("Settings", "number"), "7");
}

TEST_F(RegistryStore, NameInOtherLetters_BecomesTheOneThatIsSaved) {
    WriteRaw(L"Settings", L"regyellow", REG_SZ, std::string("4\0\0\0", 4));
    WriteRaw(L"Settings", L"PICTURES", REG_DWORD, std::string("\1\0\0\0", 4));
    WriteRaw(L"Settings", L"other", REG_SZ, std::string("o\0\0\0", 4));
    ASSERT_TRUE(m_store
                    .Apply({{"Settings", "RegYellow", "7"},
                            {"Settings", "Pictures", "0"},
                            {"Settings", "RegYellow", "8"}})
                    .ok);
    EXPECT_EQ(m_store.ReadSection("Settings"),
              (SectionValues{{"RegYellow", "8"}, {"Pictures", "0"}, {"other", "o"}}));
    // A failure keeps the value, though not the case of its name.
    WriteRaw(L"Mira", L"magery", REG_SZ, std::string("5\0\0\0", 4));
    EXPECT_FALSE(m_store.Apply({{"Mira", "Magery", "6"}, {"Mira", "", "x"}}).ok);
    EXPECT_EQ(m_store.Read("Mira", "Magery"), "5");
}

TEST_F(RegistryStore, BrokenTexts_AreReadAsFarAsTheyGo) {
    WriteRaw(L"Settings", L"without end", REG_SZ, std::string("4\0002\000", 4));
    WriteRaw(L"Settings", L"odd length", REG_SZ, std::string("4\0002\000x", 5));
    WriteRaw(L"Settings", L"empty", REG_SZ, "");
    WriteRaw(L"Settings", L"half a pair", REG_SZ, std::string("a\0\x3d\xd8\0\0", 6));
    WriteRaw(L"Settings", L"with variables", REG_EXPAND_SZ,
             std::string("%\0T\0E\0M\0P\0%\0\0\0", 14));
    EXPECT_EQ(m_store.ReadSection("Settings"), (SectionValues{{"without end", "42"},
                                                              {"odd length", "42"},
                                                              {"empty", ""},
                                                              {"half a pair", "a\ufffd"},
                                                              {"with variables", "%TEMP%"}}));
}

TEST_F(RegistryStore, NumberedKeyWithoutItsName_IsASectionOfThatName) {
    WriteRaw(L"%=7", L"key", REG_SZ, std::string("v\0\0\0", 4));
    WriteRaw(L"%=8", L"", REG_DWORD, std::string(4, '\0'));
    EXPECT_THAT(m_store.Sections(), UnorderedElementsAre("%=7", "%=8"));
    EXPECT_EQ(m_store.Read("%=7", "key"), "v");
}

TEST_F(RegistryStore, KeysThatAreRemoved_AreGone_AndTheLastTakesTheSection) {
    ASSERT_TRUE(m_store.Apply({{"Mira", "a", "1"}, {"Mira", "b", "2"}, {"x\\y", "a", "1"}}).ok);
    ASSERT_TRUE(m_store.Apply({{"Mira", "a", std::nullopt}, {"Mira", "c", std::nullopt}}).ok);
    EXPECT_EQ(m_store.ReadSection("Mira"), (SectionValues{{"b", "2"}}));
    ASSERT_TRUE(m_store.Apply({{"Mira", "b", std::nullopt}}).ok);
    EXPECT_THAT(m_store.Sections(), ElementsAre("x\\y"));
    ASSERT_TRUE(m_store.Apply({{"nobody", "b", std::nullopt}}).ok);
    EXPECT_THAT(m_store.Sections(), ElementsAre("x\\y"));
    const std::string longName(300, 'l');
    ASSERT_TRUE(m_store.Apply({{longName, "a", "1"}}).ok);
    ASSERT_TRUE(m_store.Apply({{longName, "a", std::nullopt}}).ok);
    EXPECT_THAT(m_store.Sections(), ElementsAre("x\\y"));
}

TEST_F(RegistryStore, BatchThatFails_LeavesTheOldData) {
    ASSERT_TRUE(m_store.Apply({{"Mira", "a", "old"}, {"Mira", "b", "old"}}).ok);
    // Names of values have a limit, and the empty one cannot be used.
    for (const std::string& bad : {std::string(), std::string(20000, 'k')}) {
        const StoreResult result = m_store.Apply({{"Mira", "a", "new"},
                                                  {"Mira", "b", std::nullopt},
                                                  {"Mira", "c", "new"},
                                                  {"Mira", "a", "newer"},
                                                  {"Dorn", "a", "new"},
                                                  {"Dorn", bad, "new"},
                                                  {"Zed", "a", "new"}});
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.trouble, HasSubstr("registry"));
        EXPECT_EQ(m_store.ReadSection("Mira"), (SectionValues{{"a", "old"}, {"b", "old"}}));
        EXPECT_THAT(m_store.Sections(), ElementsAre("Mira"));
    }
}

TEST_F(RegistryStore, Changes_AreFlushedBehindTheLast) {
    std::vector<SectionValues> flushed;
    RegistrySettingsStore store(m_root, [&](HKEY) {
        flushed.push_back(m_store.ReadSection("Mira"));
        return LONG{ERROR_SUCCESS};
    });
    ASSERT_TRUE(store.Apply({{"Mira", "a", "1"}, {"Mira", "b", "2"}}).ok);
    ASSERT_THAT(flushed, ElementsAre(SectionValues{{"a", "1"}, {"b", "2"}}));
    ASSERT_TRUE(store.Apply({{"Mira", "a", std::nullopt}}).ok);
    EXPECT_THAT(flushed, ElementsAre(testing::_, SectionValues{{"b", "2"}}));
}

// As each second while the game shows its login screen.
TEST_F(RegistryStore, SaveOfTheSame_WritesNothing) {
    int flushes = 0;
    RegistrySettingsStore store(m_root, [&flushes](HKEY) {
        ++flushes;
        return LONG{ERROR_SUCCESS};
    });
    const auto lastWrite = [this] {
        FILETIME time{};
        RegQueryInfoKeyW(RegistryKey::Open(HKEY_CURRENT_USER, m_root + L"\\Mira", KEY_READ).Get(),
                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr, &time);
        return (std::uint64_t{time.dwHighDateTime} << 32U) + time.dwLowDateTime;
    };
    const std::vector<SettingChange> changes{{"Mira", "a", "1"}, {"Mira", "b", std::nullopt}};
    ASSERT_TRUE(store.Apply(changes).ok);
    const std::uint64_t before = lastWrite();
    ASSERT_NE(before, 0U);
    Sleep(50);
    ASSERT_TRUE(store.Apply(changes).ok);
    EXPECT_EQ(lastWrite(), before);
    EXPECT_EQ(flushes, 1);
    ASSERT_TRUE(store.Apply({{"Mira", "a", "2"}}).ok);
    EXPECT_GT(lastWrite(), before);
    EXPECT_EQ(flushes, 2);
}

TEST_F(RegistryStore, FlushThatFails_IsAFailedSaveAndLeavesTheOldData) {
    ASSERT_TRUE(m_store.Apply({{"Mira", "a", "old"}}).ok);
    RegistrySettingsStore store(m_root, [](HKEY) { return LONG{ERROR_REGISTRY_IO_FAILED}; });
    const StoreResult result = store.Apply({{"Mira", "a", "new"}, {"Dorn", "a", "new"}});
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.trouble, HasSubstr("registry"));
    EXPECT_EQ(m_store.ReadSection("Mira"), (SectionValues{{"a", "old"}}));
    EXPECT_THAT(m_store.Sections(), ElementsAre("Mira"));
}

TEST_F(RegistryStore, KeysOfSubkeys_AreNoSections) {
    ASSERT_TRUE(m_store.Apply({{"Mira", "a", "1"}}).ok);
    WriteRaw(L"Mira\\deeper", L"key", REG_SZ, std::string("v\0\0\0", 4));
    EXPECT_THAT(m_store.Sections(), ElementsAre("Mira"));
    ASSERT_TRUE(m_store.RemoveSection("Mira").ok);
    EXPECT_THAT(m_store.Sections(), ElementsAre());
}

TEST_F(RegistryStore, ManyPlayers_AreListed) {
    for (int player = 0; player < 200; ++player) {
        const std::string title = "Ultima Online - P" + std::to_string(player) + " (Atlantic)";
        ASSERT_TRUE(m_store.Apply({{title, "Magery", "1"}}).ok);
    }
    EXPECT_EQ(m_store.Sections().size(), 200U);
    EXPECT_EQ(m_store.Read("Ultima Online - P199 (Atlantic)", "Magery"), "1");
}

TEST_F(RegistryStore, Copies_HoldEverythingAndFiveAreKept) {
    using namespace std::chrono;
    const std::wstring copies = m_root + L" copies";
    RegDeleteTreeW(HKEY_CURRENT_USER, copies.c_str());
    EXPECT_TRUE(m_store.KeepCopy({}).ok);
    EXPECT_FALSE(RegistryKey::Open(HKEY_CURRENT_USER, copies, KEY_READ).Opened())
        << "there was nothing to copy";
    const system_clock::time_point start = sys_days{2026y / 11 / 22} + 12h;
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(m_store.Apply({{"Bran", "MR 0", std::to_string(i)}}).ok);
        ASSERT_TRUE(m_store.KeepCopy(start + hours(24 * (i / 2))).ok) << "two of each time";
    }
    auto names = RegistryKey::Open(HKEY_CURRENT_USER, copies, KEY_READ).Subkeys();
    std::ranges::sort(names);
    ASSERT_EQ(names.size(), 5U);
    EXPECT_EQ(RegistrySettingsStore(copies + L"\\" + names.back()).Read("Bran", "MR 0"), "7");
    EXPECT_EQ(RegistrySettingsStore(copies + L"\\" + names.front()).Read("Bran", "MR 0"), "3");
    RegDeleteTreeW(HKEY_CURRENT_USER, copies.c_str());
}

}  // namespace
}  // namespace spellwick
