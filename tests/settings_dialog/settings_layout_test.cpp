// Nothing in the dialog is clipped, covered or unreadable at the scale of this run.
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <cmath>
#include <tuple>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

QPalette DarkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(45, 45, 48));
    palette.setColor(QPalette::WindowText, QColor(230, 230, 230));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    palette.setColor(QPalette::Button, QColor(60, 60, 64));
    palette.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

// The contrast of two colours, 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF());
    };
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

class SettingsLayoutTest : public SettingsFixture, public testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        if (GetParam()) {
            QApplication::setPalette(DarkPalette());
        }
        SetSaved("Settings", "CurrentPlayerName", kMira);
        SetSaved(kMira, "Magery", "100");
        SetSaved("Settings", "Pictures", "1");
        Open();
    }
    void TearDown() override {
        SettingsFixture::TearDown();
        QApplication::setPalette(QPalette());
    }

    // The visible controls of the panel, without the parts of compound ones.
    std::vector<QWidget*> Shown(QWidget& panel) {
        std::vector<QWidget*> controls;
        for (QWidget* control : panel.findChildren<QWidget*>()) {
            const QWidget* parent = control->parentWidget();
            if (control->isVisible() && !control->inherits("QGroupBox") &&
                (parent == &panel || parent->inherits("QGroupBox"))) {
                controls.push_back(control);
            }
        }
        return controls;
    }
    static QRect On(QWidget& panel, const QWidget& control) {
        return {control.mapTo(&panel, QPoint(0, 0)), control.size()};
    }
    static bool ShowsText(const QWidget& control) {
        return control.inherits("QLabel") || control.inherits("QAbstractButton");
    }

    void ExpectTidy(QWidget& panel) {
        const std::vector<QWidget*> controls = Shown(panel);
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const QWidget& control = *controls[i];
            const std::string name = control.objectName().toStdString();
            const QRect place = On(panel, control);
            EXPECT_TRUE(panel.rect().contains(place)) << name << " leaves the panel";
            if (ShowsText(control)) {
                const int height = control.hasHeightForWidth()
                                       ? control.heightForWidth(control.width())
                                       : control.sizeHint().height();
                EXPECT_GE(control.height(), height) << name << " is cut off below";
                const auto* label = qobject_cast<const QLabel*>(&control);
                if (label == nullptr || !label->wordWrap()) {
                    EXPECT_GE(control.width(), control.sizeHint().width()) << name << " is cut off";
                }
            }
            for (std::size_t j = i + 1; j < controls.size(); ++j) {
                EXPECT_FALSE(place.intersects(On(panel, *controls[j])))
                    << name << " and " << controls[j]->objectName().toStdString() << " overlap";
            }
        }
    }

    void ExpectReadable(QWidget& panel) {
        for (const QWidget* control : Shown(panel)) {
            if (!control->isEnabled()) {
                continue;
            }
            const QPalette& colours = control->palette();
            const bool isEntry = control->inherits("QLineEdit");
            const double contrast =
                isEntry ? Contrast(colours.color(QPalette::Text), colours.color(QPalette::Base))
                        : Contrast(colours.color(QPalette::WindowText),
                                   colours.color(QPalette::Window));
            EXPECT_GE(contrast, 4.5) << control->objectName().toStdString();
        }
    }
};

TEST_P(SettingsLayoutTest, SmallScreen_TheDialogFitsAndScrolls) {
    Open();
    const QSize room = Form().screen()->availableGeometry().size();
    EXPECT_LE(Form().width(), room.width());
    EXPECT_LE(Form().height(), room.height());
    auto& scroll = Named<QScrollArea>(QStringLiteral("ScrollSettings"));
    const QSize content = scroll.widget()->minimumSizeHint();
    const bool fits = scroll.viewport()->width() >= content.width() &&
                      scroll.viewport()->height() >= content.height();
    EXPECT_EQ(
        scroll.horizontalScrollBar()->maximum() > 0 || scroll.verticalScrollBar()->maximum() > 0,
        !fits);
    // Whatever gets the focus comes into sight.
    for (const char* control : {"ComboSpellLevel", "CheckTown(7)", "CheckTab(7)", "RegPrice(7)"}) {
        QWidget& wanted = Named(QLatin1String(control));
        wanted.setFocus(Qt::TabFocusReason);
        scroll.ensureWidgetVisible(&wanted, 0, 0);
        const QRect there(wanted.mapTo(scroll.viewport(), QPoint()), wanted.size());
        EXPECT_TRUE(scroll.viewport()->rect().contains(there)) << control;
    }
}

