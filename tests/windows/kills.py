#!/usr/bin/env python3
"""Kills the program for Windows again and again while its stock changes: after the next start at most the
last second is missing, and nothing else is there than what was reported.

Usage: kills PROGRAM_FOLDER PEERS_FOLDER OUTPUT_FOLDER COUNT, with a display and a Wine prefix
(tools/wine_desk). Prints a line with the result; exits with 1 if anything was lost.
"""
import pathlib
import random
import sys
import time

from wine_session import FIRST, STOCK, TOOL, WM_APP, Session, Trouble, expect, wait_for

BLOODMOSS = 1  # the tool's number
BLOODMOSS_KEY = "BM 0"
LAST_SECOND = 1.0


def registered(session, times):
    wait_for("the registration", lambda: session.steer(TOOL, WM_APP + 2) == str(times), 30)


def kill_in_use(session, program, value):
    """Reports some values, then kills. Returns the last value that must not be lost, and the last."""
    reports = []
    for _ in range(random.randrange(1, 4)):
        value += 1
        session.report(STOCK, BLOODMOSS, value)
        reports.append((time.monotonic(), value))
        time.sleep(random.random() * 0.6)
    time.sleep(random.random() * 1.2)
    killed = time.monotonic()
    program.kill()
    program.wait()
    return max([v for when, v in reports if killed - when > LAST_SECOND], default=0), value


def play(session, count):
    session.client(FIRST)
    session.start(session.peers / "assist_tool.exe", TOOL)
    program, _, _ = session.run_program()
    session.caption("Mira Talon", "Atlantic")
    lost, value = 0, 0
    for kill in range(1, count + 1):
        registered(session, kill)
        before = value
        safe, last = kill_in_use(session, program, value)
        program, _, _ = session.run_program()
        session.caption("Mira Talon", "Atlantic")
        # What was recovered is saved behind the start.
        time.sleep(0.3)
        value = int(session.registry().get(FIRST, {}).get(BLOODMOSS_KEY, "0"))
        if not max(safe, before) <= value <= last:
            lost += 1
            print(f"kill {kill}: {value} is not from {max(safe, before)} to {last}", flush=True)
    session.close_program(program)
    print(f"{count} kills, {lost} with a loss")
    expect(lost == 0, "values were lost")


def main():
    session = Session(*(pathlib.Path(name).resolve() for name in sys.argv[1:4]))
    try:
        play(session, int(sys.argv[4]))
    except Trouble as trouble:
        session.picture("kills-trouble")
        sys.exit(f"kills: {trouble}")
    finally:
        session.end_all()


main()
