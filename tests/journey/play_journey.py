"""A game played to its end: rows cleared, the name entered, the table in config.cfg and back after a restart."""
from course_journey import FADE
from journey import HURRY, Journey

ROW = ("1) Nefer", 0.285, 0.285)
LIST_QUIT = (0.527, 0.83)
SLOW = 0.05  # a held key moves the square again after 200 ms of this clock


class Play(Journey):
    def throws(self, game):
        text = (game.folder / "throws.txt").read_text()
        return int(text) if text.strip() else self.throws(game)

    def play_square(self, game, column):
        """Moves a square from its place at column 4 to another, drops it and waits for the next to be dealt."""
        for _ in range(abs(column - 4)):
            game.tap("Left" if column < 4 else "Right")
        before = self.throws(game)
        game.key("space")
        # The light takes three throws at a time, a piece one.
        game.await_true(lambda: (self.throws(game) - before) % 3 == 1, "the next piece")

    def test_to_the_end_and_into_the_table(self):
        game = self.start(preload=["same_rand"])
        game.to_game()
        game.pause()
        game.resume()
        game.clock.run(SLOW)
        for column in (0, 2, 4, 6, 8):
            self.play_square(game, column)
        game.clock.run(HURRY)
        game.play_to_the_end()
        game.pictures()  # the dialog's first
        game.key(*["BackSpace"] * 30)  # also the drops that came too late
        game.type("Nefer")
        game.key("Return")
        config = game.folder / "config.cfg"
        game.await_true(lambda: 'name = "Nefer"' in config.read_text(), "the entry in config.cfg")
        self.assertIn('    <score>\n      score = 200\n      name = "Nefer"\n    </score>\n\n  </highscores>\n\n</quarvello>\n',
                      config.read_text())
        game.await_text(*ROW)
        game.click(*LIST_QUIT)
        game.await_end()
        self.assertGreater(game.lasted("[DESTROY] State mode Change - [END]", "mainMenu::GameEnd"), FADE)

        again = self.start(folder=game.folder, preload=["same_rand"])
        again.to_game()
        again.pause()
        again.resume()
        again.play_to_the_end()
        again.await_text(*ROW)
        again.click(*LIST_QUIT)
        again.await_end()
        self.assertIn('name = "Nefer"', config.read_text(), "a game without points leaves the table alone")
