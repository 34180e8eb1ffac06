// What a screen reader finds in a window, and what it would miss.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <string>
#include <vector>

#include "widgets/arrow_pair.h"

namespace spellwick {

inline std::string SpokenNameOf(QAccessibleInterface& part) {
    // Of a list the name is what its label says.
    for (const auto& [label, relation] : part.relations(QAccessible::Label)) {
        return label->text(QAccessible::Name).toStdString();
    }
    return part.text(QAccessible::Name).toStdString();
}

inline std::string SpokenNameOf(QWidget& control) {
    return SpokenNameOf(*QAccessible::queryAccessibleInterface(&control));
}

inline bool IsSpokenControl(QAccessible::Role role) {
    switch (role) {
        case QAccessible::Button:
        case QAccessible::CheckBox:
        case QAccessible::RadioButton:
        case QAccessible::EditableText:
        case QAccessible::ComboBox:
        case QAccessible::SpinBox:
        case QAccessible::PageTab:
        case QAccessible::Tree:
        case QAccessible::StaticText:
        case QAccessible::Graphic:
            return true;
        default:
            return false;
    }
}

// Whether a control can be used without a mouse: by Tab, or by the keys of what it belongs to.
inline bool HasKeyboardWay(const QWidget& control) {
    const auto* edit = qobject_cast<const QLineEdit*>(&control);
    if ((control.focusPolicy() & Qt::TabFocus) != 0 || (edit != nullptr && edit->isReadOnly())) {
        return true;
    }
    // Enter presses the default button.
    const auto* button = qobject_cast<const QPushButton*>(&control);
    if (button != nullptr && button->isDefault()) {
        return true;
    }
    // An arrow steps what the arrow keys step in the edit beside it; the eight icons are one stop.
    if (qobject_cast<const ArrowPair*>(&control) != nullptr ||
        qobject_cast<const ArrowPair*>(control.parentWidget()) != nullptr) {
        return true;
    }
    for (const QWidget* sibling : control.parentWidget()->findChildren<QWidget*>()) {
        if (sibling->metaObject() == control.metaObject() &&
            control.inherits("spellwick::SpellIcon") &&
            (sibling->focusPolicy() & Qt::TabFocus) != 0) {
            return true;
        }
    }
    return false;
}

// The controls in sight without a name, a role or a keyboard way; `seen` counts all that were
// looked at.
inline void FindSpokenFaults(QAccessibleInterface& part, std::vector<std::string>& faults,
                             int& seen) {
    const auto* control = qobject_cast<QWidget*>(part.object());
    if (control == nullptr || part.state().invisible) {
        return;
    }
    const std::string what =
        control->objectName().toStdString() + " " + control->metaObject()->className();
    if (part.role() == QAccessible::NoRole) {
        faults.push_back("no role: " + what);
    }
    if (IsSpokenControl(part.role())) {
        ++seen;
        if (SpokenNameOf(part).empty()) {
            faults.push_back("no name: " + what);
        }
        const bool isStill =
            part.role() == QAccessible::StaticText || part.role() == QAccessible::Graphic;
        if (!isStill && control->isEnabled() && !HasKeyboardWay(*control)) {
            faults.push_back("no keyboard way: " + what);
        }
    }
    // The parts of a list, an edit in it too, are the toolkit's.
    if (part.role() == QAccessible::ComboBox || part.role() == QAccessible::Tree ||
        part.role() == QAccessible::EditableText) {
        return;
    }
    for (int child = 0; child < part.childCount(); ++child) {
        if (QAccessibleInterface* inner = part.child(child)) {
            FindSpokenFaults(*inner, faults, seen);
        }
    }
}

}  // namespace spellwick
