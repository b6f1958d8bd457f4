"""The seven motifs of the pieces, and the tiles of the 4 x 4 picture that each piece shows.

Lengths are in tiles; the origin is the lower left of the picture and y points up. A motif lies in the tiles its
piece shows and nowhere else, because the rest of the picture is only seen on the menu's box. Strokes are at
least 0.08 wide: thinner ones are lost when a tile is 15 pixels on the screen.
"""
import math

import cairo

# Which picture belongs to which piece: textures/floor1<letter>.png.
LETTERS = {"bar": "a", "T": "b", "square": "c", "L": "d", "J": "e", "S": "f", "Z": "g"}

# The tiles (column, row) of each piece as it is dealt, row 0 at the bottom.
TILES = {
    "bar": [(0, 0), (0, 1), (0, 2), (0, 3)],
    "T": [(0, 1), (1, 1), (2, 1), (1, 0)],
    "square": [(0, 0), (1, 0), (0, 1), (1, 1)],
    "L": [(0, 2), (0, 1), (0, 0), (1, 0)],
    "J": [(0, 0), (1, 0), (1, 1), (1, 2)],
    "S": [(0, 0), (1, 0), (1, 1), (2, 1)],
    "Z": [(0, 1), (1, 1), (1, 0), (2, 0)],
}


class Inlay:
    """Paints shapes as inlays: a dark cut all round and a coloured face. Faces are also marked on a second
    canvas, from which the picture script takes their relief."""

    def __init__(self, context, marks, palette):
        self.context, self.marks, self.palette = context, marks, palette

    def fill(self, path, colour, cut=0.05):
        for c, dark, face in self._targets(colour):
            path(c)
            c.set_line_join(cairo.LINE_JOIN_ROUND)
            c.set_line_width(2 * cut)
            c.set_source_rgb(*dark)
            c.stroke_preserve()
            c.set_source_rgb(*face)
            c.fill()

    def line(self, path, colour, width, cut=0.045):
        for c, dark, face in self._targets(colour):
            c.set_line_join(cairo.LINE_JOIN_ROUND)
            c.set_line_cap(cairo.LINE_CAP_ROUND)
            path(c)
            if cut > 0:
                c.set_line_width(width + 2 * cut)
                c.set_source_rgb(*dark)
                c.stroke_preserve()
            c.set_line_width(width)
            c.set_source_rgb(*face)
            c.stroke()

    def _targets(self, colour):
        """The colour canvas with cut and face, and the mark canvas, where cuts are black and faces white."""
        face = self.palette[colour]
        mark = (0, 0, 0) if colour == "cut" else (1, 1, 1)
        return ((self.context, self.palette["cut"], face), (self.marks, (0, 0, 0), mark))


def trace(text, mirror=None):
    """A path from text: M x y, L x y, C x1 y1 x2 y2 x y, Z. mirror turns it round the line x = mirror."""
    def x(value):
        return float(value) if mirror is None else 2 * mirror - float(value)

    def path(c):
        c.new_path()
        words = text.split()
        i = 0
        while i < len(words):
            command = words[i]
            count = {"M": 2, "L": 2, "C": 6, "Z": 0}[command]
            numbers = words[i + 1:i + 1 + count]
            points = [x(v) if k % 2 == 0 else float(v) for k, v in enumerate(numbers)]
            {"M": c.move_to, "L": c.line_to, "C": c.curve_to, "Z": c.close_path}[command](*points)
            i += 1 + count
    return path


def disc(x, y, radius):
    def path(c):
        c.new_path()
        c.arc(x, y, radius, 0, 2 * math.pi)
        c.close_path()
    return path


def ellipse(x, y, rx, ry):
    def path(c):
        c.new_path()
        c.save()
        c.translate(x, y)
        c.scale(rx, ry)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.close_path()
        c.restore()
    return path


def star(x, y, radius, points=5, inner=0.42, turn=math.pi / 2):
    def path(c):
        c.new_path()
        for i in range(2 * points):
            r = radius if i % 2 == 0 else radius * inner
            angle = turn + i * math.pi / points
            c.line_to(x + r * math.cos(angle), y + r * math.sin(angle))
        c.close_path()
    return path


