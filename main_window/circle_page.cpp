#include "main_window/circle_page.h"

#include "companion/spell_tip.h"
#include "model/macro_keys.h"
#include "widgets/clicks.h"
#include "widgets/form_font.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

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
    auto* label = new FigureLabel(form);
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(QLatin1String(accessibleName));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

}  // namespace

CirclePage::CirclePage(const MainWindowServices& services, Pictures& pictures, QWidget* form)
    : QObject(form),
      m_companion(services.companion),
      m_events(services.failures, this),
      m_pictures(pictures) {
    MakeSlots(form);
    MakeButtons(form);
    MakeLabels(form);
}

void CirclePage::MakeSlots(QWidget* form) {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        auto* amount = new CellLabel(form);
        amount->setObjectName(IndexedName("LabelAmount", slot));
        amount->setToolTip(QStringLiteral("Amount castable"));
        LabelAmount[static_cast<std::size_t>(slot)] = amount;

        auto* icon = new SpellIcon(form);
        icon->setObjectName(IndexedName("SpellIcon", slot));
        SpellIcons[static_cast<std::size_t>(slot)] = icon;
        m_events.On(icon, &SpellIcon::Pressed, "pressing a spell",
                    [this, slot](i16 button, i16 shift) { PressIcon(slot, button, shift); });
        const auto cast = [this, slot] { m_companion.ClickSlot(slot); };
        m_events.On(icon, &SpellIcon::Clicked, "casting a spell", cast);
        m_events.On(icon, &SpellIcon::DoubleClicked, "casting a spell", cast);
        const auto tell = [this, slot] { m_companion.HoverSlot(slot); };
        m_events.On(icon, &SpellIcon::Hovered, "showing a spell", tell);
        m_events.On(icon, &SpellIcon::Focused, "showing a spell", tell);
        m_events.On(icon, &SpellIcon::StepWanted, "going to a spell",
                    [this, slot](int columns, int rows) { StepFrom(slot, columns, rows); });
        icon->SetSpoken([this, slot] {
            return ToQString(SpokenSpell(m_companion.State(), m_companion.Shown(), slot));
        });
        icon->setFocusPolicy(slot == 0 ? Qt::TabFocus : Qt::NoFocus);

        auto* chance = new CellLabel(form);
        chance->setObjectName(IndexedName("LabelChance", slot));
        chance->setToolTip(QStringLiteral("% chance of success"));
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
        image->setScaledContents(FormScale() > 1.0);
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
        m_events.On(button, &QAbstractButton::clicked, "choosing a page",
                    [this, index] { m_companion.ChoosePage(index); });
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
        m_events.Run("choosing a page", [&] { m_companion.ChoosePage(button); });
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CirclePage::PressIcon(int slot, i16 button, i16 shift) {
    if (const auto row = m_companion.PressSlot(slot, button, shift)) {
        emit InfoWanted(*row);
    }
}

void CirclePage::StepFrom(int slot, int columns, int rows) {
    const int column = slot % m_columns + columns;
    const int target = slot + columns + rows * m_columns;
    if (column >= 0 && column < m_columns && target >= 0 && target < kSlotCount) {
        FocusIcon(target);
    }
}

void CirclePage::FocusIcon(int slot) {
    for (SpellIcon* icon : SpellIcons) {
        icon->setFocusPolicy(Qt::NoFocus);
    }
    SpellIcon* icon = SpellIcons[static_cast<std::size_t>(slot)];
    icon->setFocusPolicy(Qt::TabFocus);
    icon->setFocus(Qt::OtherFocusReason);
}

void CirclePage::Show(const Screen& screen, const Changes& changes) {
    if (changes.page) {
        for (int index = 0; index < kPageButtonCount; ++index) {
            CheckCircle[static_cast<std::size_t>(index)]->setChecked(index == screen.pressedPage);
        }
    }
    if (changes.icons) {
        for (std::size_t slot = 0; slot < screen.spellSlots.size(); ++slot) {
            ShowIcon(slot, screen.spellSlots[slot]);
        }
    }
    if (changes.spellLines) {
        ShowSpellLines(screen);
    }
    if (changes.currentMana) {
        LabelCurrentMana->setText(ToQString(screen.currentMana));
    }
}

void CirclePage::ShowFigures(const Screen& screen, const Changes& changes) {
    for (std::size_t slot = 0; changes.chances && slot < screen.spellSlots.size(); ++slot) {
        LabelChance[slot]->setText(ToQString(screen.spellSlots[slot].chance));
    }
    for (std::size_t slot = 0; changes.amounts && slot < screen.spellSlots.size(); ++slot) {
        LabelAmount[slot]->setText(ToQString(screen.spellSlots[slot].amount));
        LabelAmount[slot]->SetCellGround(screen.spellSlots[slot].amountGround);
    }
}

void CirclePage::ShowIcon(std::size_t slot, const SlotScreen& shown) {
    const i32 icon = shown.row <= kLastPagedRow ? shown.row : kEmptyTileRow;
    const PictureStrip& strip = m_pictures.clip[shown.inBook ? 0 : 1].StripOf(icon);
    SpellIcons[slot]->SetPicture(strip.Strip(), strip.Cell(icon % kSlotCount));
    const std::string& name = m_companion.State().Spells(shown.row).Name;
    const QString spell = name.empty() ? QStringLiteral("No spell") : ToQString(name);
    SpellIcons[slot]->setAccessibleName(spell);
    LabelAmount[slot]->setAccessibleName(QStringLiteral("Amount castable of ") + spell);
    LabelChance[slot]->setAccessibleName(QStringLiteral("Chance in percent of ") + spell);
    SpellIcons[slot]->SetKey(m_companion.State().KeysOnIcons
                                 ? ToQString(ShownMacroKey(m_companion.State(), shown.row + 1))
                                 : QString());
    LabelChance[slot]->SetCellGround(shown.chanceGround);
}

void CirclePage::ShowSpellLines(const Screen& screen) {
    LabelMana->setText(ToQString(screen.mana));
    LabelCost->setText(ToQString(screen.cost));
    LabelWords->setText(ToQString(screen.words));
    LabelName->setText(ToQString(screen.name));
}

}  // namespace spellwick
