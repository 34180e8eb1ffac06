#include "widgets/spoken.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace spellwick {

namespace {

class SpokenInterface : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    SpokenInterface(QWidget* control, Spoken& spoken)
        : QAccessibleWidget(control, spoken.SpokenRole()), m_spoken(spoken) {}

    QAccessible::Role role() const override { return m_spoken.SpokenRole(); }
    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) {
            return m_spoken.SpokenName();
        }
        if (kind == QAccessible::Value) {
            return m_spoken.SpokenNumber().toString();
        }
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget())) {
            state.checkable = button->isCheckable();
            state.checked = button->isChecked();
            state.selectable = button->isCheckable();
            state.selected = button->isChecked();
            state.pressed = button->isDown();
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType kind) override {
        if (kind == QAccessible::ValueInterface) {
            return m_spoken.SpokenNumber().isValid() ? static_cast<QAccessibleValueInterface*>(this)
                                                     : nullptr;
        }
        return QAccessibleWidget::interface_cast(kind);
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_spoken.CanPress()) {
            names.prepend(pressAction());
        }
        return names;
    }
    void doAction(const QString& action) override {
        if (action == pressAction() && m_spoken.CanPress() && widget()->isEnabled()) {
            m_spoken.Press();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }

    // QAccessibleValueInterface
    QVariant currentValue() const override { return m_spoken.SpokenNumber(); }
    void setCurrentValue(const QVariant& value) override {
        m_spoken.SetSpokenNumber(value.toInt());
    }
    QVariant maximumValue() const override { return m_spoken.MostSpoken(); }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }

  private:
    Spoken& m_spoken;
};

QAccessibleInterface* MakeSpoken(const QString& /*className*/, QObject* object) {
    auto* spoken = dynamic_cast<Spoken*>(object);
    return spoken != nullptr && object->isWidgetType()
               ? new SpokenInterface(static_cast<QWidget*>(object), *spoken)
               : nullptr;
}

}  // namespace

void InstallSpoken() {
    QAccessible::installFactory(MakeSpoken);
}

QString FigureLabel::SpokenName() const {
    const QString figure = text().trimmed();
    return figure.isEmpty() ? accessibleName()
                            : QStringLiteral("%1: %2").arg(accessibleName(), figure);
}

}  // namespace spellwick
