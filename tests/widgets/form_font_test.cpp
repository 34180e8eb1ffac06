// The forms' font and the pixels beside it follow the desktop's font.
#include "widgets/form_font.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace spellwick {
namespace {

class FormFontTest : public testing::Test {
  protected:
    void TearDown() override { QApplication::setFont(m_before); }

    const QFont m_before = QApplication::font();
};

TEST_F(FormFontTest, PointsOfTheDesktop_BecomePixels) {
    struct Row {
        int points;
        int pixels;
    };
    for (const Row& row : {Row{6, 12}, Row{8, 12}, Row{9, 12}, Row{10, 13}, Row{11, 15},
                           Row{12, 16}, Row{16, 21}, Row{18, 24}, Row{40, 24}}) {
        QFont font = m_before;
        font.setPointSize(row.points);
        QApplication::setFont(font);
        EXPECT_EQ(FormFontPixels(), row.pixels) << row.points;
        EXPECT_EQ(FormFont().pixelSize(), row.pixels);
        EXPECT_DOUBLE_EQ(FormScale(), row.pixels / 12.0);
    }
}

TEST_F(FormFontTest, FontInPixels_CountsAsItIs) {
    QFont font = m_before;
    font.setPixelSize(18);
    QApplication::setFont(font);
    EXPECT_EQ(FormFontPixels(), 18);
    EXPECT_EQ(Scaled(43), 65);
    EXPECT_EQ(Scaled(QSize(42, 16)), QSize(63, 24));
    EXPECT_EQ(FormFont(14).pixelSize(), 14);
}

}  // namespace
}  // namespace spellwick
