"""The game's windows: pausing, leaving with and without a second thought, the list of scores, windows moved and found again."""
import re

import places
from journey import Journey, small
from labels import sees

SCORES = "<highscores>\n" + "".join(f'<score>\nscore = {900 - i}\nname = "Ramose"\n</score>\n' for i in range(10))
# Where both windows are dragged to.
MOVED_SCORE, MOVED_NEXT = ("Score :", 0.43, 0.61), ("Next:", 0.785, 0.12)


class Dialogs(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_game()
        return game

    def assert_keys_leave_open(self, game, title, *keys):
        states = game.state_lines()
        game.key(*keys)
        game.move(0.5, 0.9)
        game.pictures()
        self.assertTrue(sees(game.look(), *title), f"keys leave {title} open")
        self.assertEqual(game.state_lines(), states)

    def click_resume(self, game):
        game.open_drop_down()
        game.click(*places.ROWS["Resume"])
        game.pictures()  # so that it is heard before anyone looks whether it was

    def test_pause_and_second_thoughts(self):
        game = self.begin()
        game.pause()
        game.resume()
        game.pause()
        game.await_another("[PUZZLE] State mode Change - [GAME]", lambda: self.click_resume(game))
        game.pause()
        game.open_drop_down()
        game.await_text(*places.SURE, act=lambda: game.click(*places.ROWS["Menu"]))
        self.assert_keys_leave_open(game, places.SURE, "Escape", "p", "space", "Return")
        game.await_text(*places.SURE, gone=True, act=lambda: game.click(*places.LEAVE_CANCEL))
        game.resume()
        # Closing the window pauses before it asks.
        before = len(game.state_lines())
        game.close_window()
        game.await_text(*places.SURE)
        self.assertEqual(game.state_lines()[before:], ["MainServer::GameProcess()[PUZZLE] State mode Change - [PAUSE]"])
        game.click(*places.LEAVE_OK)
        game.await_end()
        self.assertIn("Game mode Change - [DESTROY]", game.log())

    def test_the_list_of_scores(self):
        game = self.begin(config=lambda text: small(text).replace("<highscores>\n", SCORES))
        self.play_to_the_list(game)
        self.assert_keys_leave_open(game, places.LIST, "Escape", "p")
        game.await_another("[PUZZLE] State mode Change - [GAME]", lambda: game.click(*places.LIST_RESTART))
        game.await_text(*places.LIST, gone=True)
        game.play_to_the_end()
        game.await_text(*places.LIST)
        game.await_another("[MENU] State mode Change - [CHANGE]", lambda: game.click(*places.LIST_MENU), pause=0.3)
        game.await_log("Game mode Change - [MENU]", 2)
        game.new_game()
        self.play_to_the_list(game)
        game.close_window()  # over the list there is nothing to lose and nothing to ask
        game.await_end()
        self.assertEqual((game.folder / "config.cfg").read_text().count('name = "Ramose"'), 10)

    def play_to_the_list(self, game):
        """From the fade on."""
        game.pause()
        game.resume()
        game.play_to_the_end()
        game.await_text(*places.LIST)

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
