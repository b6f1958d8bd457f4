#!/usr/bin/python3
"""icons/quarvello.bmp: the window icon, a T piece of four stones on magenta, which the window manager sees through."""
import sys

from PIL import Image, ImageDraw

import paint

MAGENTA = (255, 0, 255)
OUTLINE = (26, 20, 16)
# Place of each stone, then its colour, its lit edge and its shaded edge.
STONES = (((1, 6), (31, 58, 147), (110, 150, 240), (14, 26, 80)),
          ((11, 6), (227, 178, 60), (255, 240, 180), (138, 90, 20)),
          ((21, 6), (40, 167, 159), (170, 240, 235), (16, 90, 90)),
          ((11, 16), (184, 67, 46), (250, 160, 120), (100, 26, 16)))


def icon():
    image = Image.new("RGB", (32, 32), MAGENTA)
    draw = ImageDraw.Draw(image)
    for (x, y), colour, lit, shaded in STONES:
        draw.rectangle((x, y, x + 9, y + 9), fill=OUTLINE)
        draw.rectangle((x + 1, y + 1, x + 8, y + 8), fill=colour)
        draw.line((x + 1, y + 8, x + 1, y + 1, x + 8, y + 1), fill=lit)
        draw.line((x + 2, y + 8, x + 8, y + 8, x + 8, y + 2), fill=shaded)
        draw.rectangle((x + 4, y + 4, x + 5, y + 5), fill=lit)
    return image


if __name__ == "__main__":
    paint.save(icon(), sys.argv[1], "icons/quarvello.bmp")
