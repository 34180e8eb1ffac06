#include "main_window/tithing_points.h"

#include <QKeyEvent>
#include <QPainter>

#include "widgets/clicks.h"
#include "widgets/ground.h"
#include "widgets/texts.h"

namespace spellwick {

TithingPoints::TithingPoints(const MainWindowServices& services, QWidget* form)
    : QObject(form), m_companion(services.companion), m_events(services.failures, this) {
    const QString tip = QStringLiteral("Tithe points, used for Paladin abilities");

    ImageAnkh = new AnkhPlace(form);
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

void AnkhPlace::paintEvent(QPaintEvent* /*event*/) {
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2.0));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

bool TithingPoints::eventFilter(QObject* watched, QEvent* event) {
    const auto isKey = [event] {
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        const auto& key = *static_cast<QKeyEvent*>(event);
        return key.key() == Qt::Key_Space || IsEnter(key);
    };
    const bool begins = watched == ImageAnkh ? IsClick(watched, event) || isKey()
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
