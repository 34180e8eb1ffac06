// How the window shows what the watch finds.
#include <QComboBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class WatchTest : public MainWindowFixture {
  protected:
    void SeeClient(const std::string& title) {
        OpenClient(title);
        Tick(1);
    }
    std::string Caption() const { return m_form->windowTitle().toStdString(); }
    // Repaints the window, as when another window uncovers it.
    void Paint() { m_form->grab(); }
};

TEST_F(WatchTest, Tick_NewTitle_DrawsTheNextPlayer) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "MR 0", "9");
    SetSaved(kBran, "Bag 0", "Sack");
    SeeClient(kBran);
    EXPECT_EQ(Text("Reagent", 1), "9");
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboReagent")).currentText(),
              QStringLiteral("Sack"));
    EXPECT_EQ(Caption(), CaptionText("Bran", "Oak Hill"));
}

// covers ODDITY(caption-at-paint)
TEST_F(WatchTest, Tick_Oddity_ClientGoneShowsInTheCaptionAtTheNextPaintOnly) {
    StartWithMira();
    ASSERT_EQ(Caption(), CaptionText("Mira Talon", "Atlantic"));
    SeeClient("");
    EXPECT_EQ(Caption(), CaptionText("Mira Talon", "Atlantic"));
    Paint();
    EXPECT_EQ(Caption(), CaptionText("?", "?"));
}

}  // namespace
}  // namespace spellwick
