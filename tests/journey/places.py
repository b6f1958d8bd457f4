"""Where things stand in the game's windows, in fractions of the picture: texts, with the middle of their place, and what is
clicked. Journeys and scripts share them; the C++ tests ask the widgets."""
# The menu's windows
OPTIONS = ("Options", 0.285, 0.235)
TABS = {"General": (0.325, 0.335), "Video": (0.46, 0.335), "Audio": (0.61, 0.335)}
VIDEO_PAGE = ("Screen resolution:", 0.385, 0.38)
OPTIONS_OK, OPTIONS_CANCEL = (0.54, 0.733), (0.706, 0.733)
SHOW_GRID = (0.27, 0.44)
FULLSCREEN = (0.565, 0.49)
SURE = ("Are you sure?", 0.425, 0.435)  # in the game, too
QUIT_YES, QUIT_NO = (0.41, 0.535), (0.58, 0.535)
BACK = (0.89, 0.955)
# The game's
PAUSE_LINE = ("PAUSE - ESCAPE, p: resume", 0.523, 0.42)
DROP_DOWN = (0.12, 0.38)
ROWS = {"Resume": (0.12, 0.475), "Menu": (0.12, 0.525), "Quit": (0.12, 0.575)}  # of the drop-down
LAST_ROW = ("Quit", 0.11, 0.555)
LEAVE_OK, LEAVE_CANCEL = (0.41, 0.59), (0.6, 0.59)
SCORE = ("Score :", 0.13, 0.51)
NAME_OK = (0.406, 0.54)
LIST = ("High Scores", 0.30, 0.135)
LIST_MENU, LIST_QUIT = (0.358, 0.83), (0.527, 0.83)
