"""The menu's four boxes, its windows and its ways out, and what the options change: picture, sound and config.cfg."""
import array

from journey import Display, Journey, set_key, small
from labels import sees

OPTIONS_TITLE = ("Options", 0.285, 0.235)
QUIT_TITLE = ("Are you sure?", 0.425, 0.435)
TABS = {"General": (0.325, 0.335), "Video": (0.46, 0.335), "Audio": (0.61, 0.335)}
FIRST_LINES = {"General": ("Gameplay:", 0.31, 0.38), "Video": ("Screen resolution:", 0.385, 0.38), "Audio": ("Volume:", 0.295, 0.38)}
OK, CANCEL, CLOSE = (0.54, 0.733), (0.706, 0.733), (0.78, 0.235)
SHOW_GRID = (0.27, 0.44)
RESOLUTIONS = {480: (0.27, 0.44), 600: (0.27, 0.49), 768: (0.27, 0.54), 960: (0.27, 0.59)}
LIGHTING, FULLSCREEN = (0.565, 0.44), (0.565, 0.49)
# Left and right ends of the sliders' tracks, and their heights.
TRACK, SOUND, MUSIC = (0.295, 0.51), 0.443, 0.543
QUIT_YES, QUIT_NO = (0.41, 0.535), (0.58, 0.535)
BACK = (0.89, 0.955)
LOGOS = ((0.045, 0.82, 0.1, 0.13), (0.81, 0.82, 0.15, 0.12))

SCORES = "<highscores>\n<score>\nscore = 700\nname = \"Imhotep\"\n</score>\n"


