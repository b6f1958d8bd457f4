"""What reaches the program from outside: signals in every scene, a window that is closed, hidden or without the keyboard, a
display that dies, and a start without its data or from another folder."""
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

from journey import BUILD, HURRY, PATIENCE, ROOT, Display, Game, Journey

CONFIRM_TITLE = ("Are you sure?", 0.425, 0.435)
PAUSE_LINE = ("PAUSE - ESCAPE, p: resume", 0.523, 0.42)
PAUSED = "[PUZZLE] State mode Change - [PAUSE]"
RESUMED = "[PUZZLE] State mode Change - [GAME]"


def take_keyboard(display_name):
    """No window has it any more."""
    xlib = ctypes.CDLL("libX11.so.6")
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(xlib.XOpenDisplay(display_name.encode()))
    xlib.XSetInputFocus(display, ctypes.c_ulong(0), 0, ctypes.c_ulong(0))
    xlib.XCloseDisplay(display)


class Ends(Journey):
    def signalled(self, game, *signals):
        """Sends the signals between two pictures; a scene then shows no more than the last ones of its end."""
        held = game.clock.pictures() + 5
        game.clock.run(HURRY, until=held)
        game.await_true(lambda: game.clock.pictures() >= held, "the picture that is held", pause=0.01)
        for number in signals:
            game.process.send_signal(number)
        game.clock.run(HURRY)
        pictures = game.clock.pictures
        game.await_end()
        self.assertLessEqual(pictures() - held, 4, "nothing fades")
        self.assertTrue(game.log().endswith("Normal Exit\n"))

    def test_signals_end_every_scene(self):
        game = self.start()
        game.await_log("mainScene::ExecConfig(config.cfg)")
        self.signalled(game, signal.SIGHUP)
        game = self.start()
        game.to_menu()
        game.menu_item("OPTIONS")
        self.signalled(game, signal.SIGINT, signal.SIGTERM)
        game = self.start()
        game.to_game()  # and fading in
        self.signalled(game, signal.SIGTERM, signal.SIGTERM)

        game = self.start()
        game.to_game()
        game.pause()
        game.await_text("Score :", 0.13, 0.51)
        game.drag((0.15, 0.8), (0.25, 0.85))
        game.close_window()
        game.await_text(*CONFIRM_TITLE)
        self.signalled(game, signal.SIGINT)
        places = (game.folder / "config.cfg").read_text().split("<GameState>")[1]
        self.assertNotIn("left = 0.05", places.split("</GameState>")[0], "the window is kept where it was left")

    def test_a_signal_while_it_starts(self):
        game = self.start()
        game.await_log("Main\n")
        game.process.send_signal(signal.SIGTERM)
        game.await_end()
        self.assertTrue(game.log().endswith("Normal Exit\n"))

    def test_closing_is_heard_while_the_picture_fades_in(self):
        game = self.start()
        game.to_game()
        game.close_window()
        game.await_text(*CONFIRM_TITLE)
        self.assertIn(PAUSED, game.state_lines()[-1])

    def test_a_game_that_is_left_alone_pauses(self):
        game = self.start()
        game.to_game()
        game.pause()
        game.await_text(*PAUSE_LINE)
        game.key("p")
        game.await_log(RESUMED)
        game.await_text(*PAUSE_LINE, gone=True)
        game.geometry()
        window = game.window[0]
        game.xdotool("windowunmap", window)
        game.await_log(PAUSED, 2)
        game.clock.run(1)
        game.pictures()
        begin = time.monotonic()
        game.pictures(10)
        self.assertGreater(time.monotonic() - begin, 0.9, "ten pictures a second are enough for a window that is not shown")
        game.clock.run(HURRY)
        game.xdotool("windowmap", window)
        game.await_text(*PAUSE_LINE)
        game.xdotool("windowfocus", window)
        game.resume()
        take_keyboard(self.display.name)
        game.await_log(PAUSED, 3)
        game.pictures(5)
        self.assertEqual(game.log().count(RESUMED), 2)

    def test_a_dead_display_ends_the_program(self):
        display = Display()
        game = Game(display)
        self.addCleanup(self.forget, game)
        game.await_log("mainScene::ExecConfig(config.cfg)")
        display.close()
        self.assertNotEqual(game.process.wait(60), 0)


class Folders(Journey):
    """The program started from a folder without its data."""

    def setUp(self):
        super().setUp()
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="quarvello-home-"))
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.away = self.home / "elsewhere"
        self.away.mkdir()
        self.own = self.home / ".local/share/quarvello"

    def begin(self, *words, **environment):
        inherited = {key: value for key, value in os.environ.items() if not key.startswith(("XDG_", "QUARVELLO_DATA"))}
        return subprocess.Popen([str(BUILD / "quarvello"), *words], cwd=self.away, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env=dict(inherited, HOME=str(self.home), DISPLAY=self.display.name, SDL_AUDIODRIVER="dummy",
                                         **environment))

    def end(self, process):
        """Its status and what it said to its two outputs."""
        out, error = process.communicate(timeout=PATIENCE)
        return process.returncode, out.decode(), error.decode()

    def visit(self, *words, **environment):
        """Has it start and end, with the player's log of that; what it said."""
        log = self.own / "log.txt"
        log.unlink(missing_ok=True)
        process = self.begin(*words, **environment)
        while process.poll() is None and "mainScene::ExecConfig" not in (log.read_text() if log.exists() else ""):
            time.sleep(0.05)
        process.terminate()
        return self.end(process), log.read_text()

    def test_without_data_it_says_so(self):
        status, out, error = self.end(self.begin("--data", str(self.home)))
        self.assertEqual((status, out, error.count("\n")), (1, "", 1))
        self.assertIn(str(self.home), error)
        self.assertFalse(self.own.exists())
        self.assertEqual(self.end(self.begin("--version")), (0, "Quarvello 1.0\n", ""))
        self.assertIn("--data DIR", self.end(self.begin("--help"))[1])

    def test_the_players_own_folder_goes_before_the_data(self):
        said, log = self.visit("--data", str(ROOT / "data"))
        self.assertEqual(said, (0, "", ""))
        self.assertEqual(sorted(entry.name for entry in self.own.iterdir()), ["config.cfg", "log.txt"])
        self.assertNotIn("blank", log)
        (self.own / "config.cfg").write_text("<input>\nbind F5 sing\n</input>\n")
        (self.own / "font").mkdir()
        (self.own / "font/basic4.png").write_bytes(b"no picture")
        said, log = self.visit(QUARVELLO_DATA=str(ROOT / "data"))
        self.assertEqual(said, (0, "", ""))
        self.assertIn("sing", log)
        self.assertIn("font/basic4.png", log)
        self.assertEqual(list(self.away.iterdir()), [])

    def test_a_home_that_cannot_be_written_to(self):
        (self.home / ".local").write_text("in the way")
        process = self.begin("--data", str(ROOT / "data"))
        self.assertIn(str(self.own), process.stderr.readline().decode())
        while process.poll() is None and subprocess.run(["xdotool", "search", "--name", "^Quarvello$"], check=False,
                                                        stdout=subprocess.DEVNULL,
                                                        env=dict(os.environ, DISPLAY=self.display.name)).returncode:
            time.sleep(0.05)
        process.terminate()
        self.assertEqual(self.end(process), (0, "", ""))
