#!/usr/bin/env python3
"""Plays a short session of Spellwick with the practice game and the practice assist tool, on a
virtual display of its own.

Usage: session.py FOLDER_OF_THE_PROGRAMS OUTPUT_FOLDER

Leaves numbered screenshots and typed.txt, the journal of the practice game, in the output folder.
Exits with 1 and a message if a step fails, and with 77 if a program that it needs is not installed.
"""
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import sys
import time

from stage import Stage
from waiting import PATIENCE, Trouble, wait_for

NOT_RUN = 77

# Positions in the wide arrangement of Spellwick's window: counters and buttons from the left edge of
# its client area, the rest from the first spell. The width of the buttons depends on the font;
# everything to their right has a fixed width.
WIDTH_FROM_FIRST_SPELL = 539
SPELL_PITCH, SPELL_CENTRE = 44, (22, 40)
CIRCLE_PITCH, CIRCLE_TOP, FIRST_CIRCLE = 35.2, 92, 2
COUNTER_LEFTS, COUNTER_ROWS, COUNTER_PITCH, COUNTER_CENTRE = (30, 111, 189), 5, 15, (12, 9)
UNDO, SETTINGS, COUNT = (248, 10), (248, 28), (248, 46)
# Steps of the Tab key from the first control of the settings, and of the macros tab.
MACROS_TAB, LOAD_BUTTON = 2, 38
MEDITATION = ("key F12", "key Enter")

# What a player of ClassicUO has set in its options.
MACROS = """<?xml version="1.0" encoding="utf-8" standalone="yes"?>
<macros>
	<macro name="Lightning" key="1073741886" mousebutton="0" wheelscroll="False" wheelup="False" alt="True" ctrl="False" shift="False">
		<actions>
			<action code="15" subcode="91" submenutype="1" />
		</actions>
	</macro>
</macros>
"""

# The stock that the tool reports for Mira, less what the session casts after the count.
STOCK_AT_THE_END = {"MR 0": "148", "SA 0": "86", "SS 0": "73", "BM 0": "80", "CurrentTithing": " 15000"}


