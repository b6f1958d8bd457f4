"""Reads printed texts in screenshots, by comparing them with the font's own picture."""
import functools
import pathlib
import subprocess
from operator import mul

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
NAMES = ("OPTIONS", "CREDITS", "NEW GAME", "QUIT")
CELL = 16      # side of a printed glyph, pixels
ADVANCE = 10   # from one glyph to the next
BOX_ADVANCE = 11
GRID = (640, 480)  # of all other texts, stretched over the window
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


def hovered_label(picture, x, y):
    """The name printed beside a pointer at (x, y), in fractions of the picture; none when there is none."""
    scale = max(picture.height // GRID[1], 1)
    left = int(picture.width * (x + 0.05)) // scale
    top = int(picture.height * y) - (CELL + 1) * scale
    rows = [picture.row(row, 1)[::scale] if 0 <= row < picture.height else b""
            for row in range(top, top + (CELL + 2) * scale, scale)]

    def likeness(name):
        width = BOX_ADVANCE * len(name) - 4
        wanted = b"".join(row[:width] for row in expected(name))
        shown = (b"".join(row[left + dx:left + dx + width] for row in rows[dy:dy + CELL]) for dy in range(3) for dx in (-1, 0, 1))
        return max(correlation(seen, wanted) if len(seen) == len(wanted) else 0 for seen in shown)
    best, name = max((likeness(name), name) for name in NAMES)
    return name if best > 0.6 else None


def sees(picture, text, x, y, across=24, along=12):
    """Whether a text of the GUI or of the pages stands with its middle about (x, y), in fractions of the window, at any
    size of the window; `across` and `along` say how far off it may be, in pixels of the text grid."""
    width = ADVANCE * len(text) + 4
    wanted = b"".join(row[:width:2] for row in expected(text)[::2])
    left = int(x * GRID[0]) - ADVANCE * len(text) // 2
    top = int(y * GRID[1]) - CELL // 2
    columns = [int(column * picture.width / GRID[0]) for column in range(GRID[0])]
    rows = {}
    for row in range(max(top - along, 0), min(top + along + CELL, GRID[1])):
        red = picture.row(row * picture.height / GRID[1], 0)  # which red texts have too
        rows[row] = red if picture.width == GRID[0] else bytes(map(red.__getitem__, columns))
    for begin in range(max(top - along, 0), min(top + along, GRID[1] - CELL) + 1):
        for start in range(max(left - across, 0), min(left + across, GRID[0] - width - CELL + 4) + 1):
            seen = b"".join(rows[row][start:start + width:2] for row in range(begin, begin + CELL, 2))
            if abs(correlation(seen, wanted)) > LIKENESS:  # dark on light as well as light on dark
                return True
    return False
