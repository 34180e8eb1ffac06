// The clients that the practice game plays: classes, titles, Enter, and the macro file.
#include "practice/clients.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "practice/game_window.h"
#include "practice/macro_file.h"
#include "tests/practice/spoken_lines.h"

namespace spellwick::practice {
namespace {

using testing::ElementsAre;

TEST(Clients, ClassesAndTitles_AreThoseOfTheRealOnes) {
    const Character mira{"Mira Talon", "Atlantic"};
    struct Row {
        const char* name;
        const char* windowClass;
        const char* windowsClass;
        const char* login;
        const char* inGame;
    };
    for (const Row& row : {Row{"classic", "Ultima Online", "Ultima Online", "Ultima Online",
                               "Ultima Online - Mira Talon (Atlantic)"},
                           Row{"orion", "orionuo.exe", "Orion UO Client", "Ultima Online",
                               "Ultima Online - Mira Talon (Atlantic)"},
                           Row{"crossuo", "crossuo", "SDL_app", "Ultima Online v1.0.0",
                               "Ultima Online - Mira Talon (Atlantic)"},
                           Row{"classicuo", "ClassicUO", "SDL_app", "ClassicUO - 1.0.0",
                               "Mira Talon - ClassicUO - 1.0.0"},
                           Row{"tazuo", "ClassicUO", "SDL_app", "[TazUO 4.0.0]",
                               "Mira Talon - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.0.0]"}}) {
        SCOPED_TRACE(row.name);
        const auto client = ClientOfName(row.name);
        ASSERT_TRUE(client);
        EXPECT_EQ(WindowClassOf(*client), row.windowClass);
        EXPECT_EQ(WindowsClassOf(*client), row.windowsClass);
        EXPECT_EQ(LoginTitleOf(*client), row.login);
        EXPECT_EQ(TitleOf(*client, mira, 85), row.inGame);
    }
    EXPECT_FALSE(ClientOfName("other"));
}

TEST(Clients, StatisticsInATitle_Change) {
    GameWindow window([](const JournalEntry&) {}, {.client = Client::kTazUo});
    window.Obey({.kind = GameCommand::Kind::kLogin, .character = 1});
    const QString first = window.windowTitle();
    QElapsedTimer patience;
    patience.start();
    while (window.windowTitle() == first && !patience.hasExpired(10000)) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_NE(window.windowTitle(), first);
    EXPECT_TRUE(window.windowTitle().startsWith(QStringLiteral("Mira Talon - HP 9")));
}

const KeyPress kAltOne{{.alt = true}, "1", "1"};
const KeyPress kEnter{{}, "Enter", "\r"};
const KeyPress kHa{{}, "H", "h"};

TEST(Clients, EnterBehindAMacro_SaysAnEmptyLine) {
    SpeechLine line({.emptyEnter = EmptyEnterOf(Client::kClassicUo, false)});
    EXPECT_THAT(
        Written(line, {kAltOne, kEnter, kAltOne, kHa, kEnter}),
        ElementsAre("key Alt+1", "cast Clumsy", "say ", "key Alt+1", "cast Clumsy", "say h"));
}

TEST(Clients, EnterThatOpensTheChat_LosesEverySecondCast) {
    SpeechLine line({.emptyEnter = EmptyEnterOf(Client::kClassicUo, true)});
    EXPECT_THAT(Written(line, {kAltOne, kEnter, kAltOne, kEnter, kAltOne}),
                ElementsAre("key Alt+1", "cast Clumsy", "key Enter", "key Alt+1", "key Enter",
                            "key Alt+1", "cast Clumsy"));
    line.Clear();
    EXPECT_THAT(Written(line, {kHa, kEnter, kHa, kEnter, kAltOne}),
                ElementsAre("key H", "key Enter", "say h", "key Alt+1", "cast Clumsy"));
}

std::optional<std::vector<MacroKey>> Read(const char* text) {
    QBuffer file;
    file.setData(text);
    file.open(QIODevice::ReadOnly);
    return ReadMacroFile(file);
}

TEST(MacroFile, KeysThatCast_AreRead) {
    const auto keys = Read(R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>
<macros>
	<macro name="Lightning" key="54" alt="True" ctrl="False" shift="True">
		<actions><action code="15" subcode="91" submenutype="1" /></actions>
	</macro>
	<macro name="Wither" key="119" alt="False" ctrl="True" shift="False">
		<actions><action code="15" subcode="140" submenutype="1" /></actions>
	</macro>
	<macro name="Light" key="1073741886" alt="False" ctrl="False" shift="False">
		<actions><action code="15" subcode="149" submenutype="1" /></actions>
	</macro>
	<macro name="Bow" key="98" alt="True" ctrl="False" shift="False">
		<actions><action code="4" subcode="0" submenutype="0" /></actions>
	</macro>
	<macro name="Mouse" key="0" mousebutton="2" alt="False" ctrl="False" shift="False">
		<actions><action code="15" subcode="62" submenutype="1" /></actions>
	</macro>
</macros>)");
    ASSERT_TRUE(keys);
    EXPECT_THAT(*keys, ElementsAre(MacroKey{{.alt = true, .shift = true}, "6", "Lightning"},
                                   MacroKey{{.ctrl = true}, "W", "Wither"},
                                   MacroKey{{}, "F5", "Holy Light"}));
}

TEST(MacroFile, OtherFile_IsNone) {
    EXPECT_FALSE(Read("Macros: 1"));
    EXPECT_FALSE(Read("<profile/>"));
    EXPECT_FALSE(Read("<macros><macro"));
}

}  // namespace
}  // namespace spellwick::practice
