"""What other machines show: 60 Hz, wide and narrow screens and the whole of one, a window manager that hides the window."""
import os
import pathlib
import subprocess
import time

import places
from journey import HURRY, PAUSED, RESUMED, Display, Journey, set_key, small

# Windows without borders, whose places xdotool tells rightly.
MANAGER = """<openbox_config xmlns="http://openbox.org/3.4/rc">
<applications><application class="*"><decor>no</decor></application></applications>
<keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
<desktops><number>2</number></desktops></openbox_config>"""


class Screens(Journey):
    def on_screen(self, width, height):
        """A game whose window is as large as its screen."""
        self.display.close()
        self.display = Display((width, height))
        self.addCleanup(self.display.close)
        return self.start(config=lambda text: set_key(set_key(small(text), "width", width), "height", height))

    def test_60_hz_glow_and_50_do_not(self):
        game = self.start()
        game.to_menu()
        game.await_locked()
        game.move(0.5, 0.97)
        game.step(200, 30)  # the logos fade in

        def brightness(rate, seconds):
            game.step(1000 / rate, int(rate * seconds))
            return sum(game.look().mean(0, 0, 1, 0.8))
        full = brightness(60, 4.2)  # twenty steps of 200 ms
        fallen = brightness(50, 1.6)
        again = brightness(59.94, 1.8)
        self.assertLess(fallen, full * 0.85)
        self.assertGreater(again, full - (full - fallen) / 4)

    def test_wide(self):
        self.visit(1366, 768)

    def test_narrow(self):
        self.visit(640, 512)

    def visit(self, *size):
        """Texts are read and clicked in the middle frame, the scene fills the rest, and the veil covers it."""
        game = self.on_screen(*size)
        game.to_menu()
        game.await_locked()  # by a logo where 4:3 has it
        game.menu_item("OPTIONS")
        game.await_text(*places.OPTIONS)
        game.click(*places.OPTIONS_CANCEL)
        game.await_text(*places.OPTIONS, gone=True)
        game.new_game()
        game.pause()
        game.await_text(*places.PAUSE_LINE)
        game.await_text(*places.SCORE)
        self.assertGreater(min(self.brightest_at_edges(size)), 20, "nothing is drawn beside the frame")
        game.close_window()
        game.await_text(*places.SURE)
        game.clock.run(1, 50)
        game.click(*places.LEAVE_OK)
        game.await_log("[DESTROY] State mode Change - [END]")
        game.step(50, 85)  # of the hundred pictures that it takes to fade
        self.assertLess(max(self.brightest_at_edges(size)), 60, "the veil ends before the screen does")
        game.clock.run(HURRY)
        game.await_end()

    def brightest_at_edges(self, size):
        width, height = size
        strips = ((0, 0, 8, height), (width - 8, 0, 8, height), (0, 0, width, 8), (0, height - 8, width, 8))
        return [max(self.display.look(*strip).data[1::4]) for strip in strips]

    def test_full_screen(self):
        game = self.on_screen(800, 600)  # of that very size, so that the picture is the whole screen
        game.to_menu()
        game.await_locked()
        for mark, area in (("1", (0, 0, 800, 600)), ("0", None)):
            game.menu_item("OPTIONS")
            game.await_text(*places.VIDEO_PAGE, act=lambda: game.click(*places.TABS["Video"]))
            game.click(*places.FULLSCREEN)
            game.click(*places.OPTIONS_OK)
            game.await_setting("fullscreen", mark)
            self.assertIn(f"Setting video mode: 800x600x32 f={mark}", game.log())
            game.area = area
        self.assertEqual(game.geometry()[2:], (800, 600))
        game.close_window()
        game.await_end()

    def test_a_game_that_is_left_alone_pauses(self):
        config = pathlib.Path(self.display.folder) / "openbox.xml"
        config.write_text(MANAGER)
        environment = dict(os.environ, DISPLAY=self.display.name)
        manager = subprocess.Popen(["openbox", "--config-file", str(config)], stderr=subprocess.DEVNULL, env=environment)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        # A window that asks to be shown while the manager begins may never be.
        while subprocess.run(["xdotool", "get_num_desktops"], env=environment, capture_output=True, check=False).stdout != b"2\n":
            self.assertIsNone(manager.poll(), "the window manager has ended")
            time.sleep(0.05)
        game = self.start()
        game.to_game()
        game.pause()
        game.key("p")
        game.await_log(RESUMED)
        game.await_text(*places.PAUSE_LINE, gone=True)
        window = game.window[0]
        game.xdotool("windowminimize", window)
        game.await_log(PAUSED, 2)
        game.clock.run(1)
        game.pictures()
        begin = time.monotonic()
        game.pictures(10)
        self.assertGreater(time.monotonic() - begin, 0.9, "ten pictures a second are enough for a window that is not shown")
        game.clock.run(HURRY)
        game.xdotool("windowactivate", window)
        game.await_text(*places.PAUSE_LINE)
        game.resume()
        game.xdotool("set_desktop", 1)
        game.await_log(PAUSED, 3)
        game.xdotool("set_desktop", 0)
        game.await_text(*places.PAUSE_LINE)
        game.pictures(5)
        self.assertEqual(game.log().count(RESUMED), 2, "nothing but a player resumes")
        game.key("alt+F4")
        game.await_text(*places.SURE)
