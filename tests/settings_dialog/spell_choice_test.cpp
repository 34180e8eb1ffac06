// Lists that find a spell as its name is typed.
#include "settings_dialog/spell_choice.h"

#include <QStringListModel>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

class SpellChoiceTest : public SettingsFixture {
  protected:
    void OpenTab() {
        Open();
        ShowTab(1);
        List().setFocus();
    }
    SpellChoice& List() { return *Form().UserSpells().ComboUserSpell[0]; }
    std::string Chosen() { return List().currentText().toStdString(); }
    // Longer than what is typed counts together.
    static void Wait() { QTest::qWait(QApplication::keyboardInputInterval() + 50); }
};

TEST_F(SpellChoiceTest, Letters_ReachTheSpellByItsName) {
    OpenTab();
    Type("heal");
    EXPECT_EQ(Chosen(), " 1 - Heal");
    EXPECT_EQ(m_state.UserSpells(0), 3) << "it is chosen, not only shown";
    Wait();
    Type("gr");
    EXPECT_EQ(Chosen(), " 4 - Greater Heal");
    Wait();
    Type("noble");
    EXPECT_EQ(Chosen(), "P - Noble Sacrifice");
    EXPECT_EQ(m_state.UserSpells(0), 89);
}

TEST_F(SpellChoiceTest, SameLetterAgain_GoesToTheNextName) {
    OpenTab();
    List().setCurrentIndex(11);  // Harm
    Type("h");
    EXPECT_EQ(Chosen(), "N - Horrific Beast");
    Type("h");
    EXPECT_EQ(Chosen(), "P - Holy Light");
    Type("h");
    EXPECT_EQ(Chosen(), " 1 - Heal") << "and round";
}

TEST_F(SpellChoiceTest, Digits_ReachTheCircle) {
    OpenTab();
    Type("4");
    EXPECT_EQ(List().currentIndex(), 24);
    Type("4");
    EXPECT_EQ(List().currentIndex(), 25);
    Wait();
    Type("1");
    EXPECT_EQ(List().currentIndex(), 0);
}

TEST_F(SpellChoiceTest, NamesWithABlank_AreTypedOut) {
    OpenTab();
    List().showPopup();
    ASSERT_TRUE(List().view()->isVisible());
    const auto type = [&](const char* text) {
        for (const char* letter = text; *letter != '\0'; ++letter) {
            QTest::keyClick(List().view(), *letter);
        }
    };
    type("magic r");
    EXPECT_EQ(List().view()->currentIndex().data().toString(),
              QStringLiteral(" 5 - Magic Reflection"));
    EXPECT_EQ(m_state.UserSpells(0), 0) << "the open list has not been left";
    QTest::keyClick(List().view(), Qt::Key_Return);
    EXPECT_EQ(Chosen(), " 5 - Magic Reflection");
    EXPECT_EQ(m_state.UserSpells(0), 35);
}

TEST_F(SpellChoiceTest, NoSuchName_ChangesNothing) {
    OpenTab();
    List().setCurrentIndex(20);
    Type("xq");
    EXPECT_EQ(List().currentIndex(), 20);
}

TEST_F(SpellChoiceTest, Tab_SaysWhatThePagesAreForAndHowASpellIsFound) {
    OpenTab();
    const std::string text = Text("LabelUserPages");
    for (const char* part : {"U1 and U2", "main window", "first letters of its name"}) {
        EXPECT_THAT(text, testing::HasSubstr(part));
    }
}

TEST(NextSpellEntry, NamesComeBeforeWholeEntries) {
    const QStringListModel entries(
        {QStringLiteral(" 1 - Night"), QStringLiteral("N - Pain"), QStringLiteral("P - Noble")});
    EXPECT_EQ(NextSpellEntry(entries, 0, QStringLiteral("n")), 0);
    EXPECT_EQ(NextSpellEntry(entries, 1, QStringLiteral("n")), 2);
    EXPECT_EQ(NextSpellEntry(entries, 0, QStringLiteral("P")), 1) << "Pain";
    EXPECT_EQ(NextSpellEntry(entries, 2, QStringLiteral("P - ")), 2);
    EXPECT_EQ(NextSpellEntry(entries, 0, QStringLiteral("1")), 0);
    EXPECT_EQ(NextSpellEntry(entries, 0, QStringLiteral("z")), -1);
}

}  // namespace
}  // namespace spellwick
