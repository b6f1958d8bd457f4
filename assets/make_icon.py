#!/usr/bin/python3
"""The game's icon, a T piece of four stones, in every size a desktop asks for and as a drawing.

    make_icon.py DATA PACKAGING

icons/quarvello.bmp under DATA is the window's icon, on magenta, which the window manager sees through. Under PACKAGING stands
the tree of an icon theme: icons/hicolor/<size>x<size>/apps/quarvello.png and icons/hicolor/scalable/apps/quarvello.svg.

All come from the table STONES. Edges lie on whole pixels in every size; the signs are drawn where a stone has room for them,
below that a glint stands for them.
"""
import math
import os
import sys

import cairo
import numpy as np
from PIL import Image

import paint

SIZES = (16, 24, 32, 48, 64, 128, 256)
WINDOW, DRAWING = 32, 256  # pixels of the window's icon; units of the SVG
MAGENTA = (255, 0, 255)
OUTLINE = "#1A1410"
# Column and row of each stone, its face, its edges on top, left, right and below, its sign and the sign's colour.
STONES = ((0, 0, "#1F3A93", ("#6E96F0", "#4668C4", "#142766", "#0E1A50"), "star", "#F0C456"),
          (1, 0, "#E3B23C", ("#FFF0B4", "#F4D274", "#A87A22", "#8A5A14"), "sun", "#A5331F"),
          (2, 0, "#28A79F", ("#AAF0EB", "#66CEC6", "#187A76", "#105A5A"), "lotus", "#F7F0DC"),
          (1, 1, "#B8432E", ("#FAA078", "#DC6E4E", "#7E2818", "#641A10"), "ankh", "#F8DC8C"))
SIGN_FROM = 13  # pixels that a stone's face must have for its sign


def circle(x, y, rx, ry, points=40):
    return [(x + rx * math.cos(2 * math.pi * i / points), y + ry * math.sin(2 * math.pi * i / points)) for i in range(points)]


def petal(turn, length, width):
    """A pointed leaf that grows upwards out of (0, 0.6), turned by so many radians."""
    line = np.linspace(0, 1, 13)
    bulge = width * np.sin(math.pi * line ** 0.75)
    outline = [(-b, -length * t) for t, b in zip(line, bulge)] + [(b, -length * t) for t, b in zip(line, bulge)][::-1]
    return [(x * math.cos(turn) - y * math.sin(turn), 0.6 + x * math.sin(turn) + y * math.cos(turn)) for x, y in outline]


def sign(name, colour, face):
    """The polygons of a sign within -1..1, y downwards, each with its colour."""
    if name == "star":
        points = [(r * math.sin(math.pi * i / 5), 0.06 - r * math.cos(math.pi * i / 5)) for i, r in enumerate((0.92, 0.36) * 5)]
        return [(points, colour)]
    if name == "sun":
        rays = []
        for i in range(8):
            turn = math.pi / 4 * i
            rays.append(([(r * math.sin(turn + side), r * math.cos(turn + side))
                          for r, side in ((0.62, -0.2), (0.95, 0), (0.62, 0.2))], colour))
        return rays + [(circle(0, 0, 0.50, 0.50), colour)]
    if name == "lotus":
        return [(petal(turn, length, width), colour)
                for turn, length, width in ((-1.0, 0.95, 0.13), (1.0, 0.95, 0.13), (-0.5, 1.2, 0.16), (0.5, 1.2, 0.16), (0, 1.4, 0.2))]
    loop = [(circle(0, -0.45, 0.36, 0.46), colour), (circle(0, -0.45, 0.17, 0.26), face)]
    arms = [(-0.72, -0.04), (0.72, -0.04), (0.72, 0.24), (-0.72, 0.24)]
    stem = [(-0.14, 0.0), (0.14, 0.0), (0.2, 0.92), (-0.2, 0.92)]
    return loop + [(arms, colour), (stem, colour)]


def polygons(size):
    """All polygons of the icon with their colours, back to front, in pixels of a picture of this size."""
    line = max(1, round(size / 32))
    pitch = (size - line) // 3
    left, top = (size - 3 * pitch - line) // 2, (size - 2 * pitch - line) // 2
    bevel = max(1, round(0.12 * pitch))
    shapes = []
    for column, row, face, (above, lit, shaded, below), name, colour in STONES:
        x, y = left + column * pitch, top + row * pitch
        shapes.append(([(x, y), (x + pitch + line, y), (x + pitch + line, y + pitch + line), (x, y + pitch + line)], OUTLINE))
        a, b, c, d = x + line, y + line, x + pitch, y + pitch
        e, f, g, h = a + bevel, b + bevel, c - bevel, d - bevel
        shapes += [([(a, b), (c, b), (c, d), (a, d)], face),
                   ([(a, d), (e, h), (g, h), (c, d)], below), ([(c, b), (g, f), (g, h), (c, d)], shaded),
                   ([(a, b), (e, f), (e, h), (a, d)], lit), ([(a, b), (c, b), (g, f), (e, f)], above)]
        middle, half = ((e + g) / 2, (f + h) / 2), (g - e) / 2
        if g - e >= SIGN_FROM:
            shapes += [([(middle[0] + half * u, middle[1] + half * v) for u, v in points], fill)
                       for points, fill in sign(name, colour, face)]
        elif g - e >= 4:
            near, far = (g - e) // 2 - 1, (g - e + 1) // 2 + 1
            shapes.append(([(e + near, f + near), (e + far, f + near), (e + far, f + far), (e + near, f + far)], above))
    return shapes


def picture(size):
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, size, size)
    context = cairo.Context(surface)
    for points, colour in polygons(size):
        for point in points:
            context.line_to(*point)
        context.set_source_rgb(*(int(colour[i:i + 2], 16) / 255 for i in (1, 3, 5)))
        context.fill()
    surface.flush()
    pixels = np.ndarray((size, surface.get_stride() // 4, 4), "u1", surface.get_data())[:, :size, [2, 1, 0, 3]]
    # Every outline lies on whole pixels, so that alpha is 0 or 1 and colours are what they are.
    return Image.fromarray(pixels.copy())


def drawing():
    lines = ['<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" viewBox="0 0 %d %d">' % ((DRAWING,) * 4)]
    for points, colour in polygons(DRAWING):
        places = " ".join("%g,%g" % (round(x, 1), round(y, 1)) for x, y in points)
        lines.append('  <polygon fill="%s" points="%s"/>' % (colour, places))
    return "\n".join(lines + ["</svg>", ""])


def main():
    data, packaging = sys.argv[1:3]
    window = picture(WINDOW)
    ground = Image.new("RGB", window.size, MAGENTA)
    ground.paste(window, mask=window.getchannel("A"))
    paint.save(ground, data, "icons/quarvello.bmp")
    theme = os.path.join(packaging, "icons/hicolor")
    for size in SIZES:
        paint.save(picture(size), theme, "%dx%d/apps/quarvello.png" % (size, size))
    path = os.path.join(theme, "scalable/apps/quarvello.svg")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(drawing())


if __name__ == "__main__":
    main()
