"""The usual course from start to quit, and its log lines."""
from journey import Journey

FULL_COURSE = [
    "Game mode Change - [INTRO]",
    "MainServer::GameProcess()[DESTROY] State mode Change - [END]",
    "Game mode Change - [MENU]",
    "MainServer::GameProcess()[PUZZLE] State mode Change - [CHANGE]",
    "Game mode Change - [PUZZLE]",
    "MainServer::GameProcess()[PUZZLE] State mode Change - [PAUSE]",
    "MainServer::GameProcess()[PUZZLE] State mode Change - [GAME]",
    "MainServer::GameProcess()[PUZZLE] State mode Change - [PAUSE]",
    "MainServer::GameProcess()[MENU] State mode Change - [CHANGE]",
    "Game mode Change - [MENU]",
    "MainServer::GameProcess()[DESTROY] State mode Change - [CHANGE]",
    "Game mode Change - [DESTROY]",
]


class Course(Journey):
    def test_the_whole_course(self):
        game = self.start()
        game.to_game()
        game.pause()
        game.resume()
        game.pause()
        game.choose("Menu")
        game.await_log("Game mode Change - [MENU]", 2)
        game.await_log("camera.Load()", 3)
        game.close_window()
        game.await_end()
        self.assertEqual(game.state_lines(), FULL_COURSE)
        self.assertTrue(game.log().endswith("Global_Destroy() - Log Stop\nGlobal_Destroy() - Normal Exit\n"))
        self.assertEqual(game.complaints(), [])
        config = (game.folder / "config.cfg").read_text()
        self.assertIn("<gui>\n  <hform1>\n    left = 0.050000\n    top = 0.350000\n  </hform1>\n", config)
