#include "app/qt_message_boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "text/log.h"
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

struct Answers {
    BoxAnswer byDefault;
    BoxAnswer otherwise;
};

// The default button and, if the box asks, the one that Escape presses.
Answers AddButtons(QMessageBox& dialog, BoxButtons buttons) {
    const auto tryAgainOr = [&dialog](const QString& otherwise) {
        dialog.setDefaultButton(
            dialog.addButton(QStringLiteral("&Try again"), QMessageBox::AcceptRole));
        dialog.setEscapeButton(dialog.addButton(otherwise, QMessageBox::RejectRole));
        return Answers{BoxAnswer::kTryAgain, BoxAnswer::kNo};
    };
    switch (buttons) {
        case BoxButtons::kOk:
            break;
        case BoxButtons::kYesNo:
            dialog.setDefaultButton(dialog.addButton(QMessageBox::Yes));
            dialog.setEscapeButton(dialog.addButton(QMessageBox::No));
            return {BoxAnswer::kYes, BoxAnswer::kNo};
        case BoxButtons::kTryAgainOrClose:
            return tryAgainOr(QStringLiteral("&Close"));
        case BoxButtons::kTryAgainOrEnd:
            return tryAgainOr(QStringLiteral("&End without saving"));
    }
    dialog.setDefaultButton(dialog.addButton(QMessageBox::Ok));
    dialog.setEscapeButton(QMessageBox::Ok);
    return {BoxAnswer::kOk, BoxAnswer::kOk};
}

// Copies without closing the box: what is copied is to be pasted while the box is open, since it
// may go with the program.
void AddCopyButton(QMessageBox& dialog, const std::string& details) {
    QPushButton* copy = dialog.addButton(QStringLiteral("&Copy details"), QMessageBox::ActionRole);
    copy->setObjectName(QStringLiteral("CommandCopyDetails"));
    copy->setToolTip(QStringLiteral("Paste them before you close this box"));
    // The box closes at the click of any button that it knows of.
    QObject::disconnect(copy, &QPushButton::clicked, nullptr, nullptr);
    QObject::connect(copy, &QPushButton::clicked, copy, [copy, details = ToQString(details)] {
        QGuiApplication::clipboard()->setText(details);
        copy->setText(QStringLiteral("&Copied: paste now"));
    });
}

const char* NameOf(BoxAnswer answer) {
    switch (answer) {
        case BoxAnswer::kOk:
            return "OK";
        case BoxAnswer::kYes:
            return "Yes";
        case BoxAnswer::kNo:
            return "No";
        case BoxAnswer::kTryAgain:
            return "Try again";
    }
    return "";
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
    const bool asks = box.buttons == BoxButtons::kYesNo;
    if (m_silent) {
        return asks ? BoxAnswer::kNo : BoxAnswer::kOk;
    }
    QWidget* owner = QApplication::activeModalWidget();
    QWidget* const window = m_owner.data();
    if (owner == nullptr && window != nullptr && window->isVisible()) {
        owner = window;
    }
    QMessageBox dialog(ToQtIcon(box.icon), ToQString(box.title), ToQString(box.text),
                       QMessageBox::NoButton, owner);
    const Answers answers = AddButtons(dialog, box.buttons);
    if (!box.details.empty()) {
        AddCopyButton(dialog, box.details);
    }
    dialog.setObjectName(QStringLiteral("Box"));
    dialog.setTextFormat(Qt::PlainText);
    LogEvent(LogTopic::kRefused, [&] { return "box: " + box.text; });
    dialog.exec();
    QTimer::singleShot(0, qApp, LetGo);
    const BoxAnswer answer =
        dialog.clickedButton() == dialog.defaultButton() ? answers.byDefault : answers.otherwise;
    LogEvent(LogTopic::kRefused, [&] { return std::string("answered: ") + NameOf(answer); });
    return answer;
}

}  // namespace spellwick
