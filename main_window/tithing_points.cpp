#include "main_window/tithing_points.h"

#include "widgets/clicks.h"
#include "widgets/ground.h"
#include "widgets/texts.h"

namespace spellwick {

TithingPoints::TithingPoints(const MainWindowServices& services, QWidget* form)
    : QObject(form), m_companion(services.companion), m_events(services.failures, this) {
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
    m_events.On(TxtTithes, &CounterBox::KeyDropped, "dropping a key",
                [&desktop = services.desktop] { desktop.Beep(); });
    m_events.On(TxtTithes, &QLineEdit::textChanged, "changing the tithing points",
                [this] { m_companion.TypeTithes(ToText(TxtTithes->text())); });
    m_events.On(TxtTithes, &CounterBox::LostFocus, "changing the tithing points",
                [this] { m_companion.LeaveTithes(); });
}

bool TithingPoints::eventFilter(QObject* watched, QEvent* event) {
    const bool begins = watched == ImageAnkh ? IsClick(watched, event)
                                             : watched == LabelTithes &&
                                                   event->type() == QEvent::MouseButtonDblClick;
    if (begins) {
        m_events.Run("changing the tithing points", [&] { m_companion.EditTithes(); });
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void TithingPoints::Show(const Screen& screen, const Changes& changes) {
    if (changes.tithes) {
        TxtTithes->setText(ToQString(screen.tithesEdit));
        LabelTithes->setText(ToQString(screen.tithes));
    }
    if (changes.tithesGround) {
        SetGround(*LabelTithes, screen.tithesGround);
    }
    if (!changes.tithesEditing) {
        return;
    }
    if (screen.tithesEditing) {
        TxtTithes->show();
        TxtTithes->raise();
        TxtTithes->selectAll();
        TxtTithes->setFocus(Qt::OtherFocusReason);
    } else {
        TxtTithes->hide();
    }
}

}  // namespace spellwick
