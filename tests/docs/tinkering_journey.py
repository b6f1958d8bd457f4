"""The page about changing the game, followed to the letter: its commands and files are taken from the page, and what it promises is
looked for in the real program. And the other pages: what they name is there."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from journey import PAUSED, ROOT, Journey, small

PAGE = (ROOT / "docs/tinkering.md").read_text()
WALKS = dict(part.split("\n", 1) for part in PAGE.split("\n## "))
BLOCK = re.compile(r"^```(\w+) ?(\S*)\n(.*?)^```", re.M | re.S)


def share(picture, left, top, width, height, matches):
    """The share of a region's pixels, in fractions of the picture, that match."""
    columns = range(int(left * picture.width), int((left + width) * picture.width))
    rows = range(int(top * picture.height), int((top + height) * picture.height))
    return sum(matches(*picture.pixel(x, y)) for y in rows for x in columns) / (len(rows) * len(columns))


class Pages(unittest.TestCase):
    def test_what_they_name_is_there(self):
        pages = [ROOT / "README.md", *(ROOT / "docs").rglob("*.md")]
        self.assertGreater(len(pages), 20)
        code = "".join(path.read_text() for path in (ROOT / "src").rglob("*.*"))
        for page in pages:
            text = page.read_text()
            named = [page.parent / link for link in re.findall(r"\]\(([^)#:]+)", text)]
            named += [ROOT / path for path in re.findall(r"`((?:src|data|docs|assets|scripts|tests)/[\w/.-]+)`", text)]
            self.assertEqual([path for path in named if not path.exists()], [], page)
            functions = re.findall(r"`\w+::(\w+)`", text)
            self.assertEqual([name for name in functions if not re.search(rf"\b{name}\(", code)], [], page)
        index = (ROOT / "docs/decisions/README.md").read_text()
        self.assertEqual([page for page in (ROOT / "docs/decisions").glob("*.md") if f"({page.name})" not in index],
                         [ROOT / "docs/decisions/README.md"])


class Tinkering(Journey):
    def setUp(self):
        super().setUp()
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="quarvello-home-"))
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.own = self.home / "quarvello"
        self.own.mkdir()
        (self.own / "config.cfg").write_text(small((ROOT / "data/config.cfg").read_text()))
        self.places = {"XDG_DATA_HOME": str(self.home), "QUARVELLO_DATA": str(ROOT / "data")}

    def follow(self, heading, **how):
        """Does what the walk says, in its order; the program that it starts last."""
        beginning = BLOCK.search(PAGE).group(3)
        for language, name, text in BLOCK.findall(WALKS[heading]):
            if language == "sh":
                commands, program = re.subn(r"^(quarvello\S*)\n", "", text, flags=re.M), re.findall(r"^quarvello\S*$", text, re.M)
                subprocess.run(["sh", "-euc", beginning + commands[0]], check=True, env=dict(os.environ, **self.places))
            else:
                (self.own / name).write_text(text)
        game = self.start(program=program[0], folder=self.own, environment=self.places, **how)
        game.await_log("mainScene::ExecConfig(config.cfg)")
        return game

    def await_share(self, game, least, region, matches, act=None):
        game.await_true(lambda: share(game.look(), *region, matches) >= least, f"{least} of {region}", act=act, pause=0.2)
        self.assertNotRegex(game.log(), "ERR|Can't|Couldn't|not found|NOTICE")

    def test_a_piece(self):
        game = self.follow("Other colours for a piece", preload=["same_rand"])
        game.to_game()
        self.await_share(game, 0.01, (0.3, 0.05, 0.4, 0.9), lambda r, g, b: r > 90 and b > 90 and g < min(r, b) / 2)

    def test_a_skin(self):
        game = self.follow("A skin of your own")
        game.await_log("starting debugger")
        self.await_share(game, 0.5, (0.33, 0.19, 0.22, 0.03), lambda r, g, b: b > r + 30)

    def test_an_effect(self):
        game = self.follow("An effect of your own")
        game.to_game()
        self.await_share(game, 0.0005, (0, 0, 1, 0.5), lambda r, g, b: g > 120 and g > 1.6 * max(r, b))

    def test_a_creature(self):
        game = self.follow("A map with a creature", fast=1)
        game.await_log("starting debugger")
        self.await_share(game, 0.01, (0, 0.3, 1, 0.7), lambda r, g, b: r > 60 and r > 3 * max(g, b))

    def test_keys(self):
        game = self.follow("Other keys")
        game.to_game()
        game.await_another(PAUSED, lambda: (game.key("p"), game.pictures(3), game.key("F1")), pause=0.3)