class Session(Stage):
    def __init__(self, programs, output):
        super().__init__(programs, output)
        self.mouse = None

    def start_spellwick(self):
        self.spellwick = self.start("spellwick", [self.programs / "spellwick"])
        self.main = wait_for("Spellwick's window", lambda: self.window("^Spellwick [0-9]"))
        time.sleep(0.5)
        size = dict(line.split("=") for line in
                    self.xdotool("getwindowgeometry", "--shell", self.main).split())
        self.first_spell = int(size["WIDTH"]) - WIDTH_FROM_FIRST_SPELL

    def wait_character(self, name):
        wait_for(f"Spellwick's caption names {name}",
                 lambda: f"Character: {name}" in self.xdotool("getwindowname", self.main))

    def move(self, place):
        """Waits until the mouse is there; --sync never returns if it is there already."""
        sync = [] if place == self.mouse else ["--sync"]
        self.mouse = place
        self.xdotool("mousemove", *sync, "--window", self.main, *map(round, place))

    def click(self, place):
        self.move(place)
        self.xdotool("click", 1)

    def spell(self, slot):
        return self.first_spell + slot * SPELL_PITCH + SPELL_CENTRE[0], SPELL_CENTRE[1]

    def circle(self, number):
        index = number - 1 + FIRST_CIRCLE
        return self.first_spell + (index + 0.5) * CIRCLE_PITCH, CIRCLE_TOP

    @staticmethod
    def counter(reagent):
        column, row = divmod(reagent - 1, COUNTER_ROWS)
        return (COUNTER_LEFTS[column] + COUNTER_CENTRE[0],
                row * COUNTER_PITCH + COUNTER_CENTRE[1])

    def count_button(self):
        """The pixels in the middle of the button."""
        left, top = COUNT[0] - 24, COUNT[1] - 8
        return subprocess.run(["import", "-silent", "-window", str(self.main), "-crop",
                               f"48x16+{left}+{top}", "rgb:-"], env=self.environment,
                              capture_output=True, check=True).stdout

    def play(self):
        self.open_display()
        self.start_spellwick()
        self.picture("start", "Spellwick alone, without a game")

        self.start_game()
        self.tell_game("login 1")
        self.wait_character("Mira Talon")
        self.picture("log-in", "Mira Talon logs in; Spellwick follows the game's title")

        self.click(self.circle(4))
        self.picture("page", "the page of circle 4")

        self.move(self.spell(4))
        self.move(self.spell(5))
        self.picture("hover", "the mouse over Lightning: its needs, mana, price and words")

        self.cast(5, "Alt+Shift+6", "Lightning")
        self.picture("cast", "Lightning is cast; its reagents are taken off the counters")

        self.click(UNDO)
        self.picture("undo", "Undo gives the reagents back")

        self.click(self.counter(1))
        self.xdotool("type", "+25")
        self.xdotool("key", "Return")
        self.picture("counter", "25 Mandrake Roots bought")

        self.tell_game("login 2")
        self.wait_character("Bran Oakley")
        self.click(self.circle(1))
        self.picture("switch", "Bran Oakley logs in, with his own stock, skills and spellbook")

        self.click(self.spell(5))
        wait_for("the question about the book", lambda: self.window("^Spellwick$"))
        self.picture("book", "a spell that is not in Bran's book yet")
        self.xdotool("key", "alt+y")
        self.wait_typed("key Alt+6", "cast Night Sight", "key Enter")
        self.picture("learned", "now it is, and it is cast")

        self.play_with_tool()
        self.play_classic_uo()
        self.end_spellwick()

    def cast(self, slot, key, spell, *after):
        """Casts as Mira and waits for the last of the keys."""
        lines = [f"key {key}", f"cast {spell}", "key Enter", "say ... Alakazam ...", *after]
        before = len(self.typed())
        self.click(self.spell(slot))
        wait_for(f"the game sees {lines}", lambda: self.typed()[before:] == lines)

    def play_with_tool(self):
        self.tell_game("login 1")
        self.wait_character("Mira Talon")
        self.start_tool()
        self.wait_told("in send 1224")
        self.wait_quiet()
        self.tell_tool("idle off")  # no mana regenerates
        self.picture("linked", "the assist tool is there: skills and mana come from it")

        self.click(COUNT)
        self.wait_told("in send 1125")
        self.wait_quiet()
        self.picture("count", "Count: the stock of the pack, and the tithing points")

        self.click(self.circle(4))
        self.cast(5, "Alt+Shift+6", "Lightning")
        self.wait_told("cast Lightning")
        self.wait_quiet()
        self.picture("reported", "Lightning is paid for when the tool reports it, with its mana")

        self.tell_tool("fizzle")
        self.wait_told("done fizzle")
        self.cast(5, "Alt+Shift+6", "Lightning")
        self.wait_told("fizzled Lightning")
        self.wait_quiet()
        self.picture("fizzle", "a Lightning that fizzles costs nothing")

        self.click(self.circle(7))
        self.cast(2, "Ctrl+Alt+Shift+E", "Flamestrike")
        self.wait_quiet()
        if MEDITATION[0] in self.typed():
            raise Trouble("meditation with mana above the level")
        self.cast(2, "Ctrl+Alt+Shift+E", "Flamestrike", *MEDITATION)
        self.wait_quiet()
        self.picture("meditation", "mana falls below 40: the key of Meditation (F12) is pressed")

        count = self.count_button()
        self.tell_tool("close")
        self.wait_told("closed")
        wait_for("the Count button is disabled", lambda: self.count_button() != count)
        self.click(self.circle(4))
        self.tell_tool("mana 100")
        self.cast(5, "Alt+Shift+6", "Lightning")
        self.wait_told("cast Lightning", 2)
        self.picture("closed", "the tool has closed: no count, and a cast is paid for at the click")

        self.tell_tool("open")
        self.wait_told("in send 1224", 2)
        self.wait_quiet()
        self.picture("back", "the tool is back and Spellwick has registered again")

    def play_classic_uo(self):
        self.tell_tool("close")
        self.wait_told("closed", 2)
        self.tell_game("quit")
        self.game.wait(PATIENCE)
        macros = self.output / "session" / "macros.xml"
        macros.write_text(MACROS, encoding="utf-8")
        self.start_game("typed-classicuo.txt", "^ClassicUO",
                        ("--client", "classicuo", "--macros", macros))
        self.tell_game("login 2")
        self.wait_character("Bran Oakley")
        self.picture("classicuo", "another client: Bran Oakley's window, and a profile of his own")
        self.load_macros(macros)
        before = len(self.typed())
        lines = ["key Alt+F5", "cast Lightning", "say ... Alakazam ..."]
        self.click(self.circle(4))
        self.click(self.spell(5))
        wait_for(f"the game sees {lines}", lambda: self.typed()[before:] == lines)
        self.picture("own-macros", "Lightning by the client's own macro, and no Enter behind it")

    def press(self, *keys):
        self.xdotool("key", "--delay", 30, *keys)

    def wait_front(self, title):
        wait_for(f"the window {title!r} in front", lambda: self.xdotool(
            "getactivewindow", "getwindowname").strip() == title)
        time.sleep(0.5)  # until it is drawn and has the focus

    def load_macros(self, file):
        """Takes the keys of a file into the macros tab of the settings, by the keyboard."""
        self.click(SETTINGS)
        self.wait_front("Spellwick - Settings")
        self.press(*["Tab"] * MACROS_TAB, "space")
        self.press(*["Tab"] * LOAD_BUTTON, "space")
        self.wait_front("Spellwick")
        self.press("Return")
        self.wait_front("Load Macro File")
        self.press("ctrl+a")
        self.xdotool("type", file)
        self.press("Return")
        self.wait_front("Spellwick")
        self.picture("macros", "the keys of ClassicUO's macros.xml are taken into the settings")
        self.press("Return")
        self.wait_front("Spellwick - Settings")
        self.press("Escape")
        wait_for("the settings are closed", lambda: not self.window("^Spellwick - Settings"))

    def end_spellwick(self):
        self.spellwick.send_signal(signal.SIGTERM)
        code = self.spellwick.wait(PATIENCE)
        if code != 0:
            raise Trouble(f"Spellwick ended with exit code {code}")
        path = pathlib.Path(self.environment["XDG_DATA_HOME"], "spellwick", "settings.db")
        store = sqlite3.connect(path)
        saved = dict(store.execute("SELECT key, value FROM setting WHERE section = ?",
                                   ("Ultima Online - Mira Talon (Atlantic)",)))
        store.close()
        stock = {key: saved.get(key) for key in STOCK_AT_THE_END}
        if stock != STOCK_AT_THE_END:
            raise Trouble(f"the saved stock is {stock} and not {STOCK_AT_THE_END}")


def main():
    programs, output = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    missing = [name for name in ("Xvfb", "openbox", "xdotool", "import") if not shutil.which(name)]
    if missing:
        print("Not installed: " + ", ".join(missing))
        return NOT_RUN
    for old in output.glob("[0-9][0-9]-*.png"):
        old.unlink()
    shutil.rmtree(output / "session", ignore_errors=True)
    (output / "session").mkdir(parents=True)
    (output / "session" / "run").mkdir(mode=0o700)
    session = Session(programs, output)
    prepare = pathlib.Path(__file__).with_name("prepare.py")
    subprocess.run([sys.executable, prepare, session.environment["XDG_DATA_HOME"]], check=True)
    try:
        session.play()
    except (Trouble, OSError, subprocess.SubprocessError) as trouble:
        print(f"The session failed: {trouble}")
        return 1
    finally:
        session.end()
    print(f"Screenshots, and the keys that reached the game (typed.txt): {output}")
    return 0


sys.exit(main())
