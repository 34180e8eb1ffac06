// How the main window ends the settings dialog at the end of the program.
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class EndOfProgramTest : public MainWindowFixture {};

TEST_F(EndOfProgramTest, Unload_TheDialogsStepsComeBeforeTheMainWindowsSaving) {
    StartWithMira();
    std::size_t savedBefore = 1;
    m_parts.hooked = "unload settings";
    m_parts.hook = [&] { savedBefore = m_store.Batches().size(); };
    Program().End(EndCause::kUser);
    EXPECT_EQ(savedBefore, 0U);
    EXPECT_EQ(m_store.Batches().size(), 1U);
    EXPECT_THAT(TakeLog(),
                testing::ElementsAre("take reports", "unhook", "unload settings", "end 0"));
}

TEST_F(EndOfProgramTest, AfterAFailure_TheDialogsStepsCostTheOthersNothing) {
    StartWithMira();
    m_parts.failing = "unload settings";
    m_state.CurrentTithing = 77;
    EXPECT_FALSE(Program().SaveAfterFailure());
    EXPECT_EQ(Saved(kMira, "CurrentTithing"), " 77");
    EXPECT_THAT(TakeLog(), testing::Contains("unload settings"));
}

}  // namespace
}  // namespace spellwick
