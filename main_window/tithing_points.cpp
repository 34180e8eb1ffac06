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

    auto* ankh = new AnkhPlace(form);
    m_events.On(ankh, &AnkhPlace::Pressed, "changing the tithing points",
                [this] { m_companion.EditTithes(); });
    ImageAnkh = ankh;
    ImageAnkh->setObjectName(QStringLiteral("ImageAnkh"));
    ImageAnkh->setToolTip(tip);
    ImageAnkh->setAccessibleName(QStringLiteral("Change the tithing points"));
    ImageAnkh->installEventFilter(this);

    LabelTithes = new FigureLabel(form);
    LabelTithes->setObjectName(QStringLiteral("LabelTithes"));
    LabelTithes->setToolTip(tip);
    LabelTithes->setAccessibleName(QStringLiteral("Tithing points"));
    LabelTithes->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    LabelTithes->setAutoFillBackground(true);
    LabelTithes->installEventFilter(this);

    TxtTithes = new CounterBox(form);
    TxtTithes->setObjectName(QStringLiteral("TxtTithes"));
    TxtTithes->setAccessibleName(QStringLiteral("Tithing points"));
    TxtTithes->SetNumberFont(form->font());
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

// Six digits are wider than the label in the font of the window.
void TithingPoints::FitLabel() {
    constexpr int kSmallestPixels = 8;
    QFont fitting = LabelTithes->window()->font();
    while (fitting.pixelSize() > kSmallestPixels &&
           QFontMetrics(fitting).horizontalAdvance(LabelTithes->text()) > LabelTithes->width()) {
        fitting.setPixelSize(fitting.pixelSize() - 1);
    }
    if (fitting != LabelTithes->font()) {
        LabelTithes->setFont(fitting);
    }
}

void TithingPoints::Show(const Screen& screen, const Changes& changes) {
    if (changes.tithes) {
        TxtTithes->setText(ToQString(screen.tithesEdit));
        LabelTithes->setText(ToQString(screen.tithes));
        FitLabel();
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
