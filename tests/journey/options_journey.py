"""The screen's sizes that the options offer, and the whole screen."""
import places
from journey import Display, Journey, set_key, small


class Options(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_menu()
        game.await_locked()
        return game

    def open_options(self, game):
        game.menu_item("OPTIONS")
        game.await_text(*places.OPTIONS)
        game.await_text(*places.FIRST_LINES["Video"], act=lambda: game.click(*places.TABS["Video"]))

    def leave(self, game, button):
        game.click(*button)
        game.move(0.5, 0.97)
        game.await_text(*places.OPTIONS, gone=True)

    def close(self, game):
        game.close_window()
        game.await_end()

    def test_another_resolution_loses_nothing(self):
        game = self.begin()
        game.move(0.5, 0.97)
        game.leap(10)  # the logos fade in for five
        logos = self.logos(game)
        self.open_options(game)
        game.await_text(*places.RESOLUTION)
        shown = self.shown(game)
        game.click(*places.RESOLUTIONS[768])
        self.leave(game, places.OPTIONS_CANCEL)
        self.assertEqual(game.geometry()[2:], (640, 480), "Cancel keeps the size")
        for width, height in ((800, 600), (1024, 768), (1280, 960), (640, 480)):
            self.open_options(game)
            game.click(*places.RESOLUTIONS[height])
            game.click(*places.OPTIONS_OK)
            game.await_true(lambda: game.geometry()[2:] == (width, height), "the window's new size")
            game.await_setting("height", str(height))
            self.assertEqual(game.setting("width"), str(width))
            game.move(0.5, 0.97)
            game.await_true(lambda: all(abs(a - b) < 12 for now, then in zip(self.logos(game), logos) for a, b in zip(now, then)),
                            "the logos at the new size")
            self.open_options(game)  # which needs the label beside the pointer, the skin and the font
            game.await_text(*places.RESOLUTION)
            self.assert_all_there(game, shown)
            self.leave(game, places.OPTIONS_CANCEL)
            game.hover("CREDITS", lambda: self.assert_red(game))
        self.close(game)
        again = self.start(folder=game.folder)
        again.await_log("Game mode Change - [INTRO]")
        self.assertEqual(again.geometry()[2:], (640, 480), "the next start opens at that size")

    def assert_all_there(self, game, before):
        """The picture's parts have the colours that they had at another size, but where the logo swings and the boxes turn."""
        changes = sorted(max(abs(a - b) for a, b in zip(now, then)) for now, then in zip(self.shown(game), before))
        self.assertLess(changes[-6], 40, f"changes at {game.geometry()}")
        self.assertLess(changes[-24], 12, f"changes at {game.geometry()}")

    def shown(self, game):
        """Mean colours of the picture's parts."""
        return game.look().means((x / 12, y / 9, 1 / 12, 1 / 9) for y in range(9) for x in range(12))

    def logos(self, game):
        return game.look().means(places.LOGOS)

    def assert_red(self, game):
        """The box under the pointer is drawn in its texture, in red; the pointer may stand at any edge of it."""
        x, y = game.pointer
        red, green, blue = max(game.look().means((x + dx, y + dy, 0.015, 0.02) for dx in (-0.05, -0.03, -0.015, 0.0, 0.015)
                                                 for dy in (-0.06, -0.03, 0.0, 0.03)), key=lambda c: c[0] - max(c[1:]))
        self.assertGreater(red, 20)
        self.assertGreater(red, 1.4 * max(green, blue))

    def test_full_screen(self):
        # A screen of that very size, so that the picture is the whole screen.
        self.display.close()
        self.display = Display((800, 600))
        self.addCleanup(self.display.close)
        game = self.begin(config=lambda text: set_key(set_key(small(text), "width", 800), "height", 600))
        for mark, area in (("1", (0, 0, 800, 600)), ("0", None)):
            self.open_options(game)
            game.click(*places.FULLSCREEN)
            game.click(*places.OPTIONS_OK)
            game.await_setting("fullscreen", mark)
            self.assertIn(f"Setting video mode: 800x600x32 f={mark}", game.log())
            game.area = area
        self.assertEqual(game.geometry()[2:], (800, 600))
        self.close(game)
