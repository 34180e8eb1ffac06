#include "app/qt_message_boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "widgets/texts.h"

namespace spellwick {

namespace {

QMessageBox::Icon ToQtIcon(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::kNone:
            return QMessageBox::NoIcon;
        case BoxIcon::kCritical:
            return QMessageBox::Critical;
        case BoxIcon::kQuestion:
            return QMessageBox::Question;
        case BoxIcon::kExclamation:
            return QMessageBox::Warning;
        case BoxIcon::kInformation:
            return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

// A mouse press that takes the focus from an edit can open a message box, which then gets the
// release; the press itself arrives after the box and would leave a button down or a list open.
void LetGo() {
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    if (QWidget* list = QApplication::activePopupWidget()) {
        list->close();
    }
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button != nullptr && button->isDown()) {
            button->setDown(false);
        }
    }
}

}  // namespace

BoxAnswer QtMessageBoxes::Show(const Box& box) {
    QWidget* owner = QApplication::activeModalWidget();
    QWidget* const window = m_owner.data();
    if (owner == nullptr && window != nullptr && window->isVisible()) {
        owner = window;
    }
    const bool asks = box.buttons == BoxButtons::kYesNo;
    QMessageBox dialog(ToQtIcon(box.icon), ToQString(box.title), ToQString(box.text),
                       asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, owner);
    dialog.setObjectName(QStringLiteral("Box"));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setDefaultButton(asks ? QMessageBox::Yes : QMessageBox::Ok);
    dialog.setEscapeButton(asks ? QMessageBox::No : QMessageBox::Ok);
    const int answer = dialog.exec();
    QTimer::singleShot(0, qApp, LetGo);
    if (!asks) {
        return BoxAnswer::kOk;
    }
    return answer == QMessageBox::Yes ? BoxAnswer::kYes : BoxAnswer::kNo;
}

}  // namespace spellwick
