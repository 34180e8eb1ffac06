"""Programs for Windows under Wine, and a session with the whole of Spellwick among them: starts it and
its peers, steers them, and reads the registry.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "practice"))
from waiting import Trouble, wait_for  # noqa: E402

CAPTION = "Spellwick " + re.search(r"^project\(Spellwick VERSION ([\d.]+)",
                                   (ROOT / "CMakeLists.txt").read_text(), re.M).group(1)
WINE = [str(ROOT / "tools" / "under_wine")]
FIRST = "Ultima Online - Mira Talon (Atlantic)"
TOOL = "UOAssist 5.0"
SETTINGS = r"HKCU\Software\Spellwick"
WM_APP = 0x8000
SET_REPORT, REPORT = WM_APP + 5, WM_APP + 6
STOCK, CAST, MAGERY, STATS, SKILL = 0x52D, 0x52E, 0x530, 0x531, 0x532


def expect(holds, words):
    if not holds:
        raise Trouble(words)


class WineDesk:
    """Programs under Wine on one display, and their windows."""

    def __init__(self, output, log):
        self.output = output
        self.log = output / log
        self.started = []

    def start(self, program, *arguments, folder=None):
        with open(self.log, "ab") as log:
            process = subprocess.Popen([*WINE, str(program), *arguments], cwd=folder, stdout=log,
                                       stderr=log, stdin=subprocess.DEVNULL)
        self.started.append(process)
        return process

    def end_all(self):
        for process in self.started:
            if process.poll() is None:
                process.kill()
            process.wait()

    def run(self, *command):
        """Runs a command to its end: its exit code, and what it prints."""
        done = subprocess.run([*WINE, *map(str, command)], capture_output=True, check=False,
                              timeout=60, stdin=subprocess.DEVNULL)
        return done.returncode, done.stdout.decode("utf-8", "replace")

    def set_value(self, key, name, value):
        """A text value in the registry, for the program to find."""
        code, _ = self.run("reg", "add", key, "/v", name, "/t", "REG_SZ", "/d", value, "/f")
        expect(code == 0, f"{name} cannot be written to the registry")

    def windows(self, pattern):
        result = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", pattern],
                                capture_output=True, text=True, check=False)
        return result.stdout.split()

    def picture(self, name):
        subprocess.run(["import", "-window", "root", str(self.output / f"{name}.png")], check=False,
                       stdin=subprocess.DEVNULL)


class Session(WineDesk):
    def __init__(self, program, peers, output):
        super().__init__(output, "play.log")
        # A folder whose name does not fit any single-byte encoding.
        self.folder = output / "play \u0141\u00e4"
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(program, self.folder)
        self.peers = peers
        self.journals = 0

    def client(self, title):
        self.journals += 1
        journal = self.output / f"keys{self.journals}.txt"
        journal.unlink(missing_ok=True)
        process = self.start(self.peers / "client_window.exe", "Ultima Online", title,
                             f"Z:{journal}")
        wait_for("the client's window", journal.exists)
        return process, journal

    def steer(self, title, message, w_param=0, l_param=0):
        code, result = self.run(self.peers / "steer.exe", title, message, w_param, l_param)
        expect(code == 0, f"steer {title} {message}: ended with {code}")
        return result.strip()

    def report(self, number, w_param, l_param=0):
        self.steer(TOOL, SET_REPORT, 0, number)
        self.steer(TOOL, REPORT, w_param, l_param)

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

    def registry(self):
        """The sections as {key: value}, as another program reads them."""
        code, _ = self.run("reg", "export", SETTINGS, f"Z:{self.output}/registry.reg", "/y")
        expect(code == 0, "the registry has no settings")
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
