#!/usr/bin/env python3
"""Ten rounds of menu, game, menu in one process: what the process holds at the end of a round stays the same."""
import unittest

from course_journey import choose
from journey import Journey

ROUNDS = 10
SETTLED = 3     # rounds until every cache of the driver has seen all that there is
WINDOW = 3      # rounds: the driver's own memory goes up and down by some percent from picture to picture
GROWTH = 1.02   # of resident memory from then on; a leaked texture set of a round is more than 10 %


class Rounds(Journey):
    def memory(self, game):
        with open(f"/proc/{game.process.pid}/status") as lines:
            status = dict(line.split(":", 1) for line in lines)
        return int(status["VmRSS"].split()[0]), int(status["Threads"])

    def test_nothing_grows(self):
        game = self.start(preload=["count_resources"])
        game.to_menu()
        held = []
        for played in range(1, ROUNDS + 1):
            game.menu_item("NEW GAME")
            game.await_log("starting debugger", played)
            game.pause()
            choose(game, "Menu")
            game.await_log("Game mode Change - [MENU]", played + 1)
            game.await_log("camera.Load()", 2 * played + 1)
            game.pictures(10)  # the menu's first
            held.append((*self.memory(game), (game.folder / "resources.txt").read_text()))
        game.close_window()
        game.await_end()
        print("\n".join(f"{memory} KiB, {threads} threads, {counts.strip()}" for memory, threads, counts in held))
        self.assertEqual(len({counts for _, _, counts in held}), 1, "textures, lists, samples and tracks")
        self.assertEqual(len({threads for _, threads, _ in held}), 1, "threads")
        settled = max(memory for memory, _, _ in held[SETTLED:SETTLED + WINDOW])
        last = min(memory for memory, _, _ in held[-WINDOW:])
        self.assertLess(last, settled * GROWTH, "resident memory")


if __name__ == "__main__":
    unittest.main(verbosity=2)
