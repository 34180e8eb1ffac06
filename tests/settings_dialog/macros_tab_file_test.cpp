// Load and save of the client's macro file with the buttons of the macro tab.
#include "tests/settings_dialog/macro_files_fixture.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFirstKey = "Software\\Origin Worlds Online\\Ultima Online Third Dawn\\1.0";
constexpr const char* kSecondKey = "Software\\Origin Worlds Online\\Ultima Online\\1.0";

const UncaughtFailure kSaveCancelled{FailureKind::kCancelled, "saving the spell macros to a file"};

class MacrosTabFileTest : public MacroFilesFixture {};

TEST_F(MacrosTabFileTest, Read_TakesTheKeysOverAndShowsThem) {
    OpenTab();
    m_dialogs.files.push_back(Write("macros.txt",
                                    "F5 1 0 0\r\nCastSpell Clumsy\r\n########\r\n"
                                    "H 0 1 0\r\nSay Hail\r\n########\r\n"
                                    "q 0 1 1\r\nCastSpell Wraith Form\r\n########\r\n"));
    const auto before = m_state.MacroKey;
    ClickRead();
    EXPECT_EQ(m_state.MacroKey(1), "{F5}");
    EXPECT_EQ(m_state.MacroCtrl(1), "^");
    EXPECT_EQ(m_state.MacroAlt(1), "");
    EXPECT_EQ(Text("TextMacro", 0), "{F5}");
    EXPECT_TRUE(Named<QCheckBox>("CheckCtrl", 0).isChecked());
    EXPECT_FALSE(Named<QCheckBox>("CheckAlt", 0).isChecked());
    i32 changed = 0;
    for (i32 number = -1; number <= 96; ++number) {
        changed += m_state.MacroKey(number) == before(number) ? 0 : 1;
    }
    EXPECT_EQ(changed, 2);
    EXPECT_THAT(m_store.Batches(), IsEmpty()) << "the keys reach the store with the close";
    Form().close();
    EXPECT_EQ(Saved("Settings", "Macro 1"), "-C-{F5}");
}

TEST_F(MacrosTabFileTest, Read_NoticeComesBeforeTheDialogAndBehindTheSearch) {
    OpenTab();
    std::size_t askedBefore = 0;
    std::size_t openedBefore = 1;
    m_boxes.whileStanding = [&] {
        askedBefore = m_installation.asked.size();
        openedBefore = m_dialogs.opens.size();
    };
    ClickRead();
    EXPECT_EQ(askedBefore, 2U);
    EXPECT_EQ(openedBefore, 0U);
    EXPECT_EQ(m_dialogs.opens.size(), 1U);
    m_boxes.whileStanding = [&] { openedBefore = m_dialogs.saves.size(); };
    ClickWrite();
    EXPECT_EQ(openedBefore, 0U);
    EXPECT_EQ(m_dialogs.saves.size(), 1U);
}

TEST_F(MacrosTabFileTest, Dialogs_TitlesFiltersNamesAndFolder) {
    m_installation.keys[kFirstKey]["StartExePath"] = "C:\\Game\\uo.exe";
    OpenTab();
    ClickRead();
    ClickWrite();
    EXPECT_THAT(m_dialogs.opens, ElementsAre(FileQuestion{.title = "Load Macro File",
                                                          .filterName = "Text (*.txt)",
                                                          .filterPattern = "*.txt",
                                                          .otherFilterName = kXmlFilter,
                                                          .otherFilterPattern = "*.xml",
                                                          .defaultExtension = "",
                                                          .folder = "/drives/C/Game/Desktop",
                                                          .fileName = ""}));
    EXPECT_THAT(m_dialogs.saves, ElementsAre(FileQuestion{.title = "Save Macro File as",
                                                          .filterName = "Text (*.txt)",
                                                          .filterPattern = "*.txt",
                                                          .otherFilterName = kXmlFilter,
                                                          .otherFilterPattern = "*.xml",
                                                          .defaultExtension = ".txt",
                                                          .folder = "/drives/C/Game/Desktop",
                                                          .fileName = "NewMacros.txt"}));
    EXPECT_THAT(m_installation.asked,
                ElementsAre(kFirstKey, std::string(kFirstKey) + " : StartExePath", kFirstKey,
                            std::string(kFirstKey) + " : StartExePath"));
}

TEST_F(MacrosTabFileTest, Folder_SecondKeyWhenTheFirstIsMissing_NoneWithoutBoth) {
    OpenTab();
    ClickRead();
    EXPECT_EQ(m_dialogs.opens.back().folder, "");
    m_installation.keys[kSecondKey]["StartExePath"] = "D:\\Old\\uo.exe";
    ClickRead();
    EXPECT_EQ(m_dialogs.opens.back().folder, "/drives/D/Old/Desktop");
}

