#!/usr/bin/env python3
"""A game played to its end: rows cleared, the name entered, the table in config.cfg and back after a restart."""
import time
import unittest

from journey import Journey

NAME_OK = (0.38, 0.52)


class Play(Journey):
    def throws(self, game):
        text = (game.folder / "throws.txt").read_text()
        return int(text) if text.strip() else self.throws(game)

    def play_square(self, game, column):
        """Moves a square from its place at column 4 to another, drops it and waits for the next to be dealt."""
        for _ in range(abs(column - 4)):
            # A tenth of a second for the game, whose clock is slow, and long enough for the slowest picture.
            game.tap("Left" if column < 4 else "Right", seconds=0.4)
        before = self.throws(game)
        game.key("space")
        # The light takes three throws at a time, a piece one.
        game.await_true(lambda: (self.throws(game) - before) % 3 == 1, "the next piece")

    def test_to_the_end_and_into_the_table(self):
        game = self.start(preload=["same_rand"], fast=0.25)
        game.to_game()
        game.pause()
        game.key("Escape")
        game.await_log("[PUZZLE] State mode Change - [GAME]")
        for column in (0, 2, 4, 6, 8):
            self.play_square(game, column)
        over = game.log().count("State mode Change - [PAUSE]")
        game.await_true(lambda: game.log().count("State mode Change - [PAUSE]") > over, "the end of the game",
                        act=lambda: game.key("space"), pause=0.2)
        time.sleep(0.5)  # the dialog's first pictures
        game.key(*["BackSpace"] * 30)  # also the drops that came too late
        game.type("Nefer")
        game.key("Return")
        config = game.folder / "config.cfg"
        game.await_true(lambda: 'name = "Nefer"' in config.read_text(), "the entry in config.cfg")
        self.assertIn('    <score>\n      score = 200\n      name = "Nefer"\n    </score>\n\n  </highscores>\n\n</quarvello>\n',
                      config.read_text())
        game.close_window()
        game.await_end()

        again = self.start(folder=game.folder, preload=["same_rand"], fast=2)
        again.to_game()
        again.pause()
        again.key("Escape")
        over = again.log().count("State mode Change - [PAUSE]")
        again.await_true(lambda: again.log().count("State mode Change - [PAUSE]") > over, "the end of the second game",
                         act=lambda: again.key("space"), pause=0.2)
        again.close_window()
        again.await_end()
        self.assertIn('name = "Nefer"', config.read_text(), "a game without points leaves the table alone")


if __name__ == "__main__":
    unittest.main(verbosity=2)
