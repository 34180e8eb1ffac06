#include "settings_dialog/user_spells_tab.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "model/spell_lookup.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr int kListsOfPage = kUserLists / 2;
constexpr const char* kWhatFor =
    "The pages U1 and U2 of the main window hold spells of your own choice, from all circles and "
    "schools. To find a spell, type the first letters of its name in a list, open or closed.";
constexpr i32 kLastMageryCircle = 8;
constexpr i32 kLastNecromancerCircle = 10;

}  // namespace

std::string UserSpellEntry(i32 row, const std::string& name) {
    const i32 circle = CircleOf(row);
    std::string prefix = StandardText(circle);
    if (circle > kLastMageryCircle) {
        prefix = "N";
    }
    if (circle > kLastNecromancerCircle) {
        prefix = "P";
    }
    return prefix + " - " + name;
}

UserSpellsTab::UserSpellsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent) {
    auto* all = new QVBoxLayout(this);
    LabelUserPages =
        Named(new QLabel(QLatin1String(kWhatFor), this), QStringLiteral("LabelUserPages"));
    LabelUserPages->setWordWrap(true);
    all->addWidget(LabelUserPages);
    auto* pages = new QHBoxLayout;
    all->addLayout(pages, 1);
    for (int page = 0; page < 2; ++page) {
        auto* frame =
            Named(new QGroupBox(QStringLiteral("User Spells - Tab %1").arg(page + 1), this),
                  IndexedName("Frame1", page));
        Frame1[static_cast<std::size_t>(page)] = frame;
        auto* grid = new QGridLayout(frame);
        grid->setColumnStretch(1, 1);
        for (int slot = 0; slot < kListsOfPage; ++slot) {
            const int list = page * kListsOfPage + slot;
            auto* combo =
                Named(new SpellChoice(frame), IndexedName("ComboUserSpell", list),
                      QStringLiteral("Spell %1 of user page %2").arg(slot + 1).arg(page + 1));
            combo->setModel(&m_entries);
            ComboUserSpell[static_cast<std::size_t>(list)] = combo;
            auto* number = new QLabel(QString::number(slot + 1), frame);
            grid->addWidget(number, slot, 0);
            grid->addWidget(combo, slot, 1);
            m_events.On(combo, &QComboBox::activated, "choosing a user spell",
                        [this, list] { ClickUserSpell(list); });
        }
        grid->setRowStretch(kListsOfPage, 1);
        pages->addWidget(frame);
    }
}

void UserSpellsTab::Load() {
    for (i32 row = 0; row <= kLastRow; ++row) {
        m_entries.appendRow(
            new QStandardItem(ToQString(UserSpellEntry(row, m_state.Spells(row).Name))));
    }
}

void UserSpellsTab::Refresh() {
    for (int list = 0; list < kUserLists; ++list) {
        const int row = m_state.UserSpells(list);
        ComboUserSpell[static_cast<std::size_t>(list)]->setCurrentIndex(row <= kLastRow ? row : -1);
    }
}

void UserSpellsTab::ClickUserSpell(int list) {
    m_state.UserSpells(list) =
        ToI16(i32{ComboUserSpell[static_cast<std::size_t>(list)]->currentIndex()});
}

}  // namespace spellwick
