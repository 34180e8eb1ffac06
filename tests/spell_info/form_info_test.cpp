// The spell info window, used by mouse and keyboard.
#include "spell_info/form_info.h"

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <limits>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "platform/recording/recording_desktop.h"
#include "tests/support/comma_locale.h"
#include "tests/support/failures.h"
#include "widgets/ground.h"

namespace spellwick {
namespace {

constexpr Colour kTooLow = 0xC0C0FF;

class FormInfoTest : public testing::Test, public FailureSink {
  protected:
    FormInfoTest() {
        InitReagentTables(m_state);
        LoadSpellData(m_state, SPELLWICK_SPELL_DATA);
        m_state.Magery = 100;
        m_state.Dexterity = 30;
        m_state.Intelligence = 90;
        m_state.EvalInt = 80;
        m_state.TargetResist = 70;
        m_state.TargetInt = 60;
        m_state.SpiritSpeak = 50;
        m_state.Necro = 40;
        m_form = std::make_unique<FormInfo>(
            InfoServices{.state = m_state, .desktop = m_desktop, .failures = *this});
    }
    void TearDown() override { EXPECT_EQ(m_failures, std::vector<FailureKind>{}); }
    void OnUncaughtFailure(const std::exception& failure, std::string_view /*action*/) override {
        const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
        ASSERT_NE(known, nullptr) << failure.what();
        m_failures.push_back(known->Kind());
    }

    void Show(i32 row) {
        m_form->show();
        m_form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
        m_form->DisplayInfo(row);
    }
    QLabel& Label(int number) {
        auto* label = m_form->findChild<QLabel*>(QStringLiteral("Label(%1)").arg(number));
        if (label == nullptr) {
            throw std::logic_error("no label");
        }
        return *label;
    }
    std::string Text(int number) { return Label(number).text().toStdString(); }
    CounterBox& Box(int index) { return m_form->TextBox(index); }
    void Enter(int index, const char* text) {
        QTest::mouseClick(&Box(index), Qt::LeftButton);
        QTest::keyClicks(&Box(index), QLatin1String(text));
    }
    void LeaveTo(int index) { Box(index).setFocus(Qt::TabFocusReason); }
    std::vector<FailureKind> TakeFailures() { return std::exchange(m_failures, {}); }

