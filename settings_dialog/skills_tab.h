// The Skills tab: the character's skills and what the spells require. Every change takes effect at
// once and recalculates the chances.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <array>

#include "model/skill_entries.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/settings_tab.h"
#include "widgets/counter_box.h"
#include "widgets/entry_box.h"
#include "widgets/up_down.h"

namespace spellwick {

inline constexpr int kCharacterLine = kSlotCount;  // the line of the character's own values

class SkillsTab : public SettingsTab {
    Q_OBJECT

  public:
    SkillsTab(const SettingsServices& services, QWidget* parent);

    void Load() override;
    void Refresh() override;
    QWidget* FirstControl() override { return MinimumSkill[kCharacterLine]; }
    QWidget* ControlFor(const Target& target) override;
    bool TakesEntriesWhenLeft() const override { return false; }

    // Shows the chances of the selected group, in their colours.
    void UpdateChance();

    // Show points that were reported in the character's line. What they change is stored already.
    void ShowReportedSkill(i32 points);
    void ShowReportedInt(i32 points);

    // The selected group, and the character's skill in it.
    int SelectedSkillGroup() const;
    i16 SelectedSkillValue() const;

    void ClickSkillType(int group);
    void ChangeMinimumInt(int line);  // 0 to 8
    void ChangeMinimumSkill(int line);
    void ChangeMaximumSkill(int line);  // 0 to 7
    void MinimumIntLostFocus(int line);
    void MinimumSkillLostFocus();
    void MaximumSkillLostFocus(int line);
    void ClickLHWS();

    std::array<QToolButton*, kSkillGroups> SkillType{};
    std::array<CounterBox*, kSlotCount + 1> MinimumInt{};
    std::array<CounterBox*, kSlotCount + 1> MinimumSkill{};
    std::array<EntryBox*, kSlotCount> MaximumSkill{};
    std::array<EntryBox*, kSlotCount> TextChance{};
    UpDown* UpDownInt = nullptr;
    UpDown* UpDownSkill = nullptr;
    QLabel* lblSkillType = nullptr;
    QPushButton* CommandLHWS = nullptr;

    // The title of line 0 to 7, "lblSkillCircles(1)" to "lblSkillCircles(8)".
    QLabel& LblSkillCircles(int line) { return *m_titles[static_cast<std::size_t>(line)]; }

  signals:
    // A chance, which is read-only, got the focus and must pass it on.
    void FocusGivenAway();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void MakeGroups();
    void MakeLine(int line);
    CounterBox* MakeCounter(const char* name, int line, const QString& accessibleName);
    UpDown* MakeSpin(CounterBox& box, const char* name, i32 most);
    void MakeLabels();
    void PlaceControls();
    void PlaceLine(int line, int gridRow);
    void ShowLine(int group, int line);
    // Store the value of an edit without recalculating the chances.
    void TakeMinimumInt(int line);
    void TakeMinimumSkill(int line);

    std::array<QLabel*, kSlotCount> m_titles{};
    QLabel* m_intHeading = nullptr;
    QLabel* m_skillHeading = nullptr;
    QLabel* m_safeHeading = nullptr;
    QLabel* m_chanceHeading = nullptr;
    QLabel* m_characterTitle = nullptr;
};

}  // namespace spellwick