TEST_P(SettingsLayoutTest, Strip_FitsTheDialogAndItsCaptions) {
    constexpr std::size_t kInStrip = 8;
    int right = 0;
    for (std::size_t tab = 0; tab < kInStrip; ++tab) {
        const PageButton* button = Form().CheckTab[tab];
        EXPECT_EQ(button->y(), Form().CheckTab[0]->y());
        EXPECT_GE(button->width(), button->sizeHint().width());
        EXPECT_GE(button->x(), right);
        right = button->x() + button->width();
    }
    // Strip and panels scroll together where the screen of this run is too small for them.
    const auto& scroll = Named<QScrollArea>(QStringLiteral("ScrollSettings"));
    EXPECT_EQ(right, scroll.widget()->width() - 2);
    const PageButton& game = *Form().CheckTab[kInStrip];
    EXPECT_GE(game.width(), game.sizeHint().width());
    EXPECT_TRUE(Form().rect().contains(game.geometry()));
    EXPECT_EQ(game.x(), Form().CheckTab[0]->x());
    EXPECT_GE(game.y(), scroll.geometry().bottom());
    EXPECT_FALSE(game.geometry().intersects(Form().Command1->geometry()));
    EXPECT_TRUE(Form().rect().contains(Form().Command1->geometry()));
}

TEST_P(SettingsLayoutTest, EveryTab_NothingIsCutOffOrCovered) {
    for (int tab = 0; tab < kTabCount; ++tab) {
        ShowTab(tab);
        SCOPED_TRACE(tab);
        // What scrolls may be larger than the tab.
        auto* scroll = Form().Tab(tab).findChild<QScrollArea*>();
        QWidget& panel = scroll == nullptr ? Form().Tab(tab) : *scroll->widget();
        ExpectTidy(panel);
        ExpectReadable(panel);
    }
}

TEST_P(SettingsLayoutTest, EveryPage_TheNamesFit) {
    const QSize size = Form().size();
    for (int page = 0; page < kPageCount; ++page) {
        SCOPED_TRACE(page);
        ShowTab(0);
        Pick(Named<QComboBox>("ComboSpellLevel"), page);
        ExpectTidy(Form().Tab(0));
        ShowTab(2);
        Pick(Named<QComboBox>("ComboMacro"), page);
        ExpectTidy(Form().Tab(2));
        ShowTab(5);
        Pick(Named<QComboBox>("ComboSpellText"), page);
        ExpectTidy(Form().Tab(5));
    }
    for (const auto& [tab, name, count] :
         {std::tuple(3, "SkillType", 5), std::tuple(4, "RegType", 2)}) {
        ShowTab(tab);
        for (int index = 0; index < count; ++index) {
            SCOPED_TRACE(name + std::to_string(index));
            Click(name, index);
            ExpectTidy(Form().Tab(tab));
        }
    }
    EXPECT_EQ(Form().size(), size);
}

TEST_P(SettingsLayoutTest, Spells_TheColumnsStandUnderTheirHeadings) {
    for (int column = 0; column < 8; ++column) {
        const QRect box = Named("Reagent", column * 8 + 1).geometry();
        EXPECT_LE(std::abs(Named("Label2", column).geometry().center().x() - box.center().x()), 2);
        EXPECT_EQ(Named("RegPrice", column).geometry().left(), box.left());
        const QWidget& picture = Named("imgReg", column);
        const int middle = picture.mapTo(&Form().Spells(), picture.rect().center()).x();
        EXPECT_LE(std::abs(middle - box.center().x()), 2);
        for (int row = 1; row < 8; ++row) {
            EXPECT_EQ(Named("Reagent", column * 8 + row + 1).x(), box.x());
        }
    }
    const auto expectCentred = [this](const char* heading, const char* control) {
        const int middle = Named(heading).geometry().center().x();
        EXPECT_LE(std::abs(Named(control).geometry().center().x() - middle), 2) << heading;
    };
    expectCentred("Label1(3)", "SpellPrice(0)");
    expectCentred("Label1(7)", "CheckBook(0)");
    expectCentred("Label1(40)", "CheckTown(0)");
}

TEST_P(SettingsLayoutTest, Options_TheOneThatIsOnStandsOut) {
    for (const int tab : {3, 4}) {
        const char* const name = tab == 3 ? "SkillType" : "RegType";
        ShowTab(tab);
        Click(name, 1);
        Leave();
        const auto ground = [&](int index) {
            const QImage option = Named(name, index).grab().toImage();
            return option.pixelColor(option.width() - 6, option.height() - 6);
        };
        EXPECT_GE(Contrast(ground(1), ground(0)), 1.5) << name;
        Click(name, 0);
        Leave();
        EXPECT_GE(Contrast(ground(1), ground(0)), 1.5) << name;
    }
}

TEST_P(SettingsLayoutTest, UserSpells_TheLongestEntryFits) {
    ShowTab(1);
    auto& list = Named<QComboBox>("ComboUserSpell", 0);
    int widest = 0;
    for (int row = 0; row < list.count(); ++row) {
        widest = std::max(widest, list.fontMetrics().horizontalAdvance(list.itemText(row)));
    }
    EXPECT_GE(list.width(), widest + 30);
}

INSTANTIATE_TEST_SUITE_P(Themes, SettingsLayoutTest, testing::Values(false, true),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace spellwick
