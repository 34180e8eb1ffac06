#!/usr/bin/env python3
"""Reads the tab Game in a Wayland session without a game: it says that the game may be a window of
Wayland's own, and how to bring it back.

Usage: wayland_notice.py FOLDER_OF_THE_PROGRAMS. Ends with 1 and a message if a step fails, and with 77
if something that it needs is not installed.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from spoken_windows import named, press, pyatspi, require, wait_for, window_of

NOT_RUN = 77
NEEDED = ("mutter", "Xwayland", "dbus-run-session")
INNER = "--in-session"
NOTICE = ("This is a Wayland session", "SDL_VIDEO_DRIVER=x11")


def in_session(folder):
    require(os.environ.get("WAYLAND_DISPLAY"), "the session is none of Wayland's")
    with tempfile.TemporaryDirectory() as data:
        spellwick = subprocess.Popen([str(folder / "spellwick"), "--data", data],
                                     env={**os.environ, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        try:
            main = wait_for("the main window", lambda: window_of("Spellwick"))
            press(wait_for("Settings", lambda: named(main, pyatspi.ROLE_PUSH_BUTTON, "Settings")))
            dialog = wait_for("the settings", lambda: window_of("Settings"))
            press(named(dialog, pyatspi.ROLE_PAGE_TAB, "Game"))
            for words in NOTICE:
                wait_for(words, lambda: named(dialog, pyatspi.ROLE_LABEL, words))
        finally:
            spellwick.kill()
            spellwick.wait()


def main():
    if sys.argv[1] == INNER:
        try:
            in_session(pathlib.Path(sys.argv[2]))
        except RuntimeError as trouble:
            print(trouble)
            return 1
        print("told", flush=True)
        return 0
    missing = [program for program in NEEDED if shutil.which(program) is None]
    if missing or pyatspi is None:
        print("not installed: " + ", ".join(missing or ["python3-pyatspi"]))
        return NOT_RUN
    with tempfile.TemporaryDirectory() as home:
        runtime = pathlib.Path(home) / "run"
        runtime.mkdir(mode=0o700)
        environment = {**os.environ, "HOME": home, "XDG_RUNTIME_DIR": str(runtime),
                       "QT_QPA_PLATFORM": "xcb", "NO_AT_BRIDGE": "0", "LC_ALL": "C.UTF-8"}
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY"):
            environment.pop(name, None)
        # The session ends with the program that it is given, and keeps its exit code to itself.
        session = subprocess.run(
            ["dbus-run-session", "--", "mutter", "--headless", "--wayland", "--virtual-monitor",
             "1280x1024", "--", sys.executable, __file__, INNER,
             str(pathlib.Path(sys.argv[1]).resolve())],
            env=environment, timeout=150, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
            text=True, check=False)
    print(session.stdout.strip())
    return 0 if "told" in session.stdout.split() else 1


sys.exit(main())
