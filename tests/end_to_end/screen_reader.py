#!/usr/bin/env python3
"""Reads the real program as a screen reader does, by AT-SPI: the main window, a page chosen by an
action, and every tab of the settings.

Usage: screen_reader.py FOLDER_OF_THE_PROGRAMS. Ends with 1 and a message if a step fails, and with 77
if something that it needs is not installed.
"""
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from spoken_windows import (named, nameless, parts_of, press, pyatspi, require, wait_for, window_of)

NOT_RUN = 77
NEEDED = ("Xvfb", "dbus-run-session")
INNER = "--in-session"
TABS = 9


def read_main(window):
    require(window.getRole() in (pyatspi.ROLE_FRAME, pyatspi.ROLE_WINDOW),
            f"the main window is a {window.getRoleName()}")
    require(nameless(window) == [], f"without a name: {nameless(window)}")
    clumsy = named(window, pyatspi.ROLE_PUSH_BUTTON, "Clumsy, 0 castable, ")
    require(clumsy, "the first icon does not speak its spell")
    require(named(window, pyatspi.ROLE_LABEL, "Amount castable of Clumsy: 0"), "no amount")
    require(named(window, pyatspi.ROLE_COMBO_BOX, "Bag"), "the list of bags has no name")
    arrows = named(window, pyatspi.ROLE_SPIN_BUTTON, "Garlic up and down")
    require(arrows, "the arrows are no spin button")
    arrows.queryValue().currentValue = 12
    wait_for("12 Garlic", lambda: arrows.queryValue().currentValue == 12)
    press(named(window, pyatspi.ROLE_RADIO_BUTTON, "Magery circle 2"))
    wait_for("the second page", lambda: named(window, pyatspi.ROLE_PUSH_BUTTON, "Agility, "))


def read_settings(main):
    press(named(main, pyatspi.ROLE_PUSH_BUTTON, "Settings"))
    dialog = wait_for("the settings", lambda: window_of("Settings"))
    for index in range(TABS):
        tabs = [part for part in parts_of(dialog) if part.getRole() == pyatspi.ROLE_PAGE_TAB]
        require(len(tabs) == TABS, f"{len(tabs)} page tabs")
        strips = [part for part in parts_of(dialog) if part.getRole() == pyatspi.ROLE_PAGE_TAB_LIST]
        require(len(strips) == 1 and strips[0].childCount == TABS and
                all(tab.parent == strips[0] for tab in tabs), "the tabs are not one list")
        press(tabs[index])
        wait_for("the tab", lambda: tabs[index].getState().contains(pyatspi.STATE_SELECTED) or
                 tabs[index].getState().contains(pyatspi.STATE_CHECKED))
        require(nameless(dialog) == [], f"without a name on {tabs[index].name}: {nameless(dialog)}")


def in_session(folder):
    with tempfile.TemporaryDirectory() as data:
        spellwick = subprocess.Popen([str(folder / "spellwick"), "--data", data],
                                     env={**os.environ, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        try:
            main = wait_for("the main window", lambda: window_of("Spellwick"))
            wait_for("the icons",
                     lambda: named(main, pyatspi.ROLE_PUSH_BUTTON, "Clumsy"))
            read_main(main)
            read_settings(main)
        finally:
            spellwick.kill()
            spellwick.wait()
    return 0


def on_a_display(folder):
    reading, writing = os.pipe()
    with subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24",
                           "-noreset"],
                          pass_fds=(writing,), stderr=subprocess.DEVNULL) as display:
        os.close(writing)
        try:
            with os.fdopen(reading) as numbers:
                number = numbers.readline().strip()
            with tempfile.TemporaryDirectory() as runtime:
                environment = {**os.environ, "DISPLAY": ":" + number, "XDG_RUNTIME_DIR": runtime,
                               "QT_QPA_PLATFORM": "xcb", "NO_AT_BRIDGE": "0"}
                return subprocess.run(["dbus-run-session", "--", sys.executable, __file__, INNER,
                                       str(folder)], env=environment, timeout=150,
                                      check=False).returncode
        finally:
            display.send_signal(signal.SIGTERM)


def main():
    arguments = sys.argv[1:]
    if arguments[0] == INNER:
        try:
            return in_session(pathlib.Path(arguments[1]))
        except RuntimeError as trouble:
            print(trouble)
            return 1
    missing = [program for program in NEEDED if shutil.which(program) is None]
    if missing or pyatspi is None:
        print("not installed: " + ", ".join(missing or ["python3-pyatspi"]))
        return NOT_RUN
    return on_a_display(pathlib.Path(arguments[0]).resolve())


sys.exit(main())
