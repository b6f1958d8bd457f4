"""A monkey at the game: random real keys, clicks and motions for a while. The game must neither crash nor stick.

It starts the game again whenever it has led it to an orderly end. QUARVELLO_MONKEY may name other seconds and a seed: "600 17".
"""
import os
import random
import time

import places
from journey import HURRY, Journey

KEYS = ["Left", "Right", "Up", "Down", "space", "Escape", "p", "Return", "a", "BackSpace", "Tab", "shift+b", "F1", "KP_0"]


def act(game, dice):
    """One deed. The window may be gone at any moment; that is no fault of the game's."""
    try:
        deed = dice.random()
        if deed < 0.45:
            game.key(dice.choice(KEYS))
        elif deed < 0.55:
            key = dice.choice(KEYS[:5])
            game.xdotool("keydown", key)
            time.sleep(dice.random() * 0.4)
            game.xdotool("keyup", key)
        elif deed < 0.98:
            button = dice.choice([1, 1, 1, 2, 3, 4, 5])
            game.move(dice.random(), dice.random())
            game.xdotool("mousedown", button)
            if dice.random() < 0.3:
                game.move(dice.random(), dice.random())
            game.xdotool("mouseup", button)
        elif deed < 0.99:
            game.close_window()
        else:
            game.clock.run(dice.choice([0.1, 1, 4, 30]))  # into another moment of a fade
            time.sleep(dice.random() * 3)
    except (AssertionError, OSError):
        pass


def leave(game):
    """Asks to close, and answers whatever the game asks back."""
    try:
        game.close_window()
        game.key("p")
        game.click(*places.LEAVE_OK)
    except (AssertionError, OSError):
        pass


class Monkey(Journey):
    def test_it_neither_crashes_nor_sticks(self):
        seconds, seed = [*map(int, os.environ.get("QUARVELLO_MONKEY", "60").split()), random.randrange(1 << 30)][:2]
        print(f"seed {seed}", flush=True)
        dice = random.Random(seed)
        folder = None
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            game = self.start(folder=folder)
            folder = game.folder
            while game.process.poll() is None and time.monotonic() < end:
                act(game, dice)
            if game.process.poll() is not None:
                game.await_end()
        if game.process.poll() is None:
            game.clock.run(HURRY)
            game.await_true(lambda: game.process.poll() is not None, "the end", act=lambda: leave(game), pause=0.5)
            game.await_end()
