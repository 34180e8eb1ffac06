// What the window of the running timers shows, and when.
#include <QFontMetrics>
#include <QImage>
#include <limits>

#include "tests/timers/form_timer_fixture.h"

namespace spellwick {
namespace {

TEST_F(FormTimerTest, NoTimers_NoWindow) {
    Make();
    m_form->ShowTimers();
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_EQ(m_form->pos(), QPoint(40, 50));
    EXPECT_EQ(m_form->windowTitle(), "SpellTimer");
}

TEST_F(FormTimerTest, FiveTimers_FourAreShownAndTheFifthMovesUp) {
    m_state.SpellTimerMode = kTimersAsText;
    Make();
    for (const i16 seconds : std::initializer_list<i16>{50, 20, 40, 60, 30}) {
        Start(seconds, seconds);
    }
    EXPECT_EQ(ShownNames(),
              (std::vector<std::string>{"Spell 20", "Spell 30", "Spell 40", "Spell 50"}));
    TickAt(1019.5F);
    EXPECT_EQ(ShownNames().front(), "Spell 20");
    TickAt(1020.0F);
    EXPECT_EQ(ShownNames(),
              (std::vector<std::string>{"Spell 30", "Spell 40", "Spell 50", "Spell 60"}));
    TickAt(1030.0F);
    EXPECT_EQ(ShownNames(), (std::vector<std::string>{"Spell 40", "Spell 50", "Spell 60"}));
}

TEST_F(FormTimerTest, FiveTimersAsIcons_ShowTheColouredCellsOfTheirRows) {
    Make();
    for (const i16 row : std::initializer_list<i16>{8, 9, 10, 11, 12}) {
        Start(row, static_cast<i16>(10 * row));
    }
    IconClip icons(QStringLiteral("colour"), qGuiApp->devicePixelRatio());
    for (int slot = 0; slot < kTimerSlots; ++slot) {
        EXPECT_TRUE(Picture(slot).isVisible());
        EXPECT_EQ(Picture(slot).Cell(), icons.StripOf(8 + slot).Cell(slot));
        EXPECT_TRUE(Bar(slot).isVisible());
        EXPECT_FALSE(Name(slot).isVisible());
    }
}

TEST_F(FormTimerTest, RowBehindThePages_HasABarWithoutAnIcon) {
    Make();
    Start(96, 20);
    TickAt(1010.0F);
    EXPECT_EQ(Bar(0).Percent(), 50);
    EXPECT_EQ(Picture(0).Cell(), QRect());
    // Nor the icon of the timer that had the slot before.
    Start(95, 5);
    EXPECT_NE(Picture(0).Cell(), QRect());
    TickAt(1015.0F);
    EXPECT_EQ(Bar(0).Percent(), 25);
    EXPECT_EQ(Picture(0).Cell(), QRect());
}

TEST_F(FormTimerTest, SecondsOnIcons_AreAFigureInTheCornerWhenTheOptionIsOn) {
    Make();
    Start(10, 60);
    EXPECT_EQ(Picture(0).Corner(), QString());
    m_state.SecondsOnIcons = true;
    TickAt(1015.0F);
    EXPECT_EQ(Picture(0).Corner(), QStringLiteral("45"));
    m_state.SecondsOnIcons = false;
    TickAt(1016.0F);
    EXPECT_EQ(Picture(0).Corner(), QString());
}

TEST_F(FormTimerTest, Place_NeverMoved_StandsAsideJustSoFar_UntilItIsDragged) {
    m_state.SpellTimerMode = kTimersAsIcons;
    m_keepsClear = {QRect(0, 0, 183, 300)};
    Make({0, 0});
    Start(10, 60);
    EXPECT_EQ(m_form->pos(), QPoint(183, 0));
    EXPECT_EQ(m_form->KeptPlace(), QPoint(0, 0));
    m_form->hide();
    m_keepsClear = {QRect(0, 0, 200, 300)};
    m_form->ShowTimers();
    EXPECT_EQ(m_form->pos(), QPoint(200, 0));
    m_form->move(5, 6);
    m_form->hide();
    m_form->ShowTimers();
    EXPECT_EQ(m_form->pos(), QPoint(5, 6)) << "where the player has put it";
    EXPECT_EQ(m_form->KeptPlace(), QPoint(5, 6));
}

TEST_F(FormTimerTest, Icons_AreColouredAlsoForSpellsThatCannotBeCast) {
    m_state.Spells(10).MinimumSkill = 100;
    Make();
    Start(10, 60);
    const auto colourOf = [](const QPixmap& picture) {
        const QImage image = picture.toImage();
        int sum = 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                sum += QColor(image.pixel(x, y)).hsvSaturation();
            }
        }
        return sum / (image.width() * image.height());
    };
    IconClip icons(QStringLiteral("grey"), qGuiApp->devicePixelRatio());
    const PictureStrip& strip = icons.StripOf(10);
    EXPECT_GT(colourOf(Picture(0).grab()), 2 * colourOf(strip.Strip().copy(strip.Cell(2))) + 20);
}

