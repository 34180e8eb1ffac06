// The keys of the main window, its tooltips, and the menu of its ground.
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QToolTip>
#include <QWindow>
#include <algorithm>
#include <optional>

#include "companion/spell_tip.h"
#include "main_window/control_tips.h"
#include "main_window/form_main.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

// The command of a key. An edit has taken its own keys before they come here.
std::optional<int> CommandOf(const QKeyEvent& key) {
    if (key.isAutoRepeat()) {
        return std::nullopt;
    }
    if (key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier) {
        return kHelpCommand;
    }
    if (key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_Comma) {
        return kSettingsCommand;
    }
    if (key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_Z) {
        return kUndoCommand;
    }
    return std::nullopt;
}

}  // namespace

void FormMain::Undo() {
    m_companion.Undo();
    m_undoNote.Show(ToQString(GivenBack(m_state, m_companion.TheLastCast().UndoAmounts)));
}

QString FormMain::TipOf(const QWidget& control) {
    if (!control.toolTip().isEmpty()) {
        return control.toolTip();
    }
    const auto icon = std::ranges::find(m_page.SpellIcons, &control);
    if (icon == m_page.SpellIcons.end()) {
        return ControlTip(control.objectName());
    }
    const auto slot = static_cast<i32>(icon - m_page.SpellIcons.begin());
    return ToQString(SpellTip(m_state, m_companion.Shown(), slot));
}

void FormMain::ShowTip(QWidget& control, QPoint place) {
    const QString tip = TipOf(control);
    if (tip.isEmpty() || QGuiApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    QToolTip::showText(place, tip, &control, control.rect());
    // It can lie over the next spell, whose click it must not swallow.
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        const auto* label = qobject_cast<const QLabel*>(window);
        if (label != nullptr && label->windowType() == Qt::ToolTip &&
            label->text() == QToolTip::text() && label->windowHandle() != nullptr) {
            label->windowHandle()->setFlag(Qt::WindowTransparentForInput);
        }
    }
}

void FormMain::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event)) {
        m_events.Run("committing an entry", [&] { m_companion.CommitByEnter(); });
        return;
    }
    if (const auto command = CommandOf(*event)) {
        m_events.Run("pressing a key of a command", [&] { ClickCommand(*command); });
        return;
    }
    QWidget::keyPressEvent(event);
}

// On the ground alone: a window that is larger than the screen may hide the way to the settings.
void FormMain::contextMenuEvent(QContextMenuEvent* event) {
    if (childAt(event->pos()) != nullptr) {
        return;
    }
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(QStringLiteral("MenuArrangement"));
    const bool vertical = m_state.DisplayVertical;
    QAction* other = menu->addAction(vertical ? QStringLiteral("Display horizontally")
                                              : QStringLiteral("Display vertically"));
    m_events.On(other, &QAction::triggered, "changing the arrangement",
                [this, vertical] { m_companion.ChooseArrangement(!vertical); });
    menu->popup(event->globalPos());
}

}  // namespace spellwick
