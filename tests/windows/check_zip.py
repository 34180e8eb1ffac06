#!/usr/bin/env python3
"""Checks the zip for Windows that players get: its contents, its size, and the form of its programs.

Usage: check_zip ZIP VERSION
"""
import pathlib
import struct
import sys
import zipfile

FOLDER = "spellwick-windows/"
LARGEST = 12_000_000
PROGRAMS = ("spellwick.exe", "spellwick-bridge.exe", "spellwick-practice-game.exe",
            "spellwick-practice-tool.exe")
LARGEST_BRIDGE = 300_000
TEXTS = ("Start here.txt", "licences/ReadMe.txt", "licences/Spellwick.txt", "licences/GCC.txt",
         "licences/mingw-w64.txt", "licences/utfcpp.txt", "licences/Qt/COPYRIGHT.txt",
         "licences/Qt/LGPL-3.0-only.txt", "licences/Qt/GPL-3.0-only.txt")
OTHERS = ("SpellData.txt", "ReadMe.wri", "GameClients.txt", "AssistTools.txt", *TEXTS)
# What ReadMe.txt of the licences and the About tab tell alike.
LICENCES = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "windows" / "licences.txt"
FIRST_LICENCES = ("Spellwick: MIT\r\n", "Qt ")
# Wine's copies of the system libraries.
SYSTEM = pathlib.Path("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows")
GROUP_ICON, VERSION, MANIFEST = 14, 16, 24
IMPORTS, RESOURCES = 1, 2
FROM_MANIFEST = (">UTF-8<", 'level="asInvoker"', "Microsoft.Windows.Common-Controls")
# How it is drawn on a monitor of more than 96 dots per inch: by itself, or enlarged by the system.
SCALING = {"spellwick.exe": "PerMonitorV2"}
SCALED_BY_SYSTEM = ">true</gdiScaling>"

found = []


def expect(holds, words):
    if not holds:
        found.append(words)


class Program:
    """The headers of a 64-bit program."""

    def __init__(self, data):
        self.data = data
        start, = struct.unpack_from("<I", data, 0x3C)
        expect(data[start:start + 4] == b"PE\0\0", "not a program")
        self.machine, sections, self.time, _, self.symbols, size, _ = struct.unpack_from("<HHIIIHH", data,
                                                                                start + 4)
        self.optional = start + 24
        self.kind, = struct.unpack_from("<H", data, self.optional)
        self.alignment, = struct.unpack_from("<I", data, self.optional + 36)
        self.subsystem, self.features = struct.unpack_from("<HH", data, self.optional + 68)
        self.sections = [struct.unpack_from("<8x4I", data, self.optional + size + 40 * i)
                         for i in range(sections)]

    def place(self, address):
        for size, start, raw_size, raw in self.sections:
            if start <= address < start + max(size, raw_size):
                return raw + address - start
        raise ValueError(f"no section holds {address:#x}")

    def directory(self, index):
        return struct.unpack_from("<II", self.data, self.optional + 112 + 8 * index)

    def libraries(self):
        entry = self.place(self.directory(IMPORTS)[0])
        while name := struct.unpack_from("<5I", self.data, entry)[3]:
            start = self.place(name)
            yield self.data[start:self.data.index(b"\0", start)].decode()
            entry += 20

    def resources(self, kind):
        """The first resource of a kind; empty if there is none."""
        address, _ = self.directory(RESOURCES)
        if address == 0:
            return b""
        root = self.place(address)

        def entries(offset):
            named, numbered = struct.unpack_from("<12xHH", self.data, root + offset)
            for i in range(named + numbered):
                yield struct.unpack_from("<II", self.data, root + offset + 16 + 8 * i)

        for number, offset in entries(0):
            if number == kind:
                while offset & 0x80000000:
                    offset = next(entries(offset & 0x7FFFFFFF))[1]
                start, size = struct.unpack_from("<II", self.data, root + offset)
                return self.data[self.place(start):self.place(start) + size]
        return b""