def petal(x, y, angle, length, width):
    """A pointed leaf that grows from (x, y)."""
    def path(c):
        c.new_path()
        c.save()
        c.translate(x, y)
        c.rotate(angle)
        c.move_to(0, 0)
        c.curve_to(length * 0.35, width, length * 0.75, width * 0.8, length, 0)
        c.curve_to(length * 0.75, -width * 0.8, length * 0.35, -width, 0, 0)
        c.close_path()
        c.restore()
    return path


def stars(inlay):
    """Bar: a golden star in each tile, with sparks between them."""
    for row in range(4):
        inlay.fill(star(0.5, row + 0.5, 0.37, 5, 0.42), "light")
        inlay.fill(disc(0.5, row + 0.5, 0.08), "accent", 0.02)
    for row in range(4):
        inlay.fill(disc(0.15, row + 0.84, 0.048), "light", 0.02)
        inlay.fill(disc(0.85, row + 0.16, 0.048), "light", 0.02)


def sun_disc(inlay):
    """T: the winged sun; wings left and right, rays into the lower tile."""
    for mirror in (None, 1.5):
        for k in range(3):
            root, tip = 1.66 - 0.16 * k, 0.17 * k
            inlay.fill(trace(f"M 1.92 {root + .09} C 2.4 {root + .10} {2.75 - .12 * k} {root + .06} "
                             f"{2.90 - tip} {root + .14 - .02 * k} C {2.80 - .12 * k} {root - .08} "
                             f"2.4 {root - .07} 1.92 {root - .05} Z", mirror),
                       "accent" if k == 1 else "light", 0.03)
    for k, length in ((-2, 1.05), (2, 1.05), (-1, 1.12), (1, 1.12), (0, 1.34)):
        start, end = -math.pi / 2 + k * 0.27, -math.pi / 2 + k * 0.135
        inlay.line(trace(f"M {1.5 + .4 * math.cos(start)} {1.5 + .4 * math.sin(start)} "
                         f"L {1.5 + length * math.cos(end)} {1.5 + length * math.sin(end)}"),
                   "light" if k % 2 == 0 else "accent", 0.085, 0.03)
    inlay.fill(disc(1.5, 1.5, 0.40), "accent")
    inlay.fill(disc(1.5, 1.5, 0.28), "light", 0.03)


def lotus(inlay):
    """Square: an open lotus that grows from the middle of the lower joint."""
    inlay.line(trace("M 1 0.12 L 1 0.6"), "accent", 0.12, 0.03)
    for side in (-1, 1):
        inlay.fill(petal(1, 0.2, math.pi / 2 + side * 1.12, 0.8, 0.14), "accent", 0.03)
    for angle, length, colour in ((1.02, 1.06, "mid"), (0.62, 1.2, "light"), (0.30, 1.28, "mid")):
        for side in (-1, 1):
            inlay.fill(petal(1, 0.5, math.pi / 2 + side * angle, length, 0.24), colour, 0.04)
    inlay.fill(petal(1, 0.5, math.pi / 2, 1.32, 0.24), "light", 0.04)
    inlay.fill(trace("M 0.72 0.57 C 0.72 0.2 1.28 0.2 1.28 0.57 Z"), "accent", 0.04)


def knot(inlay):
    """L: the knot of Isis; its band ends in a star in the foot of the piece."""
    inlay.line(trace("M 0.5 1.35 C 0.5 0.8 0.38 0.5 0.72 0.46 C 1.0 0.42 1.2 0.42 1.62 0.46"), "mid", 0.17)
    inlay.line(trace("M 0.44 1.3 C 0.34 0.9 0.2 0.6 0.22 0.2"), "light", 0.17)
    inlay.line(trace("M 0.56 1.3 C 0.66 1.0 0.72 0.9 0.76 0.72"), "light", 0.17)
    inlay.line(trace("M 0.42 1.55 C -0.05 2.2 0.1 2.82 0.5 2.82 C 0.9 2.82 1.05 2.2 0.58 1.55"), "light", 0.17)
    inlay.line(trace("M 0.5 2.5 L 0.5 2.1"), "accent", 0.09, 0.02)
    inlay.line(trace("M 0.14 1.36 C 0.3 1.56 0.7 1.56 0.86 1.36"), "accent", 0.17)
    inlay.fill(trace("M 0.30 1.34 L 0.70 1.34 L 0.70 1.60 L 0.30 1.60 Z"), "accent")
    inlay.fill(star(1.60, 0.48, 0.27, 4, 0.45), "accent", 0.04)


