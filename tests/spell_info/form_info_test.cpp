// What the spell info window shows, and at which size.
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "tests/spell_info/form_info_fixture.h"
#include "tests/support/comma_locale.h"
#include "tests/support/failures.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

TEST_F(FormInfoTest, Display_FillsBoxesAndLabels) {
    m_state.Spells(17).Cost = 12;
    Show(17);
    EXPECT_EQ(m_form->windowTitle(), "Spellwick - Spell Info");
    const char* values[] = {" 100", " 30", " 90", " 80", " 70", " 60", " 50", " 40"};
    for (int i = 0; i < FormInfo::kBoxCount; ++i) {
        EXPECT_EQ(Box(i).text(), values[i]) << i;
    }
    EXPECT_EQ(Text(11), "Fireball");
    EXPECT_EQ(Text(12), "Vas Flam");
    EXPECT_EQ(Text(13), "12 gold / 9 mana");
    EXPECT_EQ(Text(14), "8 to 20 points");
    EXPECT_EQ(Text(15), "instant");
    EXPECT_EQ(Text(16), "Black Pearl");
    EXPECT_EQ(Text(17), "Fire damage");
    EXPECT_EQ(Text(21), "39% chance of less damage");
    EXPECT_EQ(m_state.CurrentSpell, 17);
    EXPECT_FALSE(m_state.Updating);
}

TEST_F(FormInfoTest, Lines_StandInTheirOrderBehindTheirCaptions) {
    Show(17);
    struct Row {
        const char* caption;
        int label;
    };
    constexpr Row kRows[] = {
        {"Name", 11},      {"Incantation", 12}, {"Cost", 13},     {"Damage", 14},
        {"Resisting", 21}, {"Duration", 15},    {"Reagents", 16}, {"Extra Info", 17},
    };
    int above = -1;
    for (const Row& row : kRows) {
        const QLabel& line = Label(row.label);
        EXPECT_GT(line.y(), above) << row.caption;
        above = line.y();
        const auto captions = m_form->findChildren<QLabel*>();
        const auto caption = std::find_if(captions.begin(), captions.end(), [&](const QLabel* one) {
            return one != &line && one->y() == line.y() && one->x() < line.x() && !one->buddy();
        });
        ASSERT_NE(caption, captions.end()) << row.caption;
        EXPECT_EQ((*caption)->text(), row.caption);
        EXPECT_EQ(line.accessibleName(), row.caption);
    }
}

TEST_F(FormInfoTest, Boxes_StandBehindTheirCaptions) {
    Show(17);
    const char* captions[] = {
        "Magery:",        "Dexterity:",      "Intelligence.:", "Evaluate Int.:",
        "Target Resist:", "Target Intell.:", "Spirit Speak:",  "Necromancy:"};
    int labels = 0;
    for (const QLabel* label : m_form->findChildren<QLabel*>()) {
        for (int i = 0; i < FormInfo::kBoxCount; ++i) {
            if (label->buddy() == &Box(i)) {
                ++labels;
                EXPECT_EQ(label->text(), captions[i]);
                EXPECT_LT(label->geometry().right(), Box(i).x());
                EXPECT_LT(label->y(), Box(i).geometry().bottom());
                EXPECT_GT(label->geometry().bottom(), Box(i).y());
            }
        }
    }
    EXPECT_EQ(labels, FormInfo::kBoxCount);
}

TEST_F(FormInfoTest, BadMarkerInATextOfTheFile_FailsAsSubscript) {
    m_state.Spells(17).DurationText = "#Formula41; seconds";
    EXPECT_EQ(FailureOf([&] { m_form->DisplayInfo(17); }), FailureKind::kSubscript);
    m_state.Spells(17).DurationText = "#Formula40; seconds";
    m_form->DisplayInfo(17);
    EXPECT_EQ(Text(15), "seconds");
}

TEST_F(FormInfoTest, Tithes_StandAlone) {
    Show(83);
    EXPECT_EQ(Text(16), "10 Tithes");
}

TEST_F(FormInfoTest, Figures_KeepTheirPointWhereNumbersAreWrittenWithAComma) {
    const CommaLocale comma;
    m_state.TargetResist = 67;
    Show(66);
    EXPECT_EQ(Text(15), "39.32 seconds by the old table");  // 40 less 17 / 25
    Enter(6, "55");
    LeaveTo(5);
    EXPECT_EQ(Text(15), "39.52 seconds by the old table");
    m_form->DisplayInfo(64);
    EXPECT_EQ(Text(15), "1.73333333333333 seconds by the old table");
}

TEST_F(FormInfoTest, Activation_SetsTheTopMostStateEachTime) {
    Show(17);
    ASSERT_FALSE(m_desktop.topMostCalls.empty());
    EXPECT_FALSE(m_desktop.topMostCalls.back().topMost);
    EXPECT_EQ(m_desktop.topMostCalls.back().window, m_form->winId());
    m_state.AlwaysOnTop = true;
    const WindowInFront other;
    m_form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
    EXPECT_TRUE(m_desktop.topMostCalls.back().topMost);
}

