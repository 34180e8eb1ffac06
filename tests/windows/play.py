#!/usr/bin/env python3
"""Plays a session with the whole program for Windows: start, page, cast, report, count, switch of
player, end, another start, and a look into the registry.

Usage: play PROGRAM_FOLDER PEERS_FOLDER OUTPUT_FOLDER, with a display and a Wine prefix
(tools/wine_desk). Prints one line with its measurements; exits with 1 at the first failure.
"""
import os
import pathlib
import re
import sys
import time

from wine_session import (CAPTION, CAST, FIRST, MAGERY, ROOT, SETTINGS, SKILL, STATS, STOCK,
                          TOOL, WM_APP, Session, Trouble, expect, wait_for)

SAVED_MACROS = ROOT / "tests" / "end_to_end" / "NewMacros.txt"
PICTURE = ROOT / "tests" / "end_to_end" / "session_store.txt"
SECOND = "Ultima Online - Dorn \u0141uk\u00e4 (Oak Hill)"
PRACTICE_TOOL = "UOAssist (practice)"
WM_COMMAND = 0x111
FIRST_SPELL_WAS_CAST = 101  # a button of the practice tool
LOG_OUT, LOG_IN_THIRD = 100, 103  # in the practice game's menu

# For each reagent, its key in the store and the tool's number; the tool counts 1000 plus that number.
REAGENTS = [("MR", 5), ("SA", 7), ("BM", 1), ("SS", 8), ("GA", 3), ("BP", 2), ("NI", 6), ("GI", 4),
            ("BW", 100), ("DB", 102), ("GD", 101), ("NC", 103), ("PI", 104)]

# The practice tool's stock, by its numbers.
PRACTICE_PACK = {1: 80, 2: 120, 3: 60, 4: 60, 5: 150, 6: 40, 7: 90, 8: 75, 100: 30, 101: 20, 102: 40,
                 103: 15, 104: 25}

# Positions in the window.
SPELL_ICON = (316, 42)
SECOND_SPELL_ICON = (354, 42)
COUNT_BUTTON = (263, 48)
SETTINGS_BUTTON = (263, 30)
# In the settings dialog.
MACROS_TAB = (224, 14)
SAVE_BUTTON = (82, 349)

# Today's clients: the window's class and title, the character and the shard.
CLIENTS = [
    ("Orion UO Client", "Ultima Online - Bran Ash (Oak Hill)", "Bran Ash", "Oak Hill"),
    ("SDL_app", "Ultima Online - Zoe (Oak Hill)", "Zoe", "Oak Hill"),
    ("SDL_app", "Lady Miranda of Trinsic - ClassicUO - 1.0", "Lady Miranda of Trinsic",
     "ClassicUO"),
    ("SDL_app", "Bran - the Bold (Oak Hill) - ClassicUO - 1.0", "Bran - the Bold", "Oak Hill"),
    ("SDL_app", "UO - Ida - ClassicUO - 1.0", "Ida", "ClassicUO"),
    ("SDL_app", "Wil - ClassicUO [dev] - 1.0", "Wil", "ClassicUO"),
    ("SDL_app", "Ash - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.1]", "Ash", "TazUO"),
    ("Ultima Online", "Ultima Online - Lady Miranda of Trinsic (Oak Hill)",
     "Lady Miranda of Trinsic", "Oak Hill"),
]


def keys_down(journal):
    """The virtual keys that were pressed."""
    found = re.findall(r"^(?:sys)?down (\d+)", journal.read_text(), re.M)
    return [int(key) for key in found]


def compare_with_picture(stored):
    """Compares the store, without window positions, with the one after the same session on Linux."""
    found = {f"{section}|{key}|{value}" for section, values in stored.items()
             for key, value in values.items() if not key.endswith(("Top", "Left"))}
    expected = set(PICTURE.read_text(encoding="utf-8").splitlines())
    differences = sorted(found ^ expected, key=lambda line: line.split("|")[:2])
    expect(not differences, "the store differs from Linux: " + "; ".join(differences[:10]))


