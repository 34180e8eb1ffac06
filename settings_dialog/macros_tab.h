// The Macros tab: the client's macro keys for one page of eight spells and the Meditation skill,
// and load and save of the client's macro file. Every accepted change takes effect at once.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <array>

#include "settings_dialog/common_dialog.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/macro_files.h"
#include "settings_dialog/settings_tab.h"
#include "settings_dialog/spell_picture.h"
#include "widgets/entry_box.h"
#include "widgets/hint.h"

namespace spellwick {

class MacrosTab : public SettingsTab {
    Q_OBJECT

  public:
    MacrosTab(const SettingsServices& services, CommonDialog& commonDialog, QWidget* parent);

    // Reads the spells' macros from the store again and shows the first page.
    void Load() override;
    QWidget* FirstControl() override { return ComboMacro; }

    // Puts the key that is in force into each edit whose entry would be refused, and lets the edit
    // be left without a check.
    void DropRefusedKeys();

    // Shows the page of ComboMacro, and the Meditation skill.
    void RefreshMacroPage();

    // Lines are 0 to 7 for spells and 9 for the Meditation skill.
    void KeyLostFocus(int line);
    void ClickAlt(int line);
    void ClickCtrl(int line);
    void ClickShift(int line);
    void ClickRead();
    void ClickWrite();

    EntryBox& TextMacro(int line) { return *m_lines[Place(line)].key; }
    QCheckBox& CheckAlt(int line) { return *m_lines[Place(line)].alt; }
    QCheckBox& CheckCtrl(int line) { return *m_lines[Place(line)].ctrl; }
    QCheckBox& CheckShift(int line) { return *m_lines[Place(line)].shift; }

    ChoiceBox* ComboMacro;
    std::array<SpellPicture*, kSlotCount> Image{};
    QPushButton* CommandMacroWrite;
    QPushButton* CommandMacroRead;

  private:
    struct Line {
        EntryBox* key = nullptr;
        QCheckBox* alt = nullptr;
        QCheckBox* ctrl = nullptr;
        QCheckBox* shift = nullptr;
    };

    static std::size_t Place(int line);
    void MakeName(int line);
    int WidthOfNames() const;
    int HeightOfNames(int width) const;
    void MakeLine(int line);
    QCheckBox* MakeMark(const char* name, const char* caption, int line,
                        void (MacrosTab::*clicked)(int));
    void PlaceControls();
    void PlaceLine(int line, int gridRow, int firstColumn);
    void NameLine(int line, const QString& of);
    i32 MacroOf(int line) const;
    void ShowLine(int line);
    FileQuestion QuestionForFile(const char* title) const;
    void Complain(int line, std::string_view text);
    void ShowHint(const std::string& text);

    CommonDialog& m_commonDialog;
    MacroFiles m_files;
    std::array<QLabel*, kSlotCount> m_names{};
    Hints* m_hints = nullptr;  // beside the dialog, which owns them; made when first needed
    std::array<Line, kSlotCount + 1> m_lines{};
    bool m_givesFocusBack = false;
};

}  // namespace spellwick
