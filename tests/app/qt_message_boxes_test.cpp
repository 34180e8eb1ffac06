// The toolkit's real message boxes: their texts, and how they are answered.
#include "app/qt_message_boxes.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <array>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_log.h"
#include "widgets/texts.h"

namespace spellwick {
namespace {

class QtMessageBoxesTest : public testing::Test {
  protected:
    // Shows a message box and runs something once it is open.
    BoxAnswer Show(const Box& box, const std::function<void(QMessageBox&)>& whileStanding) {
        bool stood = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(shown, nullptr);
            stood = true;
            whileStanding(*shown);
        });
        const BoxAnswer answer = m_boxes.Show(box);
        EXPECT_TRUE(stood);
        return answer;
    }

    QtMessageBoxes m_boxes;
};

TEST_F(QtMessageBoxesTest, Silent_EachBoxIsAnsweredAsIfClosed) {
    m_boxes.SetSilent(true);
    EXPECT_EQ(m_boxes.Show({.text = "Full"}), BoxAnswer::kOk);
    EXPECT_EQ(m_boxes.Show({.text = "Add it ?", .buttons = BoxButtons::kYesNo}), BoxAnswer::kNo);
    m_boxes.SetSilent(false);
    Show({.text = "Full"}, [](QMessageBox& box) { box.accept(); });
}

TEST_F(QtMessageBoxesTest, Show_SaysWhatTheBoxSays) {
    struct Row {
        const char* name = nullptr;
        Box box;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
    };
    for (const Row& row :
         {Row{"plain", {.text = "You do not have that amount of reagents"}, QMessageBox::NoIcon},
          Row{"critical",
              {.text = "<b>Not</b> marked up", .icon = BoxIcon::kCritical},
              QMessageBox::Critical},
          Row{"question",
              {.text = "Add it ?", .icon = BoxIcon::kQuestion, .buttons = BoxButtons::kYesNo},
              QMessageBox::Question},
          Row{"exclamation", {.text = "Full", .icon = BoxIcon::kExclamation}, QMessageBox::Warning},
          Row{"information",
              {.text = "Hello", .icon = BoxIcon::kInformation, .title = "Title"},
              QMessageBox::Information}}) {
        SCOPED_TRACE(row.name);
        Show(row.box, [&](QMessageBox& shown) {
            EXPECT_EQ(ToText(shown.text()), row.box.text);
            EXPECT_EQ(shown.textFormat(), Qt::PlainText);
            EXPECT_EQ(ToText(shown.windowTitle()), row.box.title);
            EXPECT_EQ(shown.icon(), row.icon);
            EXPECT_TRUE(shown.isModal());
            const bool asks = row.box.buttons == BoxButtons::kYesNo;
            EXPECT_EQ(shown.standardButtons(),
                      asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
            shown.reject();
        });
    }
}

TEST_F(QtMessageBoxesTest, Show_DefaultTitleIsTheProgramsName) {
    EXPECT_EQ(Box{}.title, "Spellwick");
}

TEST_F(QtMessageBoxesTest, Show_Answers) {
    struct Row {
        const char* name = nullptr;
        BoxButtons buttons = BoxButtons::kOk;
        std::function<void(QMessageBox&)> act;
        BoxAnswer answer = BoxAnswer::kOk;
    };
    const auto press = [](QMessageBox::StandardButton button) {
        return [button](QMessageBox& box) { box.button(button)->click(); };
    };
    const auto pressText = [](const char* text) {
        return [text](QMessageBox& box) {
            for (QAbstractButton* button : box.buttons()) {
                if (ToText(button->text()) == text) {
                    button->click();
                    return;
                }
            }
            ADD_FAILURE() << "no button " << text;
        };
    };
    const auto key = [](Qt::Key code) {
        return [code](QMessageBox& box) { QTest::keyClick(&box, code); };
    };
    for (const Row& row :
         {Row{"OK", BoxButtons::kOk, press(QMessageBox::Ok), BoxAnswer::kOk},
          Row{"Escape on OK", BoxButtons::kOk, key(Qt::Key_Escape), BoxAnswer::kOk},
          Row{"Enter on OK", BoxButtons::kOk, key(Qt::Key_Return), BoxAnswer::kOk},
          Row{"Yes", BoxButtons::kYesNo, press(QMessageBox::Yes), BoxAnswer::kYes},
          Row{"No", BoxButtons::kYesNo, press(QMessageBox::No), BoxAnswer::kNo},
          Row{"Escape on a question", BoxButtons::kYesNo, key(Qt::Key_Escape), BoxAnswer::kNo},
          Row{"Enter on a question", BoxButtons::kYesNo, key(Qt::Key_Return), BoxAnswer::kYes},
          Row{"Try again", BoxButtons::kTryAgainOrClose, pressText("&Try again"),
              BoxAnswer::kTryAgain},
          Row{"Close", BoxButtons::kTryAgainOrClose, pressText("&Close"), BoxAnswer::kNo},
          Row{"Enter on Try again", BoxButtons::kTryAgainOrEnd, key(Qt::Key_Return),
              BoxAnswer::kTryAgain},
          Row{"End without saving", BoxButtons::kTryAgainOrEnd, pressText("&End without saving"),
              BoxAnswer::kNo},
          Row{"Escape on Try again", BoxButtons::kTryAgainOrEnd, key(Qt::Key_Escape),
              BoxAnswer::kNo},
          Row{"closed", BoxButtons::kYesNo, [](QMessageBox& box) { box.close(); },
              BoxAnswer::kNo}}) {
        EXPECT_EQ(Show({.text = "x", .buttons = row.buttons}, row.act), row.answer) << row.name;
    }
}

TEST_F(QtMessageBoxesTest, Details_AreCopiedAndTheBoxStays) {
    const auto copyButton = [](QMessageBox& box) {
        return box.findChild<QPushButton*>(QStringLiteral("CommandCopyDetails"));
    };
    Show({.text = "plain"}, [&](QMessageBox& box) {
        EXPECT_EQ(copyButton(box), nullptr);
        box.accept();
    });
    Show({.text = "failed", .icon = BoxIcon::kCritical, .details = "failed\nSystem: x"},
         [&](QMessageBox& box) {
             QPushButton* const copy = copyButton(box);
             ASSERT_NE(copy, nullptr);
             EXPECT_EQ(copy->text(), QStringLiteral("&Copy details"));
             EXPECT_EQ(box.defaultButton()->text().remove(u'&'), QStringLiteral("OK"));
             QGuiApplication::clipboard()->clear();
             copy->click();
             EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("failed\nSystem: x"));
             EXPECT_TRUE(box.isVisible());
             QTest::keyClick(&box, Qt::Key_Escape);
             EXPECT_FALSE(box.isVisible());
         });
}

