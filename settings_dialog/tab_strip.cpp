#include "settings_dialog/tab_strip.h"

#include <QAccessibleWidget>
#include <algorithm>

namespace spellwick {

namespace {

// A widget whose parts are not just its children.
class PartsInterface : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return static_cast<int>(Parts().size()); }
    QAccessibleInterface* child(int index) const override {
        const std::vector<QWidget*> parts = Parts();
        return index >= 0 && index < static_cast<int>(parts.size())
                   ? QAccessible::queryAccessibleInterface(parts[static_cast<std::size_t>(index)])
                   : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const std::vector<QWidget*> parts = Parts();
        const auto found = std::ranges::find(parts, child == nullptr ? nullptr : child->object());
        return found == parts.end() ? -1 : static_cast<int>(found - parts.begin());
    }

  protected:
    virtual std::vector<QWidget*> Parts() const = 0;
};

class StripInterface : public PartsInterface {
  public:
    explicit StripInterface(TabStrip& strip)
        : PartsInterface(&strip, QAccessible::PageTabList), m_strip(strip) {}

  protected:
    std::vector<QWidget*> Parts() const override {
        return {m_strip.Tabs().begin(), m_strip.Tabs().end()};
    }

  private:
    const TabStrip& m_strip;
};

class DialogInterface : public PartsInterface {
  public:
    DialogInterface(QWidget& window, const TabbedDialog& dialog)
        : PartsInterface(&window, QAccessible::Dialog), m_dialog(dialog) {}

  protected:
    std::vector<QWidget*> Parts() const override {
        std::vector<QWidget*> parts;
        const TabStrip* strip = m_dialog.Strip();
        for (QObject* child : widget()->children()) {
            auto* part = qobject_cast<QWidget*>(child);
            if (part != nullptr && !part->isWindow() &&
                (strip == nullptr || std::ranges::count(strip->Tabs(), part) == 0)) {
                parts.push_back(part);
            }
        }
        return parts;
    }

  private:
    const TabbedDialog& m_dialog;
};

class TabInterface : public QAccessibleWidget {
  public:
    TabInterface(PageButton& tab, const TabStrip& strip)
        : QAccessibleWidget(&tab, QAccessible::PageTab), m_tab(tab), m_strip(strip) {}

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(const_cast<TabStrip*>(&m_strip));
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_tab.isChecked();
        state.selectable = true;
        state.selected = m_tab.isChecked();
        state.pressed = m_tab.isDown();
        return state;
    }
    QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) {
            QAccessibleWidget::doAction(action);
        } else if (m_tab.isEnabled()) {
            m_tab.Press();
        }
    }

  private:
    PageButton& m_tab;
    const TabStrip& m_strip;
};

QAccessibleInterface* MakeForStrip(const QString& /*className*/, QObject* object) {
    if (auto* strip = qobject_cast<TabStrip*>(object)) {
        return new StripInterface(*strip);
    }
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    if (const auto* dialog = dynamic_cast<const TabbedDialog*>(widget)) {
        return new DialogInterface(*widget, *dialog);
    }
    auto* tab = qobject_cast<PageButton*>(widget);
    const auto* dialog = dynamic_cast<const TabbedDialog*>(widget->window());
    const TabStrip* strip = tab == nullptr || dialog == nullptr ? nullptr : dialog->Strip();
    return strip != nullptr && std::ranges::count(strip->Tabs(), tab) != 0
               ? new TabInterface(*tab, *strip)
               : nullptr;
}

}  // namespace

TabStrip::TabStrip(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("TabStrip"));
    setAccessibleName(QStringLiteral("Tabs"));
}

void InstallTabStrip() {
    QAccessible::installFactory(MakeForStrip);
}

}  // namespace spellwick
