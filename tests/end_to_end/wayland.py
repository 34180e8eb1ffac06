#!/usr/bin/env python3
"""Casts in a Wayland session without a screen, where Spellwick and the practice game are windows of
XWayland: a cast, a text with letters of several scripts, and a game behind another window.

Usage: wayland.py FOLDER_OF_THE_PROGRAMS. Ends with 1 and a message if a step fails, and with 77 if a
program that it needs is not installed.
"""
import os
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

NOT_RUN = 77
NEEDED = ("mutter", "Xwayland", "dbus-run-session", "xdotool", "xterm")
WIDTH_FROM_FIRST_SPELL, HEAL = 539, (3 * 44 + 22, 40)
SECTION = "Ultima Online - Mira Talon (Atlantic)"
TEXT = "Grüße € фы łé"
PRACTICE = pathlib.Path(__file__).resolve().parents[2] / "practice"
PREPARE = PRACTICE / "prepare.py"
sys.path.append(str(PRACTICE))
from waiting import PATIENCE, wait_for  # noqa: E402


class Session:
    def __init__(self, programs, suffix):
        self.programs, self.children = programs, []
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="wayland-"))
        (self.home / "run").mkdir(mode=0o700)
        self.env = dict(os.environ, HOME=str(self.home), XDG_DATA_HOME=str(self.home / "data"),
                        XDG_RUNTIME_DIR=str(self.home / "run"), LC_ALL="C.UTF-8",
                        QT_QPA_PLATFORM="xcb")
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY"):
            self.env.pop(name, None)
        subprocess.run([sys.executable, PREPARE, self.env["XDG_DATA_HOME"]], check=True)
        with sqlite3.connect(self.home / "data" / "spellwick" / "settings.db") as store:
            store.executemany("INSERT OR REPLACE INTO setting VALUES('Spellwick', ?, ?, ?)",
                              [(SECTION, "SendSpellSuffix", "1" if suffix else "0"),
                               (SECTION, "SpellTextSuffix", suffix)])
        store.close()
        self.journal = self.home / "typed.txt"

    def start(self, command, **options):
        child = subprocess.Popen(command, env=self.env, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, **options)
        self.children.append(child)
        return child

    def open(self):
        """The session ends with the program that it is given."""
        told = self.home / "told"
        self.wayland = subprocess.Popen(
            ["dbus-run-session", "--", "mutter", "--headless", "--wayland", "--virtual-monitor",
             "1280x1024", "--", "sh", "-c",
             f"echo $$ $DISPLAY $XAUTHORITY >'{told}'; exec sleep 300"],
            env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        words = wait_for("the session",
                         lambda: told.exists() and told.read_text().split()[2:] and told.read_text())
        number, self.env["DISPLAY"], self.env["XAUTHORITY"] = words.split()
        self.program = int(number)
        game = self.start([self.programs / "spellwick-practice-game", "--journal", self.journal,
                           "-qwindowgeometry", "+30+190"], stdin=subprocess.PIPE)
        wait_for("the game", lambda: self.xdotool("search", "--name", "^Ultima Online$"))
        game.stdin.write(b"login 1\n")
        game.stdin.flush()
        self.start([self.programs / "spellwick"])
        self.window = int(wait_for("Spellwick", lambda: self.xdotool(
            "search", "--name", "^Spellwick [0-9]")).split()[0])
        wait_for("the character", lambda: "Character: Mira Talon" in self.xdotool(
            "getwindowname", self.window))
        time.sleep(1)

    def close(self):
        for child in reversed(self.children):
            child.kill()
            child.wait()
        if hasattr(self, "program"):
            os.kill(self.program, signal.SIGTERM)
        else:
            self.wayland.terminate()
        self.wayland.wait(PATIENCE)
        shutil.rmtree(self.home, ignore_errors=True)

    def xdotool(self, *words):
        return subprocess.run(["xdotool", *map(str, words)], env=self.env, capture_output=True,
                              text=True, check=False).stdout

    def in_front(self):
        return self.xdotool("getactivewindow", "getwindowname").strip()

    def cast(self, *lines):
        before = len(self.typed())
        size = dict(line.split("=") for line in self.xdotool(
            "getwindowgeometry", "--shell", self.window).split() if "=" in line)
        left = int(size["WIDTH"]) - WIDTH_FROM_FIRST_SPELL + HEAL[0]
        self.xdotool("mousemove", "--window", self.window, left, HEAL[1], "click", 1)
        expected = ["key Alt+4", "cast Heal", "key Enter", *lines]
        try:
            wait_for("the keys", lambda: self.typed()[before:] == expected)
        except RuntimeError as trouble:
            raise RuntimeError(f"{self.typed()[before:]} and not {expected}") from trouble
        if not self.in_front().startswith("Ultima Online"):
            raise RuntimeError(f"in front is {self.in_front()!r}")

    def typed(self):
        return self.journal.read_text(encoding="utf-8").splitlines()

    def cover_game(self):
        self.start(["xterm", "-geometry", "90x40+30+190", "-T", "another window"])
        wait_for("the other window", lambda: self.in_front() == "another window")


def main():
    missing = [name for name in NEEDED if not shutil.which(name)]
    if missing:
        print("Not installed: " + ", ".join(missing))
        return NOT_RUN
    for name, suffix, covered in (("a cast", "", False), ("letters of several scripts", TEXT, False),
                                  ("a game behind another window", "", True)):
        session = Session(pathlib.Path(sys.argv[1]).resolve(), suffix)
        try:
            session.open()
            if covered:
                session.cover_game()
            session.cast(*([f"say {suffix}"] if suffix else []))
            print(f"{name}: arrived", flush=True)
        except RuntimeError as trouble:
            print(f"{name}: {trouble}")
            return 1
        finally:
            session.close()
    return 0


sys.exit(main())
