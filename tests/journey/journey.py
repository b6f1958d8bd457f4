"""Plays the real program with real keys and mouse: a virtual display, a run folder, and what a person would see.

Nothing here waits by the clock alone: a journey waits for a line of log.txt or for a picture. The game's own clock runs as
fast as the journey likes, so that fades are short.
"""
import contextlib
import ctypes
import itertools
import mmap
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import time
import unittest

import places
from labels import hovered_label, sees

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = pathlib.Path(os.environ.get("QUARVELLO_BUILD", ROOT / "build/tests")).resolve()
PATIENCE = 180  # seconds until something that never comes is given up; no measure of speed
PAUSED = "[PUZZLE] State mode Change - [PAUSE]"
RESUMED = "[PUZZLE] State mode Change - [GAME]"
HURRY = 8  # times as fast; a step of over 200 ms counts as 200, so that more gains little


class Picture:
    """A screenshot as rows of pixels of four bytes: blue, green, red and nothing."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def pixel(self, x, y):
        at = (int(y) * self.width + int(x)) * 4
        return self.data[at + 2], self.data[at + 1], self.data[at]

    def mean(self, left, top, width, height):
        """Mean red, green and blue of a place in fractions of the picture."""
        columns = slice(int(left * self.width), int((left + width) * self.width))
        rows = range(int(top * self.height), int((top + height) * self.height))
        parts = [b"".join(self.row(y, channel)[columns] for y in rows) for channel in range(3)]
        return [sum(part) / len(part) for part in parts]

    def row(self, y, channel):
        """One row of red (0), green (1) or blue (2)."""
        return self.data[int(y) * self.width * 4 + 2 - channel:(int(y) + 1) * self.width * 4:4]

    def save(self, path):
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "bgra:-", "-alpha", "off", str(path)],
                       input=self.data, check=True)


class Display:
    """A virtual screen of its own, whose picture lies in a file as X's window dumps are laid out."""

    def __init__(self, size=(1280, 1024)):
        self.folder = tempfile.mkdtemp(prefix="quarvello-display-")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{size[0]}x{size[1]}x24", "-fbdir", self.folder, "-noreset",
             "-nolisten", "tcp"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as number:
            self.name = ":" + number.readline().strip()
        with open(f"{self.folder}/Xvfb_screen0", "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.memory[:100])
        self.pitch, colours = header[12], header[19]
        self.begin = header[0] + 12 * colours

    def look(self, left, top, width, height):
        rows = (self.begin + (top + y) * self.pitch + left * 4 for y in range(height))
        return Picture(width, height, b"".join(self.memory[at:at + width * 4] for at in rows))

    def close(self):
        self.server.terminate()
        self.server.wait()
        self.memory.close()
        shutil.rmtree(self.folder, ignore_errors=True)


class Clock:
    """The game's clock, shared with the library game_clock."""
    LAYOUT = struct.Struct("ddII")  # speed, longest step in ms, pictures until it is held, pictures shown

    def __init__(self, speed):
        self.file = tempfile.NamedTemporaryFile(prefix="quarvello-clock-")
        self.file.write(self.LAYOUT.pack(speed, 0, 0, 0))
        self.file.flush()
        self.memory = mmap.mmap(self.file.fileno(), self.LAYOUT.size)
        self.pace = (speed, 0, 0)

    def run(self, speed, longest=0, until=0):
        """The others are limits, where above 0: ms from one picture to the next, and pictures in all."""
        self.pace = (speed, longest, until)
        struct.pack_into("ddI", self.memory, 0, *self.pace)

    @contextlib.contextmanager
    def crawling(self):
        """Hardly anything turns or fades meanwhile. It may not stop: no picture takes less than a millisecond."""
        speed, longest, until = self.pace
        self.run(0.1, longest, until)
        try:
            yield
        finally:
            self.run(speed, *self.pace[1:])

    def pictures(self):
        return self.LAYOUT.unpack_from(self.memory)[3]

    def close(self):
        self.memory.close()
        self.file.close()


class Game:
    """One run of the program in a folder of its own."""

    def __init__(self, display, config=None, program="quarvello", folder=None, preload=(), fast=HURRY, under=(), environment=None):
        """`preload` names libraries to load into the program; its clock runs `fast` times as fast; `under` is a command."""
        self.display = display
        self.folder = folder or make_run_folder(config)
        environment = dict(os.environ, DISPLAY=display.name, SDL_AUDIODRIVER="dummy", **(environment or {}))
        libraries = list(preload)
        self.clock = Clock(fast) if (BUILD / "tests/libgame_clock.so").exists() else None
        if self.clock:
            environment["GAME_CLOCK"] = self.clock.file.name
            libraries.append("game_clock")
        sanitizer = sanitizer_library(BUILD / program)
        if sanitizer:
            libraries.append("keep_libraries")
        if libraries:
            # The sanitizer's library must come first.
            environment["LD_PRELOAD"] = " ".join(
                [*sanitizer, *(str(BUILD / f"tests/lib{name}.so") for name in libraries)])
        self.log_path = self.folder / "log.txt"
        self.log_path.unlink(missing_ok=True)
        self.process = subprocess.Popen([*under, str(BUILD / program)], cwd=self.folder, env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.window = None
        self.area = None  # where the picture is, when no window tells it: full screen

    # What the program says

    def log(self):
        """The log without time stamps."""
        text = self.log_path.read_text(errors="replace") if self.log_path.exists() else ""
        return re.sub(r"\[\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d\] ", "", text)

    def await_log(self, text, times=1):
        self.await_true(lambda: self.log().count(text) >= times, f"{times} x {text!r} in the log")

    def await_true(self, condition, what, act=None, pause=0.05):
        """Waits for a condition, doing `act` before each look when given."""
        deadline = time.monotonic() + PATIENCE
        while True:
            if act:
                act()
            if condition():
                return
            if self.process.poll() is not None and not condition():
                raise self.failed(f"the program ended ({self.process.returncode}) before: {what}")
            if time.monotonic() > deadline:
                raise self.failed(f"waited in vain for: {what}")
            self.rest(pause)

    def rest(self, seconds):
        time.sleep(seconds)

    def await_end(self):
        try:
            status = self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired as late:
            raise self.failed("the program does not end") from late
        if status != 0:
            raise self.failed(f"the program ended with {status}")

    def failed(self, what):
        error = self.process.stderr.read().decode(errors="replace")[-6000:] if self.process.poll() is not None else ""
        return AssertionError(f"{what}\n{error}\n{self.log()[-2000:]}")

    def state_lines(self):
        return [line for line in self.log().splitlines() if "Change - [" in line]

    def complaints(self):
        """Lines of the log that find fault with a file or a device, but for what is said of every new configuration and of
        creatures on a ground without walls."""
        found = re.findall(r"(?im)^.*(?:\[ ?\w* ?(?:error|warning)|failed|blank|not found|wasn't).*$", self.log())
        return [line for line in found if "The block gui is not found" not in line and "out of sector" not in line]

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.process.stderr.close()
        if self.clock:
            self.clock.close()
            self.clock = None

    # What a person does

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *map(str, arguments)], env=dict(os.environ, DISPLAY=self.display.name), check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.decode()

    def key(self, *names):
        self.xdotool("key", *names)

    def tap(self, name):
        """A key held long enough for the slowest picture to see it."""
        self.xdotool("keydown", name)
        self.pictures()
        self.xdotool("keyup", name)
        self.pictures()

    def window_area(self):
        """Left, top, width and height of the window in pixels of the screen."""
        if self.area:
            return self.area
        if not self.window:
            self.window = self.xdotool("search", "--name", "^Quarvello$").split()[:1]
        found = dict(line.split("=") for line in self.xdotool("getwindowgeometry", "--shell", *self.window).split() if "=" in line)
        if "WIDTH" not in found:
            self.window = None
            raise AssertionError("the window is not there")
        return tuple(int(found[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def geometry(self):
        """The same of the 4:3 picture in the window's middle, to which all places refer."""
        left, top, width, height = self.window_area()
        wide, high = min(width, height * 4 // 3), min(height, width * 3 // 4)
        return left + (width - wide) // 2, top + (height - high) // 2, wide, high

    def move(self, x, y):
        """Points at a place in fractions of the picture."""
        left, top, width, height = self.geometry()
        self.xdotool("mousemove", left + int(x * width), top + int(y * height))

    def click(self, x, y):
        self.move(x, y)
        self.pictures()  # so that the pointer has arrived before the button
        self.xdotool("click", 1)

    def drag(self, begin, end):
        """Takes hold of a place and lets go at another."""
        for place, act in ((begin, "mousedown"), (end, "mouseup")):
            self.move(*place)
            self.pictures()
            self.xdotool(act, 1)
            self.pictures()

    def close_window(self):
        """What a window manager sends when the window is closed."""
        self.geometry()
        send_close(self.display.name, int(self.window[0]))

    def pictures(self, count=2):
        """Waits for pictures that are begun and shown after this moment, so that what was done before stands in the last."""
        if not self.clock:
            time.sleep(0.1 * count)
            return
        begin = self.clock.pictures()
        self.await_true(lambda: self.clock.pictures() - begin >= count or self.process.poll() is not None, "pictures", pause=0.005)

    def step(self, milliseconds, count):
        """Shows that many pictures, each so long after the one before, and holds the last."""
        shown = self.clock.pictures()
        self.clock.run(1000, milliseconds, shown + count)
        for number in range(shown + 1, shown + count + 1):  # each with patience of its own
            self.await_true(lambda: self.clock.pictures() >= number, "pictures", pause=0.005)

    def look(self, save_as=None):
        picture = self.display.look(*self.geometry())
        if save_as:
            picture.save(save_as)
        return picture

    def await_text(self, text, x, y, gone=False, act=None):
        """Waits until a text stands about a place or, when it is to be `gone`, no longer does."""
        self.await_true(lambda: sees(self.look(), text, x, y) != gone, f"{text!r} at ({x}, {y}){' to go' if gone else ''}",
                        act=act, pause=0.1)

    def await_page(self, text, left):
        """Waits for a line of the scrolling pages, wherever it is on its way up; `left` is its place on the text grid."""
        self.await_true(lambda: sees(self.look(), text, (left + 5 * len(text) + 0.5) / 640, 0.5, across=0, along=200), text)

    # Roads that many journeys take

    def to_menu(self, press=None):
        """Past the intro by a key, until the menu is loaded."""
        self.await_log("mainScene::ExecConfig(config.cfg)")
        self.await_true(lambda: "Game mode Change - [MENU]" in self.log(), "the menu", press or (lambda: self.key("Return")), 0.3)
        self.await_log("mainScene::camera.Load()")

    def await_locked(self):
        """Until the menu's boxes have locked: from then on it takes the mouse, and the studio's round logo appears. Glow and dusk
        are as bright, but smooth."""
        def logo_shows():
            picture = self.look()
            row = picture.row(picture.height * 0.87, 0)[int(picture.width * 0.05):int(picture.width * 0.14)]
            return max(row) - min(row) > 60
        self.await_true(logo_shows, "the boxes to lock")

    def menu_item(self, name):
        self.hover(name, lambda: self.xdotool("click", 1))

    def hover(self, name, act=lambda: None):
        """Points at one of the four boxes, found by the label that stands beside the pointer, and does `act` while time
        crawls, as the boxes turn away."""
        places = itertools.cycle((x / 100, y / 100) for y in range(44, 80, 5) for x in range(36, 66, 4))

        def found():
            place = next(places)
            self.move(*place)
            self.pictures()
            if hovered_label(self.look(), *place) != name:
                return False
            with self.clock.crawling() if self.clock else contextlib.nullcontext():
                self.pictures()
                if hovered_label(self.look(), *place) != name:
                    return False
                act()
                self.pictures()
                return True

        self.await_true(found, f"the box {name}", pause=0)

    def to_game(self):
        self.to_menu()
        self.new_game()

    def new_game(self):
        before = self.log().count("starting debugger")
        self.menu_item("NEW GAME")
        self.await_log("starting debugger", before + 1)

    def choose(self, row):
        """Leaves a paused game by the drop-down."""
        self.move(*places.DROP_DOWN)
        self.await_text(*places.LAST_ROW)  # the list unrolls under the pointer
        self.await_text(*places.SURE, act=lambda: self.click(*places.ROWS[row]))
        self.await_another(f"State mode Change - [{'END' if row == 'Quit' else 'CHANGE'}]", lambda: self.click(*places.LEAVE_OK))

    def await_setting(self, key, value):
        config = self.folder / "config.cfg"
        self.await_true(lambda: [key, "=", value] in map(str.split, config.read_text().splitlines()), f"{key} = {value} in config.cfg")

    def await_another(self, line, act, pause=0.1):
        """Waits for one more of a line of the log, doing `act` before each look."""
        before = self.log().count(line)
        self.await_true(lambda: self.log().count(line) > before, f"another {line}", act=act, pause=pause)

    def pause(self):
        """Presses p until the game pauses, which it does once the picture has faded in. A second press would resume it, so each
        is given the time to be heard."""
        self.await_another("State mode Change - [PAUSE]", lambda: (self.key("p"), self.pictures(3)), pause=0.3)

    def resume(self):
        """One Escape: a second one would pause the game again."""
        before = self.log().count(RESUMED)
        self.key("Escape")
        self.await_log(RESUMED, before + 1)

    def play_to_the_end(self, drop=None):
        """Drops one piece after the other until the game is over, which pauses it."""
        self.await_another("State mode Change - [PAUSE]", drop or (lambda: self.key("space")))

    def throws(self):
        """Of the dice, which the library same_rand counts."""
        text = (self.folder / "throws.txt").read_text()
        return int(text) if text.strip() else self.throws()


def send_close(display_name, window):
    xlib = ctypes.CDLL("libX11.so.6")
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    xlib.XInternAtom.restype = ctypes.c_ulong
    display = ctypes.c_void_p(xlib.XOpenDisplay(display_name.encode()))
    protocols, delete = (xlib.XInternAtom(display, name, 0) for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
    # Xlib's XClientMessageEvent, in the room of its longest event.
    message = struct.pack("iLiPLLi5l", 33, 0, 0, 0, window, protocols, 32, delete, 0, 0, 0, 0).ljust(192, b"\0")
    xlib.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), message)
    xlib.XCloseDisplay(display)


def sanitizer_library(program):
    linked = subprocess.run(["ldd", str(program)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout.decode()
    return re.findall(r"=> (\S*lib[at]san\S*)", linked)


def make_run_folder(config=None):
    """A folder laid out as the game's working directory; `config` replaces the text of config.cfg."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="quarvello-journey-"))
    for entry in (ROOT / "data").iterdir():
        if entry.is_dir():
            (folder / entry.name).symlink_to(entry)
    text = (ROOT / "data/config.cfg").read_text()
    (folder / "config.cfg").write_text(config(text) if config else text)
    return folder


def set_key(text, key, value):
    """The configuration with another value of a key, which must be there."""
    changed, count = re.subn(rf"(?m)^(\s*{key}\s*=\s*)\S+", rf"\g<1>{value}", text)
    assert count, key
    return changed


def small(text):
    """Fast to draw: the smallest mode, in a window."""
    for key, value in (("width", 640), ("height", 480), ("fullscreen", 0)):
        text = set_key(text, key, value)
    return text


class Journey(unittest.TestCase):
    """A test with a display; every game that it starts is gone at its end."""

    def setUp(self):
        self.display = Display()
        self.addCleanup(self.display.close)
        self.games = []

    def start(self, **arguments):
        arguments.setdefault("config", small)
        game = Game(self.display, **arguments)
        self.games.append(game)
        self.addCleanup(self.forget, game)
        return game

    def forget(self, game):
        game.kill()
        shutil.rmtree(game.folder, ignore_errors=True)
