"""The world scene: creatures that move, its statistics, its three windows, and the way from it into the game."""
from journey import Journey

COURSE = [
    "Game mode Change - [GAME]",
    "MainScene::GameProcess()[GAME] State mode Change - [PAUSE]",
    "MainScene::GameProcess()[GAME] State mode Change - [GAME]",
    "MainScene::GameProcess()[GAME] State mode Change - [PAUSE]",
    "MainScene::GameProcess()[PUZZLE] State mode Change - [CHANGE]",
    "Game mode Change - [PUZZLE]",
]

# Places in fractions of the window.
VIEW = (0.61, 0.10, 0.09, 0.10)  # in "In eyes:", left of the times: the first creature's head
STAGE = (0.05, 0.38, 0.40, 0.32)
CAPTION, CORNER = (0.1, 0.035), (0.347, 0.212)  # of "General:", at the least size of a window
PAUSE_BUTTON, EDITOR_BUTTON = (0.45, 0.21), (0.45, 0.33)
SCROLL_ON = (0.303, 0.235)


class World(Journey):
    def await_motion(self, game, place):
        """Waits until a part of the picture changes by much more than noise."""
        first = self.region(game, place)
        game.await_true(lambda: sum(abs(a - b) for a, b in zip(first, self.region(game, place))) > 1,
                        f"motion at {place}", pause=0.2)

    def region(self, game, place):
        """Means of a place's four quarters."""
        left, top, width, height = place
        picture = game.look()
        return [value for column in (0, 1) for row in (0, 1)
                for value in picture.mean(left + column * width / 2, top + row * height / 2, width / 2, height / 2)]

    def test_stage_windows_and_the_way_into_the_game(self):
        game = self.start(program="quarvello-world", fast=2)
        game.await_log("starting debugger")
        for text, left, bottom in (("DrawEntityes", 450, 15), ("UpdateGUI", 450, 105), ("version", 515, 470)):
            game.await_text(text, (left + 5 * len(text)) / 640, (bottom + 4) / 480)
        for caption, left, top in (("General:", 0.02, 0.035), ("Options:", 0.318, 0.135), ("In ey", 0.618, 0.035)):
            game.await_text(caption, left + len(caption) * 5 / 640, top)
        self.await_motion(game, STAGE)
        self.await_motion(game, VIEW)

        self.pause(game, 1)
        self.await_line(game, COURSE[2], lambda: game.click(*PAUSE_BUTTON))
        self.pause(game, 2)
        game.move(*CAPTION)
        game.await_text("mx=0.10", 0.075, 0.035)
        game.click(*CAPTION)  # to the front
        game.drag(CORNER, (0.69, 0.75))  # to a size at which all its widgets show
        game.click(*SCROLL_ON)
        game.await_text("pos=11", 0.075, 0.112)
        game.drag((0.683, 0.743), CORNER)
        self.await_line(game, COURSE[5], lambda: game.click(*EDITOR_BUTTON))
        self.assertIn("mainScene::GameEnd\nmainScene::StopMap()-Removing old objects\n", game.log())
        self.assertEqual([line for line in game.state_lines() if line in COURSE], COURSE)
        game.await_log("starting debugger", 2)
        game.pause()
        game.choose("Quit")
        game.await_end()
        self.assertEqual(game.complaints(), [])

    def await_line(self, game, line, act):
        game.await_true(lambda: line in game.log(), line, act=act, pause=1)

    def pause(self, game, times):
        """The key is heard only while the scene runs, so it may be pressed again and again."""
        game.await_true(lambda: game.log().count(COURSE[1]) >= times, "the pause", act=lambda: game.key("p"), pause=0.5)
