"""The game's windows: pausing, leaving with and without a second thought, the list of scores, windows moved and found again."""
import re

from course_journey import FADE, PAUSE_ROWS, choose, open_drop_down
from journey import Journey, small
from labels import sees

CONFIRM_TITLE = ("Are you sure?", 0.425, 0.435)
CONFIRM_OK, CONFIRM_CANCEL = (0.42, 0.59), (0.6, 0.59)
LIST_TITLE = ("High Scores", 0.30, 0.135)
RESTART, LIST_MENU = (0.697, 0.83), (0.358, 0.83)
SCORES = "<highscores>\n" + "".join(f'<score>\nscore = {900 - i}\nname = "Ramose"\n</score>\n' for i in range(10))


class Dialogs(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_game()
        return game

    def open_confirmation(self, game, row):
        open_drop_down(game)
        game.await_text(*CONFIRM_TITLE, act=lambda: game.click(*PAUSE_ROWS[row]))

    def await_end_with_fade(self, game):
        game.await_end()
        self.assertGreater(game.lasted("[DESTROY] State mode Change - [END]", "mainMenu::GameEnd"), FADE)

    def click_resume(self, game):
        open_drop_down(game)
        game.click(*PAUSE_ROWS["Resume"])
        game.pictures()  # so that it is heard before anyone looks whether it was

    def test_pause_and_second_thoughts(self):
        game = self.begin()
        game.pause()
        game.resume()
        game.pause()

        game.await_another("[PUZZLE] State mode Change - [GAME]", lambda: self.click_resume(game))
        game.pause()
        self.open_confirmation(game, "Menu")
        states = game.state_lines()
        for key in ("Escape", "p", "space", "Return"):
            game.key(key)
        game.move(0.5, 0.9)
        self.assertTrue(sees(game.look(), *CONFIRM_TITLE), "keys leave the question open")
        self.assertEqual(game.state_lines(), states)
        game.await_text(*CONFIRM_TITLE, gone=True, act=lambda: game.click(*CONFIRM_CANCEL))
        game.resume()
        # Closing the window pauses before it asks.
        before = len(game.state_lines())
        game.close_window()
        game.await_text(*CONFIRM_TITLE)
        self.assertEqual(game.state_lines()[before:], ["MainServer::GameProcess()[PUZZLE] State mode Change - [PAUSE]"])
        game.click(*CONFIRM_OK)
        self.await_end_with_fade(game)
        self.assertIn("Game mode Change - [DESTROY]", game.log())

    def test_the_list_of_scores(self):
        game = self.begin(config=lambda text: small(text).replace("<highscores>\n", SCORES))
        config = game.folder / "config.cfg"
        game.pause()
        game.resume()
        game.play_to_the_end()
        game.await_text(*LIST_TITLE)
        for key in ("Escape", "p"):
            game.key(key)
        game.pictures()
        self.assertTrue(sees(game.look(), *LIST_TITLE), "keys leave the list open")
        game.await_another("[PUZZLE] State mode Change - [GAME]", lambda: game.click(*RESTART))
        game.await_text(*LIST_TITLE, gone=True)
        game.play_to_the_end()
        game.await_text(*LIST_TITLE)
        self.await_state_of_menu(game)
        game.await_log("Game mode Change - [MENU]", 2)
        self.assertGreater(game.lasted("[MENU] State mode Change - [CHANGE]", "Game mode Change - [MENU]"), FADE)
        game.menu_item("NEW GAME")
        game.await_log("starting debugger", 2)
        game.pause()
        game.resume()
        game.play_to_the_end()
        game.await_text(*LIST_TITLE)
        game.close_window()  # over the list there is nothing to lose and nothing to ask
        self.await_end_with_fade(game)
        self.assertEqual(config.read_text().count('name = "Ramose"'), 10)

    def await_state_of_menu(self, game):
        game.await_true(lambda: "[MENU] State mode Change - [CHANGE]" in game.log(), "the way to the menu",
                        act=lambda: game.click(*LIST_MENU), pause=0.3)

    def test_windows_are_found_where_they_were_left(self):
        game = self.begin()
        game.pause()
        game.await_text("Score :", 0.13, 0.51)
        game.drag((0.23, 0.82), (0.53, 0.92))
        game.await_text("Score :", 0.43, 0.61)
        game.drag((0.25, 0.30), (0.95, 0.36))
        game.await_text("Next:", 0.785, 0.12)
        choose(game, "Menu")
        game.await_log("Game mode Change - [MENU]", 2)
        places = self.places(game)
        for place, expected in zip(places, ((0.05, 0.35), (0.72, 0.08), (0.35, 0.57))):
            self.assertAlmostEqual(place[0], expected[0], delta=0.01)
            self.assertAlmostEqual(place[1], expected[1], delta=0.01)
        game.menu_item("NEW GAME")
        game.await_log("starting debugger", 2)
        self.assert_found(game)
        game.kill()
        again = self.begin(folder=game.folder)
        self.assert_found(again)
        again.pause()
        choose(again, "Quit")
        again.await_end()
        self.assertEqual(self.places(again), places, "what was not moved stays to the last digit")

    def assert_found(self, game):
        game.await_text("Score :", 0.43, 0.61)
        game.await_text("Next:", 0.785, 0.12)

    def places(self, game):
        text = (game.folder / "config.cfg").read_text()
        found = re.findall(r"<(hform1|Next:|GameState)>\n    left = (\S+)\n    top = (\S+)\n", text)
        self.assertEqual([name for name, _, _ in found], ["hform1", "Next:", "GameState"])
        return [(float(left), float(top)) for _, left, top in found]
