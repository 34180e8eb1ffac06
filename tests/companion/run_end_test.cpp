// The end of the run: exit codes, the report of an uncaught failure, and what is saved first.
#include "companion/run_end.h"

#include <cstdio>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/recording_message_boxes.h"

namespace spellwick {
namespace {

// Ends the process in a child; each message box, the saving and the last step write a line.
class TellingBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& box) override {
        std::fprintf(stderr, "box %d: %s\n", static_cast<int>(box.icon), box.text.c_str());
        return BoxAnswer::kOk;
    }
};

void FailWith(const std::exception& failure, bool saves) {
    TellingBoxes boxes;
    RunEnd end(boxes);
    end.SetSaving([&] {
        std::fprintf(stderr, "saving\n");
        // A failure during the end does not start another.
        end.OnUncaughtFailure(std::runtime_error("another"), "saving");
        return saves;
    });
    end.SetCleanUp([] { std::fprintf(stderr, "last\n"); });
    end.OnUncaughtFailure(failure, "casting a spell");
}

class RunEndDeathTest : public testing::Test {
  protected:
    RunEndDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST(FailureReportTest, TellsWhatFailedWhereAndWhatIsSaved) {
    const RuntimeFailure failure(FailureKind::kOverflow, "40000 does not fit.");
    EXPECT_EQ(FailureReport(failure, "casting a spell"),
              "Spellwick has to end.\n\nWhat failed: " +
                  std::string(FailureName(FailureKind::kOverflow)) +
                  ". 40000 does not fit.\nWhile: casting a spell\n\nThe counters, the character's "
                  "data and the settings are saved as it ends.");
    EXPECT_NE(FailureReport(std::runtime_error("odd"), "x").find("Internal error. odd"),
              std::string::npos);
}

TEST_F(RunEndDeathTest, OnUncaughtFailure_ReportsThenSavesThenEndsWithOne) {
    const RuntimeFailure failure(FailureKind::kOverflow, "40000 does not fit.");
    EXPECT_EXIT(FailWith(failure, true), testing::ExitedWithCode(1),
                "box 1: Spellwick has to end(.|\n)*While: casting a spell(.|\n)*saving\nlast\n$");
}

TEST_F(RunEndDeathTest, OnUncaughtFailure_NotAllSaved_SaysSo) {
    const RuntimeFailure failure(FailureKind::kFile, "gone");
    EXPECT_EXIT(FailWith(failure, false), testing::ExitedWithCode(1),
                "saving\nbox 3: Some data could not be saved. Earlier saves are "
                "intact.\nlast\n$");
}

TEST_F(RunEndDeathTest, Report_HasItselfAndMoreForTheClipboard) {
    for (const bool fails : {false, true}) {
        RecordingMessageBoxes boxes;
        RunEnd end(boxes);
        end.SetDetails([fails]() -> std::string {
            if (fails) {
                throw std::runtime_error("no details");
            }
            return "System: x";
        });
        end.SetCleanUp(
            [&] { std::fprintf(stderr, "details: %s|\n", boxes.shown[0].details.c_str()); });
        EXPECT_EXIT(end.OnUncaughtFailure(std::runtime_error("odd"), "casting"),
                    testing::ExitedWithCode(1),
                    fails ? "details: Spellwick has to end(.|\n)*odd(.|\n)*\n\n[|]"
                          : "details: Spellwick has to end(.|\n)*odd(.|\n)*System: x[|]");
    }
}

// Like a signal that asks the program to end.
class EndingBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const Box& /*box*/) override {
        end->EndProcess(0);
        return BoxAnswer::kOk;
    }
    RunEnd* end = nullptr;
};

TEST_F(RunEndDeathTest, EndProcess_WhileTheReportStands_EndsWithOneAllTheSame) {
    EndingBoxes boxes;
    RunEnd end(boxes);
    boxes.end = &end;
    const RuntimeFailure failure(FailureKind::kOverflow, "40000 does not fit.");
    EXPECT_EXIT(end.OnUncaughtFailure(failure, "casting a spell"), testing::ExitedWithCode(1), "");
}

TEST_F(RunEndDeathTest, EndProcess_EndsAtOnceWithItsCode) {
    RecordingMessageBoxes boxes;
    RunEnd end(boxes);
    EXPECT_EXIT(end.EndProcess(0), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(end.EndProcess(2), testing::ExitedWithCode(2), "");
}

}  // namespace
}  // namespace spellwick