TEST_F(MacrosTabFileTest, Read_CancelledFirst_OnlyRefreshesThePage) {
    OpenTab();
    const auto marks = m_state.MacroAlt;
    ChangeBehindThePage();
    ClickRead();
    EXPECT_TRUE(IsPageRefreshed());
    EXPECT_EQ(m_state.MacroAlt, marks);
}

// covers ODDITY(cancelled-load)
TEST_F(MacrosTabFileTest, Read_Oddity_CancelledLater_LoadsTheLastFileAgain) {
    OpenTab();
    const fs::path file = Write("macros.txt", "F5 0 0 0\r\nCastSpell Clumsy\r\n");
    m_dialogs.files.push_back(file);
    ClickRead();
    m_state.MacroKey(1) = "z";
    ClickRead();
    EXPECT_EQ(m_state.MacroKey(1), "{F5}");
    EXPECT_EQ(Text("TextMacro", 0), "{F5}");
    EXPECT_EQ(m_dialogs.opens.back().fileName, file.string());
}

// covers ODDITY(cancelled-load)
TEST_F(MacrosTabFileTest, Read_Oddity_CancelledAfterASave_LoadsTheSavedFile) {
    OpenTab();
    m_dialogs.files.push_back(File("NewMacros.txt"));
    ClickWrite();
    TakeFailures();
    m_state.MacroKey(1) = "z";
    ClickRead();
    EXPECT_EQ(m_state.MacroKey(1), "1");
}

TEST_F(MacrosTabFileTest, Read_CancelledAfterACancelledSave_FindsNoFile) {
    OpenTab();
    ClickWrite();
    const auto keys = m_state.MacroKey;
    ClickRead();
    EXPECT_EQ(m_dialogs.opens.back().fileName, "NewMacros.txt");
    EXPECT_EQ(m_state.MacroKey, keys);
}

TEST_F(MacrosTabFileTest, Read_CancelledAfterAColour_LoadsNothingButRefreshes) {
    OpenTab();
    m_dialogs.files.push_back(Write("macros.txt", "F5 0 0 0\r\nCastSpell Clumsy\r\n"));
    ClickRead();
    ChooseAColour(false);
    m_state.MacroKey(1) = "z";
    ChangeBehindThePage();
    ClickRead();
    EXPECT_EQ(m_state.MacroKey(1), "z");
    EXPECT_TRUE(IsPageRefreshed());
}

TEST_F(MacrosTabFileTest, Read_SameFileTwice_ChangesNothing) {
    OpenTab();
    const fs::path file =
        Write("macros.txt", "F5 1 1 0\r\nCastSpell Clumsy\r\nCastSpell Feeblemind\r\n########\r\n");
    m_dialogs.files = {file, file};
    ClickRead();
    const auto keys = m_state.MacroKey;
    const auto marks = m_state.MacroCtrl;
    ClickRead();
    EXPECT_EQ(m_state.MacroKey, keys);
    EXPECT_EQ(m_state.MacroCtrl, marks);
}

TEST_F(MacrosTabFileTest, Read_BadFiles_RefreshThePageAndSayNothing) {
    OpenTab();
    const fs::path locked = Write("locked", "q 0 0 0\r\nCastSpell Clumsy\r\n");
    fs::permissions(locked, fs::perms::none);
    // The superuser can read it all the same.
    if (std::ifstream(locked).good()) {
        fs::remove(locked);
    }
    const struct {
        const char* name;
        fs::path file;
    } rows[] = {
        {"missing", File("missing.txt")},
        {"folder", m_folder.path().toStdString()},
        {"unreadable", locked},
        {"empty", Write("empty", "")},
        {"one line of a million characters", Write("line", std::string(1'000'000, 'C'))},
        {"binary", Write("binary", std::string("\0\xff\x01\r\n\0########\r\0", 16))},
        {"cut off in the spell's name", Write("cut", "q 0 0 0\r\nCastSpell Clum")},
        {"device", "/dev/zero"},
    };
    const auto keys = m_state.MacroKey;
    for (const auto& row : rows) {
        m_state.MacroKey = keys;
        Form().Macros().RefreshMacroPage();
        ChangeBehindThePage();
        const auto before = m_state.MacroKey;
        m_dialogs.files.push_back(row.file);
        ClickRead();
        EXPECT_TRUE(IsPageRefreshed()) << row.name;
        EXPECT_EQ(m_state.MacroKey, before) << row.name;
    }
}

