// The macro tab of the settings dialog, used by mouse and keyboard.
#pragma once

#include <string>

#include "tests/support/settings_fixture.h"

namespace spellwick {

// The numbers of the rows' controls; there is no 8.
inline constexpr int kMacroRows[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};

class MacrosTabFixture : public SettingsFixture {
  protected:
    FormSettings& OpenTab() { return OpenAt(2); }
    QComboBox& Page() { return Named<QComboBox>("ComboMacro"); }
    QLineEdit& Key(int row) { return Named<QLineEdit>("TextMacro", row); }
    bool IsTicked(const char* name, int row) { return Named<QCheckBox>(name, row).isChecked(); }
    void EnterAndLeave(int row, const std::string& text) {
        Enter(Key(row), text);
        Leave();
    }
    // The marks and the key of a line, in the form of a macro code.
    std::string Line(int row) {
        return std::string(IsTicked("CheckAlt", row) ? "A" : "-") +
               (IsTicked("CheckCtrl", row) ? "C" : "-") +
               (IsTicked("CheckShift", row) ? "S" : "-") + Key(row).text().toStdString();
    }
    void SetMark(i32 number, const char* alt, const char* ctrl, const char* shift) {
        m_state.MacroAlt(number) = alt;
        m_state.MacroCtrl(number) = ctrl;
        m_state.MacroShift(number) = shift;
    }
};

}  // namespace spellwick
