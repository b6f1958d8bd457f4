"""The game's windows, moved and found again in the next game and at the next start."""
import re

import places
from journey import Journey

# Where both windows are dragged to.
MOVED_SCORE, MOVED_NEXT = ("Score :", 0.43, 0.61), ("Next:", 0.785, 0.12)


class Windows(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_game()
        return game

    def test_windows_are_found_where_they_were_left(self):
        game = self.begin()
        game.pause()
        game.await_text(*places.SCORE)
        game.drag((0.23, 0.82), (0.53, 0.92))
        game.await_text(*MOVED_SCORE)
        game.drag((0.25, 0.30), (0.95, 0.36))
        game.await_text(*MOVED_NEXT)
        game.choose("Menu")
        game.await_log("Game mode Change - [MENU]", 2)
        kept = self.places(game)
        for place, expected in zip(kept, ((0.05, 0.35), (0.72, 0.08), (0.35, 0.57))):
            self.assertAlmostEqual(place[0], expected[0], delta=0.01)
            self.assertAlmostEqual(place[1], expected[1], delta=0.01)
        game.new_game()
        self.await_moved(game)
        game.kill()
        again = self.begin(folder=game.folder)
        self.await_moved(again)
        again.pause()
        again.choose("Quit")
        again.await_end()
        self.assertEqual(self.places(again), kept, "what was not moved stays to the last digit")

    def await_moved(self, game):
        game.await_text(*MOVED_SCORE)
        game.await_text(*MOVED_NEXT)

    def places(self, game):
        text = (game.folder / "config.cfg").read_text()
        found = re.findall(r"<(hform1|Next:|GameState)>\n    left = (\S+)\n    top = (\S+)\n", text)
        self.assertEqual([name for name, _, _ in found], ["hform1", "Next:", "GameState"])
        return [(float(left), float(top)) for _, left, top in found]
