// The settings dialog as a screen reader finds it.
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <cmath>

#include "tests/settings_dialog/form_settings_fixture.h"
#include "tests/support/spoken_tree.h"

namespace spellwick {
namespace {

using testing::IsEmpty;

TEST_F(FormSettingsTest, Spoken_EveryControlOfEveryTab_HasNameRoleAndKeyboardWay) {
    constexpr int kLeast = 15;
    Open();
    for (int tab = 0; tab < kTabCount; ++tab) {
        ShowTab(tab);
        std::vector<std::string> faults;
        int seen = 0;
        FindSpokenFaults(*QAccessible::queryAccessibleInterface(&Form()), faults, seen);
        EXPECT_THAT(faults, IsEmpty()) << "tab " << tab;
        EXPECT_GT(seen, kLeast) << "tab " << tab;
    }
}

TEST_F(FormSettingsTest, ToolTips_TellWhatTheHeadingsMean) {
    Open();
    const struct {
        int heading;
        const char* caption;
        const char* tip;
    } rows[] = {
        {3, "Spell costs", "What the reagents of one cast cost, in gold."},
        {7, "In book", "Ticked for the spells that are in your spellbook."},
        {8, "UO window name",
         "The character whose settings these are, by the title of the game's window."},
        {34, "INT required",
         "The intelligence that a spell asks for, which is the mana that it takes."},
        {36, "Magery for 95% success", "The skill at which 95 of 100 casts succeed."},
        {40, "Not in town",
         "Ticked for spells that may not be cast in town; their chance stands on red."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Text("Label1", row.heading), row.caption);
        EXPECT_EQ(Named("Label1", row.heading).toolTip().toStdString(), row.tip);
    }
}

TEST_F(FormSettingsTest, Spoken_Tabs_ArePageTabsOfWhichOneIsSelected) {
    Open();
    ShowTab(3);
    for (int tab = 0; tab < kTabCount; ++tab) {
        QAccessibleInterface& part =
            *QAccessible::queryAccessibleInterface(Form().CheckTab[static_cast<std::size_t>(tab)]);
        EXPECT_EQ(part.role(), QAccessible::PageTab);
        EXPECT_EQ(part.state().selected != 0U, tab == 3);
    }
}

TEST_F(FormSettingsTest, Spoken_Tabs_AreOneListAndNowhereElse) {
    Open();
    QAccessibleInterface& list =
        *QAccessible::queryAccessibleInterface(const_cast<TabStrip*>(Form().Strip()));
    EXPECT_EQ(list.role(), QAccessible::PageTabList);
    EXPECT_EQ(list.text(QAccessible::Name), QStringLiteral("Tabs"));
    ASSERT_EQ(list.childCount(), kTabCount);
    for (int tab = 0; tab < kTabCount; ++tab) {
        QWidget* button = Form().CheckTab[static_cast<std::size_t>(tab)];
        EXPECT_EQ(list.child(tab)->object(), button);
        EXPECT_EQ(list.indexOfChild(list.child(tab)), tab);
        EXPECT_EQ(list.child(tab)->parent()->object(), Form().Strip());
    }
    EXPECT_EQ(list.child(kTabCount), nullptr);
    QAccessibleInterface& dialog = *QAccessible::queryAccessibleInterface(&Form());
    EXPECT_EQ(dialog.role(), QAccessible::Dialog);
    for (int child = 0; child < dialog.childCount(); ++child) {
        EXPECT_NE(dialog.child(child)->role(), QAccessible::PageTab);
    }
    EXPECT_EQ(dialog.indexOfChild(list.child(8)), -1);
    // A press opens the tab.
    list.child(5)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(list.child(5)->state().selected);
}

TEST_F(FormSettingsTest, Spoken_CellsAndEdits_AreNamedByWhatTheyMean) {
    Open();
    const auto pageOf = [this](const char* list, int page) {
        Pick(Named<QComboBox>(QLatin1String(list)), page);
    };
    EXPECT_EQ(SpokenNameOf(Named("Reagent", 36)), "Garlic of Heal");
    EXPECT_EQ(SpokenNameOf(Named("CheckBook", 3)), "Heal is in the book");
    EXPECT_EQ(SpokenNameOf(Named("CheckTown", 3)), "Heal may not be cast in town");
    EXPECT_EQ(SpokenNameOf(Named("RegPrice", 4)), "Price of Garlic");
    pageOf("ComboSpellLevel", 8);
    EXPECT_EQ(SpokenNameOf(Named("RegPrice", 0)), "Price of Bat Wing");
    EXPECT_EQ(SpokenNameOf(Named("MinimumSkill", 1)), "Skill required for Second Circle");
    ShowTab(5);
    EXPECT_EQ(SpokenNameOf(Named("TextSpell", 3)), "Text of Heal");
    EXPECT_EQ(SpokenNameOf(Named("ComboUserSpell", 0)), "Spell 1 of user page 1");
    ShowTab(4);
    EXPECT_EQ(SpokenNameOf(Named("UpDownLeft", 5)), "Garlic in the left container, up and down");
}

TEST_F(FormSettingsTest, Mnemonics_NoLetterOfATabStandsForTwoControls) {
    Open();
    for (int tab = 0; tab < kTabCount; ++tab) {
        ShowTab(tab);
        std::vector<QKeySequence> letters;
        for (const QWidget* control : Form().findChildren<QWidget*>()) {
            const QKeySequence letter =
                QKeySequence::mnemonic(control->property("text").toString());
            if (control->isVisible() && !letter.isEmpty()) {
                EXPECT_THAT(letters, testing::Not(testing::Contains(letter)))
                    << letter.toString().toStdString() << " on tab " << tab;
                letters.push_back(letter);
            }
        }
        EXPECT_THAT(letters, testing::Contains(QKeySequence(Qt::ALT | Qt::Key_O)));
    }
}

TEST_F(FormSettingsTest, DarkGround_UntickedBoxesHaveAContrastOfThree) {
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, QColor(45, 45, 45));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Button, QColor(53, 53, 53));
    QApplication::setPalette(dark);
    Open();
    ShowTab(7);
    auto& box = Named<QCheckBox>(QStringLiteral("CheckAlwaysOnTop"));
    ASSERT_FALSE(box.isChecked());
    const QImage shown = box.grab().toImage();
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF());
    };
    double lightest = 0.0;
    for (int x = 0; x < 8; ++x) {
        lightest = std::max(lightest, luminance(shown.pixelColor(x, shown.height() / 2)));
    }
    QApplication::setPalette(light);
    EXPECT_GE((lightest + 0.05) / (luminance(QColor(45, 45, 45)) + 0.05), 3.0);
}

TEST_F(FormSettingsTest, Macros_ShowTheNamesOfTheirSpells) {
    Open();
    ShowTab(2);
    auto& name = Named<QLabel>("LabelMacro", 6);
    EXPECT_EQ(name.text(), QStringLiteral("Reactive Armor"));
    for (int page = 0; page < 12; ++page) {
        Pick(Named<QComboBox>(QStringLiteral("ComboMacro")), page);
        for (int line = 0; line < 8; ++line) {
            auto& label = Named<QLabel>("LabelMacro", line);
            EXPECT_LE(label.heightForWidth(label.width()), label.height())
                << label.text().toStdString();
        }
    }
}

}  // namespace
}  // namespace spellwick
