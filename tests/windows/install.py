#!/usr/bin/env python3
"""Tries the installer for Windows under Wine: a Windows that is too old, a refused folder, an installation with
all that it leaves, an upgrade while the program runs, with its data kept, and both ways to remove it.

Usage: install INSTALLER OUTPUT_FOLDER, with a display and a Wine prefix (tools/wine_desk). Prints one line; exits
with 1 at the first failure.
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import time

from wine_session import CAPTION, SETTINGS, Trouble, WineDesk, expect, wait_for

OLD_WINDOWS, STILL_RUNNING, REFUSED = 5, 3, 4
LARGEST = 10_000_000
UNINSTALL = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Spellwick"
PATIENCE = 60
OWN_TABLE = "AppData/Roaming/Spellwick/SpellData.txt"
MENU = {"Spellwick.lnk": "spellwick.exe", "Start here.lnk": "Start here.txt",
        "Practice game.lnk": "spellwick-practice-game.exe",
        "Practice assist tool.lnk": "spellwick-practice-tool.exe",
        "Uninstall Spellwick.lnk": "Uninstall.exe"}


class Setup(WineDesk):
    def __init__(self, installer, output):
        super().__init__(output, "install.log")
        self.installer = installer
        self.drive = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c"
        self.home = next(path for path in (self.drive / "users").iterdir() if path.name != "Public")
        # Wine takes the folders of whoever runs it; the tests have their own.
        for folder in self.home.iterdir():
            if folder.is_symlink():
                folder.unlink()
                folder.mkdir()

    def of(self, windows_path):
        """A folder of Windows as this system names it."""
        return self.drive / windows_path.removeprefix("C:\\").replace("\\", "/")

    def install(self, *options):
        return self.run(self.installer, "/S", *options)[0]

    def value(self, key, name):
        """A value in the registry; nothing if it is not there."""
        code, text = self.run("reg", "query", key, "/v", name)
        found = re.search(rf"^\s+{re.escape(name)}\s+REG_\w+\s+(.*?)\s*$", text, re.M)
        return found.group(1) if code == 0 and found else None

    def window(self, pattern):
        return wait_for(f"the window {pattern}", lambda: self.windows(pattern), PATIENCE)[0]

    def key(self, *names):
        subprocess.run(["xdotool", "sleep", "1", "key", *names], check=True,
                       stdin=subprocess.DEVNULL)

    def type(self, text):
        """Replaces what stands in the edit that has the focus."""
        subprocess.run(["xdotool", "sleep", "1", "key", "ctrl+a", "type", "--delay", "15", text], check=True,
                       stdin=subprocess.DEVNULL)


def files_in(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file()}


def try_old_windows(setup):
    code, text = setup.run("cmd", "/c", "ver")
    expect("6.1." in text, f"the test needs an old Windows to begin with, not {text.strip()}")
    code = setup.install()
    expect(code == OLD_WINDOWS, f"on an old Windows the installer ended with {code}")
    expect(setup.value(UNINSTALL, "DisplayName") is None, "it installed itself on an old Windows")
    setup.run("winecfg", "/v", "win10")


def try_refused_folder(setup):
    # Where a file has the folder's name, nobody can make the folder: the test may run as root, who may write
    # into any other.
    (setup.drive / "taken").write_text("a file")
    code = setup.install("/D=C:\\taken\\Spellwick")
    expect(code == REFUSED, f"into a folder that cannot be made, the installer ended with {code}")
    expect(setup.value(UNINSTALL, "DisplayName") is None, "a refused folder leaves an entry")
    expect((setup.drive / "taken").read_text() == "a file", "the file in the way is changed")


def try_new(setup, content, version):
    expect(setup.install() == 0, "the installer failed")
    folder = setup.home / "AppData" / "Local" / "Programs" / "Spellwick"
    found = files_in(folder)
    expect(found == content | {"Uninstall.exe"}, f"the files differ: {sorted(found ^ content)}")
    menu = setup.home / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Spellwick"
    expect(files_in(menu) == set(MENU), f"the Start menu has {sorted(files_in(menu))}")
    for entry, target in MENU.items():
        leads_there = f"\\Programs\\Spellwick\\{target}\0".encode() in (menu / entry).read_bytes()
        expect(leads_there and target in found, f"{entry} does not lead to {target}")
    expect(not (setup.home / "Desktop/Spellwick.lnk").exists(), "an icon nobody asked for is on the desktop")

    location = setup.value(UNINSTALL, "InstallLocation")
    expect(setup.of(location) == folder, f"the installation is said to be in {location}")
    for name, value in (("DisplayName", "Spellwick"), ("DisplayVersion", version),
                        ("Publisher", "The Spellwick makers"),
                        ("DisplayIcon", location + "\\spellwick.exe"),
                        ("UninstallString", f'"{location}\\Uninstall.exe"'),
                        ("QuietUninstallString", f'"{location}\\Uninstall.exe" /S')):
        given = setup.value(UNINSTALL, name)
        expect(given == value, f"{name} is {given}, not {value}")
    size = int(setup.value(UNINSTALL, "EstimatedSize"), 16) * 1024
    real = sum(path.stat().st_size for path in folder.rglob("*"))
    expect(0.8 < size / real < 1.2, f"the size is said to be {size}, and is {real}")
    return folder


def try_upgrade(setup, folder):
    """Over a running program that has data to save, with an edited table beside it."""
    # What is there at the first start must be there at the last.
    setup.set_value(SETTINGS + r"\Settings", "Bag 1", "saved before")
    table = folder / "SpellData.txt"
    edited = table.read_text(encoding="utf-8").replace("Clumsy", "Clumsiest", 1)
    table.write_text(edited, encoding="utf-8")
    program = setup.start(folder / "spellwick.exe")
    setup.window(f"^{CAPTION}")
    before = setup.value(SETTINGS + r"\Settings", "WindowLeft")
    (folder / "spellwick-bridge.exe").write_bytes(b"of an older version")

    code = setup.install("/DESKTOP")
    expect(code == 0, f"the upgrade ended with {code}")
    expect(program.wait(10) == 0, "the program was not closed by its own window")
    after = setup.value(SETTINGS + r"\Settings", "WindowLeft")
    expect(before is None and after is not None, f"the program did not save: {before}, {after}")
    expect(len((folder / "spellwick-bridge.exe").read_bytes()) > 1000, "a file was not replaced")
    expect("Clumsiest" not in table.read_text(encoding="utf-8"), "the spell table was not replaced")
    own = setup.home / OWN_TABLE
    expect(own.exists() and own.read_text(encoding="utf-8") == edited, "the edited table is lost")
    expect((setup.home / "Desktop/Spellwick.lnk").exists(), "there is no icon on the desktop")
    expect(setup.value(SETTINGS + r"\Settings", "Bag 1") is not None, "the settings are lost")


def try_open_dialog(setup, folder):
    """A silent upgrade closes what keeps the program from closing."""
    program = setup.start(folder / "spellwick.exe")
    window = setup.window(f"^{CAPTION}")
    subprocess.run(["xdotool", "windowactivate", "--sync", window], check=True)
    setup.key("ctrl+comma")
    setup.window("^Spellwick - Settings$")
    code = setup.install()
    expect(code == 0, f"the upgrade over an open dialog ended with {code}")
    expect(program.wait(10) == 0, "the program was not closed by its own window")
    expect(not (folder / "SpellData (yours).txt").exists(), "a table that nobody edited was kept")


def try_stubborn_program(setup, folder):
    """A program that does not answer is left alone, and nothing is replaced."""
    program = setup.start(folder / "spellwick.exe")
    setup.window(f"^{CAPTION}")
    old = (folder / "Start here.txt").read_bytes()
    (folder / "Start here.txt").write_text("as it was")
    program.send_signal(signal.SIGSTOP)
    try:
        code = setup.install()
    finally:
        program.send_signal(signal.SIGCONT)
    expect(code == STILL_RUNNING, f"over a program that hangs, the installer ended with {code}")
    expect((folder / "Start here.txt").read_text() == "as it was", "files were replaced all the same")
    (folder / "Start here.txt").write_bytes(old)
    expect(program.wait(PATIENCE) == 0, "it does not end when it is well again")


def remove(setup, folder, *options):
    # Without "_?=", the uninstaller starts a copy of itself and ends at once.
    code, _ = setup.run(folder / "Uninstall.exe", "/S", *options)
    expect(code == 0, f"the uninstaller ended with {code}")
    wait_for("the end of the uninstaller", lambda: setup.value(UNINSTALL, "DisplayName") is None, PATIENCE)
    time.sleep(1)


def try_removal(setup, folder):
    # The player has a table of their own already, and has edited the delivered one all the same.
    (folder / "SpellData.txt").write_text("edited again", encoding="utf-8")
    own = (setup.home / OWN_TABLE).read_bytes()
    remove(setup, folder)
    expect((setup.home / OWN_TABLE).read_bytes() == own, "the player's own table is overwritten")
    expect((folder / "SpellData (yours).txt").read_text(encoding="utf-8") == "edited again",
           "the table that was edited again is lost")
    expect(files_in(folder) == {"SpellData (yours).txt"}, f"left in the folder: {files_in(folder)}")
    menu = setup.home / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Spellwick"
    expect(not menu.exists(), "the Start menu still has Spellwick")
    expect(not (setup.home / "Desktop/Spellwick.lnk").exists(), "the icon is still on the desktop")
    expect(setup.value(SETTINGS + r"\Settings", "Bag 1") is not None, "the settings are gone")
    expect((setup.home / "AppData/Roaming/Spellwick").exists(), "the player's folder is gone")


def try_move(setup, folder):
    """From one folder to another, into which a zip was unpacked: no second Spellwick stays behind."""
    other = setup.drive / "Games" / "Other"
    other.mkdir(parents=True)
    (other / "SpellData.txt").write_text("from a zip", encoding="utf-8")
    program = setup.start(folder / "spellwick.exe")
    setup.window(f"^{CAPTION}")
    code = setup.install("/D=C:\\Games\\Other")
    expect(code == 0, f"the move ended with {code}")
    expect(program.wait(10) == 0, "the program in the old folder was not closed")
    expect(not folder.exists(), "the old folder is still there")
    expect(setup.value(UNINSTALL, "InstallLocation") == "C:\\Games\\Other", "the new folder is not noted")
    expect((setup.home / "Desktop/Spellwick.lnk").exists(), "the icon on the desktop is lost")
    kept = other / "SpellData (yours).txt"
    expect(kept.read_text(encoding="utf-8") == "from a zip", "a table of the unpacked zip is lost")
    kept.unlink()
    return other


def try_own_folder(setup, content):
    """A folder of the player's choice, and all data removed at the end."""
    expect(setup.install("/D=C:\\Games\\Spell wick \u0141\u00e4") == 0, "the installer failed")
    folder = setup.drive / "Games" / "Spell wick \u0141\u00e4"
    expect(files_in(folder) == content | {"Uninstall.exe"}, f"the files differ in {folder}: {sorted(files_in(folder) ^ content)}")
    program = setup.start(folder / "spellwick.exe")
    setup.window(f"^{CAPTION}")
    remove(setup, folder, "/REMOVEDATA")
    expect(program.wait(10) == 0, "the program was not closed by its own window")
    expect(not folder.exists(), "the folder is still there")
    expect(setup.run("reg", "query", SETTINGS)[0] != 0, "the settings are still there")
    expect(not (setup.home / "AppData/Roaming/Spellwick").exists(), "the player's folder is still there")