    SharedState m_state;
    RecordingDesktop m_desktop;
    std::unique_ptr<FormInfo> m_form;
    std::vector<FailureKind> m_failures;
};

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

TEST_F(FormInfoTest, SavedValueAbove100_IsShownAndKeptUntilItIsEdited) {
    m_state.Magery = 120;
    m_state.SpiritSpeak = -20;
    Show(17);
    EXPECT_EQ(Box(0).text(), " 120");
    LeaveTo(0);
    LeaveTo(6);
    LeaveTo(1);
    EXPECT_EQ(m_state.Magery, 120);
    EXPECT_EQ(m_state.SpiritSpeak, -20);
    Enter(0, "119");
    EXPECT_EQ(m_state.Magery, 100);
}

TEST_F(FormInfoTest, ValueThatChangedMeanwhile_IsShownOnLeavingAndKept) {
    Show(17);
    LeaveTo(0);
    m_state.Magery = 120;  // by a report of the assist tool, or with another character
    LeaveTo(1);
    EXPECT_EQ(Box(0).text(), " 120");
    EXPECT_EQ(m_state.Magery, 120);
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

TEST_F(FormInfoTest, NegativeValues_HaveNoLeadingBlank) {
    m_state.Dexterity = -5;
    Show(0);
    EXPECT_EQ(Box(1).text(), "-5");
}

TEST_F(FormInfoTest, ThreeBoxes_HaveTheToolTip) {
    for (int i = 0; i < FormInfo::kBoxCount; ++i) {
        EXPECT_EQ(Box(i).toolTip(), i == 0 || i == 2 || i == 7
                                        ? "Red background indicates a too low value for this spell."
                                        : "")
            << i;
    }
}

TEST_F(FormInfoTest, TooLowValues_AreRed) {
    m_state.Magery = 15;       // Fireball needs 16
    m_state.Intelligence = 8;  // and 9 mana
    Show(17);
    EXPECT_EQ(GroundOf(Box(0), 0), kTooLow);
    EXPECT_EQ(GroundOf(Box(2), 0), kTooLow);
    m_state.Magery = 16;
    m_state.Intelligence = 9;
    m_form->DisplayInfo(17);
    EXPECT_EQ(GroundOf(Box(0), 0), kWindowBackground);
    EXPECT_EQ(GroundOf(Box(2), 0), kWindowBackground);
}

// covers ODDITY(info-magery-box)
TEST_F(FormInfoTest, Necromancer_Oddity_TurnsTheMageryBoxRed) {
    m_state.Necro = 0;
    m_state.Spells(74).MinimumSkill = 65;
    Show(74);
    EXPECT_EQ(GroundOf(Box(0), 0), kTooLow);
    EXPECT_NE(GroundOf(Box(7), kWindowBackground), kTooLow);
}

TEST_F(FormInfoTest, Focus_SelectsTheWholeText) {
    Show(17);
    LeaveTo(3);
    EXPECT_EQ(Box(3).selectedText(), " 80");
    QTest::mouseClick(&Box(5), Qt::LeftButton);
    EXPECT_EQ(Box(5).selectedText(), " 60");
    Box(6).setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(Box(6).selectedText(), " 50");
}

TEST_F(FormInfoTest, NextSpell_SelectsTheTextOfTheBoxWithTheFocus) {
    Show(17);
    LeaveTo(3);
    m_form->DisplayInfo(18);
    EXPECT_EQ(Box(3).selectedText(), " 80");
    QTest::keyClicks(&Box(3), QStringLiteral("5"));
    EXPECT_EQ(m_state.EvalInt, 5);
    LeaveTo(4);
    EXPECT_EQ(Box(3).selectedText(), "");
    EXPECT_EQ(Box(4).selectedText(), " 70");
}

TEST_F(FormInfoTest, Keys_DigitsAndSignsPassAndOthersBeep) {
    Show(17);
    Enter(3, "1a2.+- 3");
    EXPECT_EQ(Box(3).text(), "12+-3");
    EXPECT_EQ(m_desktop.beeps, 3);
    QTest::keyClick(&Box(3), Qt::Key_Backspace);
    EXPECT_EQ(Box(3).text(), "12+-");
    QTest::keyClick(&Box(3), Qt::Key_Return);
    QTest::keyClick(&Box(3), Qt::Key_Escape);
    EXPECT_EQ(m_desktop.beeps, 5);
    EXPECT_TRUE(m_form->isVisible());
}

TEST_F(FormInfoTest, Typing_ChangesTheValueAtOnceAndTheTextsOnLeaving) {
    Show(17);
    Enter(4, "0");
    EXPECT_EQ(m_state.TargetResist, 0);
    EXPECT_EQ(Text(14), "8 to 20 points");
    EXPECT_EQ(Box(4).text(), "0");
    LeaveTo(5);
    EXPECT_EQ(Box(4).text(), " 0");
    EXPECT_EQ(Text(14), "9 to 23 points");  // 1.16 times 8 and 20
}

TEST_F(FormInfoTest, Typing250_Sets100) {
    Show(17);
    Enter(3, "250");
    EXPECT_EQ(m_state.EvalInt, 100);
    EXPECT_EQ(Box(3).text(), "250");
    LeaveTo(5);
    EXPECT_EQ(Box(3).text(), " 100");
}

TEST_F(FormInfoTest, EachBox_ChangesItsOwnValue) {
    Show(17);
    for (int i = 0; i < FormInfo::kBoxCount; ++i) {
        Enter(i, std::to_string(i + 1).c_str());
    }
    LeaveTo(0);
    EXPECT_EQ(m_state.Magery, 1);
    EXPECT_EQ(m_state.Dexterity, 2);
    EXPECT_EQ(m_state.Intelligence, 3);
    EXPECT_EQ(m_state.EvalInt, 4);
    EXPECT_EQ(m_state.TargetResist, 5);
    EXPECT_EQ(m_state.TargetInt, 6);
    EXPECT_EQ(m_state.SpiritSpeak, 7);
    EXPECT_EQ(m_state.Necro, 8);
}

TEST_F(FormInfoTest, BelowTheLimitOf16Bits_IsAnOverflow) {
    Show(17);
    Enter(1, "-32768");
    EXPECT_EQ(m_state.Dexterity, -32768);
    QTest::keyClick(&Box(1), Qt::Key_Backspace);
    QTest::keyClicks(&Box(1), QStringLiteral("9"));
    EXPECT_EQ(TakeFailures(), std::vector<FailureKind>{FailureKind::kOverflow});
}

TEST_F(FormInfoTest, ExtremesInEveryBox_GiveNumbersOrOverflow) {
    Show(0);
    for (int i = 0; i < FormInfo::kBoxCount; ++i) {
        for (const char* text : {"-32768", "32767"}) {
            m_state.Magery = m_state.Dexterity = m_state.Intelligence = m_state.EvalInt = 50;
            m_state.TargetResist = m_state.TargetInt = m_state.SpiritSpeak = m_state.Necro = 50;
            Enter(i, text);
            LeaveTo((i + 1) % FormInfo::kBoxCount);
            // Spirit Speak alone has a product in 16 bits; the resist chance needs both extremes.
            const bool fails = i == 6 && *text == '-';
            const bool resistFails = i == 4 && *text == '-';
            const std::vector<FailureKind> failures = TakeFailures();
            if (fails || resistFails) {
                EXPECT_EQ(failures, std::vector<FailureKind>{FailureKind::kOverflow}) << i;
            } else {
                EXPECT_EQ(failures, std::vector<FailureKind>{}) << i << " " << text;
                EXPECT_EQ(Box(i).text(), *text == '-' ? "-32768" : " 100");
            }
        }
    }
    m_state.SpiritSpeak = std::numeric_limits<i16>::max();
    EXPECT_EQ(FailureOf([&] { m_form->DisplayInfo(0); }), FailureKind::kOverflow);
}

// covers ODDITY(info-last-spell)
TEST_F(FormInfoTest, Leaving_Oddity_ShowsTheSpellThatWasCastLast) {
    Show(17);
    Enter(3, "50");
    m_state.CurrentSpell = 3;  // as a cast leaves it
    LeaveTo(5);
    EXPECT_EQ(Text(11), "Heal");
}

TEST_F(FormInfoTest, AnotherWindowOfTheProgram_CommitsTheEntry) {
    Show(17);
    Enter(4, "0");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Text(14) == "9 to 23 points"; }));
    EXPECT_EQ(Box(4).text(), " 0");
}

