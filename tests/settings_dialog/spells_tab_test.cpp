// The tab of spells: their pages, amounts, flags and pictures.
#include <QLabel>
#include <QPainter>

#include "model/spell_lookup.h"
#include "tests/settings_dialog/spells_tab_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kPages[] = {"Level 1 spells", "Level 2 spells", "Level 3 spells",
                                  "Level 4 spells", "Level 5 spells", "Level 6 spells",
                                  "Level 7 spells", "Level 8 spells", "Necromancer 1",
                                  "Necromancer 2",  "Paladin 1",      "Paladin 2"};
constexpr const char* kCodes[] = {"MR", "SA", "BM", "SS", "GL", "BP", "NI",
                                  "GS", "BW", "GD", "DB", "NC", "PI", "TI"};

TEST_F(SpellsTabTest, Captions_AreAsTold) {
    Open();
    EXPECT_EQ(Text("Label1", 7), "In book");
    EXPECT_EQ(Text("Label1", 40), "Not in town");
    EXPECT_EQ(Text("Label1", 2), "Price of Reagent");
    EXPECT_EQ(Text("Label1", 3), "Spell costs");
    EXPECT_EQ(Text("CheckPics"), "Pictures");
    EXPECT_EQ(Text("Command2"), "Fill book");
    EXPECT_EQ(Text("Command3"), "Empty");
}

TEST_F(SpellsTabTest, Pages_AreTheTwelve) {
    Open();
    ASSERT_EQ(Level().count(), 12);
    for (int page = 0; page < 12; ++page) {
        EXPECT_EQ(Level().itemText(page).toStdString(), kPages[page]);
    }
    EXPECT_EQ(Level().currentIndex(), 0);
}

TEST_F(SpellsTabTest, EveryPage_ShowsItsSpellsAmountsCostsAndColumns) {
    Open();
    for (int page = 0; page < 12; ++page) {
        ShowPage(page);
        const bool magery = page < 8;
        const int columns = magery ? 8 : 6;
        for (int row = 0; row < 8; ++row) {
            const SpellRecord& spell = m_state.Spells(page * 8 + row);
            EXPECT_EQ(Text("LabelSpell", row), spell.Name);
            i32 cost = 0;
            for (int reagent = 1; reagent <= 14; ++reagent) {
                cost += spell.Reagents(reagent) * m_state.RegPrice(reagent);
            }
            EXPECT_EQ(Text("SpellPrice", row), " " + std::to_string(cost));
            EXPECT_EQ(Town(row).isChecked(), spell.InTown != 1);
            EXPECT_FALSE(Book(row).isChecked());
            for (int column = 0; column < 8; ++column) {
                EXPECT_EQ(IsShown("Reagent", Cell(column, row)), column < columns);
                if (column < columns) {
                    const int amount = spell.Reagents(column + (magery ? 1 : 9));
                    EXPECT_EQ(Text("Reagent", Cell(column, row)),
                              amount == 0 ? "" : std::to_string(amount))
                        << page << " " << row << " " << column;
                }
            }
        }
        for (int column = 0; column < 8; ++column) {
            EXPECT_EQ(IsShown("Label2", column), column < columns);
            EXPECT_EQ(IsShown("RegPrice", column), column < columns);
            if (column < columns) {
                const int reagent = column + (magery ? 1 : 9);
                EXPECT_EQ(Text("Label2", column), kCodes[reagent - 1]);
                EXPECT_EQ(Text("RegPrice", column),
                          " " + std::to_string(m_state.RegPrice(reagent)));
            }
        }
        EXPECT_EQ(Named("Line2").isVisible(), magery);
    }
}

struct CellRow {
    const char* typed;
    int stored;
    const char* shown;
};

TEST_F(SpellsTabTest, Reagent_LostFocus_KeepsTheAmountWithinItsBounds) {
    Open();
    for (const CellRow& row : std::initializer_list<CellRow>{{"4", 4, "4"},
                                                             {"0", 0, ""},
                                                             {"", 0, ""},
                                                             {"1000", 99, "99"},
                                                             {"100", 99, "99"},
                                                             {"99", 99, "99"},
                                                             {"-5", 0, ""},
                                                             {"-", 0, ""},
                                                             {"+", 0, ""},
                                                             {"abc", 0, ""},
                                                             {"1.5", 2, "2"},
                                                             {"2.5", 2, "2"},
                                                             {"0.5", 0, ""},
                                                             {"9e9", 99, "99"},
                                                             {"-9e9", 0, ""},
                                                             {"1234567890", 99, "99"},
                                                             {"7x", 7, "7"}}) {
        Enter("Reagent", Cell(0, 0), row.typed);
        Leave();
        EXPECT_EQ(m_state.Spells(0).Reagents(1), row.stored) << row.typed;
        EXPECT_EQ(Text("Reagent", Cell(0, 0)), row.shown) << row.typed;
    }
}