def play(session):
    # Put a spell into the first character's spellbook.
    session.set_value(SETTINGS + "\\" + FIRST, "Spellbook 0", "0")
    _, journal = session.client(FIRST)
    session.start(session.peers / "assist_tool.exe", TOOL)
    program, window, seconds = session.run_program()
    session.caption("Mira Talon", "Atlantic")
    wait_for("the registration", lambda: session.steer(TOOL, WM_APP + 2) == "1")
    session.picture("play-start")

    session.click(window, COUNT_BUTTON)
    wait_for("the request for a count", lambda: session.steer(TOOL, WM_APP + 3) != "0")
    time.sleep(1)

    session.report(MAGERY, 100)
    session.report(STATS, 100, 100)
    for skill in (16, 32, 49, 51):
        session.report(SKILL, skill, 900 + skill)

    session.click(window, SPELL_ICON)
    alt, one, enter = 18, ord("1"), 13
    first = [alt, one, enter]
    wait_for("the keys of the first spell", lambda: keys_down(journal) == first)
    session.report(CAST, 1)
    session.picture("play-cast")

    session.click(window, SECOND_SPELL_ICON)
    box = session.window("Spellwick")
    session.picture("play-question")
    session.key(box, "Return")
    wait_for("the keys of the confirmed second spell",
             lambda: keys_down(journal) == first + [alt, ord("2"), enter])
    session.report(CAST, 2)

    session.steer(FIRST, "close")
    session.client(SECOND)
    session.caption("Dorn \u0141uk\u00e4", "Oak Hill")
    time.sleep(1)
    session.close_program(program)

    stored = session.registry()
    expect(set(stored) == {"Settings", FIRST, SECOND}, f"sections: {sorted(stored)}")
    costs = [stored["Settings"][f"SpellRegs {spell}"] for spell in (1, 2)]
    expect(all(re.search("[1-9]", cost) for cost in costs), "the spells cost nothing, so the test shows nothing")
    for reagent, (key, number) in enumerate(REAGENTS):
        expected = str(1000 + number - sum(int(cost[reagent]) for cost in costs))
        found = stored[FIRST][f"{key} 0"]
        expect(found == expected, f"{key} 0 of the first character is {found}, not {expected}")
        expect(stored[SECOND][f"{key} 0"] == "0", f"{key} 0 of the second character is not 0")
    expect(stored[FIRST]["CurrentTithing"] == " 1200", "the tithes are not as reported")
    expect(stored["Settings"]["CurrentPlayerName"] == SECOND, "the last player is not saved")
    compare_with_picture(stored)

    program, window, _ = session.run_program()
    session.caption("Dorn \u0141uk\u00e4", "Oak Hill")
    session.picture("play-again")
    session.close_program(program)
    again = session.registry()
    for section in again.values():
        for place in ("WindowTop", "WindowLeft"):
            section.pop(place, None)
    for section in stored.values():
        for place in ("WindowTop", "WindowLeft"):
            section.pop(place, None)
    expect(again == stored, "a start and an end have changed the settings")

    program, window, _ = session.run_program()
    session.caption("Dorn \u0141uk\u00e4", "Oak Hill")
    wait_for("the third registration", lambda: session.steer(TOOL, WM_APP + 2) == "3")
    session.report(STOCK, 1, 75)
    session.steer(CAPTION, "log-off called off")
    wait_for("the save at a log-off that is called off",
             lambda: session.registry()[SECOND]["BM 0"] == "75")
    expect(program.poll() is None, "the program ended at a log-off that was called off")

    second = session.start("spellwick.exe", folder=session.folder)
    session.expect_end(second, 0)
    expect(len(session.windows(f"^{CAPTION}")) == 1, "a second start has a window of its own")

    session.report(STOCK, 1, 76)
    time.sleep(1.5)
    program.kill()
    program.wait()
    expect(session.registry()[SECOND]["BM 0"] == "75", "the program was not killed, it ended")
    program, window, _ = session.run_program()
    wait_for("what the journal had", lambda: session.registry()[SECOND]["BM 0"] == "76")

    session.caption("Dorn \u0141uk\u00e4", "Oak Hill")
    wait_for("the fourth registration", lambda: session.steer(TOOL, WM_APP + 2) == "4")
    session.report(STOCK, 1, 77)
    session.close_program(program, "log-off")
    found = session.registry()[SECOND]["BM 0"]
    expect(found == "77", f"BM 0 is {found} after the user has logged off, not 77")
    return f"start to window {seconds:.1f} s"


