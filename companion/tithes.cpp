#include "companion/tithes.h"

#include "model/cast_rules.h"
#include "model/castable_amount.h"
#include "model/purse_entries.h"
#include "text/number_forms.h"

namespace spellwick {

void Tithes::BeginEdit() {
    m_display.screen.tithesEdit = m_display.screen.tithes;
    m_display.screen.tithesEditing = true;
    m_display.changes.tithes = true;
    m_display.changes.tithesEditing = true;
}

void Tithes::Commit() {
    if (!m_display.screen.tithesEditing) {
        return;
    }
    m_state.CurrentTithing = CommitTithesEntry(m_display.screen.tithesEdit, m_state.CurrentTithing);
    Show(m_state.CurrentTithing);
    m_display.screen.tithesEditing = false;
    m_display.changes.tithesEditing = true;
    m_page.UpdateAmounts();
}

void Tithes::Highlight(const SpellRecord& spell) {
    m_display.screen.tithesGround =
        TithesHighlight(spell.Reagents(kTithes), m_display.screen.tithes, m_state.ColorWarn);
    m_display.changes.tithesGround = true;
}

void Tithes::Show(i32 points) {
    m_display.screen.tithes = PlainText(points);
    m_display.screen.tithesEdit = m_display.screen.tithes;
    m_display.changes.tithes = true;
}

void Tithes::CreditLabel(i32 points) {
    m_display.screen.tithes = CreditCounter(points, m_display.screen.tithes);
    m_display.changes.tithes = true;
}

}  // namespace spellwick
