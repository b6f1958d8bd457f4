"""What reaches the program from outside: signals in every scene, a window that is closed, a display that dies, and a start
without its data or from another folder."""
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

import places
from journey import BUILD, HURRY, PATIENCE, ROOT, Display, Game, Journey


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
        game.await_log("Main\n")  # before it shows anything
        game.process.send_signal(signal.SIGTERM)
        game.await_end()
        self.assertTrue(game.log().endswith("Normal Exit\n"))
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
        game.await_text(*places.SCORE)
        game.drag((0.15, 0.8), (0.25, 0.85))
        game.close_window()
        game.await_text(*places.SURE)
        self.signalled(game, signal.SIGINT)
        kept = (game.folder / "config.cfg").read_text().split("<GameState>")[1]
        self.assertNotIn("left = 0.05", kept.split("</GameState>")[0], "the window is kept where it was left")

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
