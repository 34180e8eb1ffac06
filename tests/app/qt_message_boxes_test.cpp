// The real boxes of the toolkit: what they say, how they are answered.
#include "app/qt_message_boxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include <gtest/gtest.h>

#include "widgets/texts.h"

namespace spellwick {
namespace {

class QtMessageBoxesTest : public testing::Test {
  protected:
    // Shows a box and runs something once it stands.
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
          Row{"closed", BoxButtons::kYesNo, [](QMessageBox& box) { box.close(); },
              BoxAnswer::kNo}}) {
        EXPECT_EQ(Show({.text = "x", .buttons = row.buttons}, row.act), row.answer) << row.name;
    }
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
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(5);
    Show({.text = "x"},
         [&](QMessageBox& box) { QTimer::singleShot(60, &box, [&box] { box.reject(); }); });
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

}  // namespace
}  // namespace spellwick
