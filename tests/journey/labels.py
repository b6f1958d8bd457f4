"""Reads printed texts in screenshots, by comparing them with the font's own picture."""
import functools
import pathlib
import subprocess
from operator import mul

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
CELL = 16      # side of a printed glyph, pixels
ADVANCE = 10   # from one glyph to the next
GRID = (640, 480)  # of all texts but the boxes' names, stretched over the window
LIKENESS = 0.7     # a wrong text of the same length stays well below


@functools.cache
def font():
    """The font's picture at its printed size: brightness by row and column."""
    data = subprocess.run(["convert", str(ROOT / "data/font/basic4.png"), "-background", "black", "-alpha", "remove",
                           "-resize", "256x256!", "-colorspace", "Gray", "-depth", "8", "gray:-"],
                          stdout=subprocess.PIPE, check=True).stdout
    return [data[row * 256:(row + 1) * 256] for row in range(256)]


@functools.cache
def expected(name):
    """Brightness of the printed name, CELL rows; the cells overlap."""
    rows = [bytearray(ADVANCE * len(name) + CELL) for _ in range(CELL)]
    for place, cell in enumerate(ord(character) - 32 for character in name):
        for y, row in enumerate(rows):
            for x in range(CELL):
                at = place * ADVANCE + x
                row[at] = min(255, row[at] + font()[cell // 16 * CELL + y][cell % 16 * CELL + x])
    return rows


def correlation(seen, wanted):
    """How alike two rows of brightness are: 1 the same, -1 the negative."""
    n = len(seen)
    sum_a, sum_b = sum(seen), sum(wanted)
    above = sum(map(mul, seen, wanted)) - sum_a * sum_b / n
    below = ((sum(map(mul, seen, seen)) - sum_a ** 2 / n) * (sum(map(mul, wanted, wanted)) - sum_b ** 2 / n)) ** 0.5
    return above / below if below else 0


def hovers(picture, name, x, y):
    """Whether a box's name stands beside a pointer at (x, y), where it is printed in real pixels or twice as large."""
    step = max(picture.height // GRID[1], 1)
    grid = picture.width // step, picture.height // step
    return sees(picture, name, x + 0.05 + ADVANCE / 2 * len(name) / grid[0], y - CELL / 2 / grid[1], 2, 3, grid)


def sees(picture, text, x, y, across=24, along=12, grid=GRID):
    """Whether a text of the GUI or of the pages stands with its middle about (x, y), in fractions of the window, at any
    size of the window; `across` and `along` say how far off it may be, in pixels of the text `grid`."""
    width = ADVANCE * len(text) + 4
    wanted = b"".join(row[:width:2] for row in expected(text)[::2])
    left = int(x * grid[0]) - ADVANCE * len(text) // 2
    top = int(y * grid[1]) - CELL // 2
    columns = [int(column * picture.width / grid[0]) for column in range(grid[0])]
    rows = {}
    for row in range(max(top - along, 0), min(top + along + CELL, grid[1])):
        red = picture.row(row * picture.height / grid[1], 0)  # which red texts have too
        rows[row] = red if picture.width == grid[0] else bytes(map(red.__getitem__, columns))
    for begin in range(max(top - along, 0), min(top + along, grid[1] - CELL) + 1):
        for start in range(max(left - across, 0), min(left + across, grid[0] - width - CELL + 4) + 1):
            seen = b"".join(rows[row][start:start + width:2] for row in range(begin, begin + CELL, 2))
            if abs(correlation(seen, wanted)) > LIKENESS:  # dark on light as well as light on dark
                return True
    return False
