"""The game played picture by picture for those who want to look at it: sheets, recordings.

Its clock stands still but while pictures are asked for, and passes the same time from each to the next, so that what is
seen does not depend on how fast this machine draws.
"""
import pathlib
import shutil
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/journey"))
from journey import PATIENCE, Display, Game, set_key

SMOOTH = 1000 / 60  # ms from picture to picture, at which the menu glows
COARSE = 40
PIECES = (0, 2, 4, 6, 8)  # columns where five squares fill two rows
SCORES = "".join(f'<score>\nscore = {1200 - 90 * i}\nname = "{name}"\n</score>\n' for i, name in enumerate(
    ["Nefertari", "Imhotep", "Ankhesenamun", "Ramose", "Tiy", "Senenmut", "Meryre"]))


def configuration(width, height, lighting=1, scores=""):
    def change(text):
        for key, value in (("width", width), ("height", height), ("fullscreen", 0), ("lighting", lighting)):
            text = set_key(text, key, value)
        return text.replace("<highscores>", "<highscores>\n" + scores)
    return change


class Stage(Game):
    """A game on a screen of its own, as large as its window."""

    def __init__(self, size, **arguments):
        self.pace = SMOOTH
        self.screen = Display(size)
        super().__init__(self.screen, fast=0, **arguments)

    def close(self):
        self.kill()
        self.screen.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    # In place of what runs by the clock

    def pictures(self, count=2):
        """Lets the game show that many pictures."""
        until = self.clock.pictures() + count
        self.clock.run(1000, self.pace, until)
        deadline = time.monotonic() + PATIENCE + count
        while self.clock.pictures() < until and self.process.poll() is None:
            assert time.monotonic() < deadline, f"no picture\n{self.log()[-2000:]}"
            time.sleep(0.002)

    def rest(self, seconds):
        self.pass_time(max(seconds, 0.001))

    def pass_time(self, seconds):
        self.pictures(max(round(1000 * seconds / self.pace), 1))

    def await_end(self):
        while self.process.poll() is None:
            self.pictures(1)
        super().await_end()

    # What a person does

    def press(self, name):
        """A key held for one picture."""
        self.xdotool("keydown", name)
        self.pictures(1)
        self.xdotool("keyup", name)
        self.pictures(1)

    def click(self, x, y):
        super().click(x, y)
        self.pictures()

    def point(self, x, y):
        self.move(x, y)
        self.pictures(2)

    def end_fade(self):
        """Waits until the game takes keys."""
        self.pause()
        self.press("Escape")
        self.await_log("[PUZZLE] State mode Change - [GAME]")

    def drop(self, column, pause=0.8):
        """Moves a piece from its place at column 4 to another and drops it."""
        for _ in range(abs(column - 4)):
            self.press("Left" if column < 4 else "Right")
        self.press("space")
        self.pass_time(pause)

    def land(self, column):
        """The same, until the next piece is dealt; needs the library same_rand."""
        before = self.throws()
        self.drop(column, 0)
        # The light takes three throws at a time, a piece one.
        self.await_true(lambda: (self.throws() - before) % 3 == 1, "the next piece", pause=0)

    def end_game(self):
        """Drops pieces until the well is full."""
        self.play_to_the_end(lambda: self.press("space"))
