"""Reads printed texts in screenshots, by comparing them with the font's own picture."""
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
NAMES = ("OPTIONS", "CREDITS", "NEW GAME", "QUIT")
CELL = 16      # side of a printed glyph, pixels
ADVANCE = 10   # from one glyph to the next
BOX_ADVANCE = 11
GRID = (640, 480)  # of all other texts, stretched over the window
LIKENESS = 0.7     # a wrong text of the same length stays well below
_font = None


def font():
    """The font's picture at its printed size: brightness by row and column."""
    global _font
    if _font is None:
        data = subprocess.run(["convert", str(ROOT / "data/font/basic4.png"), "-background", "black", "-alpha", "remove",
                               "-resize", "256x256!", "-colorspace", "Gray", "-depth", "8", "gray:-"],
                              stdout=subprocess.PIPE, check=True).stdout
        _font = [data[row * 256:(row + 1) * 256] for row in range(256)]
    return _font


def expected(name):
    """Brightness of the printed name, CELL rows."""
    width = ADVANCE * len(name) + CELL
    rows = [[0] * width for _ in range(CELL)]
    for place, character in enumerate(name):
        cell = ord(character) - 32
        for y in range(CELL):
            source = font()[cell // 16 * CELL + y]
            for x in range(CELL):
                value = source[cell % 16 * CELL + x]
                at = place * ADVANCE + x
                rows[y][at] = min(255, rows[y][at] + value)
    return rows


def correlation(a, b):
    n = len(a)
    mean_a, mean_b = sum(a) / n, sum(b) / n
    above = sum((x - mean_a) * (y - mean_b) for x, y in zip(a, b))
    below = (sum((x - mean_a) ** 2 for x in a) * sum((y - mean_b) ** 2 for y in b)) ** 0.5
    return above / below if below else 0


def hovered_label(picture, x, y):
    """The name printed beside a pointer at (x, y), in fractions of the window; none when there is none."""
    left = int(picture.width * (x + 0.05))
    bottom = int(picture.height * y)
    best, found = 0.6, None
    for name in NAMES:
        rows = expected(name)
        for dy in (-1, 0, 1):
            for dx in (-1, 0, 1):
                seen, wanted = [], []
                for row in range(CELL):
                    yy = bottom - CELL + row + dy
                    if not 0 <= yy < picture.height:
                        continue
                    for column in range(BOX_ADVANCE * len(name) - 4):
                        xx = left + column + dx
                        if 0 <= xx < picture.width and column < len(rows[row]):
                            seen.append(picture.pixel(xx, yy)[1])
                            wanted.append(rows[row][column])
                if seen:
                    score = correlation(seen, wanted)
                    if score > best:
                        best, found = score, name
    return found


def sees(picture, text, x, y, across=24, along=12):
    """Whether a text of the GUI or of the pages stands with its middle about (x, y), in fractions of the window, at any
    size of the window; `across` and `along` say how far off it may be, in pixels of the text grid."""
    scale_x, scale_y = picture.width / GRID[0], picture.height / GRID[1]
    rows = expected(text)
    cells = [(column, row) for row in range(0, CELL, 2) for column in range(0, ADVANCE * len(text) + 4, 2)]
    wanted = [rows[row][column] for column, row in cells]
    left = int(x * GRID[0]) - ADVANCE * len(text) // 2
    top = int(y * GRID[1]) - CELL // 2
    for dy in range(-along, along + 1):
        for dx in range(-across, across + 1):
            place = left + dx, top + dy
            if min(place) < 0 or place[0] + ADVANCE * len(text) + CELL > GRID[0] or place[1] + CELL > GRID[1]:
                continue
            seen = [picture.pixel((place[0] + column) * scale_x, (place[1] + row) * scale_y)[1] for column, row in cells]
            if abs(correlation(seen, wanted)) > LIKENESS:  # dark on light as well as light on dark
                return True
    return False