TEST_F(MacrosTabFileTest, Read_LineEndsOfEverySystem) {
    OpenTab();
    for (const char* end : {"\r\n", "\n", "\r"}) {
        m_state.MacroKey(1) = "z";
        m_dialogs.files.push_back(
            Write("macros.txt", std::string("F5 0 0 0") + end + "CastSpell Clumsy" + end));
        ClickRead();
        EXPECT_EQ(m_state.MacroKey(1), "{F5}");
    }
}

// The shipped table has gaps down to its last row.
TEST_F(MacrosTabFileTest, Read_CastSpellWithoutAName_KeepsWhatWasMergedBefore) {
    OpenTab();
    m_dialogs.files.push_back(Write(
        "macros.txt",
        "F5 0 0 0\r\nCastSpell Clumsy\r\nCastSpell\r\n########\r\nF6 0 0 0\r\nCastSpell Heal\r\n"));
    ClickRead();
    EXPECT_EQ(m_state.MacroKey(1), "{F5}");
    EXPECT_EQ(m_state.MacroKey(4), "4");
    Pick(Named<QComboBox>("ComboMacro"), 11);
    EXPECT_EQ(Text("TextMacro", 3), "{F5}");
}

// covers ODDITY(macro-save-ends)
TEST_F(MacrosTabFileTest, Write_Oddity_EndsInItsLastPassWithAll96BlocksOnTheDisk) {
    OpenTab();
    m_dialogs.files.push_back(Write("other.txt", std::string(50000, 'x')));
    ClickWrite();
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kSubscript,
                                                            "saving the spell macros to a file"}));
    std::string expected;
    for (i32 row = 0; row < 96; ++row) {
        std::string key = m_state.MacroKey(row + 1);
        key += m_state.MacroCtrl(row + 1).empty() ? " 0" : " 1";
        key += m_state.MacroAlt(row + 1).empty() ? " 0" : " 1";
        key += m_state.MacroShift(row + 1).empty() ? " 0" : " 1";
        expected += key + "\r\nCastSpell " + m_state.Spells(row).Name + "\r\n########\r\n";
    }
    EXPECT_EQ(BytesOf(File("other.txt")), expected);
}

TEST_F(MacrosTabFileTest, Write_TheVeryNameInAFolder_IsWritten) {
    OpenTab();
    m_dialogs.files.push_back(File("NewMacros.txt"));
    ClickWrite();
    EXPECT_EQ(TakeFailures().size(), 1U);
    EXPECT_GT(fs::file_size(File("NewMacros.txt")), 1000U);
}

TEST_F(MacrosTabFileTest, Write_Cancelled_ReturnsQuietly) {
    OpenTab();
    ClickWrite();
    EXPECT_TRUE(fs::is_empty(m_folder.path().toStdString()));
    EXPECT_FALSE(fs::exists("NewMacros.txt"));
}

TEST_F(MacrosTabFileTest, Write_CancelledAfterALoad_DoesNotWriteToTheLoadedFile) {
    OpenTab();
    const fs::path file = Write("macros.txt", "F5 0 0 0\r\nCastSpell Clumsy\r\n");
    m_dialogs.files.push_back(file);
    ClickRead();
    ClickWrite();
    EXPECT_EQ(BytesOf(file), "F5 0 0 0\r\nCastSpell Clumsy\r\n");
}

// covers ODDITY(cancelled-save)
TEST_F(MacrosTabFileTest, Write_Oddity_CancelledAfterAColour_EndsTheProgram) {
    OpenTab();
    ChooseAColour(false);
    ClickWrite();
    EXPECT_THAT(TakeFailures(), ElementsAre(kSaveCancelled));
}

// covers ODDITY(cancelled-save)
TEST_F(MacrosTabFileTest, Write_Oddity_CancelledAfterACancelledColour_EndsTheProgramToo) {
    OpenTab();
    ChooseAColour(true);
    ClickWrite();
    EXPECT_THAT(TakeFailures(), ElementsAre(kSaveCancelled));
}

TEST_F(MacrosTabFileTest, Write_ToAPlaceThatTakesNoFile_EndsTheProgram) {
    OpenTab();
    for (const fs::path& target : {fs::path(m_folder.path().toStdString()),
                                   File("missing") / "a.txt", fs::path("/dev/full")}) {
        m_dialogs.files.push_back(target);
        ClickWrite();
        EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{
                                        FailureKind::kFile, "saving the spell macros to a file"}))
            << target;
    }
}

TEST_F(MacrosTabFileTest, Read_AKeyBeingEdited_IsCheckedBeforeTheNotice) {
    OpenTab();
    Enter(Named<QLineEdit>("TextMacro", 0), "f8");
    m_boxes.whileStanding = [this] { EXPECT_EQ(m_state.MacroKey(1), "{F8}"); };
    ClickRead();
    EXPECT_EQ(Text("TextMacro", 0), "{F8}");
}

}  // namespace
}  // namespace spellwick
