#include "settings_dialog/skills_tab.h"

#include "model/chances.h"
#include "settings_dialog/skill_groups.h"
#include "settings_dialog/spell_picture.h"
#include "settings_dialog/web_pages.h"
#include "text/number_forms.h"
#include "widgets/ground.h"

namespace spellwick {

// Loads the pictures when they are first seen, to keep them out of the program's start.
void SkillsTab::showEvent(QShowEvent* event) {
    SettingsTab::showEvent(event);
    if (SkillType[0]->icon().isNull()) {
        for (int group = 0; group < kSkillGroups; ++group) {
            SkillType[static_cast<std::size_t>(group)]->setIcon(
                SpellPixmap(m_services.pictures.clip[0], SkillTabRow(group, 0)));
        }
    }
}

int SkillsTab::SelectedSkillGroup() const {
    int group = 0;
    while (group < kSkillGroups - 1 && !SkillType[static_cast<std::size_t>(group)]->isChecked()) {
        ++group;
    }
    return group;
}

QWidget* SkillsTab::ControlFor(const Target& target) {
    if (target.way == Way::kIntelligence) {
        return MinimumInt[kCharacterLine];
    }
    const int group = GroupOfSchool(m_state.Spells(target.row).School);
    SkillType[static_cast<std::size_t>(group)]->setChecked(true);
    ClickSkillType(group);
    return MinimumSkill[kCharacterLine];
}

i16 SkillsTab::SelectedSkillValue() const {
    return SkillOfGroup(m_state, SelectedSkillGroup());
}

void SkillsTab::Load() {
    for (int line = 0; line < kSlotCount; ++line) {
        const auto at = static_cast<std::size_t>(line);
        const SpellRecord& first = m_state.Spells(SkillTabRow(0, line));
        ShowText(*MinimumInt[at], PlainText(i32{first.Mana}));
        ShowText(*MinimumSkill[at], PlainText(i32{first.MinimumSkill}));
        ShowText(*MaximumSkill[at], PlainText(i32{first.MaximumSkill}));
    }
    m_services.companion.UpdateChances();
    UpdateChance();
}

void SkillsTab::Refresh() {
    ShowText(*MinimumInt[kCharacterLine], PlainText(i32{m_state.Intelligence}));
    ClickSkillType(SelectedSkillGroup());
    UpdateChance();
}

void SkillsTab::ClickSkillType(int group) {
    m_services.companion.ShowSkillGroup(group);
    const SkillGroup& shown = kSkillGroupFacts[static_cast<std::size_t>(group)];
    QPalette colours = lblSkillType->palette();
    colours.setColor(QPalette::Window, Qt::white);
    colours.setColor(QPalette::WindowText, ToQColor(shown.colour));
    lblSkillType->setPalette(colours);
    ShowText(*MinimumSkill[kCharacterLine], PlainText(i32{SkillOfGroup(m_state, group)}));
    for (int line = 0; line < kSlotCount; ++line) {
        ShowLine(group, line);
    }
    const QString title = QLatin1String(shown.title);
    lblSkillType->setText(title);
    m_skillHeading->setText(title + QStringLiteral(" required"));
    m_safeHeading->setText(title + QStringLiteral(" for 95% success"));
    UpdateChance();
}

void SkillsTab::ShowLine(int group, int line) {
    const auto at = static_cast<std::size_t>(line);
    const i32 row = SkillTabRow(group, line);
    const SpellRecord& spell = m_state.Spells(row);
    LblSkillCircles(line).setText(group == 0 ? QLatin1String(kCircleTitles[at])
                                             : ToQString(spell.Name));
    const QString title = LblSkillCircles(line).text();
    MinimumInt[at]->setAccessibleName(QStringLiteral("Intelligence required for %1").arg(title));
    MinimumSkill[at]->setAccessibleName(QStringLiteral("Skill required for %1").arg(title));
    MaximumSkill[at]->setAccessibleName(QStringLiteral("Skill for 95% success of %1").arg(title));
    TextChance[at]->setAccessibleName(QStringLiteral("Chance in percent of %1").arg(title));
    const bool isSpell = spell.School != kNoSchool;
    for (QWidget* box :
         {static_cast<QWidget*>(MinimumInt[at]), static_cast<QWidget*>(MinimumSkill[at]),
          static_cast<QWidget*>(MaximumSkill[at]), static_cast<QWidget*>(TextChance[at])}) {
        box->setVisible(isSpell);
    }
    if (isSpell) {
        ShowText(*MinimumInt[at], PlainText(i32{spell.Mana}));
        ShowText(*MinimumSkill[at], PlainText(i32{spell.MinimumSkill}));
        ShowText(*MaximumSkill[at], PlainText(i32{spell.MaximumSkill}));
        ShowText(*TextChance[at], PlainText(i32{m_state.Chance(row)}));
    }
}

void SkillsTab::UpdateChance() {
    const int group = SelectedSkillGroup();
    const i16 skill = SelectedSkillValue();
    for (int line = 0; line < kSlotCount; ++line) {
        const auto at = static_cast<std::size_t>(line);
        const i32 row = SkillTabRow(group, line);
        const i16 chance = m_state.SkillChance(row);
        ShowText(*TextChance[at], PlainText(i32{chance}));
        const SkillTabGrounds grounds =
            GroundsOfSkillLine(m_state.Spells(row), m_state.Intelligence, skill, chance);
        SetGround(*MinimumInt[at], grounds.minimumInt);
        SetGround(*MinimumSkill[at], grounds.minimumSkill);
        SetGround(*MaximumSkill[at], grounds.maximumSkill);
        SetGround(*TextChance[at], grounds.chance);
    }
}

void SkillsTab::ChangeMinimumInt(int line) {
    if (m_state.Updating) {
        return;
    }
    TakeMinimumInt(line);
    m_services.companion.UpdateChances();
    UpdateChance();
}

void SkillsTab::TakeMinimumInt(int line) {
    const i16 value = ReadSkillEntry(ToText(MinimumInt[static_cast<std::size_t>(line)]->text()));
    if (line == kCharacterLine) {
        m_state.Intelligence = value;
    } else {
        SetRequiredIntelligence(m_state, SelectedSkillGroup(), line, value);
    }
}

void SkillsTab::ChangeMinimumSkill(int line) {
    if (m_state.Updating) {
        return;
    }
    TakeMinimumSkill(line);
    m_services.companion.UpdateChances();
    UpdateChance();
}

void SkillsTab::TakeMinimumSkill(int line) {
    const i16 value = ReadSkillEntry(ToText(MinimumSkill[static_cast<std::size_t>(line)]->text()));
    if (line == kCharacterLine) {
        SetSkillOfGroup(m_state, SelectedSkillGroup(), value);
    } else {
        SetRequiredSkill(m_state, line, value);
    }
}

void SkillsTab::ChangeMaximumSkill(int line) {
    if (m_state.Updating) {
        return;
    }
    const i16 value = ReadSkillEntry(ToText(MaximumSkill[static_cast<std::size_t>(line)]->text()));
    SetSafeSkill(m_state, SelectedSkillGroup(), line, value);
}

void SkillsTab::MinimumIntLostFocus(int line) {
    if (line == kCharacterLine &&
        ShowText(*MinimumInt[kCharacterLine], PlainText(i32{m_state.Intelligence}))) {
        ChangeMinimumInt(line);
    }
    m_services.companion.UpdateChances();
    UpdateChance();
}

void SkillsTab::MinimumSkillLostFocus() {
    UpdateChance();
    m_services.companion.UpdateChances();
}

void SkillsTab::MaximumSkillLostFocus(int line) {
    // ODDITY(safe-skill-of-circle): on a page of Necromancer or Paladin the skill for 95% success
    // changes to that of the Magery circle on that line when its edit loses the focus; kept because
    // only circles take an entry there, and reopening the page shows the right value.
    if (ShowText(*MaximumSkill[static_cast<std::size_t>(line)],
                 PlainText(i32{m_state.Spells(SkillTabRow(0, line)).MaximumSkill}))) {
        ChangeMaximumSkill(line);
    }
    UpdateChance();
}

void SkillsTab::ShowReportedSkill(i32 points) {
    ShowText(*MinimumSkill[kCharacterLine], PlainText(points));
}

void SkillsTab::ShowReportedInt(i32 points) {
    ShowText(*MinimumInt[kCharacterLine], PlainText(points));
}

void SkillsTab::ClickLHWS() {
    OpenGuildPage(m_services, *CommandLHWS);
}

}  // namespace spellwick
