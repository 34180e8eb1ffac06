#include "link/assist_tools.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using testing::HasSubstr;

AssistTools Read(const std::string& text) {
    std::istringstream input(text);
    return ReadAssistTools(input);
}

AssistTools Delivered() {
    return Read(std::string(DeliveredAssistTools()));
}

std::string FaultOf(const std::string& row) {
    const AssistTools tools = Read("Tools, 1\n" + row + "\n");
    EXPECT_TRUE(tools.rows.empty()) << row;
    return tools.fault ? FaultText(kAssistToolsFile, *tools.fault, kAssistToolColumns) : "no fault";
}

TEST(AssistToolsTest, DeliveredTable_KnowsTodaysToolsByTheirTitles) {
    const AssistTools tools = Delivered();
    ASSERT_FALSE(tools.fault);
    struct Title {
        const char* title;
        const char* tool;
    };
    for (const Title& each :
         {Title{"Bran (Oak Hill) - Razor v1.10.4.2", "Razor"}, Title{"Razor v1.10.4.2", "Razor"},
          Title{"Lady Miranda (of) (Trinsic) - Razor v2", "Razor"},
          Title{"Bran (Oak Hill) - Razor Enhanced 0.8.2.245", "Razor Enhanced"},
          Title{"Razor Enhanced 0.8.2.245", "Razor Enhanced"},
          Title{"UOASSIST-TP-MSG-WND", "ClassicUO or Razor"}}) {
        const AssistToolRow* found = FindAssistTool(tools.rows, each.title);
        ASSERT_NE(found, nullptr) << each.title;
        EXPECT_EQ(found->tool.name, each.tool) << each.title;
        EXPECT_TRUE(found->tool.castsWithinCircle);
        EXPECT_TRUE(found->tool.reportsCasts);
        EXPECT_FALSE(found->tool.isTrustedAtOnce);
    }
    for (const char* title : {"", "razor v1", "Razor", "My Razor v1", "Ockham's Razor version 1",
                              "UOASSIST-TP-MSG-WND 2", "uoassist", "Bran (Oak Hill)"}) {
        EXPECT_EQ(FindAssistTool(tools.rows, title), nullptr) << title;
    }
}

TEST(AssistToolsTest, DeliveredTable_SaysWhatEachReports) {
    const AssistTools tools = Delivered();
    const AssistTool& razor = FindAssistTool(tools.rows, "Razor v1")->tool;
    EXPECT_TRUE(razor.countsOnRequest);
    EXPECT_TRUE(razor.reportsStock);
    EXPECT_EQ(razor.stats, StatsWords::kManaAlone);
    const AssistTool& enhanced = FindAssistTool(tools.rows, "Razor Enhanced 1")->tool;
    EXPECT_FALSE(enhanced.countsOnRequest);
    EXPECT_FALSE(enhanced.reportsStock);
    EXPECT_EQ(enhanced.stats, StatsWords::kManaAlone);
    const AssistTool& hidden = FindAssistTool(tools.rows, "UOASSIST-TP-MSG-WND")->tool;
    EXPECT_FALSE(hidden.countsOnRequest);
    EXPECT_EQ(hidden.stats, StatsWords::kNone);
}

TEST(AssistToolsTest, OwnTable_EachWordMeansWhatItSays) {
    const AssistTools tools =
        Read("Tools, 1\nMine, Mine {any} | Yours, absolute, yes, no, no, intelligence mana\n");
    ASSERT_FALSE(tools.fault);
    ASSERT_EQ(tools.rows.size(), 1U);
    const AssistTool& mine = tools.rows[0].tool;
    EXPECT_EQ(mine.name, "Mine");
    EXPECT_FALSE(mine.castsWithinCircle);
    EXPECT_TRUE(mine.countsOnRequest);
    EXPECT_FALSE(mine.reportsCasts);
    EXPECT_FALSE(mine.reportsStock);
    EXPECT_EQ(mine.stats, StatsWords::kIntelligenceAndMana);
    EXPECT_NE(FindAssistTool(tools.rows, "Mine 3"), nullptr);
    EXPECT_NE(FindAssistTool(tools.rows, "Yours"), nullptr);
}

TEST(AssistToolsTest, Fault_NamesFileRowColumnAndWhatIsWrong) {
    EXPECT_EQ(FaultOf("Mine, Mine, relative, yes, yes, yes, none"),
              "AssistTools.txt, row 1, column 3 (\"casts\"): \"relative\" is none of \"absolute\", "
              "\"within circle\".");
    EXPECT_THAT(FaultOf(", Mine, absolute, yes, yes, yes, none"), HasSubstr("column 1 (\"name\")"));
    EXPECT_THAT(FaultOf("Mine, , absolute, yes, yes, yes, none"), HasSubstr("there is no title"));
    EXPECT_THAT(FaultOf("Mine, {any}, absolute, yes, yes, yes, none"),
                HasSubstr("any title would have this form"));
    EXPECT_THAT(FaultOf("Mine, {any, absolute, yes, yes, yes, none"), HasSubstr("column 2"));
    EXPECT_THAT(FaultOf("Mine, Mine, absolute, Yes, yes, yes, none"), HasSubstr("column 4"));
    EXPECT_THAT(FaultOf("Mine, Mine, absolute, yes, 1, yes, none"), HasSubstr("column 5"));
    EXPECT_THAT(FaultOf("Mine, Mine, absolute, yes, yes, , none"), HasSubstr("column 6"));
    EXPECT_THAT(FaultOf("Mine, Mine, absolute, yes, yes, yes, mana"), HasSubstr("column 7"));
    EXPECT_THAT(FaultOf("Mine, Mine"), HasSubstr("row 1"));
}

TEST(AssistToolsTest, OwnFile_IsReadInsteadOfTheDeliveredRows) {
    const TemporaryFolder folder;
    EXPECT_EQ(LoadAssistTools().rows.size(), Delivered().rows.size());
    EXPECT_EQ(LoadAssistTools(folder.Path()).rows.size(), Delivered().rows.size());
    const auto write = [&](const char* text) {
        std::ofstream(folder.Path() / kAssistToolsFile, std::ios::binary) << text;
        return LoadAssistTools(folder.Path());
    };
    const LoadedTable<AssistToolRow> own =
        write("Tools, 1\nMine, Mine, absolute, yes, yes, yes, none\n");
    ASSERT_EQ(own.rows.size(), 1U);
    EXPECT_EQ(own.rows[0].tool.name, "Mine");
    EXPECT_EQ(own.fault, "");
    const LoadedTable<AssistToolRow> bad =
        write("Tools, 1\nMine, Mine, absolute, yes, yes, yes, all\n");
    EXPECT_TRUE(bad.rows.empty());
    EXPECT_THAT(bad.fault, HasSubstr("AssistTools.txt, row 1, column 7 (\"0x531\")"));
    EXPECT_THAT(write("Tools").fault, HasSubstr("AssistTools.txt, first line, column 2"));
    EXPECT_TRUE(write("Tools, 0").rows.empty()) << "a table of no tools is no fault";
    std::filesystem::remove(folder.Path() / kAssistToolsFile);
    std::filesystem::create_directory(folder.Path() / kAssistToolsFile);
    EXPECT_THAT(LoadAssistTools(folder.Path()).fault, HasSubstr("AssistTools.txt: "));
}

}  // namespace
}  // namespace spellwick
