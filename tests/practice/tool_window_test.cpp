#include "practice/tool_window.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/practice/tool_client.h"

namespace spellwick::practice {
namespace {

class ToolWindowTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_tool.Open());
        m_window.show();
    }

    template <typename Widget>
    Widget& Part(const char* name) {
        return *m_window.findChild<Widget*>(QLatin1String(name));
    }
    QString Cell(const char* table, int row) {
        return Part<QTableWidget>(table).item(row, 1)->text();
    }
    bool WaitCell(const char* table, int row, const char* text) {
        return ServeUntil([&] { return Cell(table, row) == QLatin1String(text); });
    }
    QStringList Log() {
        QStringList lines;
        const auto& log = Part<QListWidget>("Log");
        for (int line = 0; line < log.count(); ++line) {
            lines += log.item(line)->text().mid(10);  // without the time
        }
        return lines;
    }

    QTemporaryDir m_place;
    ToolTime m_now{0};
    PracticeTool m_tool{{.folder = m_place.path() + QStringLiteral("/assist"),
                         .name = QStringLiteral("practice"),
                         .clock = [this] { return m_now; },
                         .random = [](int lowest, int) { return lowest; }}};
    ToolWindow m_window{m_tool};
};

TEST_F(ToolWindowTest, Start_ShowsPackSkillsAndMana) {
    for (std::size_t item = 0; item < kStockItems.size(); ++item) {
        EXPECT_EQ(Cell("Pack", static_cast<int>(item)).toInt(), kStockItems.at(item).atStart);
    }
    EXPECT_EQ(Cell("Skills", 0), QStringLiteral("100.0"));
    EXPECT_EQ(Cell("Skills", 6), QStringLiteral("65.5"));
    EXPECT_EQ(Part<QProgressBar>("Mana").text(), QStringLiteral("Mana 100 of 100"));
}

TEST_F(ToolWindowTest, NothingIsCutOff) {
    m_window.resize(m_window.minimumSizeHint());
    QCoreApplication::processEvents();
    for (const char* name : {"Gain", "Lose", "Fizzle", "Close", "ComeBack"}) {
        const auto& button = Part<QPushButton>(name);
        EXPECT_GE(button.width(), button.sizeHint().width()) << name;
        EXPECT_GE(button.height(), button.sizeHint().height()) << name;
    }
    for (const char* name : {"Pack", "Skills"}) {
        auto& table = Part<QTableWidget>(name);
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int column = 0; column < 2; ++column) {
                const QRect cell = table.visualItemRect(table.item(row, column));
                EXPECT_TRUE(table.viewport()->rect().contains(cell)) << name << ' ' << row;
                EXPECT_LE(
                    table.fontMetrics().horizontalAdvance(table.item(row, column)->text()) + 6,
                    cell.width())
                    << name << ' ' << row << ' ' << column;
                EXPECT_LE(table.fontMetrics().height(), cell.height());
            }
        }
    }
}

TEST_F(ToolWindowTest, GainAndLose_ChangeTheMarkedThing) {
    Part<QTableWidget>("Pack").selectRow(4);
    Part<QSpinBox>("Amount").setValue(25);
    Part<QPushButton>("Gain").click();
    EXPECT_TRUE(WaitCell("Pack", 4, "175"));
    Part<QPushButton>("Lose").click();
    Part<QPushButton>("Lose").click();
    EXPECT_TRUE(WaitCell("Pack", 4, "125"));
}

TEST_F(ToolWindowTest, Fizzle_HoldsForOneCast) {
    auto& fizzle = Part<QPushButton>("Fizzle");
    fizzle.click();
    EXPECT_TRUE(fizzle.isChecked());
    m_tool.Cast(QStringLiteral("Heal"));
    EXPECT_TRUE(ServeUntil([&] { return !fizzle.isChecked(); }));
    EXPECT_EQ(m_tool.Script().Mana(), 100);
    EXPECT_TRUE(Log().contains(QStringLiteral("fizzled Heal")));
}

TEST_F(ToolWindowTest, CloseAndComeBack_TakeTurns) {
    auto& close = Part<QPushButton>("Close");
    auto& back = Part<QPushButton>("ComeBack");
    ASSERT_TRUE(ServeUntil([&] { return close.isEnabled() && !back.isEnabled(); }));
    close.click();
    EXPECT_FALSE(m_tool.IsOpen());
    EXPECT_TRUE(ServeUntil([&] { return back.isEnabled() && !close.isEnabled(); }));
    back.click();
    EXPECT_TRUE(m_tool.IsOpen());
}

TEST_F(ToolWindowTest, Program_IsListedAndItsLinesAreLogged) {
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(3));
    auto& programs = Part<QListWidget>("Programs");
    EXPECT_TRUE(ServeUntil([&] { return programs.item(0)->text() == QStringLiteral("Window 7"); }));
    const QStringList log = Log();
    EXPECT_TRUE(log.contains(QString::fromUtf8("\u2190 Register window 7")));
    EXPECT_TRUE(log.contains(QString::fromUtf8("\u2192 Answer: 1")));
    EXPECT_TRUE(log.contains(QString::fromUtf8("\u2192 The character is there")));
    client.Leave();
    EXPECT_TRUE(
        ServeUntil([&] { return programs.item(0)->text() == QStringLiteral("Window 7, gone"); }));
}

TEST_F(ToolWindowTest, Faults_AreAllInTheMenu) {
    for (const FaultRow& row : AllFaults()) {
        const auto name = QString::fromLatin1(row.name.data());
        const auto* action = m_window.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << row.name;
        EXPECT_EQ(action->isCheckable(), row.lasts) << row.name;
    }
}

TEST_F(ToolWindowTest, LastingFault_IsTickedAndEndsAtTheSecondClick) {
    auto* action = m_window.findChild<QAction*>(QStringLiteral("silent-count"));
    action->trigger();
    EXPECT_TRUE(m_tool.Lasts(Fault::kSilentCount));
    EXPECT_TRUE(action->isChecked());
    action->trigger();
    EXPECT_FALSE(m_tool.Lasts(Fault::kSilentCount));
    m_window.findChild<QAction*>(QStringLiteral("answers-0"))->trigger();
    m_window.findChild<QAction*>(QStringLiteral("answers-2"))->trigger();
    EXPECT_TRUE(ServeUntil(
        [&] { return !m_window.findChild<QAction*>(QStringLiteral("answers-0"))->isChecked(); }));
}

TEST_F(ToolWindowTest, Log_KeepsToItsLength) {
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(3));
    for (int round = 0; round < 15; ++round) {
        m_tool.Play(Fault::kBurst);
    }
    EXPECT_EQ(Part<QListWidget>("Log").count(), 2000);
}

TEST_F(ToolWindowTest, DarkPalette_LogStaysReadable) {
    m_tool.Cast(QStringLiteral("Heal"));
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(3));
    for (const bool dark : {false, true}) {
        const QPalette palette =
            dark ? QPalette(QColor(53, 53, 53), QColor(45, 45, 45)) : QPalette(Qt::white);
        m_window.setPalette(palette);
        QCoreApplication::processEvents();
        const auto& log = Part<QListWidget>("Log");
        const int ground = log.palette().color(QPalette::Base).lightness();
        EXPECT_EQ(ground < 128, dark);
        for (int line = 0; line < log.count(); ++line) {
            const int ink = log.item(line)->foreground().color().lightness();
            EXPECT_GE(std::abs(ink - ground), 90) << dark << ' ' << line;
        }
    }
}

}  // namespace
}  // namespace spellwick::practice
