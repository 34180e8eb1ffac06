// The macro tab of the settings dialog, with files of macros and the two buttons for them.
#pragma once

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/settings_fixture.h"

namespace spellwick {

inline constexpr const char* kXmlFilter = "Macros of ClassicUO and TazUO (*.xml)";

inline Box ReadNotice() {
    return {.text =
                "When loading macros, keep in mind that each character uses its own macros.txt "
                "file.\r\n"
                "You can find these in the various subdirectories of the directory you installed "
                "UO in.\r\n"
                "Look in Desktop\\[account name]\\[shard name]\\[character name]\\macros.txt",
            .icon = BoxIcon::kExclamation};
}
inline Box WriteNotice() {
    return {.text =
                "Make sure you do NOT overwrite your current macros.txt file!\r\n"
                "Save the spell macros file under a different name and merge the two macro files "
                "later.\r\n"
                "Keep in mind that each character uses its own macros.txt file.\r\n"
                "You can find these in the various subdirectories of the directory you installed "
                "UO in.\r\n"
                "Look in Desktop\\[account name]\\[shard name]\\[character name]\\macros.txt",
            .icon = BoxIcon::kExclamation};
}

class MacroFilesFixture : public SettingsFixture {
  protected:
    FormSettings& OpenTab() { return OpenAt(2); }
    std::filesystem::path File(const char* name) const {
        return std::filesystem::path(m_folder.path().toStdString()) / name;
    }
    std::filesystem::path Write(const char* name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return File(name);
    }
    void ClickRead() {
        Click("CommandMacroRead");
        EXPECT_THAT(TakeBoxes(), testing::ElementsAre(ReadNotice()));
    }
    // Loads a file; the boxes behind the notice.
    std::vector<Box> LoadFile(const std::filesystem::path& file) {
        m_dialogs.files.push_back(file);
        Click("CommandMacroRead");
        return BoxesBehind(ReadNotice());
    }
    // Saves to a file; the boxes behind the notice.
    std::vector<Box> SaveTo(const std::filesystem::path& file) {
        m_dialogs.files.push_back(file);
        Click("CommandMacroWrite");
        return BoxesBehind(WriteNotice());
    }
    void ClickWrite() {
        Click("CommandMacroWrite");
        EXPECT_THAT(TakeBoxes(), testing::ElementsAre(WriteNotice()));
    }
    // Showing the page again shows this.
    void ChangeBehindThePage() { m_state.MacroKey(8) = "new"; }
    bool IsPageRefreshed() { return Text("TextMacro", 7) == "new"; }
    void ChooseAColour(bool cancelled) {
        ShowTab(7);
        m_dialogs.colours.push_back(cancelled ? std::nullopt : std::optional<i32>(0x00FF00));
        Click("LabelColor");
        ShowTab(2);
    }

    QTemporaryDir m_folder;

  private:
    std::vector<Box> BoxesBehind(const Box& notice) {
        std::vector<Box> boxes = TakeBoxes();
        EXPECT_THAT(boxes, testing::Contains(notice));
        if (!boxes.empty()) {
            boxes.erase(boxes.begin());
        }
        return boxes;
    }
};

}  // namespace spellwick