def check_program(name, data):
    program = Program(data)
    expect(program.machine == 0x8664 and program.kind == 0x20B, f"{name} is not a 64-bit program")
    expect(program.subsystem == 2, f"{name} opens a console")
    expect(program.symbols == 0, f"{name} is not stripped")
    expect(program.time == 0, f"{name} holds the time when it was linked")
    expect(program.features & 0x140 == 0x140, f"{name} has a fixed address, or its data are executable")
    for library in program.libraries():
        known = library.lower().startswith("api-ms-win-") or (SYSTEM / library.lower()).exists()
        expect(known, f"{name} needs {library}, which is not a system library")
    return program


def check_resources(name, program, version):
    expect(program.resources(GROUP_ICON), f"{name} has no icon")
    words = program.resources(VERSION).decode("utf-16-le", "replace").replace("\0\0", "\0")
    for field, value in (("ProductVersion", version), ("CompanyName", "The Spellwick makers"),
                         ("LegalCopyright", "Copyright (c) 2026 The Spellwick makers"),
                         ("OriginalFilename", name)):
        expect(f"{field}\0{value}\0" in words, f"{name} does not say {field} {value}")
    manifest = program.resources(MANIFEST).decode("utf-8", "replace")
    for part in (*FROM_MANIFEST, SCALING.get(name, SCALED_BY_SYSTEM)):
        expect(part in manifest, f"the manifest of {name} lacks {part}")


def check_texts(files, version, ours):
    """The texts open in any editor of Windows, and tell the licences that the program tells."""
    texts = {name: files.read(FOLDER + name).decode("utf-8") for name in TEXTS}
    for name, text in texts.items():
        expect(text.count("\n") == text.count("\r\n") > 5, f"{name} does not have the line ends of Windows")
    for words in (f"Spellwick {version} for Windows", "1903", "64 bits", "spellwick.exe"):
        expect(words in texts["Start here.txt"], f"Start here.txt does not say {words}")
    told = texts["licences/ReadMe.txt"]
    for words in (f"spellwick-{version}-source.tar.xz", "qt6-base 6."):
        expect(words in told, f"licences/ReadMe.txt does not say {words}")
    lines = LICENCES.read_text(encoding="utf-8").splitlines()
    expect(len(lines) > 3, f"{LICENCES} lists next to nothing")
    for line in (*FIRST_LICENCES, *lines):
        expect(f"    {line}" in told, f"licences/ReadMe.txt does not list: {line}")
    for line in lines:
        expect(line.encode() in ours, f"the About tab does not list: {line}")
    for words in texts:
        part = words.removeprefix("licences/").replace("/", "\\")
        if words.startswith("licences/") and part != "ReadMe.txt":
            expect(part in told, f"licences/ReadMe.txt does not name {part}")


def check_sameness(files):
    """What would make two zips of the same files differ."""
    entries = files.infolist()
    names = [entry.filename for entry in entries]
    expect(names == sorted(names), "the files are not in the order of their names")
    expect(len({entry.date_time for entry in entries}) == 1, "the files do not have one time")
    expect(not any(entry.extra for entry in entries), "the files have times and owners of this system")


def main():
    archive = pathlib.Path(sys.argv[1])
    version = sys.argv[2]
    size = archive.stat().st_size
    expect(size < LARGEST, f"{size} bytes are more than {LARGEST}")
    with zipfile.ZipFile(archive) as files:
        names = set(files.namelist())
        expect(all(name.startswith(FOLDER) for name in names), "it does not unpack into one folder")
        for name in PROGRAMS + OTHERS:
            there = FOLDER + name in names and files.getinfo(FOLDER + name).file_size > 0
            expect(there, f"{name} is missing")
        if found:
            return
        check_sameness(files)
        programs = {name: check_program(name, files.read(FOLDER + name)) for name in PROGRAMS}
        expect(files.read(FOLDER + "ReadMe.wri").startswith(b"{\\rtf1"), "the help text is not in rich text format")
        check_texts(files, version, programs["spellwick.exe"].data)
    for name, program in programs.items():
        check_resources(name, program, version)
    expect(programs["spellwick.exe"].alignment == 4096, "Wine reads spellwick.exe whole instead of mapping it")
    bridge = len(programs["spellwick-bridge.exe"].data)
    expect(bridge < LARGEST_BRIDGE, f"spellwick-bridge.exe has {bridge} bytes")


main()
for trouble in found:
    print(f"check_zip: {trouble}", file=sys.stderr)
sys.exit(1 if found else 0)
