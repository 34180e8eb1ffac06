#include "practice/tool_roles.h"

#include <gtest/gtest.h>

#include "practice/tool_numbers.h"

namespace spellwick::practice {
namespace {

using Report = std::optional<ToolMessage>;

Report Of(const char* role, std::uint32_t number, int wParam, int lParam) {
    const ToolRole* found = FindToolRole(role);
    EXPECT_NE(found, nullptr) << role;
    return found == nullptr ? std::nullopt : AsRole(*found, {number, wParam, lParam});
}

TEST(ToolRolesTest, TheFirstRole_ReportsAllAsItIs) {
    for (const ToolMessage& report : {ToolMessage{kCastMessage, 64, 0},
                                      {kCastMessage, 117, 0},
                                      {kStockMessage, 200, 70000},
                                      {kManaMessage, 100, 40},
                                      {kSkillMessage, 25, 1000},
                                      {kMageryMessage, 100, 0}}) {
        EXPECT_EQ(AsRole(kToolRoles.front(), report), report);
    }
}

TEST(ToolRolesTest, Razor_NumbersCastsWithinTheCircleAndReportsNoTithing) {
    EXPECT_EQ(Of("razor", kCastMessage, 1, 0), Report({kCastMessage, 1, 0}));
    EXPECT_EQ(Of("razor", kCastMessage, 64, 0), Report({kCastMessage, 8, 0}));
    EXPECT_EQ(Of("razor", kCastMessage, 28, 0), Report({kCastMessage, 4, 0}));
    EXPECT_EQ(Of("razor", kCastMessage, 117, 0), Report({kCastMessage, 17, 0}));
    EXPECT_EQ(Of("razor", kCastMessage, 201, 0), Report({kCastMessage, 1, 0}));
    EXPECT_EQ(Of("razor", kStockMessage, 2, 9), Report({kStockMessage, 2, 9}));
    EXPECT_EQ(Of("razor", kStockMessage, 200, 9), std::nullopt);
}

TEST(ToolRolesTest, OthersReportLess) {
    EXPECT_EQ(Of("razor-enhanced", kCastMessage, 28, 0), Report({kCastMessage, 4, 0}));
    EXPECT_EQ(Of("razor-enhanced", kStockMessage, 2, 9), std::nullopt);
    EXPECT_EQ(Of("razor-enhanced", kManaMessage, 100, 40), Report({kManaMessage, 100, 40}));
    EXPECT_EQ(Of("classicuo", kCastMessage, 28, 0), std::nullopt);
    EXPECT_EQ(Of("classicuo", kStockMessage, 2, 9), std::nullopt);
    EXPECT_EQ(Of("classicuo", kManaMessage, 100, 40), Report({kManaMessage, 100, 100}));
    EXPECT_EQ(Of("classicuo", kSkillMessage, 49, 800), std::nullopt);
    EXPECT_EQ(FindToolRole("Razor"), nullptr);
    EXPECT_EQ(FindToolRole(""), nullptr);
}

}  // namespace
}  // namespace spellwick::practice
