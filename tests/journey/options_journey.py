"""The menu's windows and its ways out, and what the options change: picture, sound and config.cfg."""
import array

import places
from journey import Display, Journey, set_key, small
from labels import sees


class Options(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_menu()
        game.await_locked()
        return game

    def open_options(self, game, page="General"):
        game.menu_item("OPTIONS")
        game.await_text(*places.OPTIONS)
        self.turn_to(game, page)

    def turn_to(self, game, page):
        game.await_text(*places.FIRST_LINES[page], act=lambda: game.click(*places.TABS[page]))

    def leave(self, game, button):
        game.click(*button)
        game.move(0.5, 0.97)
        game.await_text(*places.OPTIONS, gone=True)

    def close(self, game):
        game.close_window()
        game.await_end()

    def test_escape_asks_but_not_over_the_options(self):
        game = self.begin()
        game.await_text(*places.SURE, act=lambda: game.key("Escape"))
        game.click(*places.QUIT_NO)
        game.await_text(*places.SURE, gone=True)
        self.open_options(game)
        game.key("Escape")
        self.leave(game, places.OPTIONS_CLOSE)
        self.assertFalse(sees(game.look(), *places.SURE), "Escape over the options asks nothing")
        game.menu_item("QUIT")
        game.await_text(*places.SURE)
        self.close(game)  # over an open dialog
        self.assertNotIn("[PUZZLE]", game.log())

    def test_grid_and_lighting(self):
        game = self.begin()
        before = (game.folder / "config.cfg").read_bytes()
        self.switch_grid_and_lighting(game, places.OPTIONS_CANCEL)
        self.assertEqual((game.folder / "config.cfg").read_bytes(), before, "Cancel writes nothing")
        # Cancel has put both marks back, so one more click takes them away.
        self.switch_grid_and_lighting(game, places.OPTIONS_OK)
        game.await_setting("lighting", "0")
        game.await_setting("showgrid", "0")
        self.assertNotIn("SetGLMode() Setting video mode", game.log().split("Game mode Change - [INTRO]")[1], "the mode stays")
        for key, value in (("audio_rate", "44100"), ("highQuality", "1"), ("bpp", "32")):
            self.assertEqual(game.setting(key), value)
        self.assertIn("bind SPACE +space\n", (game.folder / "config.cfg").read_text(), "other blocks are kept")
        game.new_game()
        game.pause()
        picture = game.look()
        red, green, _ = picture.mean(picture.width * 0.4, picture.height * 0.6, picture.width * 0.24, picture.height * 0.28)
        self.assertLess(red - green, 40, "no red grid over the well")

    def switch_grid_and_lighting(self, game, button):
        self.open_options(game)
        game.click(*places.SHOW_GRID)
        self.turn_to(game, "Video")
        game.click(*places.LIGHTING)
        self.leave(game, button)

    def test_another_resolution_loses_nothing(self):
        game = self.begin()
        game.move(0.5, 0.97)
        game.leap(10)  # the logos fade in for five
        logos = self.logos(game)
        self.open_options(game, "Video")
        game.await_text(*places.RESOLUTION)
        shown = self.shown(game)
        game.click(*places.RESOLUTIONS[768])
        self.leave(game, places.OPTIONS_CANCEL)
        self.assertEqual(game.geometry()[2:], (640, 480), "Cancel keeps the size")
        for width, height in ((800, 600), (1024, 768), (1280, 960), (640, 480)):
            self.open_options(game, "Video")
            game.click(*places.RESOLUTIONS[height])
            game.click(*places.OPTIONS_OK)
            game.await_true(lambda: game.geometry()[2:] == (width, height), "the window's new size")
            game.await_setting("height", str(height))
            self.assertEqual(game.setting("width"), str(width))
            game.move(0.5, 0.97)
            game.await_true(lambda: all(abs(a - b) < 12 for now, then in zip(self.logos(game), logos) for a, b in zip(now, then)),
                            "the logos at the new size")
            self.open_options(game, "Video")  # which needs the label beside the pointer, the skin and the font
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
            self.open_options(game, "Video")
            game.click(*places.FULLSCREEN)
            game.click(*places.OPTIONS_OK)
            game.await_setting("fullscreen", mark)
            self.assertIn(f"Setting video mode: 800x600x32 f={mark}", game.log())
            game.area = area
        self.assertEqual(game.geometry()[2:], (800, 600))
        self.close(game)

    def test_volumes_are_heard_and_kept(self):
        game = self.begin(heard=True)
        self.open_options(game, "Audio")
        game.await_true(lambda: self.loudness(game) > 0, "music")
        game.click(places.TRACK[0] + 0.003, places.MUSIC)
        game.await_text("Music = 0%", 0.65, places.MUSIC)
        game.await_true(lambda: self.loudness(game) == 0, "silence")
        game.await_true(lambda: self.loudness(game) > 0, "the click of a button", act=lambda: game.click(*places.TABS["Audio"]))
        game.click(places.TRACK[0] + 0.003, places.SOUND)
        game.await_text("Sound = 0%", 0.65, places.SOUND)
        game.await_true(lambda: self.loudness(game) == 0, "silence again")
        begin = self.sound_size(game)
        for tab in ("Video", "Audio", "Video", "Audio"):
            game.click(*places.TABS[tab])
        game.await_true(lambda: self.sound_size(game) > begin + 88200, "half a second more")
        self.assertEqual(self.loudness(game, begin), 0, "buttons at volume 0")
        game.click(sum(places.TRACK) / 2, places.MUSIC)
        game.await_text("Music = 50%", 0.65, places.MUSIC)
        game.await_true(lambda: self.loudness(game) > 0, "music again")
        self.leave(game, places.OPTIONS_OK)
        game.await_setting("music_volume", "64")
        game.await_setting("sound_volume", "0")
        self.close(game)

    def sound_size(self, game):
        return (game.folder / "sound.raw").stat().st_size

    def loudness(self, game, begin=None):
        """The loudest sample written since `begin`; without it, of the last third of a second."""
        with open(game.folder / "sound.raw", "rb") as file:
            end = self.sound_size(game) // 4 * 4
            begin = max(end - 58800, 0) if begin is None else begin // 4 * 4
            file.seek(begin)
            samples = array.array("h", file.read(end - begin))
        return max(map(abs, samples), default=0)
