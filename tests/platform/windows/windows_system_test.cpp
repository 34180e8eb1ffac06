#include <gmock/gmock.h>

#include "platform/system.h"

namespace spellwick {
namespace {

TEST(WindowsSystem, OpenSystem_Licences_AreALineEach) {
    const System system = OpenSystem({}, nullptr).get();
    EXPECT_GT(system.licences.size(), 3U);
    for (const std::string& line : system.licences) {
        EXPECT_THAT(line, testing::HasSubstr(": "));
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
    }
    EXPECT_THAT(system.licences, testing::Contains("utfcpp: Boost Software License 1.0"));
}

}  // namespace
}  // namespace spellwick