def go_through_pages(setup):
    """Through the pages as a player goes, with a picture of each: a folder that is refused, another one, an icon on
    the desktop, and all of it removed, over a running program."""
    installer = setup.start(setup.installer)
    setup.window("^Spellwick Setup$")
    time.sleep(1)
    setup.picture("install-welcome")
    setup.key("Return")
    setup.type("C:\\" + "x" * 256)  # longer than a name can be
    setup.key("Return")
    wait_for("the refusal", lambda: len(setup.windows("^Spellwick Setup")) == 2)
    setup.picture("install-refused")
    setup.key("Return")
    folder = setup.drive / "Games" / "Pages"
    setup.type("C:\\Games\\Pages")
    setup.picture("install-folder")
    setup.key("Return")
    wait_for("the end of the pages", (folder / "Uninstall.exe").exists, PATIENCE)
    time.sleep(3)
    expect(not (setup.home / "Desktop/Spellwick.lnk").exists(), "an icon is made without the tick")
    setup.key("Tab", "space")  # from "Start Spellwick", which is on at first, to the icon
    time.sleep(1)
    setup.picture("install-end")
    setup.key("Return")
    expect(installer.wait(PATIENCE) == 0, "the installer failed")
    setup.window(f"^{CAPTION}")
    expect((setup.home / "Desktop/Spellwick.lnk").exists(), "the tick makes no icon on the desktop")

    setup.start(folder / "Uninstall.exe")
    setup.window("^Spellwick Uninstall$")
    time.sleep(1)
    setup.key("alt+s")
    setup.picture("uninstall-question")
    setup.key("Return")
    wait_for("the question to close Spellwick", lambda: len(setup.windows("^Spellwick Uninstall")) == 2)
    setup.picture("uninstall-running")
    expect(setup.windows(f"^{CAPTION}"), "the program is closed before the player has agreed")
    setup.key("Return")
    wait_for("the removal", lambda: not folder.exists(), PATIENCE)
    time.sleep(3)
    setup.picture("uninstall-end")
    setup.key("Return")
    wait_for("the end of the uninstaller", lambda: not setup.windows("^Spellwick Uninstall"), PATIENCE)
    expect(setup.run("reg", "query", SETTINGS)[0] != 0, "the settings are still there")
    expect(not (setup.home / "AppData/Roaming/Spellwick").exists(), "the player's folder is still there")


def main():
    installer, output = (pathlib.Path(name).resolve() for name in sys.argv[1:3])
    setup = Setup(installer, output)
    content = files_in(installer.parent / "spellwick-windows")
    try:
        size = installer.stat().st_size
        expect(size < LARGEST, f"{size} bytes are more than {LARGEST}")
        expect(len(content) > 20, "nothing to compare the installation with")
        try_old_windows(setup)
        try_refused_folder(setup)
        folder = try_new(setup, content, CAPTION.removeprefix("Spellwick "))
        try_upgrade(setup, folder)
        try_open_dialog(setup, folder)
        try_stubborn_program(setup, folder)
        folder = try_move(setup, folder)
        try_removal(setup, folder)
        try_own_folder(setup, content)
        go_through_pages(setup)
        print(f"installed, upgraded and removed; the installer has {size} bytes")
    except Trouble as trouble:
        setup.picture("install-trouble")
        sys.exit(f"install: {trouble}")
    finally:
        setup.end_all()


main()