class Options(Journey):
    def begin(self, **arguments):
        game = self.start(**arguments)
        game.to_menu()
        game.await_locked()
        return game

    def open_options(self, game, page="General"):
        game.menu_item("OPTIONS")
        game.await_text(*OPTIONS_TITLE)
        game.await_text(*FIRST_LINES[page], act=lambda: game.click(*TABS[page]))

    def leave(self, game, button):
        game.click(*button)
        game.move(0.5, 0.97)
        game.await_text(*OPTIONS_TITLE, gone=True)

    def setting(self, game, key):
        """A key's value in config.cfg, once the options are written."""
        for line in (game.folder / "config.cfg").read_text().splitlines():
            if line.split()[:2] == [key, "="]:
                return line.split()[2]
        return None

    def await_setting(self, game, key, value):
        game.await_true(lambda: self.setting(game, key) == value, f"{key} = {value} in config.cfg")

    def await_page(self, game, text, left):
        """Waits for a line of the scrolling pages, wherever it is on its way up; `left` is its place on the text grid."""
        game.await_true(lambda: sees(game.look(), text, (left + 5 * len(text) + 0.5) / 640, 0.5, across=0, along=200), text)

    def test_each_box_and_its_window(self):
        game = self.begin(config=lambda text: small(text).replace("<highscores>\n", SCORES))
        game.await_text(*QUIT_TITLE, act=lambda: game.key("Escape"))  # asks, as the QUIT box does
        game.click(*QUIT_NO)
        game.await_text(*QUIT_TITLE, gone=True)
        self.open_options(game)
        game.key("Escape")
        self.leave(game, CLOSE)
        self.assertFalse(sees(game.look(), *QUIT_TITLE), "Escape over the options asks nothing")
        game.menu_item("CREDITS")
        self.await_page(game, "C R E D I T S", 260)
        self.await_page(game, "1 ) Imhotep", 200)
        game.await_text("Back", BACK[0] - 0.02, BACK[1], gone=True, act=lambda: game.click(*BACK))
        game.menu_item("QUIT")
        game.await_text(*QUIT_TITLE)
        self.assertIsNone(game.process.poll())
        game.click(*QUIT_YES)
        game.await_end()
        self.assertIn("Game mode Change - [DESTROY]", game.log())
        self.assertNotIn("[PUZZLE]", game.log())

    def test_quit_by_closing_the_window_over_an_open_dialog(self):
        game = self.begin()
        game.await_text(*QUIT_TITLE, act=lambda: game.key("Escape"))
        game.close_window()
        game.await_end()

    def test_grid_and_lighting(self):
        game = self.begin()
        before = (game.folder / "config.cfg").read_bytes()
        self.switch_grid_and_lighting(game, CANCEL)
        self.assertEqual((game.folder / "config.cfg").read_bytes(), before, "Cancel writes nothing")
        self.switch_grid_and_lighting(game, OK)  # Cancel has put both marks back, so one more click takes them away
        self.await_setting(game, "lighting", "0")
        self.await_setting(game, "showgrid", "0")
        self.assertNotIn("SetGLMode() Setting video mode", game.log().split("Game mode Change - [INTRO]")[1], "the mode stays")
        for key in ("audio_rate", "highQuality", "bpp"):
            self.assertEqual(self.setting(game, key), dict(audio_rate="44100", highQuality="1", bpp="32")[key])
        self.assertIn("bind SPACE +space\n", (game.folder / "config.cfg").read_text(), "other blocks are kept")
        game.menu_item("NEW GAME")
        game.await_log("starting debugger")
        game.pause()
        self.assertLess(self.redness(game), 40, "no red grid over the well")
        game.close_window()
        game.click(0.42, 0.59)
        game.await_end()

    def switch_grid_and_lighting(self, game, button):
        self.open_options(game)
        game.click(*SHOW_GRID)
        game.await_text(*FIRST_LINES["Video"], act=lambda: game.click(*TABS["Video"]))
        game.click(*LIGHTING)
        self.leave(game, button)

    def redness(self, game):
        """How much redder than green the lower half of the well is."""
        picture = game.look()
        red, green, _ = picture.mean(picture.width * 0.4, picture.height * 0.6, picture.width * 0.24, picture.height * 0.28)
        return red - green

    def test_another_resolution_loses_nothing(self):
        game = self.begin()
        game.move(0.5, 0.97)
        game.leap(10)  # the logos fade in for five
        logos = self.logos(game)
        self.open_options(game, "Video")
        game.await_text("1024x768", 0.38, 0.54)
        shown = self.shown(game)
        game.click(*RESOLUTIONS[768])
        self.leave(game, CANCEL)
        self.assertEqual(game.geometry()[2:], (640, 480), "Cancel keeps the size")
        for width, height in ((800, 600), (1024, 768), (1280, 960), (640, 480)):
            self.open_options(game, "Video")
            game.click(*RESOLUTIONS[height])
            game.click(*OK)
            game.await_true(lambda: game.geometry()[2:] == (width, height), "the window's new size")
            self.await_setting(game, "height", str(height))
            self.assertEqual(self.setting(game, "width"), str(width))
            game.move(0.5, 0.97)
            game.await_true(lambda: self.alike(self.logos(game), logos), "the logos at the new size")
            self.open_options(game, "Video")  # which needs the label beside the pointer, the skin and the font
            game.await_text("1024x768", 0.38, 0.54)
            self.assert_all_there(game, shown)
            self.leave(game, CANCEL)
            self.boxes_turn_red(game)
        game.close_window()
        game.await_end()
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
        picture = game.look()
        width, height = picture.width / 12, picture.height / 9
        return [picture.mean(x * width, y * height, width, height) for y in range(9) for x in range(12)]

    def logos(self, game):
        picture = game.look()
        return [picture.mean(left * picture.width, top * picture.height, width * picture.width, height * picture.height)
                for left, top, width, height in LOGOS]

    def alike(self, some, others):
        return all(abs(a - b) < 12 for one, other in zip(some, others) for a, b in zip(one, other))

    def boxes_turn_red(self, game):
        """The box under the pointer is drawn in its texture, in red."""
        game.hover("CREDITS", lambda: self.assert_red(game))

    def assert_red(self, game):
        picture = game.look()
        x, y = game.pointer
        # All about the pointer: it may stand at any edge of the box.
        places = [(x + dx, y + dy) for dx in (-0.05, -0.03, -0.015, 0.0, 0.015) for dy in (-0.06, -0.03, 0.0, 0.03)]
        colours = [picture.mean(left * picture.width, top * picture.height, picture.width * 0.015, picture.height * 0.02)
                   for left, top in places]
        red, green, blue = max(colours, key=lambda colour: colour[0] - max(colour[1:]))
        self.assertGreater(red, 20)
        self.assertGreater(red, 1.4 * max(green, blue))

    def test_full_screen(self):
        # A screen of that very size, so that the picture is the whole screen.
        self.display.close()
        self.display = Display((800, 600))
        self.addCleanup(self.display.close)
        game = self.begin(config=lambda text: set_key(set_key(small(text), "width", 800), "height", 600))
        self.open_options(game, "Video")
        game.click(*FULLSCREEN)
        game.click(*OK)
        self.await_setting(game, "fullscreen", "1")
        self.assertIn("Setting video mode: 800x600x32 f=1", game.log())
        game.area = (0, 0, 800, 600)
        self.open_options(game, "Video")
        game.click(*FULLSCREEN)
        game.click(*OK)
        self.await_setting(game, "fullscreen", "0")
        game.area = None
        self.assertEqual(game.geometry()[2:], (800, 600))
        game.close_window()
        game.await_end()

    def test_volumes_are_heard_and_kept(self):
        game = self.begin(heard=True)
        self.open_options(game, "Audio")
        game.await_true(lambda: self.loudness(game) > 0, "music")
        game.click(TRACK[0] + 0.003, MUSIC)
        game.await_text("Music = 0%", 0.65, MUSIC)
        game.await_true(lambda: self.loudness(game) == 0, "silence")
        game.await_true(lambda: self.loudness(game) > 0, "the click of a button", act=lambda: game.click(*TABS["Audio"]))
        game.click(TRACK[0] + 0.003, SOUND)
        game.await_text("Sound = 0%", 0.65, SOUND)
        game.await_true(lambda: self.loudness(game) == 0, "silence again")
        begin = self.sound_size(game)
        for tab in ("Video", "Audio", "Video", "Audio"):
            game.click(*TABS[tab])
        game.await_true(lambda: self.sound_size(game) > begin + 88200, "half a second more")
        self.assertEqual(self.loudness(game, begin), 0, "buttons at volume 0")
        game.click((TRACK[0] + TRACK[1]) / 2, MUSIC)
        game.await_text("Music = 50%", 0.65, MUSIC)
        game.await_true(lambda: self.loudness(game) > 0, "music again")
        self.leave(game, OK)
        self.await_setting(game, "music_volume", "64")
        self.await_setting(game, "sound_volume", "0")
        game.close_window()
        game.await_end()

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
