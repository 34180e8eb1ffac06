#include "main_window/circle_page.h"

#include "model/chances.h"
#include "text/number_forms.h"
#include "widgets/clicks.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr i16 kRightButton = 2;

// Row 96 belongs to no page and has no icon; a user page that holds it shows an empty tile.
constexpr i32 kEmptyTileRow = 94;

constexpr std::array<const char*, kPageButtonCount> kPageCaptions{
    "U1", "U2", "1", "2", "3", "4", "5", "6", "7", "8", "1", "2", "1", "2"};

QString PageName(int button) {
    if (button < kFirstCircleButton) {
        return QStringLiteral("User page %1").arg(button + 1);
    }
    if (button < kNecromancerButton) {
        return QStringLiteral("Magery circle %1").arg(button - kFirstCircleButton + 1);
    }
    if (button < kPaladinButton) {
        return QStringLiteral("Necromancer page %1").arg(button - kNecromancerButton + 1);
    }
    return QStringLiteral("Paladin page %1").arg(button - kPaladinButton + 1);
}

QLabel* MakeTextLabel(QWidget* form, const char* name, const char* accessibleName) {
    auto* label = new QLabel(form);
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(QLatin1String(accessibleName));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

}  // namespace

CirclePage::CirclePage(const MainWindowServices& services, Pictures& pictures, QWidget* form)
    : QObject(form), m_services(services), m_state(services.state), m_pictures(pictures) {
    MakeSlots(form);
    MakeButtons(form);
    MakeLabels(form);
}

void CirclePage::MakeSlots(QWidget* form) {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        auto* amount = new CellLabel(form);
        amount->setObjectName(IndexedName("LabelAmount", slot));
        amount->setToolTip(QStringLiteral("Amount castable"));
        amount->setAccessibleName(QStringLiteral("Amount castable of spell %1").arg(slot + 1));
        LabelAmount[static_cast<std::size_t>(slot)] = amount;

        auto* icon = new SpellIcon(form);
        icon->setObjectName(IndexedName("SpellIcon", slot));
        SpellIcons[static_cast<std::size_t>(slot)] = icon;
        connect(icon, &SpellIcon::Pressed, this, [this, slot](i16 button, i16 shift) {
            Guard(m_services.failures, "pressing a spell", [&] { PressIcon(slot, button, shift); });
        });
        const auto cast = [this, slot] {
            Guard(m_services.failures, "casting a spell", [&] {
                if (m_state.LastMouseButton != kRightButton) {
                    OnCastWanted(slot);
                }
            });
        };
        connect(icon, &SpellIcon::Clicked, this, cast);
        connect(icon, &SpellIcon::DoubleClicked, this, cast);
        connect(icon, &SpellIcon::Hovered, this, [this, slot] {
            Guard(m_services.failures, "showing a spell", [&] { Hover(slot); });
        });

        auto* chance = new CellLabel(form);
        chance->setObjectName(IndexedName("LabelChance", slot));
        chance->setToolTip(QStringLiteral("% chance of success"));
        chance->setAccessibleName(QStringLiteral("Chance of success of spell %1").arg(slot + 1));
        LabelChance[static_cast<std::size_t>(slot)] = chance;
    }
}

void CirclePage::MakeButtons(QWidget* form) {
    for (int picture = 0; picture < 2; ++picture) {
        auto* image = new QLabel(form);
        image->setObjectName(IndexedName("Image1", picture));
        image->setAccessibleName(picture == 0 ? QStringLiteral("Necromancer spells")
                                              : QStringLiteral("Paladin abilities"));
        image->setPixmap(m_pictures.page[picture]);
        image->installEventFilter(this);
        Image1[static_cast<std::size_t>(picture)] = image;
    }
    for (int index = 0; index < kPageButtonCount; ++index) {
        auto* button = new PageButton(form);
        button->setObjectName(IndexedName("CheckCircle", index));
        button->setText(QLatin1String(kPageCaptions[static_cast<std::size_t>(index)]));
        button->setAccessibleName(PageName(index));
        button->SetOverPicture(index >= kNecromancerButton);
        CheckCircle[static_cast<std::size_t>(index)] = button;
        connect(button, &QAbstractButton::clicked, this, [this, index] {
            Guard(m_services.failures, "choosing a page", [&] { ClickCheckCircle(index); });
        });
    }
}

