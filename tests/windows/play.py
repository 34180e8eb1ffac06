#!/usr/bin/env python3
"""Plays a session with the whole program for Windows: start, page, cast, report, count, switch of
player, end, another start, and a look into the registry.

Usage: play PROGRAM_FOLDER PEERS_FOLDER OUTPUT_FOLDER, with a display and a Wine prefix
(tools/wine_desk). Prints one line with its measurements; exits with 1 at the first failure.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAVED_MACROS = ROOT / "tests" / "end_to_end" / "NewMacros.txt"
PICTURE = ROOT / "tests" / "end_to_end" / "session_store.txt"
CAPTION = "Spellwick " + re.search(r"^project\(Spellwick VERSION ([\d.]+)",
                                   (ROOT / "CMakeLists.txt").read_text(), re.M).group(1)
WINE = [str(ROOT / "tools" / "under_wine")]
FIRST = "Ultima Online - Mira Talon (Atlantic)"
SECOND = "Ultima Online - Dorn \u0141uk\u00e4 (Oak Hill)"
TOOL = "UOAssist 5.0"
PRACTICE_TOOL = "UOAssist (practice)"
WM_COMMAND = 0x111
FIRST_SPELL_WAS_CAST = 101  # a button of the practice tool
LOG_OUT, LOG_IN_THIRD = 100, 103  # in the practice game's menu
WM_APP = 0x8000
SET_REPORT, REPORT = WM_APP + 5, WM_APP + 6
STOCK, CAST, MAGERY, STATS, SKILL = 0x52D, 0x52E, 0x530, 0x531, 0x532

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


class Trouble(Exception):
    pass


def expect(holds, words):
    if not holds:
        raise Trouble(words)


def wait_for(what, look, patience=20):
    deadline = time.monotonic() + patience
    while True:
        value = look()
        if value:
            return value
        expect(time.monotonic() < deadline, f"{what}: timed out after {patience} s")
        time.sleep(0.02)


class Session:
    def __init__(self, program, peers, output):
        # A folder whose name does not fit any single-byte encoding.
        self.folder = output / "play \u0141\u00e4"
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(program, self.folder)
        self.peers, self.output = peers, output
        self.started = []
        self.journals = 0

    def start(self, program, *arguments, folder=None):
        log = open(self.output / "play.log", "ab")
        process = subprocess.Popen([*WINE, str(program), *arguments], cwd=folder, stdout=log,
                                   stderr=log, stdin=subprocess.DEVNULL)
        self.started.append(process)
        return process

    def end_all(self):
        for process in self.started:
            if process.poll() is None:
                process.kill()
            process.wait()

    def client(self, title):
        self.journals += 1
        journal = self.output / f"keys{self.journals}.txt"
        journal.unlink(missing_ok=True)
        process = self.start(self.peers / "client_window.exe", "Ultima Online", title,
                             f"Z:{journal}")
        wait_for("the client's window", journal.exists)
        return process, journal

    def steer(self, title, message, w_param=0, l_param=0):
        result = subprocess.run([*WINE, str(self.peers / "steer.exe"), title, str(message),
                                 str(w_param), str(l_param)], capture_output=True, text=True,
                                check=False, timeout=60, stdin=subprocess.DEVNULL)
        expect(result.returncode == 0, f"steer {title} {message}: ended with {result.returncode}")
        return result.stdout.strip()

    def report(self, number, w_param, l_param=0):
        self.steer(TOOL, SET_REPORT, 0, number)
        self.steer(TOOL, REPORT, w_param, l_param)

    def windows(self, pattern):
        result = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", pattern],
                                capture_output=True, text=True, check=False)
        return result.stdout.split()

    def title(self, window):
        return subprocess.run(["xdotool", "getwindowname", window], capture_output=True, text=True,
                              check=False).stdout.strip()

    def caption(self, character, server):
        pattern = f"^{CAPTION}   Character: {character}   Server: {server}$"
        return wait_for(f"the caption of {character}", lambda: self.windows(pattern))[0]

    def click(self, window, place):
        subprocess.run(["xdotool", "windowactivate", "--sync", window, "mousemove", "--window",
                        window, str(place[0]), str(place[1]), "sleep", "0.2", "click", "1"],
                       check=True, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def key(self, window, name, text=""):
        """Types a text and presses a key in a window."""
        subprocess.run(["xdotool", "windowactivate", "--sync", window, "sleep", "0.2",
                        *(["key", "ctrl+a", "type", "--delay", "40", text] if text else [])],
                       check=True, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        subprocess.run(["xdotool", "key", name], check=True, stdin=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def window(self, title):
        found = wait_for(f"the window {title}", lambda: self.windows(f"^{title}$"))[0]
        time.sleep(0.5)
        return found

    def picture(self, name):
        subprocess.run(["import", "-window", "root", str(self.output / f"{name}.png")], check=False,
                       stdin=subprocess.DEVNULL)

    def add_to_registry(self, section, key, value):
        result = subprocess.run([*WINE, "reg", "add", "HKCU\\Software\\Spellwick\\" + section, "/v",
                                 key, "/t", "REG_SZ", "/d", value, "/f"], capture_output=True,
                                check=False, timeout=60, stdin=subprocess.DEVNULL)
        expect(result.returncode == 0, f"{key} cannot be written to the registry")

    def registry(self):
        """The sections as {key: value}, as another program reads them."""
        result = subprocess.run([*WINE, "reg", "export", r"HKCU\Software\Spellwick",
                                 f"Z:{self.output}/registry.reg", "/y"], capture_output=True,
                                check=False, timeout=60, stdin=subprocess.DEVNULL)
        expect(result.returncode == 0, "the registry has no settings")
        text = (self.output / "registry.reg").read_text(encoding="utf-16")
        sections, values = {}, None
        for line in text.splitlines():
            head = re.fullmatch(r"\[HKEY_CURRENT_USER\\Software\\Spellwick\\(.*)\]", line)
            value = re.fullmatch(r'"(.*?)"="(.*)"', line)
            if head:
                values = sections.setdefault(head.group(1), {})
            elif value and values is not None:
                values[value.group(1)] = value.group(2).replace("\\\\", "\\")
        return sections

    def run_program(self):
        start = time.monotonic()
        process = self.start("spellwick.exe", folder=self.folder)
        window = wait_for("the main window", lambda: self.windows(f"^{CAPTION}"), 60)[0]
        return process, window, time.monotonic() - start

    def expect_end(self, process, expected):
        try:
            code = process.wait(30)
        except subprocess.TimeoutExpired:
            raise Trouble("the program does not end") from None
        expect(code == expected, f"the program ended with {code}, not {expected}")

    def close_program(self, process, how="close"):
        self.steer(CAPTION, how)
        self.expect_end(process, 0)


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
    session.add_to_registry(FIRST, "Spellbook 0", "0")
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
    session.add_to_registry("Settings", "Macro 1", "A--{F9}")
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


def main():
    session = Session(*(pathlib.Path(name).resolve() for name in sys.argv[1:4]))
    try:
        words = play(session)
        practise(session)
        save_macros(session)
        print(words)
    except Trouble as trouble:
        session.picture("play-trouble")
        sys.exit(f"play: {trouble}")
    finally:
        session.end_all()


main()
