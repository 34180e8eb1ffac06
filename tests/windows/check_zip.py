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
OTHERS = ("SpellData.txt", "ReadMe.wri", "licences/Spellwick.txt", "licences/ReadMe.txt",
          "licences/GCC.txt", "licences/mingw-w64.txt", "licences/Qt/COPYRIGHT",
          "licences/Qt/LGPL-3.0-only.txt")
# Wine's copies of the system libraries.
SYSTEM = pathlib.Path("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows")
GROUP_ICON, VERSION, MANIFEST = 14, 16, 24
IMPORTS, RESOURCES = 1, 2
FROM_MANIFEST = ("PerMonitorV2", ">UTF-8<", 'level="asInvoker"', "Microsoft.Windows.Common-Controls")

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
        self.machine, sections, _, _, self.symbols, size, _ = struct.unpack_from("<HHIIIHH", data,
                                                                                start + 4)
        self.optional = start + 24
        self.kind, = struct.unpack_from("<H", data, self.optional)
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
    expect(program.features & 0x140 == 0x140, f"{name} has a fixed address, or its data are executable")
    for library in program.libraries():
        known = library.lower().startswith("api-ms-win-") or (SYSTEM / library.lower()).exists()
        expect(known, f"{name} needs {library}, which is not a system library")
    return program


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
        programs = {name: check_program(name, files.read(FOLDER + name)) for name in PROGRAMS}
        expect(files.read(FOLDER + "ReadMe.wri").startswith(b"{\\rtf1"), "the help text is not in rich text format")
    bridge = len(programs["spellwick-bridge.exe"].data)
    expect(bridge < LARGEST_BRIDGE, f"spellwick-bridge.exe has {bridge} bytes")
    ours = programs["spellwick.exe"]
    expect(ours.resources(GROUP_ICON), "spellwick.exe has no icon")
    words = ours.resources(VERSION).decode("utf-16-le", "replace")
    expect(f"ProductVersion\0{version}\0" in words.replace("\0\0", "\0"),
           f"spellwick.exe does not have the version {version}")
    manifest = ours.resources(MANIFEST).decode("utf-8", "replace")
    for part in FROM_MANIFEST:
        expect(part in manifest, f"the manifest lacks {part}")


main()
for trouble in found:
    print(f"check_zip: {trouble}", file=sys.stderr)
sys.exit(1 if found else 0)