TEST_F(FormTimerTest, Ground_IsBlackInEachArrangement) {
    Make();
    Start(1, 60);
    const auto corner = [this] { return m_form->grab().toImage().pixel(0, m_form->height() - 1); };
    EXPECT_EQ(corner(), qRgb(0, 0, 0));
    QTest::mouseClick(&Control(1), Qt::LeftButton);
    EXPECT_EQ(corner(), qRgb(0, 0, 0));
    SetMode(kTimersAsText);
    EXPECT_EQ(corner(), qRgb(0, 0, 0));
}

TEST_F(FormTimerTest, SlotsWithoutATimer_ShowNothing) {
    Make();
    Start(1, 60);
    Start(2, 70);
    for (const i32 mode : {kTimersAsIcons, kTimersAsText}) {
        SetMode(mode);
        const bool icons = mode == kTimersAsIcons;
        for (int slot = 0; slot < kTimerSlots; ++slot) {
            SCOPED_TRACE(slot);
            EXPECT_EQ(Picture(slot).isVisible(), icons && slot < 2);
            EXPECT_EQ(Bar(slot).isVisible(), icons && slot < 2);
            EXPECT_EQ(Name(slot).isVisible(), !icons && slot < 2);
            EXPECT_EQ(Seconds(slot).isVisible(), !icons && slot < 2);
        }
    }
}

TEST_F(FormTimerTest, ModeOff_TimersRunAndTheWindowStaysAway) {
    m_state.SpellTimerMode = kTimersOff;
    Make();
    Start(1, 60);
    EXPECT_TRUE(m_timers->SpellsActive());
    EXPECT_FALSE(m_form->isVisible());
    TickAt(1010.0F);
    EXPECT_FALSE(m_form->isVisible());
    // If it is shown anyway, it hides itself.
    m_form->show();
    m_form->ShowTimers();
    EXPECT_FALSE(m_form->isVisible());
}

TEST_F(FormTimerTest, LastTimerEnds_HidesTheWindowAndUpdateStops) {
    Make();
    Start(1, 20);
    TickAt(1020.0F);
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_FALSE(m_timers->SpellsActive());
    TickAt(1021.0F);
    EXPECT_FALSE(m_form->isVisible());
}

TEST_F(FormTimerTest, SetMode_StoresTheModeAndArranges) {
    Make();
    Start(1, 60);
    EXPECT_TRUE(Bar(0).isVisible());
    SetMode(kTimersAsText);
    EXPECT_EQ(m_state.SpellTimerMode, kTimersAsText);
    EXPECT_TRUE(Name(0).isVisible());
    EXPECT_FALSE(Bar(0).isVisible());
    EXPECT_FALSE(Control(0).isVisible());
    SetMode(kTimersOff);
    EXPECT_FALSE(m_form->isVisible());
    SetMode(kTimersAsIcons);
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(Bar(0).isVisible());
}

TEST_F(FormTimerTest, SavedNumberThatIsNoMode_IsShownAsIcons) {
    Make();
    Start(1, 100);
    const QSize icons = m_form->size();
    for (const i32 mode :
         {-1, 3, 7, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max()}) {
        SCOPED_TRACE(mode);
        m_clock.now = 1000.0F;
        m_state.SpellTimerMode = mode;
        Make();
        Start(1, 100);
        EXPECT_TRUE(m_form->isVisible());
        EXPECT_EQ(m_form->size(), icons);
        EXPECT_TRUE(Picture(0).isVisible());
        EXPECT_FALSE(Picture(1).isVisible());
        EXPECT_FALSE(Name(0).isVisible());
        EXPECT_TRUE(Control(0).isVisible());
        TickAt(1050.0F);
        EXPECT_EQ(Bar(0).Percent(), 50);
        EXPECT_EQ(m_state.SpellTimerMode, mode);
    }
}

