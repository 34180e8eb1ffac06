#include "main_window/tithes.h"

#include "model/castable_amount.h"
#include "model/purse_entries.h"
#include "text/number_forms.h"
#include "widgets/clicks.h"
#include "widgets/ground.h"
#include "widgets/texts.h"

namespace spellwick {

Tithes::Tithes(const MainWindowServices& services, QWidget* form)
    : QObject(form), m_services(services), m_state(services.state) {
    const QString tip = QStringLiteral("Tithe points, used for Paladin abilities");

    ImageAnkh = new QLabel(form);
    ImageAnkh->setObjectName(QStringLiteral("ImageAnkh"));
    ImageAnkh->setToolTip(tip);
    ImageAnkh->setAccessibleName(QStringLiteral("Change the tithing points"));
    ImageAnkh->installEventFilter(this);

    LabelTithes = new QLabel(form);
    LabelTithes->setObjectName(QStringLiteral("LabelTithes"));
    LabelTithes->setToolTip(tip);
    LabelTithes->setAccessibleName(QStringLiteral("Tithing points"));
    LabelTithes->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    LabelTithes->setAutoFillBackground(true);
    LabelTithes->installEventFilter(this);

    TxtTithes = new CounterBox(form);
    TxtTithes->setObjectName(QStringLiteral("TxtTithes"));
    TxtTithes->setAccessibleName(QStringLiteral("Tithing points"));
    TxtTithes->hide();
    connect(TxtTithes, &CounterBox::KeyDropped, this, [this] { m_services.desktop.Beep(); });
    connect(TxtTithes, &CounterBox::LostFocus, this, [this] {
        Guard(m_services.failures, "changing the tithing points", [&] {
            if (IsEditing()) {
                LostFocus();
            }
        });
    });
}

bool Tithes::eventFilter(QObject* watched, QEvent* event) {
    const bool begins = watched == ImageAnkh ? IsClick(watched, event)
                                             : watched == LabelTithes &&
                                                   event->type() == QEvent::MouseButtonDblClick;
    if (begins) {
        Guard(m_services.failures, "changing the tithing points", [&] { BeginEdit(); });
        return true;
    }
    return QObject::eventFilter(watched, event);
}

bool Tithes::IsEditing() const {
    return !TxtTithes->isHidden();
}

void Tithes::BeginEdit() {
    TxtTithes->setText(LabelTithes->text());
    TxtTithes->show();
    TxtTithes->raise();
    TxtTithes->selectAll();
    TxtTithes->setFocus(Qt::OtherFocusReason);
}

void Tithes::LostFocus() {
    m_state.CurrentTithing = CommitTithesEntry(ToText(TxtTithes->text()), m_state.CurrentTithing);
    ShowEverywhere(PlainText(m_state.CurrentTithing));
    TxtTithes->hide();
    OnAmountsChanged();
}

void Tithes::Highlight(const SpellRecord& spell) {
    SetGround(*LabelTithes, TithesHighlight(spell.Reagents(kTithes), ToText(LabelTithes->text()),
                                            m_state.ColorWarn));
}

void Tithes::ShowOnLabel(const std::string& number) {
    LabelTithes->setText(ToQString(number));
}

void Tithes::ShowEverywhere(const std::string& number) {
    TxtTithes->setText(ToQString(number));
    ShowOnLabel(number);
}

}  // namespace spellwick