void CirclePage::MakeLabels(QWidget* form) {
    LabelName = MakeTextLabel(form, "LabelName", "Spell name");
    LabelWords = MakeTextLabel(form, "LabelWords", "Words of power");
    LabelMana = MakeTextLabel(form, "LabelMana", "Mana of the spell");
    LabelCost = MakeTextLabel(form, "LabelCost", "Cost of the spell");
    LabelCurrentMana = MakeTextLabel(form, "LabelCurrentMana", "Current mana");
    // On one line with the tithing points, whose ground shows.
    LabelMana->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    LabelCost->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    LabelCurrentMana->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    LabelName->setWordWrap(true);
    LabelWords->setWordWrap(true);
}

bool CirclePage::eventFilter(QObject* watched, QEvent* event) {
    if (IsClick(watched, event)) {
        const int button = watched == Image1[0] ? kNecromancerButton : kPaladinButton;
        Guard(m_services.failures, "choosing a page", [&] { ClickCheckCircle(button); });
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CirclePage::InitCircleButtons() {
    m_state.Updating = true;
    CheckCircle[kFirstCircleButton]->setChecked(true);
    m_state.Updating = false;
}

void CirclePage::ClearSpellLabels() {
    for (QLabel* label : {LabelMana, LabelCost, LabelName, LabelWords, LabelCurrentMana}) {
        label->clear();
    }
}

i32 CirclePage::PressedButton() const {
    for (int index = 0; index < kPageButtonCount; ++index) {
        if (CheckCircle[static_cast<std::size_t>(index)]->isChecked()) {
            return index;
        }
    }
    return -1;
}

i32 CirclePage::SpellAtSlot(i32 slot) const {
    return spellwick::SpellAtSlot(PressedButton(), m_state.UserSpells, slot);
}

void CirclePage::ClickCheckCircle(int index) {
    if (m_state.Updating) {
        return;
    }
    m_state.Updating = true;
    for (PageButton* button : CheckCircle) {
        button->setChecked(false);
    }
    CheckCircle[static_cast<std::size_t>(index)]->setChecked(true);
    m_state.Updating = false;
    UpdatePage();
}

void CirclePage::UpdatePage() {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        const i32 row = SpellAtSlot(slot);
        const SpellRecord& spell = m_state.Spells(row);
        const std::size_t at = static_cast<std::size_t>(slot);
        const i32 icon = row <= kLastPagedRow ? row : kEmptyTileRow;
        const PictureStrip& strip =
            m_pictures.clip[m_state.Spellbook(row) == 0 ? 0 : 1].StripOf(icon);
        SpellIcons[at]->SetPicture(strip.Strip(), strip.Cell(icon % kSlotCount));
        SpellIcons[at]->setAccessibleName(spell.Name.empty() ? QStringLiteral("No spell")
                                                             : ToQString(spell.Name));
        LabelChance[at]->SetCellGround(ChanceGround(spell));
    }
    UpdateChances();
    UpdateAmounts();
}

void CirclePage::UpdateChances() {
    CalculateChances(m_state);
    for (int slot = 0; slot < kSlotCount; ++slot) {
        LabelChance[static_cast<std::size_t>(slot)]->setText(
            ToQString(PlainText(i32{m_state.Chance(SpellAtSlot(slot))})));
    }
    m_services.settings.UpdateChance();
}

void CirclePage::UpdateAmounts() {
    const CounterTexts counters = m_purse->Counters();
    const i32 pressed = PressedButton();
    for (int slot = 0; slot < kSlotCount; ++slot) {
        const i16 amount = CastableAmount(m_state, pressed, slot, counters);
        CellLabel& label = *LabelAmount[static_cast<std::size_t>(slot)];
        label.setText(ToQString(StandardText(i32{amount})));
        label.SetCellGround(AmountColour(amount, m_state.RegYellow, m_state.ColorWarn));
    }
}

void CirclePage::PressIcon(int slot, i16 button, i16 shift) {
    m_state.LastMouseButton = button;
    m_state.LastMouseShift = shift;
    if (button == kRightButton) {
        m_services.spellInfo.DisplayInfo(SpellAtSlot(slot));
    }
}

void CirclePage::Hover(int slot) {
    const SpellRecord& spell = m_state.Spells(SpellAtSlot(slot));
    m_purse->Highlight(spell);
    LabelMana->setText(ToQString(PlainText(i32{spell.Mana})) + QStringLiteral(" mana"));
    LabelCost->setText(ToQString(PlainText(i32{spell.Cost})) + QStringLiteral(" gold"));
    LabelWords->setText(ToQString(spell.Words));
    LabelName->setText(ToQString(spell.Name));
    m_purse->CommitTithes();
}

void CirclePage::ShowCurrentMana() {
    LabelCurrentMana->setText(
        QStringLiteral("(%1)").arg(ToQString(PlainText(i32{m_state.CurrentMana}))));
}

}  // namespace spellwick