TEST_F(FormInfoTest, Minimised_ComesBackForTheNextSpell) {
    Show(17);
    m_form->showMinimized();
    ASSERT_TRUE(m_form->isMinimized());
    m_form->ComeForward();
    EXPECT_FALSE(m_form->isMinimized());
    EXPECT_TRUE(m_form->isVisible());
}

TEST_F(FormInfoTest, ClosedOnAScreenThatIsGone_ComesBack) {
    Show(0);
    m_form->move(-5000, 70);
    m_form->close();
    m_form->ComeForward();
    EXPECT_EQ(m_form->pos(), QPoint(0, 70));
    m_form->close();
    m_form->move(30, 70);
    m_form->ComeForward();
    EXPECT_EQ(m_form->pos(), QPoint(30, 70));
}

TEST_F(FormInfoTest, RowWithoutAPicture_ShowsNone) {
    Show(17);
    auto& picture = *m_form->findChild<QLabel*>(QStringLiteral("SpellPicture"));
    EXPECT_FALSE(picture.pixmap(Qt::ReturnByValue).isNull());
    m_form->DisplayInfo(96);
    EXPECT_TRUE(picture.pixmap(Qt::ReturnByValue).isNull());
    EXPECT_EQ(FailureOf([&] { m_form->DisplayInfo(105); }), FailureKind::kSubscript);
    m_state.Updating = false;
}

TEST_F(FormInfoTest, DeliveredSpells_AreShownWholeInAWindowOfOneSize) {
    Show(0);
    QCoreApplication::processEvents();
    const QSize size = m_form->size();
    for (const i16 skill : std::initializer_list<i16>{0, 1, 37, 55, 71, 100}) {
        m_state.Magery = m_state.EvalInt = m_state.SpiritSpeak = skill;
        m_state.TargetResist = static_cast<i16>(67 - skill / 2);
        for (i32 row = 0; row <= kLastPagedRow; ++row) {
            m_form->DisplayInfo(row);
            QCoreApplication::processEvents();
            for (const int number : {11, 12, 13, 14, 15, 16, 17, 21}) {
                const QLabel& label = Label(number);
                EXPECT_GE(label.height(), label.heightForWidth(label.width()))
                    << "row " << row << " label " << number;
                EXPECT_TRUE(m_form->rect().contains(label.geometry()));
                const QFontMetrics metrics(label.font());
                for (const QString& word : label.text().split(QLatin1Char(' '))) {
                    EXPECT_LE(metrics.horizontalAdvance(word), label.width());
                }
            }
            ASSERT_EQ(m_form->size(), size) << "row " << row;
        }
    }
}

TEST_F(FormInfoTest, FirstShow_ComesInItsFullSize) {
    m_form->show();
    const QSize size = m_form->size();
    m_form->DisplayInfo(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_form->size(), size);
}

TEST_F(FormInfoTest, LongText_MakesTheWindowTallerForItsSpellAlone) {
    Show(0);
    QCoreApplication::processEvents();
    const int height = m_form->height();
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "word ";
    }
    m_state.Spells(0).ExtraText1 = text;
    m_form->DisplayInfo(0);
    QCoreApplication::processEvents();
    EXPECT_GT(m_form->height(), height);
    EXPECT_GE(Label(17).height(), Label(17).heightForWidth(Label(17).width()));
    m_form->DisplayInfo(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_form->height(), height);
}

TEST_F(FormInfoTest, TextOfAMegabyte_IsScrolledAndTheBoxesStayWithinReach_Long) {
    Show(0);
    QCoreApplication::processEvents();
    const QSize size = m_form->size();
    // How long the text takes does not depend on the density: a tenth will do at the others.
    const std::size_t length = qApp->devicePixelRatio() == 1.0 ? 1'000'000 : 100'000;
    std::string text;
    while (text.size() < length) {
        text += "#Formula07; and a good many words that stand behind the figure of this marker, ";
    }
    const std::string before = m_state.Spells(0).ExtraText1;
    m_state.Spells(0).ExtraText1 = text;
    m_form->DisplayInfo(0);
    QCoreApplication::processEvents();
    EXPECT_LT(m_form->height(), m_form->screen()->availableGeometry().height());
    const auto* area = m_form->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    for (int i = 0; i < FormInfo::kBoxCount; ++i) {
        EXPECT_TRUE(m_form->rect().contains(Box(i).geometry())) << i;
        EXPECT_GE(Box(i).y(), area->geometry().bottom()) << i;
    }
    // It scrolls to the end, at its full width.
    QScrollBar& bar = *area->verticalScrollBar();
    EXPECT_TRUE(bar.isVisible());
    bar.setValue(bar.maximum());
    EXPECT_EQ(Label(17).mapTo(area->viewport(), Label(17).rect().bottomRight()).y(),
              area->viewport()->height() - 1);
    EXPECT_LT(Label(17).mapTo(area->viewport(), Label(17).rect().bottomRight()).x(),
              area->viewport()->width());
    // The next spell is unaffected.
    m_state.Spells(0).ExtraText1 = before;
    m_form->DisplayInfo(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_form->size(), size);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(bar.value(), 0);
}

}  // namespace
}  // namespace spellwick
