#include "main_window/purse.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "model/cast_rules.h"
#include "model/purse_entries.h"
#include "text/number_forms.h"
#include "widgets/ground.h"
#include "widgets/texts.h"

namespace spellwick {

BagList::BagList(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    // A completion would rename a bag to another bag's name while the user types.
    setCompleter(nullptr);
    setMaxVisibleItems(kBagCount);
    setMinimumContentsLength(0);
}

// The list has the focus for its text; the text only hears of it.
void BagList::focusOutEvent(QFocusEvent* event) {
    // Before the list itself, which would turn to the bag whose name stands there.
    if (IsFocusMove(event->reason())) {
        emit LostFocus();
    }
    QComboBox::focusOutEvent(event);
}

void BagList::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event)) {
        event->ignore();  // the form's business
        return;
    }
    QComboBox::keyPressEvent(event);
}

// The wheel changes the bag only where the user is at work, not when it passes by.
void BagList::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

Purse::Purse(const MainWindowServices& services, QWidget* form)
    : QObject(form), m_services(services), m_state(services.state) {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        MakeCounter(reagent, form);
    }
    ComboReagent = new BagList(form);
    ComboReagent->setObjectName(QStringLiteral("ComboReagent"));
    ComboReagent->setToolTip(QStringLiteral("Select Bag"));
    ComboReagent->setAccessibleName(QStringLiteral("Bag"));
    connect(ComboReagent->lineEdit(), &QLineEdit::textEdited, this,
            [this] { Guard(m_services.failures, "renaming a bag", [&] { BagTextEdited(); }); });
    connect(ComboReagent, &QComboBox::activated, this,
            [this] { Guard(m_services.failures, "choosing a bag", [&] { BagClicked(); }); });
    connect(ComboReagent, &BagList::LostFocus, this,
            [this] { Guard(m_services.failures, "renaming a bag", [&] { BagLostFocus(); }); });
}

void Purse::MakeCounter(i32 reagent, QWidget* form) {
    const QString name = ToQString(FactsOfReagent(reagent).name);

    auto* image = new QWidget(form);
    image->setObjectName(IndexedName("imgReg", reagent - 1));
    image->setAccessibleName(name);
    image->setToolTip(name);
    m_imgReg[static_cast<std::size_t>(reagent - 1)] = image;

    auto* box = new CounterBox(form);
    box->setObjectName(IndexedName("Reagent", reagent));
    box->setAccessibleName(name);
    m_reagents(reagent) = box;

    auto* arrows = new UpDown(*box, form);
    arrows->setObjectName(IndexedName("UpDown1", reagent));
    arrows->setAccessibleName(QStringLiteral("%1 up and down").arg(name));
    m_upDowns(reagent) = arrows;

    connect(box, &CounterBox::GotFocus, this, [this, reagent] {
        Guard(m_services.failures, "entering a counter", [&] { ReagentGotFocus(reagent); });
    });
    connect(box, &CounterBox::LostFocus, this, [this, reagent] {
        Guard(m_services.failures, "changing a counter", [&] { ReagentLostFocus(reagent); });
    });
    connect(box, &CounterBox::KeyDropped, this, [this] { m_services.desktop.Beep(); });
    connect(box, &CounterBox::Stepped, arrows, &UpDown::Step);
    connect(arrows, &UpDown::Changed, this, [this, reagent] {
        Guard(m_services.failures, "changing a counter", [&] {
            StoreCounter(reagent);
            OnAmountsChanged();
        });
    });
}

CounterTexts Purse::Counters() const {
    CounterTexts texts;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        texts(reagent) = CounterText(reagent);
    }
    return texts;
}

std::string Purse::CounterText(i32 reagent) const {
    return ToText(m_reagents(reagent)->text());
}

void Purse::SetCounterText(i32 reagent, const std::string& text) {
    m_reagents(reagent)->setText(ToQString(text));
}

void Purse::StoreCounter(i32 reagent) {
    m_state.ReagentStock(reagent, m_state.CurrentReagentBag) = StockOfCounter(CounterText(reagent));
}

void Purse::Highlight(const SpellRecord& spell) {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        SetGround(*m_reagents(reagent), CounterHighlight(spell.Reagents(reagent),
                                                         CounterText(reagent), m_state.ColorWarn));
    }
}

void Purse::ClearHighlight() {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        SetGround(*m_reagents(reagent), kWindowBackground);
    }
}

void Purse::ShowBagNames() {
    const QSignalBlocker quiet(ComboReagent);
    ComboReagent->clear();
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        ComboReagent->addItem(ToQString(m_state.BagName(bag)));
    }
}

void Purse::SelectBag() {
    const bool updating = m_state.Updating;
    m_state.Updating = true;
    {
        const QSignalBlocker quiet(ComboReagent);
        const i32 bag = m_state.CurrentReagentBag;
        ComboReagent->setCurrentIndex(bag >= 0 && bag < kBagCount ? bag : -1);
    }
    m_state.Updating = updating;
}

void Purse::ShowStock() {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        ShowCounter(reagent);
    }
}

void Purse::ShowCounter(i32 reagent) {
    SetCounterText(reagent,
                   PlainText(i32{m_state.ReagentStock(reagent, m_state.CurrentReagentBag)}));
}

void Purse::CommitPending() {
    if (m_focusedReagent > 0 && !m_reagents(m_focusedReagent)->hasFocus()) {
        ReagentLostFocus(m_focusedReagent);
    }
    if (m_bagNameChanged && !ComboReagent->hasFocus()) {
        BagLostFocus();
    }
}

void Purse::ReagentGotFocus(i32 reagent) {
    m_focusedReagent = reagent;
    m_reagents(reagent)->selectAll();
}

void Purse::ReagentLostFocus(i32 reagent) {
    m_focusedReagent = 0;
    const CounterEntry entry = CommitCounterEntry(
        CounterText(reagent), m_state.ReagentStock(reagent, m_state.CurrentReagentBag));
    if (entry.refused) {
        m_services.boxes.Show({.text = std::string(kNotThatManyReagents)});
    } else {
        m_state.ReagentStock(reagent, m_state.CurrentReagentBag) = entry.stock;
    }
    // Read afresh: the player may have changed while the box stood.
    if (entry.rewrites) {
        ShowCounter(reagent);
    }
    OnAmountsChanged();
}

void Purse::BagTextEdited() {
    m_state.BagName(m_state.CurrentReagentBag) = ToText(ComboReagent->currentText());
    m_bagNameChanged = true;
}

void Purse::RewriteBagEntry(int selected) {
    m_state.Updating = true;
    {
        const QSignalBlocker quiet(ComboReagent);
        const i32 bag = m_state.CurrentReagentBag;
        ComboReagent->removeItem(bag);
        ComboReagent->insertItem(bag, ToQString(m_state.BagName(bag)));
        ComboReagent->setCurrentIndex(selected);
    }
    m_state.Updating = false;
    m_bagNameChanged = false;
}

void Purse::BagClicked() {
    m_clickedBag = ComboReagent->currentIndex();
    if (m_state.Updating) {
        return;
    }
    if (m_bagNameChanged) {
        RewriteBagEntry(m_clickedBag);
    }
    if (ComboReagent->currentIndex() > -1) {
        m_state.CurrentReagentBag = ToI16(i32{ComboReagent->currentIndex()});
        ShowStock();
    }
    OnAmountsChanged();
}

void Purse::BagLostFocus() {
    if (m_state.CurrentReagentBag >= 0 && m_bagNameChanged) {
        RewriteBagEntry(m_state.CurrentReagentBag);
    }
}

}  // namespace spellwick