def practise(session):
    """Tries the practice programs in the zip, for a player without game or tool."""
    for title in (SECOND, TOOL):
        session.steer(title, "close")
    session.start("spellwick-practice-game.exe", folder=session.folder)
    session.start("spellwick-practice-tool.exe", folder=session.folder)
    program, window, _ = session.run_program()
    session.caption("Mira Talon", "Atlantic")
    session.click(window, COUNT_BUTTON)
    time.sleep(1)
    session.click(window, SPELL_ICON)
    wait_for("the two keystrokes in the practice game",
             lambda: session.steer(FIRST, WM_APP) == "2")
    session.steer(PRACTICE_TOOL, WM_COMMAND, FIRST_SPELL_WAS_CAST)
    session.picture("play-practice")
    session.steer(FIRST, WM_COMMAND, LOG_OUT)
    session.steer("Ultima Online", WM_COMMAND, LOG_IN_THIRD)
    session.caption("Ysolde", "Oak Hill")
    session.close_program(program)
    stored = session.registry()
    stock, digits = stored[FIRST], stored["Settings"]["SpellRegs 1"]
    for reagent, (key, number) in enumerate(REAGENTS):
        expected, found = str(PRACTICE_PACK[number] - int(digits[reagent])), stock[f"{key} 0"]
        expect(found == expected, f"{key} 0 after the practice tool's cast is {found}, "
                                  f"not {expected}")
    expect(stock["CurrentTithing"] == " 15000", "the practice tool's tithes have not arrived")


def save_macros(session):
    """Saves a macro file through the system's own dialog; expects the same bytes as on Linux."""
    session.set_value(SETTINGS + r"\Settings", "Macro 1", "A--{F9}")
    program, window, _ = session.run_program()
    session.caption("Ysolde", "Oak Hill")
    session.click(window, SETTINGS_BUTTON)
    dialog = session.window("Spellwick - Settings")
    session.click(dialog, MACROS_TAB)
    session.click(dialog, SAVE_BUTTON)
    session.key(session.window("Spellwick"), "Return")
    target = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c" / "macros saved.txt"
    session.key(session.window("Save Macro File as"), "Return", "C:\\macros saved.txt")
    # The error report that follows every save to a file.
    session.key(session.window("Spellwick"), "Return")
    session.expect_end(program, 1)
    expect(target.read_bytes() == SAVED_MACROS.read_bytes(),
           f"{target} is not the file that the program for Linux writes")


def meet_clients(session):
    """Each of today's clients is found, with character and shard, and makes no other profile."""
    session.end_all()  # the practice game would go first
    before = set(session.registry())
    program, _, _ = session.run_program()
    for window_class, title, character, shard in CLIENTS:
        game = session.start(session.peers / "client_window.exe", window_class, title,
                             f"Z:{session.output / 'clients.txt'}")
        session.caption(character, shard)
        game.kill()
        game.wait()
    # What the practice game plays is found too, with numbers in its title that change.
    game = session.start(session.folder / "spellwick-practice-game.exe", "--client", "tazuo")
    session.caption("Mira Talon", "TazUO")
    time.sleep(3)
    session.caption("Mira Talon", "TazUO")
    game.kill()
    game.wait()
    session.close_program(program)
    expected = {f"Ultima Online - {character} ({shard})" for _, _, character, shard in CLIENTS}
    made = set(session.registry()) - before
    expect(made <= expected | {"Ultima Online - Mira Talon (TazUO)"},
           f"profiles that nobody has: {made}")


def main():
    session = Session(*(pathlib.Path(name).resolve() for name in sys.argv[1:4]))
    try:
        words = play(session)
        practise(session)
        save_macros(session)
        meet_clients(session)
        print(words)
    except Trouble as trouble:
        session.picture("play-trouble")
        sys.exit(f"play: {trouble}")
    finally:
        session.end_all()


main()
