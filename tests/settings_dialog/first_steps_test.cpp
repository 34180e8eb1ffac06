// First steps: what it says, how it follows what is done, and where its buttons lead.
#include "settings_dialog/first_steps.h"

#include <QLayout>
#include <QScreen>
#include <QSignalSpy>

#include "tests/settings_dialog/form_settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class FirstStepsFormTest : public FormSettingsTest {
  protected:
    // Opens the settings and in them the first steps.
    FirstSteps& OpenSteps() {
        Open();
        ShowTab(8);
        Click("CommandFirstSteps");
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Steps()));
        return Steps();
    }
    FirstSteps& Steps() { return Named<FirstSteps>(QStringLiteral("FormFirstSteps")); }
    std::vector<std::string> States() {
        std::vector<std::string> states;
        for (int step = 0; step < kFirstStepCount; ++step) {
            const auto at = static_cast<std::size_t>(step);
            states.push_back(Steps().LabelState[at]->text().toStdString());
            EXPECT_EQ(Steps().Mark[at]->IsDone(), states.back() == "done");
        }
        return states;
    }
    void ClickStep(std::size_t step) {
        QTest::mouseClick(Steps().CommandStep[step], Qt::LeftButton);
    }
};

TEST_F(FirstStepsFormTest, Button_StandsAtTheTopOfTheTabGame) {
    Open();
    ShowTab(8);
    EXPECT_EQ(Text("CommandFirstSteps"), "First steps");
    EXPECT_LT(Named("CommandFirstSteps").mapTo(&Form(), QPoint(0, 0)).y(),
              Named("LabelGame").mapTo(&Form(), QPoint(0, 0)).y());
}

TEST_F(FirstStepsFormTest, Texts_AreThoseOfTheSteps) {
    OpenSteps();
    for (int step = 0; step < kFirstStepCount; ++step) {
        const FirstStep& facts = kFirstSteps[static_cast<std::size_t>(step)];
        EXPECT_EQ(Text("LabelStep", step), std::to_string(step + 1) + ". " + facts.title);
        EXPECT_EQ(Text("LabelHow", step), facts.sentence);
        EXPECT_EQ(Text("CommandStep", step), facts.button);
    }
}

TEST_F(FirstStepsFormTest, Texts_FitTheirControls) {
    OpenSteps();
    for (const QWidget* control : Steps().findChildren<QWidget*>()) {
        if (control->inherits("QLabel") || control->inherits("QAbstractButton")) {
            const std::string name = control->objectName().toStdString();
            EXPECT_TRUE(Steps().rect().contains(control->geometry())) << name;
            EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
            EXPECT_GE(control->height(), control->hasHeightForWidth()
                                             ? control->heightForWidth(control->width())
                                             : control->sizeHint().height())
                << name;
        }
    }
}

TEST_F(FirstStepsFormTest, Width_FitsTheScreen) {
    OpenSteps();
    EXPECT_LE(Steps().width(), Steps().screen()->availableGeometry().width());
}

TEST_F(FirstStepsFormTest, Size_IsKnownBeforeItIsShown) {
    Open();
    FirstSteps steps(m_state, *this, &Form());
    steps.ensurePolished();
    steps.layout()->activate();
    const QSize before = steps.layout()->totalSizeHint();
    steps.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&steps));
    EXPECT_EQ(steps.size(), before);
}

TEST_F(FirstStepsFormTest, States_FollowWhatIsDoneWhileItIsOpen) {
    OpenSteps();
    EXPECT_THAT(States(), ElementsAre("to do", "to do", "to do", "to do"));
    m_state.Spellbook(3) = 0;
    m_state.Magery = 50;
    m_state.Intelligence = 50;
    EXPECT_TRUE(QTest::qWaitFor([&] { return States()[2] == "done"; }, 3000));
    EXPECT_THAT(States(), ElementsAre("to do", "done", "done", "to do"));
    EXPECT_EQ(Steps().LabelState[1]->accessibleName(), QStringLiteral("The spellbook: done"));
}

TEST_F(FirstStepsFormTest, Marks_DifferInMoreThanColour) {
    FirstSteps& steps = OpenSteps();
    const auto inked = [&] {
        const QImage image = steps.Mark[0]->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QColor ground = steps.palette().color(QPalette::Window);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += std::abs(image.pixelColor(x, y).lightness() - ground.lightness()) > 60;
            }
        }
        return count;
    };
    const int ring = inked();
    steps.Mark[0]->SetDone(true);
    EXPECT_GT(ring, 10);
    EXPECT_GT(inked(), 2 * ring) << "a full disc against an empty ring";
}

TEST_F(FirstStepsFormTest, Buttons_GoToTheControls) {
    struct Row {
        std::size_t step;
        int tab;
        const char* focus;
    };
    OpenSteps();
    for (const Row& row :
         {Row{0, 8, "ListWindows"}, Row{1, 0, "CheckBook(0)"}, Row{2, 3, "MinimumSkill(8)"}}) {
        ClickStep(row.step);
        EXPECT_THAT(TickedTabs(), ElementsAre(row.tab));
        EXPECT_EQ(Form().focusWidget()->objectName().toStdString(), row.focus);
        EXPECT_TRUE(Steps().isVisible()) << "it goes on showing what is done";
    }
    // By way of the desktop, since a window manager that still handles the click takes the keyboard
    // from the toolkit.
    const auto settings = static_cast<WindowHandle>(Form().winId());
    EXPECT_THAT(m_desktop.activated, ElementsAre(settings, settings, settings));
}

TEST_F(FirstStepsFormTest, StockButton_AsksForTheCountersOfTheMainWindow) {
    OpenSteps();
    std::vector<Target> wanted;
    QObject::connect(&Form(), &FormSettings::MainWindowWanted, &Form(),
                     [&](const Target& target) { wanted.push_back(target); });
    ClickStep(3);
    ASSERT_EQ(wanted.size(), 1U);
    EXPECT_EQ(wanted[0].way, Way::kCounters);
    EXPECT_THAT(TickedTabs(), ElementsAre(8));
}

TEST_F(FirstStepsFormTest, ItselfItChangesNothing) {
    OpenSteps();
    TakeLog();
    m_store.ForgetBatches();
    Steps().ShowStates();
    QTest::keyClick(&Steps(), Qt::Key_Escape);
    EXPECT_FALSE(Steps().isVisible());
    EXPECT_TRUE(Form().isVisible());
    EXPECT_THAT(TakeLog(), testing::IsEmpty());
    EXPECT_THAT(m_store.Batches(), testing::IsEmpty());
}

TEST_F(FirstStepsFormTest, SettingsClose_ItGoesWithThem) {
    OpenSteps();
    Form().ClickCommand1();
    EXPECT_FALSE(Form().isVisible());
    EXPECT_FALSE(Steps().isVisible());
    TakeLog();
}

TEST_F(FirstStepsFormTest, WayOfTheHint_OpensThemOverTheTabGame) {
    Load();
    Form().GoTo({Way::kFirstSteps});
    Show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Form().findChild<FirstSteps*>() != nullptr; }, 2000));
    EXPECT_TRUE(Steps().isVisible());
    EXPECT_THAT(TickedTabs(), ElementsAre(8));
    // Once.
    Form().ClickCommand1();
    Reopen();
    QTest::qWait(50);
    EXPECT_FALSE(Steps().isVisible());
}

}  // namespace
}  // namespace spellwick