TEST_F(SpellsTabTest, Reagent_ANovelIsTakenByItsFirstThreeCharacters) {
    Open();
    Paste(Named<QLineEdit>("Reagent", 1), QStringLiteral("12 angry men ").repeated(50000));
    Leave();
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 12);
    EXPECT_EQ(Text("Reagent", 1), "12");
}

TEST_F(SpellsTabTest, Reagent_Thousand_ReadsHundredAndStores99) {
    Open();
    Enter("Reagent", Cell(3, 2), "1000");
    Leave();
    EXPECT_EQ(m_state.Spells(2).Reagents(4), 99);
    EXPECT_EQ(Text("Reagent", Cell(3, 2)), "99");
}

TEST_F(SpellsTabTest, Reagent_EveryCellWritesItsSpellAndReagent) {
    Open();
    for (const int page : {1, 8, 11}) {
        ShowPage(page);
        const int columns = page < 8 ? 8 : 6;
        for (int cell = 1; cell <= columns * 8; ++cell) {
            const int column = (cell - 1) / 8;
            const int row = (cell - 1) % 8;
            Named<QLineEdit>("Reagent", cell).setText(QString::number(cell % 9 + 1));
            Form().Spells().ReagentLostFocus(cell);
            EXPECT_EQ(m_state.Spells(page * 8 + row).Reagents(column + (page < 8 ? 1 : 9)),
                      cell % 9 + 1)
                << page << " " << cell;
        }
    }
}

TEST_F(SpellsTabTest, Reagent_LostFocus_CalculatesTheCosts) {
    Open();
    Enter("Reagent", Cell(0, 0), "10");
    const i16 before = m_state.Spells(0).Cost;
    EXPECT_EQ(m_state.Spells(0).Cost, before);
    Leave();
    EXPECT_EQ(m_state.Spells(0).Cost, before + 30);
    EXPECT_EQ(Text("SpellPrice", 0), " " + std::to_string(before + 30));
}

