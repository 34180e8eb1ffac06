#include "main_window/assist_reports.h"

#include <QCoreApplication>

#include "widgets/texts.h"

namespace spellwick {

void AssistReports::ShowCounter(i32 reagent, const std::string& text) {
    m_form.PurseControls().SetCounterText(reagent, text);
}

void AssistReports::ShowTithes(const std::string& text) {
    m_form.TithesControls().ShowEverywhere(text);
}

void AssistReports::ShowCurrentMana() {
    m_form.Page().ShowCurrentMana();
}

void AssistReports::UpdateAmounts() {
    m_form.Page().UpdateAmounts();
}

void AssistReports::UpdateChances() {
    m_form.Page().UpdateChances();
}

void AssistReports::DebitSpell(i32 row) {
    m_form.Pipeline().DebitSpell(row);
}

void AssistReports::EnableCount(bool enabled) {
    m_form.CountButton().setEnabled(enabled);
}

void AssistReports::CaptionCount(const std::string& caption) {
    m_form.CountButton().setText(ToQString(caption));
}

void AssistReports::ArmMeditation() {
    m_form.ArmMeditation();
}

void AssistReports::ShowBox(const std::string& text) {
    m_boxes.Show({.text = text});
}

void AssistReports::YieldEvents() {
    QCoreApplication::processEvents();
}

}  // namespace spellwick
