// The help's own window: chapters, search, and pictures of the controls.
#include "help/help_window.h"

#include <QFile>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class HelpWindowTest : public MainWindowFixture {
  protected:
    HelpWindow& Open() {
        StartWithMira();
        m_help = std::make_unique<HelpWindow>(Form(), *this, &Form());
        EXPECT_TRUE(m_help->Load());
        m_help->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_help.get()));
        return *m_help;
    }
    void TearDown() override {
        m_help.reset();
        MainWindowFixture::TearDown();
    }
    // The line at the top of the view.
    QString TopLine() { return m_help->TextHelp->cursorForPosition(QPoint(8, 8)).block().text(); }

    std::unique_ptr<HelpWindow> m_help;
};

TEST_F(HelpWindowTest, Chapters_AreTheTextsAndBeginWithTheFirstSteps) {
    const HelpWindow& help = Open();
    QFile file(QStringLiteral(SPELLWICK_SOURCE_FOLDER "/data/help.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList heads;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(QStringLiteral("## "))) {
            heads.append(line.mid(3));
        }
    }
    ASSERT_EQ(help.ListChapters->count(), heads.size());
    for (int row = 0; row < heads.size(); ++row) {
        EXPECT_EQ(help.ListChapters->item(row)->text(), heads[row]);
    }
    EXPECT_EQ(heads.value(0), QStringLiteral("First steps"));
}

TEST_F(HelpWindowTest, Chapter_Chosen_StandsAtTheTop) {
    HelpWindow& help = Open();
    for (const int row : {3, 1, 5}) {
        help.ListChapters->setCurrentRow(row);
        EXPECT_EQ(TopLine(), help.ListChapters->item(row)->text());
    }
}

TEST_F(HelpWindowTest, Search_FindsOnAndBackAndBeginsAnew) {
    HelpWindow& help = Open();
    QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(help.focusWidget(), help.TextSearch);
    QTest::keyClicks(help.TextSearch, QStringLiteral("tithing"));
    QTest::keyClick(help.TextSearch, Qt::Key_Return);
    const int first = help.TextHelp->textCursor().selectionStart();
    EXPECT_EQ(help.TextHelp->textCursor().selectedText().toLower(), QStringLiteral("tithing"));
    help.CommandNext->click();
    EXPECT_GT(help.TextHelp->textCursor().selectionStart(), first);
    help.CommandPrevious->click();
    EXPECT_EQ(help.TextHelp->textCursor().selectionStart(), first);
    help.CommandPrevious->click();
    EXPECT_GT(help.TextHelp->textCursor().selectionStart(), first);
    help.CommandNext->click();
    EXPECT_EQ(help.TextHelp->textCursor().selectionStart(), first);
    EXPECT_FALSE(help.LabelSearch->isVisible());
}

TEST_F(HelpWindowTest, Search_WithoutAResult_SaysSoAndStays) {
    HelpWindow& help = Open();
    help.TextSearch->setText(QStringLiteral("zeppelin"));
    help.CommandNext->click();
    EXPECT_TRUE(help.LabelSearch->isVisible());
    EXPECT_EQ(help.LabelSearch->text(), QStringLiteral("\"zeppelin\" is not in the help."));
    help.TextSearch->clear();
    help.CommandNext->click();
    EXPECT_FALSE(help.LabelSearch->isVisible());
}

TEST_F(HelpWindowTest, EveryPictureOfTheText_IsOneOfControls) {
    Open();
    QFile file(QStringLiteral(":/help/help.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    int pictures = 0;
    for (qsizetype at = text.indexOf(QStringLiteral("(control:")); at >= 0;
         at = text.indexOf(QStringLiteral("(control:"), at + 1)) {
        const QString name = text.mid(at + 9, text.indexOf(u')', at) - at - 9);
        const QPixmap picture = PictureOfControls(Form(), name);
        EXPECT_GT(picture.width(), 10) << name.toStdString();
        EXPECT_LE(picture.width(), Form().width() * 2) << name.toStdString();
        ++pictures;
    }
    EXPECT_GE(pictures, 5);
    EXPECT_TRUE(PictureOfControls(Form(), QStringLiteral("nothing")).isNull());
    EXPECT_LT(PictureOfControls(Form(), QStringLiteral("bags")).height(), Form().height() / 2);
}

TEST_F(HelpWindowTest, Escape_ClosesIt) {
    HelpWindow& help = Open();
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

}  // namespace
}  // namespace spellwick