TEST_F(SpellsTabTest, Reagent_GotFocus_SelectsTheWholeText) {
    Open();
    Click("Reagent", Cell(2, 0));
    EXPECT_EQ(Named<QLineEdit>("Reagent", Cell(2, 0)).selectedText(), QStringLiteral("1"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(SpellsTabTest, Reagent_HasNoKeyFilter) {
    Open();
    Enter("Reagent", 1, "ab");
    EXPECT_EQ(Text("Reagent", 1), "ab");
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(SpellsTabTest, Reagent_UnfinishedEntry_GoesToThePageOnWhichItWasTyped) {
    Open();
    const int ofOtherPage = m_state.Spells(8).Reagents(1);
    Enter("Reagent", 1, "3");
    ShowPage(1);
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 3);
    EXPECT_EQ(m_state.Spells(8).Reagents(1), ofOtherPage);
}

// covers ODDITY(one-digit-amounts)
TEST_F(SpellsTabTest, Reagent_Oddity_AnAmountOf10OrMoreIsItsFirstDigitAfterTheNextStart) {
    Open();
    Enter("Reagent", Cell(0, 0), "12");
    Click("Command1");
    m_form.reset();
    Open();
    EXPECT_EQ(Text("Reagent", Cell(0, 0)), "1");
}

TEST_F(SpellsTabTest, Book_Click_StoresTheFlagOfTheRow) {
    Open();
    ShowPage(2);
    for (int row = 0; row < 8; ++row) {
        Click("CheckBook", row);
        EXPECT_EQ(m_state.Spellbook(16 + row), 0);
        Click("CheckBook", row);
        EXPECT_EQ(m_state.Spellbook(16 + row), 1);
    }
}

TEST_F(SpellsTabTest, Town_Click_StoresTheOppositeOfTheTick) {
    Open();
    ShowPage(3);
    for (int row = 0; row < 8; ++row) {
        const bool ticked = Town(row).isChecked();
        Click("CheckTown", row);
        EXPECT_EQ(m_state.Spells(24 + row).InTown, ticked ? 1 : 0);
        Click("CheckTown", row);
        EXPECT_EQ(m_state.Spells(24 + row).InTown, ticked ? 0 : 1);
    }
}

TEST_F(SpellsTabTest, Flags_BoxesAreTickedUnlessTheValueIsOne) {
    Open();
    m_state.Spellbook(0) = 5;
    m_state.Spellbook(1) = 0;
    m_state.Spells(0).InTown = 7;
    m_state.Spells(1).InTown = 1;
    Form().RefreshDialog();
    EXPECT_TRUE(Book(0).isChecked());
    EXPECT_TRUE(Book(1).isChecked());
    EXPECT_FALSE(Book(2).isChecked());
    EXPECT_TRUE(Town(0).isChecked());
    EXPECT_FALSE(Town(1).isChecked());
}

struct SchoolRow {
    const char* name;
    int page;
    int first;
    int last;
};

class BookButtonsTest : public SpellsTabTest, public testing::WithParamInterface<SchoolRow> {};

TEST_P(BookButtonsTest, FillAndEmpty_WorkOnTheWholeSchoolAlone) {
    Open();
    const SchoolRow& school = GetParam();
    ShowPage(school.page);
    Click("Command2");
    for (int row = 0; row <= 96; ++row) {
        EXPECT_EQ(m_state.Spellbook(row), row >= school.first && row <= school.last ? 0 : 1) << row;
    }
    for (int row = 0; row < 8; ++row) {
        EXPECT_TRUE(Book(row).isChecked());
    }
    m_state.Spellbook.Fill(0);
    Click("Command3");
    for (int row = 0; row <= 96; ++row) {
        EXPECT_EQ(m_state.Spellbook(row), row >= school.first && row <= school.last ? 1 : 0) << row;
    }
    for (int row = 0; row < 8; ++row) {
        EXPECT_FALSE(Book(row).isChecked());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Schools, BookButtonsTest,
    testing::Values(SchoolRow{"Level1", 0, 0, 63}, SchoolRow{"Level8", 7, 0, 63},
                    SchoolRow{"Necromancer1", 8, 64, 79}, SchoolRow{"Necromancer2", 9, 64, 79},
                    SchoolRow{"Paladin1", 10, 80, 95}, SchoolRow{"Paladin2", 11, 80, 95}),
    [](const auto& row) { return row.param.name; });

TEST_F(SpellsTabTest, Pictures_ClickShowsThemAndSaves) {
    Open();
    EXPECT_FALSE(Named("PicRegHolder").isVisible());
    Click("CheckPics");
    EXPECT_TRUE(Named("PicRegHolder").isVisible());
    EXPECT_THAT(TakeLog(), ElementsAre("option Pictures 1"));
    for (int column = 0; column < 8; ++column) {
        EXPECT_TRUE(IsShown("imgReg", column));
        EXPECT_TRUE(IsShown("Label2", column));
        EXPECT_EQ(Named("imgReg", column).x(), column * 40);
    }
    Click("CheckPics");
    EXPECT_FALSE(Named("PicRegHolder").isVisible());
    EXPECT_THAT(TakeLog(), ElementsAre("option Pictures 0"));
}

TEST_F(SpellsTabTest, Pictures_SavedOnesShowFromTheStart) {
    SetSaved("Settings", "Pictures", "1");
    Open();
    EXPECT_TRUE(Named("PicRegHolder").isVisible());
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(SpellsTabTest, Pictures_AreThoseOfThePagesReagents) {
    SetSaved("Settings", "Pictures", "1");
    Open();
    const auto cell = [this](int reagent) {
        QImage image(28, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Form().palette().color(QPalette::Window));
        QPainter painter(&image);
        painter.drawPixmap(QRect(0, 0, 28, 20), m_pictures.Reagents().Strip(),
                           m_pictures.Reagents().Cell(reagent - 1));
        return image;
    };
    for (const int page : {0, 8}) {
        ShowPage(page);
        const QImage shot = Named("PicRegHolder")
                                .grab()
                                .toImage()
                                .convertToFormat(QImage::Format_ARGB32_Premultiplied);
        for (int column = 0; column < (page < 8 ? 8 : 6); ++column) {
            EXPECT_EQ(shot.copy(column * 40, 0, 28, 20), cell(column + (page < 8 ? 1 : 9)))
                << page << " " << column;
        }
        if (page == 8) {
            EXPECT_FALSE(IsShown("imgReg", 6));
            EXPECT_FALSE(IsShown("imgReg", 7));
        }
    }
}

TEST_F(SpellsTabTest, TabKey_GoesRowByRowThenToPricesAndButtons) {
    Open();
    Level().setFocus();
    std::vector<std::string> order;
    for (int step = 0; step < 13; ++step) {
        order.push_back(FocusName());
        Press(Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("ComboSpellLevel", "CheckPics", "Reagent(1)", "Reagent(9)",
                                   "Reagent(17)", "Reagent(25)", "Reagent(33)", "Reagent(41)",
                                   "Reagent(49)", "Reagent(57)", "CheckBook(0)", "CheckTown(0)",
                                   "Reagent(2)"));
    Named("RegPrice", 7).setFocus();
    for (const char* next : {"Command2", "Command3", "Command1", "CheckTab(0)"}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(FocusName(), next);
    }
}

}  // namespace
}  // namespace spellwick