TEST_F(QtMessageBoxesTest, Show_IsInTheLogWithItsAnswer) {
    const RecordingLog log;
    Show({.text = "Add it ?", .buttons = BoxButtons::kYesNo},
         [](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    EXPECT_THAT(log.lines,
                testing::ElementsAre(testing::Pair(LogTopic::kRefused, "box: Add it ?"),
                                     testing::Pair(LogTopic::kRefused, "answered: Yes")));
}

TEST_F(QtMessageBoxesTest, Show_BelongsToTheVisibleWindowAlone) {
    QWidget window;
    m_boxes.SetOwner(&window);
    Show({.text = "x"}, [&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), nullptr);
        box.reject();
    });
    window.show();
    Show({.text = "x"}, [&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        box.reject();
    });
}

TEST_F(QtMessageBoxesTest, Show_OverAnotherBox_BelongsToThatOne) {
    Show({.text = "outer"}, [&](QMessageBox& outer) {
        Show({.text = "inner"}, [&](QMessageBox& inner) {
            EXPECT_EQ(inner.parentWidget(), &outer);
            inner.reject();
        });
        outer.reject();
    });
}

TEST_F(QtMessageBoxesTest, Show_ServesTheEventQueueWhileItStands) {
    int ticks = 0;
    QTimer timer;
    timer.start(5);
    Show({.text = "x"}, [&](QMessageBox& box) {
        QObject::connect(&timer, &QTimer::timeout, &box, [&] {
            if (++ticks == 3) {
                box.reject();
            }
        });
        QTimer::singleShot(std::chrono::seconds(10), &box, &QMessageBox::reject);
    });
    EXPECT_GE(ticks, 3);
}

TEST_F(QtMessageBoxesTest, Show_OwnerGone_StandsAlone) {
    {
        QWidget window;
        window.show();
        m_boxes.SetOwner(&window);
    }
    Show({.text = "x"}, [&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), nullptr);
        box.reject();
    });
}

// A window with controls to press, and with an edit that shows a message box when it loses the
// focus.
class RefusingWindow : public QWidget {
  public:
    explicit RefusingWindow(std::function<void()> refuse) : m_refuse(std::move(refuse)) {
        auto* row = new QHBoxLayout(this);
        for (QWidget* control :
             std::initializer_list<QWidget*>{&m_entry, &m_button, &m_tick, &m_list}) {
            control->setFocusPolicy(Qt::StrongFocus);
            row->addWidget(control);
        }
        m_list.addItems({QStringLiteral("one"), QStringLiteral("two")});
        m_entry.installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusOut && !m_refuses && isActiveWindow()) {
            m_refuses = true;
            m_refuse();
            m_entry.setFocus();
        }
        return QWidget::eventFilter(watched, event);
    }

    QLineEdit m_entry;
    QPushButton m_button;
    QCheckBox m_tick;
    QComboBox m_list;

  private:
    std::function<void()> m_refuse;
    bool m_refuses = false;
};

TEST_F(QtMessageBoxesTest, PressThatBringsABoxUp_LeavesNothingPressed) {
    for (const int control : {0, 1, 2}) {
        int boxes = 0;
        RefusingWindow window([&] {
            Show({.text = "refused"}, [&](QMessageBox& box) {
                ++boxes;
                // The button is released over the message box.
                QTest::mouseRelease(box.windowHandle(), Qt::LeftButton);
                box.button(QMessageBox::Ok)->click();
            });
        });
        int clicks = 0;
        QObject::connect(&window.m_button, &QPushButton::clicked, [&] { ++clicks; });
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        window.m_entry.setFocus();
        QWidget* const pressed = std::array<QWidget*, 3>{
            &window.m_button, &window.m_tick, &window.m_list}[static_cast<std::size_t>(control)];
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          pressed->mapTo(&window, QPoint(8, pressed->height() / 2)));
        QCoreApplication::processEvents();
        EXPECT_EQ(boxes, 1) << control;
        EXPECT_FALSE(window.m_button.isDown());
        EXPECT_FALSE(window.m_tick.isDown());
        EXPECT_FALSE(window.m_tick.isChecked());
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(clicks, 0);
        EXPECT_EQ(window.focusWidget(), &window.m_entry);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton);
    }
}

}  // namespace
}  // namespace spellwick
