// The search for assist tools in Wine at the start.
#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::Not;

class WineToolsTest : public CompanionFixture {};

TEST_F(WineToolsTest, Start_BeginsTheSearchOnlyWhereTheOptionIsOn) {
    Make();
    Start();
    EXPECT_THAT(TakeLog(), Not(Contains("start wine tools"))) << "off at first";
    SetSaved("Settings", "FindWineTools", "True");
    Make();
    Start();
    EXPECT_THAT(TakeLog(), Contains("start wine tools").Times(1));
}

}  // namespace
}  // namespace spellwick