TEST_F(FormInfoTest, AnotherProgram_LeavesTheEntryAsItIs) {
    Show(17);
    Enter(4, "0");
    QApplication::setActiveWindow(nullptr);
    QTest::qWait(20);
    ASSERT_FALSE(m_form->isActiveWindow());
    EXPECT_EQ(Box(4).text(), "0");
    EXPECT_EQ(Text(14), "8 to 20 points");
}

TEST_F(FormInfoTest, Activation_SetsTheTopMostStateEachTime) {
    Show(17);
    ASSERT_FALSE(m_desktop.topMostCalls.empty());
    EXPECT_FALSE(m_desktop.topMostCalls.back().topMost);
    EXPECT_EQ(m_desktop.topMostCalls.back().window, m_form->winId());
    m_state.AlwaysOnTop = true;
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
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
    QTest::qWait(20);
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

TEST_F(FormInfoTest, TextOfAMegabyte_IsScrolledAndTheBoxesStayWithinReach) {
    Show(0);
    QCoreApplication::processEvents();
    const QSize size = m_form->size();
    std::string text;
    while (text.size() < 1'000'000) {
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
    // Down to its end, and its whole width.
    QScrollBar& bar = *area->verticalScrollBar();
    EXPECT_TRUE(bar.isVisible());
    bar.setValue(bar.maximum());
    EXPECT_EQ(Label(17).mapTo(area->viewport(), Label(17).rect().bottomRight()).y(),
              area->viewport()->height() - 1);
    EXPECT_LT(Label(17).mapTo(area->viewport(), Label(17).rect().bottomRight()).x(),
              area->viewport()->width());
    // The next spell is as if nothing had been.
    m_state.Spells(0).ExtraText1 = before;
    m_form->DisplayInfo(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_form->size(), size);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(bar.value(), 0);
}

}  // namespace
}  // namespace spellwick
