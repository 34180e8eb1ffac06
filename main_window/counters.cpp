#include "main_window/counters.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "widgets/ground.h"
#include "widgets/spoken.h"
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

// Focus events reach the combo box, not its line edit.
void BagList::focusOutEvent(QFocusEvent* event) {
    // Emit before the base class, which would reselect the bag named in the edit.
    if (IsFocusMove(event->reason())) {
        emit LostFocus();
    }
    QComboBox::focusOutEvent(event);
}

void BagList::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event)) {
        event->ignore();  // left to the form
        return;
    }
    QComboBox::keyPressEvent(event);
}

// The wheel turns the open list alone.
void BagList::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

Counters::Counters(const MainWindowServices& services, QWidget* form)
    : QObject(form),
      m_services(services),
      m_companion(services.companion),
      m_events(services.failures, this) {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        MakeCounter(reagent, form);
    }
    ComboReagent = new BagList(form);
    ComboReagent->setObjectName(QStringLiteral("ComboReagent"));
    ComboReagent->setToolTip(QStringLiteral("Select Bag"));
    ComboReagent->setAccessibleName(QStringLiteral("Bag"));
    // Where a list's name is its text, screen readers take the name from its label.
    auto* label = new QLabel(ComboReagent->accessibleName(), form);
    label->setObjectName(QStringLiteral("NameOfComboReagent"));
    label->setBuddy(ComboReagent);
    label->hide();
    m_events.On(ComboReagent->lineEdit(), &QLineEdit::textEdited, "renaming a bag",
                [this] { m_companion.TypeBagName(ToText(ComboReagent->currentText())); });
    m_events.On(ComboReagent, &QComboBox::activated, "choosing a bag",
                [this] { m_companion.ClickBag(ComboReagent->currentIndex()); });
    m_events.On(ComboReagent, &BagList::LostFocus, "renaming a bag",
                [this] { m_companion.LeaveBags(); });
}

void Counters::MakeCounter(i32 reagent, QWidget* form) {
    const QString name = ToQString(FactsOfReagent(reagent).name);

    auto* image = new PicturePlace(form);
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

    m_events.On(box, &QLineEdit::textChanged, "changing a counter",
                [this, reagent, box] { m_companion.TypeCounter(reagent, ToText(box->text())); });
    m_events.On(box, &CounterBox::GotFocus, "entering a counter", [this, reagent, box] {
        m_companion.EnterCounter(reagent);
        box->selectAll();
    });
    m_events.On(box, &CounterBox::LostFocus, "changing a counter",
                [this, reagent] { m_companion.LeaveCounter(reagent); });
    m_events.On(box, &CounterBox::KeyDropped, "dropping a key",
                [this] { m_services.desktop.Beep(); });
    connect(box, &CounterBox::Stepped, arrows, &UpDown::Step);
    m_events.On(arrows, &UpDown::Changed, "changing a counter",
                [this, reagent] { m_companion.StepCounter(reagent); });
}

void Counters::Show(const Screen& screen, const Changes& changes) {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (changes.counters(reagent)) {
            m_reagents(reagent)->setText(ToQString(screen.counters(reagent).text));
        }
    }
    for (i32 reagent = 1; changes.counterGrounds && reagent <= kReagentCount; ++reagent) {
        SetGround(*m_reagents(reagent), screen.counters(reagent).ground);
    }
    if (changes.bags) {
        ShowBags(screen);
    }
}

void Counters::ShowBags(const Screen& screen) {
    const QSignalBlocker quiet(ComboReagent);
    QStringList names;
    for (const std::string& bag : screen.bags) {
        names.append(ToQString(bag));
    }
    ComboReagent->clear();
    ComboReagent->addItems(names);
    ComboReagent->setCurrentIndex(screen.selectedBag);
}

void Counters::Focus(i32 reagent) {
    m_reagents(reagent)->setFocus(Qt::OtherFocusReason);
    m_reagents(reagent)->selectAll();
}

}  // namespace spellwick
