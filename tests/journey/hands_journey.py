"""The whole game without a mouse, by the keyboard and by a controller: options changed and saved, rows cleared, the score
entered and found again at the next start."""
import os
import random
import struct

import places
from journey import HURRY, RESUMED, Journey, make_run_folder, small
from labels import hovered_label

SLOW = 0.05  # a held key moves the piece again after 200 ms of this clock


class Keyboard:
    ways = ("Tab", "Tab", "shift+Tab", "Down")
    click, start, pause, drop, left, right, name = "Return", "x", "p", "space", "Left", "Right", "Nefer"

    def __init__(self, game):
        self.press = game.tap


class Controller:
    """What is sent: an axis, a hat or a button, its number, its value."""
    ways = ((b"a", 0, 32767), (b"a", 0, -32767), (b"a", 1, 32767), (b"h", 0, 1))
    click, start, pause, drop, left, right = (b"b", 0, 1), (b"b", 2, 1), (b"b", 7, 1), (b"b", 1, 1), (b"h", 0, 8), (b"h", 0, 2)
    name = "My name..."

    def __init__(self, game):
        self.game, self.pipe = game, os.open(game.folder / "controller", os.O_RDWR)

    def press(self, thing):
        kind, number, value = thing
        for now in (value, 0):
            os.write(self.pipe, struct.pack("=cBh", kind, number, now))
            self.game.pictures()


class Hands(Journey):
    def begin(self, hands):
        folder = make_run_folder(small)
        os.mkfifo(folder / "controller")
        self.game = self.start(folder=folder, preload=["same_rand", "controller"])
        self.hands = hands(self.game)
        self.dice = random.Random(1)

    def walk(self, arrived, what):
        """Moves the pointer from thing to thing until it is where it shall be, and clicks."""
        self.game.await_true(arrived, what, act=lambda: self.hands.press(self.dice.choice(self.hands.ways)), pause=0)
        self.hands.press(self.hands.click)

    def pointer(self):
        place = dict(line.split("=") for line in self.game.xdotool("getmouselocation", "--shell").split())
        left, top, width, height = self.game.geometry()
        return (int(place["X"]) - left) / width, (int(place["Y"]) - top) / height

    def to_box(self, name):
        self.walk(lambda: hovered_label(self.game.look(), *self.pointer()) == name, f"the box {name}")

    def to_place(self, x, y):
        def arrived():
            now = self.pointer()
            return abs(now[0] - x) < 0.08 and abs(now[1] - y) < 0.02
        self.walk(arrived, f"the pointer at ({x}, {y})")

    def play_square(self, column):
        """Moves a square from its place at column 4 to another, drops it and waits for the next to be dealt."""
        for _ in range(abs(column - 4)):
            self.hands.press(self.hands.left if column < 4 else self.hands.right)
        before = self.game.throws()
        self.hands.press(self.hands.drop)
        # The light takes three throws at a time, a piece one.
        self.game.await_true(lambda: (self.game.throws() - before) % 3 == 1, "the next piece")

    def change_an_option(self):
        self.to_box("OPTIONS")
        self.game.await_text(*places.OPTIONS)
        self.to_place(*places.SHOW_GRID)
        self.to_place(*places.OPTIONS_OK)
        self.game.await_text(*places.OPTIONS, gone=True)
        self.game.await_setting("showgrid", "0")

    def play(self):
        game, hands = self.game, self.hands
        self.to_box("NEW GAME")
        game.await_log("starting debugger")
        game.await_another("[PAUSE]", lambda: hands.press(hands.pause), pause=0.3)
        game.await_text(*places.PAUSE_LINE)
        game.await_another(RESUMED, lambda: hands.press(hands.pause), pause=0.3)
        game.clock.run(SLOW)
        for column in (0, 2, 4, 6, 8):
            self.play_square(column)
        game.clock.run(HURRY)
        game.play_to_the_end(lambda: hands.press(hands.drop))
        game.pictures()  # the dialog's first

    def leave(self):
        self.to_place(*places.LIST_MENU)
        self.game.await_log("Game mode Change - [MENU]", 2)
        self.to_box("CREDITS")
        self.game.await_page("C R E D I T S", 260)
        self.to_place(*places.BACK)
        self.to_box("QUIT")
        self.game.await_text(*places.SURE)
        self.to_place(*places.QUIT_YES)
        self.game.await_end()

    def course(self, hands, enter_name):
        self.begin(hands)
        game = self.game
        game.to_menu(lambda: self.hands.press(self.hands.start))
        game.await_locked()
        self.change_an_option()
        self.play()
        enter_name()
        entry = (f'    <score>\n      score = 200\n      name = "{self.hands.name}"\n    </score>\n\n'
                 "  </highscores>\n\n</quarvello>\n")
        game.await_true(lambda: entry in (game.folder / "config.cfg").read_text(), "the entry in config.cfg")
        game.await_text(*places.LIST)
        self.leave()

    def test_by_keys_and_found_again(self):
        self.course(Keyboard, self.type_name)
        again = self.start(folder=self.game.folder, preload=["same_rand"])
        again.to_game()
        again.play_to_the_end()
        again.await_text("1) Nefer", 0.285, 0.285)
        again.click(*places.LIST_QUIT)
        again.await_end()
        self.assertIn('name = "Nefer"', (again.folder / "config.cfg").read_text(), "a game without points leaves the table alone")

    def type_name(self):
        self.game.key("Num_Lock", *["BackSpace"] * 30)  # also the drops that came too late
        self.game.xdotool("type", "--delay", "30", self.hands.name)  # with a capital, whatever Num Lock says
        self.game.key("Return")

    def test_by_a_controller(self):
        self.course(Controller, lambda: self.to_place(*places.NAME_OK))
