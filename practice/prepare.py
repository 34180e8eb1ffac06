#!/usr/bin/env python3
"""Makes the settings that the practice starts with, unless there are some: Mira Talon is a skilled
mage with full bags, Bran Oakley a beginner, in ClassicUO a mage as well, and Ysolde is unknown. Below
40 mana Spellwick presses F12, the key of the Meditation skill.

Usage: prepare.py DATA_HOME
"""
import pathlib
import sqlite3
import sys

ROWS = 97
STOCK_KEYS = ("MR", "SA", "BM", "SS", "GA", "BP", "NI", "GI", "BW", "DB", "GD", "NC", "PI")
TWIPS = 15


def player(skills, book, stock, tithing):
    """The keys of one player, with `stock` in the first bag."""
    values = {f"Spellbook {row}": "0" if row in book else "1" for row in range(ROWS)}
    values.update({f"{key} 0": str(amount) for key, amount in zip(STOCK_KEYS, stock)})
    values.update({key: str(value) for key, value in skills.items()})
    values["CurrentTithing"] = f" {tithing}"
    values["SendSpellText"] = "0"
    return values


SECTIONS = {
    "Settings": {"WindowLeft": str(30 * TWIPS), "WindowTop": str(30 * TWIPS),
                 "TimerLeft": str(890 * TWIPS), "TimerTop": str(60 * TWIPS),
                 "Meditate": "True", "MeditateLevel": "40", "Macro-1": "---{F12}"},
    "Ultima Online - Mira Talon (Atlantic)": player(
        {"Magery": 86, "EvalInt": 80, "Necro": 62, "SpiritSpeak": 60, "Chivalry": 40,
         "Intelligence": 95, "TargetResist": 50},
        set(range(0, 60)) | set(range(64, 76)) | set(range(80, 86)),
        (42, 57, 38, 61, 44, 29, 33, 52, 12, 9, 2, 15, 0), 250) | {"SendSpellSuffix": "1"},
    "Ultima Online - Bran Oakley (Atlantic)": player(
        {"Magery": 38, "EvalInt": 25, "Intelligence": 40},
        {0, 2, 3, 4, 6, 7, 10}, (3, 6, 0, 8, 11, 2, 5, 9, 0, 0, 0, 0, 0), 0),
    "Ultima Online - Bran Oakley (ClassicUO)": player(
        {"Magery": 92, "EvalInt": 80, "Intelligence": 90},
        set(range(0, 64)), (20, 20, 20, 20, 20, 20, 20, 20, 0, 0, 0, 0, 0), 0)
    | {"SendSpellSuffix": "1"},
}


def main():
    path = pathlib.Path(sys.argv[1], "spellwick", "settings.db")
    if path.exists():
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    with sqlite3.connect(path) as store:
        store.execute("CREATE TABLE setting(application TEXT, section TEXT, key TEXT, value TEXT, "
                      "PRIMARY KEY(application, section, key)) WITHOUT ROWID")
        store.executemany("INSERT INTO setting VALUES('Spellwick', ?, ?, ?)",
                          [(section, key, value) for section, values in SECTIONS.items()
                           for key, value in values.items()])
    store.close()


main()
