"""A display with a window manager, one run of the program on it, and the hands of a user, whose acts are counted."""
import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile

from tree import Missing, Tree, wait

# A window manager that leaves all keys to the program, as desktops differ in those that they take.
MANAGER = """<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/><mouse>
<context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind></context>
</mouse></openbox_config>"""

class Display:
    """An X server with a window manager, as long as the block runs."""

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x900x24"],
                                       pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            os.environ["DISPLAY"] = ":" + numbers.readline().strip()
        self.settings = tempfile.NamedTemporaryFile("w", prefix="walk-", suffix=".xml")
        self.settings.write(MANAGER)
        self.settings.flush()
        self.manager = subprocess.Popen(["openbox", "--config-file", self.settings.name], stderr=subprocess.DEVNULL)
        return self

    def __exit__(self, *_):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()
        self.settings.close()


class Desk:
    """Studies, new and with a home folder of its own. Each method that a hand stands behind counts one act."""

    def __init__(self, build, pictures, name, environment=None):
        self.build, self.pictures, self.name = pathlib.Path(build), pathlib.Path(pictures), name
        self.folder = tempfile.TemporaryDirectory(prefix="walk-")
        self.home = pathlib.Path(self.folder.name)
        self.environment = os.environ | {"HOME": str(self.home), "QT_QPA_PLATFORM": "xcb", "LANG": "C.UTF-8",
                                         "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        for variable in ("STATE", "CONFIG", "DATA"):
            self.environment[f"XDG_{variable}_HOME"] = str(self.home / variable.lower())
        self.environment.pop("LANGUAGE", None)
        self.environment |= environment or {}
        self.acts = self.taken = 0
        self.start()

    def start(self):
        program = self.build / "bin" / "corvane-desktop"
        self.log = open(self.home / "output.txt", "ab")
        self.process = subprocess.Popen([program, self.build / "studies"], cwd=self.home, env=self.environment,
                                        stdout=self.log, stderr=self.log)
        self.tree = Tree(self.process.pid)
        self.tree.find("frame", "Studies", "active")

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                self.process.kill()
        self.log.close()

    def restart(self):
        self.end()
        self.start()

    def picture(self, what):
        self.taken += 1
        path = self.pictures / f"{self.name}-{self.taken}-{what}.png"
        subprocess.run(["import", "-window", "root", path], check=True)

    @staticmethod
    def tool(*words):
        subprocess.run(["xdotool", *map(str, words)], check=True, stdout=subprocess.DEVNULL)

    def settle(self):
        """The program has dealt with what came before: it answers."""
        self.tree.windows()

    def key(self, chord):
        self.acts += 1
        self.tool("key", "--clearmodifiers", chord)
        self.settle()

    def type(self, text):
        self.acts += 1
        self.tool("type", "--delay", "5", text)
        self.settle()

    def click(self, node, times=1):
        self.acts += 1
        x, y = node.middle() if hasattr(node, "middle") else node
        self.tool("mousemove", "--sync", x, y)
        self.settle()
        self.tool("click", "--repeat", times, "--delay", 60, 1)
        self.settle()

    def drag(self, start, end, before_drop=None):
        """From point to point. before_drop is called with the button still down."""
        self.acts += 1
        self.tool("mousemove", *start)
        self.settle()
        self.tool("mousedown", 1)
        steps = 12
        for step in range(1, steps + 1):
            self.tool("mousemove", *(start[i] + (end[i] - start[i]) * step // steps for i in (0, 1)))
            self.settle()
        for nudge in (1, 0, 1):  # some targets answer the move after that on which they were entered
            self.tool("mousemove", end[0] + nudge, end[1])
            self.settle()
        if before_drop:
            before_drop()
        self.tool("mouseup", 1)
        self.settle()

    @contextlib.contextmanager
    def drag_source(self, paths):
        """A window of another program that files can be dragged from; the point where to begin."""
        script = pathlib.Path(__file__).with_name("drag_source.py")
        with subprocess.Popen([sys.executable, script, *paths], env=self.environment, stderr=subprocess.DEVNULL) as source:
            try:
                yield wait("no window with files", self.place_of_files)
            finally:
                source.terminate()

    @staticmethod
    def place_of_files():
        """The middle of that window, once it is where the window manager keeps it."""
        words = ["xdotool", "search", "--onlyvisible", "--name", "^Files$", "getwindowgeometry", "--shell"]
        told = subprocess.run(words, capture_output=True, text=True, check=False).stdout
        values = dict(line.split("=") for line in told.split())
        if int(values.get("X", 0)) < 1000:
            return None
        return int(values["X"]) + int(values["WIDTH"]) // 2, int(values["Y"]) + int(values["HEIGHT"]) // 2

    def menu(self, *captions):
        """Through a menu by mouse, a click for each level."""
        self.click(self.tree.find("menu item", captions[0], within=self.tree.find("menu bar")))
        for caption in captions[1:]:
            self.click(self.tree.find("menu item", caption, "enabled", within=self.tree.find("popup menu|menu")))

    def file(self, pattern):
        """The one file below the home folder that has such a name, once there is one."""
        return wait(f"no file {pattern}", lambda: next(iter(sorted(self.home.rglob(pattern))), None))

    def close(self):
        self.end()
        self.folder.cleanup()


__all__ = ["Desk", "Display", "Missing", "wait"]
