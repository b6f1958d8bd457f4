"""Ten rounds of menu, game, menu in one process: what the process holds at the end of a round stays the same."""
import statistics

from journey import Journey

ROUNDS = 10
SETTLED = 2  # rounds until every cache of the driver has seen all that there is
# Bytes of a round. Mesa's drivers keep the megabyte in which they store display lists once one of them was drawn to pick, as
# the menu does; whatever the game itself would lose comes on top.
GROWTH = 1.25 * 2 ** 20


class Rounds(Journey):
    def heap(self, game):
        """The most of a few pictures: the driver holds some now and then, and less in between."""
        def sample():
            game.pictures(10)
            return int((game.folder / "heap.txt").read_text())
        return max(sample() for _ in range(4))

    def threads(self, game):
        with open(f"/proc/{game.process.pid}/status") as lines:
            return int(dict(line.split(":", 1) for line in lines)["Threads"])

    def test_nothing_grows(self):
        game = self.start(preload=["count_resources"])
        game.to_menu()
        held = []
        for played in range(1, ROUNDS + 1):
            game.new_game()
            game.pause()
            game.choose("Menu")
            game.await_log("Game mode Change - [MENU]", played + 1)
            game.await_log("camera.Load()", 2 * played + 1)
            held.append((self.heap(game), self.threads(game), (game.folder / "resources.txt").read_text()))
        game.close_window()
        game.await_end()
        print("\n".join(f"{heap // 1024} KiB, {threads} threads, {counts.strip()}" for heap, threads, counts in held))
        self.assertEqual(len({counts for _, _, counts in held}), 1, "textures, lists, samples and tracks")
        self.assertEqual(len({threads for _, threads, _ in held}), 1, "threads")
        growth = statistics.median(after[0] - before[0] for before, after in zip(held[SETTLED:], held[SETTLED + 1:]))
        self.assertLess(growth, GROWTH, "bytes of the heap that most rounds leave behind")
