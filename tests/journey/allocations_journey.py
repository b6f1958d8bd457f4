"""Pictures of a menu at rest, of open windows and of a paused game are made without taking memory."""
import places
from journey import Journey

QUIET = 60    # pictures in a row, from which on the scene counts as settled
WATCHED = 100  # pictures after that


class Allocations(Journey):
    def counts(self, game):
        """Pictures and allocations so far."""
        return tuple(map(int, (game.folder / "allocations.txt").read_text().split()))

    def assert_none(self, game, where):
        """Waits until what has just happened is over, then watches."""
        since = self.counts(game)

        def settled():
            nonlocal since
            now = self.counts(game)
            if now[1] != since[1]:
                since = now
            return now[0] >= since[0] + QUIET

        game.await_true(settled, f"{where}: {QUIET} pictures without taking memory")
        begin = self.counts(game)
        game.await_true(lambda: self.counts(game)[0] >= begin[0] + WATCHED, "pictures")
        self.assertEqual(self.counts(game)[1], begin[1], where)

    def test_nothing_is_taken_where_nothing_changes(self):
        game = self.start(preload=["count_allocations"])
        game.to_menu()
        game.await_locked()
        self.assert_none(game, "menu at rest")
        game.key("Escape")
        self.assert_none(game, "quit dialog")
        game.click(*places.QUIT_NO)
        game.new_game()
        game.pause()
        self.assert_none(game, "paused game")
        self.assertGreater(self.counts(game)[1], 0, "the count counts: loading took memory")