def feather(inlay):
    """J: the feather of Maat upright, its quill bent into the foot of the piece."""
    inlay.fill(trace("M 1.44 0.62 C 1.10 1.2 1.06 2.2 1.34 2.74 C 1.5 2.96 1.86 2.92 1.88 2.6 "
                     "C 1.9 2.4 1.72 2.38 1.70 2.5 C 1.92 1.9 1.9 1.1 1.58 0.62 Z"), "mid")
    for i in range(8):
        y = 0.86 + 0.235 * i
        reach = 0.92 * (0.30 + 0.06 * math.sin(0.45 * i))
        for side in (-1, 1):
            inlay.line(trace(f"M 1.5 {y - .10} L {1.5 + side * reach} {y + .10}"), "light", 0.06, 0)
    inlay.line(trace("M 1.50 2.62 C 1.5 1.6 1.52 0.9 1.46 0.62 C 1.38 0.38 1.0 0.42 0.2 0.5"), "accent", 0.10, 0.04)
    inlay.fill(disc(0.36, 0.49, 0.16), "accent", 0.04)


def scarab(inlay):
    """S: the winged scarab; its body over the joint of the two middle tiles, a wing in each end."""
    for side in (-1, 1):
        for k in range(3):
            y0 = 1.0 + side * 0.175 + 0.15 - 0.15 * k
            yt = 1.0 + side * 0.5 + 0.30 - 0.26 * k

            def x(reach):
                return 1.5 + side * reach
            inlay.fill(trace(f"M {x(.30)} {y0 + .08} C {x(.6)} {yt + .10} {x(.9)} {yt + .12} {x(1.38 - .08 * k)} {yt + .07} "
                             f"C {x(1.30 - .08 * k)} {yt - .12} {x(.75)} {yt - .12} {x(.30)} {y0 - .10} Z"),
                       "accent" if k == 1 else "light", 0.035)
    for mirror in (None, 1.5):
        inlay.line(trace("M 1.7 1.5 C 1.95 1.7 1.86 1.86 1.7 1.92", mirror), "mid", 0.08, 0.03)
        inlay.line(trace("M 1.7 0.5 C 1.95 0.36 1.86 0.2 1.7 0.10", mirror), "mid", 0.08, 0.03)
    inlay.fill(ellipse(1.5, 0.86, 0.36, 0.56), "light")
    inlay.line(trace("M 1.5 0.34 L 1.5 1.18"), "cut", 0.05, 0)
    inlay.line(trace("M 1.16 1.07 C 1.3 1.32 1.7 1.32 1.84 1.07"), "cut", 0.05, 0)
    inlay.fill(disc(1.5, 1.32, 0.24), "mid")
    inlay.fill(disc(1.5, 1.74, 0.17), "accent", 0.04)


def eye(inlay):
    """Z: the eye of Horus in the upper tiles, its drop and curl in the lower ones."""
    inlay.line(trace("M 0.14 1.60 C 0.5 1.92 1.3 1.96 1.86 1.66"), "light", 0.12, 0.035)
    inlay.fill(trace("M 0.14 1.32 C 0.5 1.78 1.2 1.78 1.66 1.34 C 1.2 1.02 0.5 1.0 0.14 1.32 Z"), "light", 0.06)
    inlay.fill(disc(0.92, 1.38, 0.245), "cut", 0)
    inlay.fill(disc(0.92, 1.38, 0.17), "accent", 0)
    inlay.fill(disc(0.92, 1.38, 0.08), "cut", 0)
    inlay.line(trace("M 1.60 1.36 L 1.88 1.22"), "light", 0.11, 0.035)
    inlay.fill(trace("M 1.16 1.06 L 1.42 1.06 L 1.34 0.26 C 1.3 0.12 1.2 0.12 1.18 0.26 Z"), "mid", 0.045)
    inlay.line(trace("M 1.40 1.0 C 1.55 0.55 1.9 0.20 2.35 0.22 C 2.85 0.26 2.9 0.78 2.5 0.80 "
                     "C 2.2 0.80 2.2 0.44 2.48 0.46"), "light", 0.12, 0.04)


MOTIFS = {"bar": stars, "T": sun_disc, "square": lotus, "L": knot, "J": feather, "S": scarab, "Z": eye}