TEST_F(FormTimerTest, ModeChangedElsewhere_IsNoticedByTheNextUpdate) {
    Make();
    Start(1, 60);
    m_state.SpellTimerMode = kTimersAsText;
    TickAt(1001.0F);
    EXPECT_TRUE(Name(0).isVisible());
    m_state.SpellTimerMode = kTimersOff;
    TickAt(1002.0F);
    EXPECT_FALSE(m_form->isVisible());
}

TEST_F(FormTimerTest, Texts_ShowSecondsInTheColourOfThePercentage) {
    m_state.SpellTimerMode = kTimersAsText;
    Make();
    Start(1, 100);
    struct Row {
        float at;
        const char* seconds;
        Colour colour;
    };
    constexpr Row kRows[] = {
        {0.0F, "100", kButtonFace}, {60.0F, "40", kButtonFace}, {61.0F, "39", kYellow},
        {80.0F, "20", kYellow},     {81.0F, "19", kRed},        {97.5F, "2", kRed},
        {99.5F, "0", kRed},
    };
    for (const Row& row : kRows) {
        TickAt(1000.0F + row.at);
        EXPECT_EQ(Seconds(0).text(), row.seconds) << row.at;
        EXPECT_EQ(Seconds(0).TextColour(), row.colour) << row.at;
        EXPECT_EQ(Name(0).TextColour(), kButtonFace);
    }
}

TEST_F(FormTimerTest, Bar_IsBlueForTheTimeLeftAndColouredForTheRest) {
    Make();
    Start(1, 100);
    struct Row {
        float at;
        int blue;
        QRgb rest;
    };
    const QRgb calm = OnBlack(kButtonFace, QGuiApplication::palette()).rgb();
    const Row rows[] = {
        {50.0F, 21, calm},
        {80.0F, 8, calm},
        {81.0F, 7, qRgb(255, 255, 0)},
        {90.0F, 4, qRgb(255, 255, 0)},
        {91.0F, 3, qRgb(255, 0, 0)},
        {99.0F, 0, qRgb(255, 0, 0)},
    };
    for (const Row& row : rows) {
        TickAt(1000.0F + row.at);
        const QImage image = Bar(0).grab().toImage().scaled(42, 5);
        for (int x = 0; x < 42; ++x) {
            ASSERT_EQ(image.pixel(x, 2), x < row.blue ? qRgb(0, 0, 255) : row.rest)
                << row.at << " at " << x;
        }
    }
}

TEST_F(FormTimerTest, Texts_TakeTheWidthOfTheirMeasure) {
    m_state.SpellTimerMode = kTimersAsText;
    Make();
    Start(1, 100);
    EXPECT_EQ(Name(0).width(),
              QFontMetrics(m_form->font()).horizontalAdvance(QStringLiteral("Summon Daemon ")));
    EXPECT_EQ(m_form->width(), Seconds(0).x() + Seconds(0).width() + 4);
    EXPECT_EQ(m_form->height(), Seconds(3).y() + Seconds(3).height() + 4);
}

// covers ODDITY(timer-name-width)
TEST_F(FormTimerTest, Texts_Oddity_LongNamesAreCutShort) {
    m_state.SpellTimerMode = kTimersAsText;
    m_state.Spells(1).Name = "Summon Daemon";
    m_state.Spells(2).Name = "Summon Water Elemental";
    Make();
    Start(1, 50);
    Start(2, 100);
    const QFontMetrics metrics(m_form->font());
    EXPECT_LE(metrics.horizontalAdvance(Name(0).text()), Name(0).width());
    EXPECT_GT(metrics.horizontalAdvance(Name(1).text()), Name(1).width());
}

TEST_F(FormTimerTest, DarkDesktop_TextStaysReadableOnBlack) {
    QPalette dark;
    dark.setColor(QPalette::Button, QColor(49, 54, 59));
    dark.setColor(QPalette::ButtonText, QColor(252, 252, 252));
    EXPECT_EQ(OnBlack(kButtonFace, dark), QColor(252, 252, 252));
    QPalette light;
    light.setColor(QPalette::Button, QColor(239, 239, 239));
    EXPECT_EQ(OnBlack(kButtonFace, light), QColor(239, 239, 239));
    EXPECT_EQ(OnBlack(kYellow, dark), QColor(255, 255, 0));
}

}  // namespace
}  // namespace spellwick
