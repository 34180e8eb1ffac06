"""The stage of a practice session: a virtual display with a window manager, the practice game and the
practice assist tool on it, and a camera.
"""
import os
import subprocess
import time

from waiting import Trouble, wait_for

GAME_PLACE, TOOL_PLACE = "+30+190", "+570+190"
SCREEN = "1460x720x24"


class Stage:
    def __init__(self, programs, output):
        self.programs = programs
        self.output = output
        self.children = []
        self.pictures = 0
        self.environment = dict(os.environ, LC_ALL="C.UTF-8",
                                XDG_DATA_HOME=str(output / "session" / "data"),
                                XDG_CONFIG_HOME=str(output / "session" / "config"),
                                XDG_RUNTIME_DIR=str(output / "session" / "run"))
        for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"):
            self.environment.pop(name, None)

    def start(self, name, command, **options):
        log = open(self.output / "session" / f"{name}.log", "wb")
        child = subprocess.Popen(command, env=self.environment, stderr=log,
                                 **{"stdin": subprocess.DEVNULL, "stdout": log, **options})
        log.close()
        self.children.append(child)
        return child

    def end(self):
        for child in reversed(self.children):
            if child.poll() is None:
                child.terminate()
                try:
                    child.wait(3)
                except subprocess.TimeoutExpired:
                    child.kill()
                    child.wait()

    def open_display(self):
        reader, writer = os.pipe()
        self.start("display", ["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN,
                               "-nolisten", "tcp"], pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise Trouble("the virtual display did not start")
        self.environment["DISPLAY"] = f":{number}"
        ready = self.output / "session" / "openbox-is-up"
        self.start("openbox", ["openbox", "--startup", f"touch '{ready}'"])
        wait_for("the window manager", ready.exists)

    def xdotool(self, *words):
        return subprocess.run(["xdotool", *map(str, words)], env=self.environment, text=True,
                              capture_output=True, check=False).stdout

    def window(self, title):
        """The visible window whose title matches, 0 if there is none."""
        found = self.xdotool("search", "--onlyvisible", "--name", title).split()
        return int(found[0]) if found else 0

    def picture(self, name, words):
        time.sleep(0.25)  # let painting finish
        self.pictures += 1
        file = self.output / f"{self.pictures:02}-{name}.png"
        subprocess.run(["import", "-silent", "-window", "root", str(file)], env=self.environment,
                       check=True)
        print(f"  {file.name}: {words}", flush=True)

    # The game

    def start_game(self, journal="typed.txt", title="^Ultima Online", options=()):
        self.journal = self.output / journal
        self.journal.unlink(missing_ok=True)
        self.game = self.start("game", [self.programs / "spellwick-practice-game", "--journal",
                                        self.journal, "-qwindowgeometry", GAME_PLACE, *options],
                               stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
        wait_for("the game's window", lambda: self.window(title))

    def tell_game(self, command):
        self.game.stdin.write(f"{command}\n".encode())
        self.game.stdin.flush()

    def typed(self):
        return self.journal.read_text().splitlines() if self.journal.exists() else []

    def wait_typed(self, *lines):
        """Waits until the journal ends with these lines."""
        wait_for(f"the game sees {lines}", lambda: self.typed()[-len(lines):] == list(lines))

    # The assist tool

    def start_tool(self):
        self.told = self.output / "session" / "tool.txt"
        with open(self.told, "wb") as told:
            self.tool = self.start("tool", [self.programs / "spellwick-practice-tool", "--game",
                                            self.journal, "-qwindowgeometry", TOOL_PLACE],
                                   stdin=subprocess.PIPE, stdout=told)
        wait_for("the tool's window", lambda: self.window("^UOAssist"))

    def tell_tool(self, command):
        self.tool.stdin.write(f"{command}\n".encode())
        self.tool.stdin.flush()

    def wait_told(self, start, times=1):
        """Waits until the tool has printed so many lines that start like this."""
        wait_for(f"the tool says {start!r}", lambda: sum(
            line.startswith(start) for line in self.told.read_text().splitlines()) >= times)

    def wait_quiet(self):
        """Waits until the tool has reported everything and got every answer."""
        quiet = self.told.read_text().splitlines().count("quiet")
        self.tell_tool("wait")
        self.wait_told("quiet", quiet + 1)
