#!/usr/bin/python3
"""Measures how well white letters read over bright pictures: the contrast of their strokes with what stands at their outline's edge.

A line of text is laid over each ground as the game shows it at 640 x 480, where a pixel is the mean of two by two texels.
The grounds are the menu's brightest boxes, behind credits and scores, and the night. Fails under 4.5 in the mean.
"""
import os
import sys

import numpy as np
from PIL import Image
from scipy.ndimage import distance_transform_edt

from colour import contrast, luminance

LEAST = 4.5
TEXT = "Teodor Halvik MUSIC/SOUNDS"
CELL, ADVANCE = 16, 10  # pixels at 640 x 480
# A box's side of 340 pixels shows two tiles of four; it is turned as boxes are while they tumble.
SIDE, TURN = 340, 18
BOXES = {"ivory box": "e", "turquoise box": "c", "gold box": "b"}
STROKE, CLEAR = 0.85, 0.12  # shares of ink above which a pixel belongs to a letter's stroke, below which it does not
NEAR = 2  # pixels from a stroke


def box(data, letter, width, height):
    image = Image.open(os.path.join(data, "textures/floor1%s.png" % letter)).convert("RGB")
    part = image.crop((0, image.height // 2, image.width // 2, image.height)).resize((SIDE, SIDE), Image.BOX)
    tiled = Image.new("RGB", (3 * SIDE, 3 * SIDE))
    for i in range(9):
        tiled.paste(part, (SIDE * (i % 3), SIDE * (i // 3)))
    left, top = SIDE, SIDE + 20
    return np.asarray(tiled.rotate(TURN, Image.BICUBIC).crop((left, top, left + width, top + height))) / 255


def written(font, ground):
    """The ground with the text blended over it, and the share of ink of each pixel."""
    picture, ink = ground.copy(), np.zeros(ground.shape[:2])
    for i, letter in enumerate(TEXT):
        row, column = divmod(ord(letter) - 32, 16)
        cell = font[row * CELL:(row + 1) * CELL, column * CELL:(column + 1) * CELL]
        place = np.s_[12:12 + CELL, 8 + ADVANCE * i:8 + ADVANCE * i + CELL]
        picture[place] = picture[place] * (1 - cell[..., 3:]) + cell[..., :3] * cell[..., 3:]
        ink[place] = np.maximum(ink[place], cell[..., 0] * cell[..., 3])
    return picture, ink


def measure(font, ground):
    """Contrast of the strokes with the pixels beside them: mean and worst tenth."""
    picture, ink = written(font, ground)
    stroke = ink > STROKE
    beside = (distance_transform_edt(~stroke) <= NEAR) & (ink < CLEAR)
    light = luminance(picture)
    ratios = contrast(float(light[stroke].mean()), light[beside])
    return ratios.mean(), np.percentile(ratios, 10)


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "../data")
    sheet = np.asarray(Image.open(os.path.join(data, "font/basic4.png")).convert("RGBA"), float) / 255
    font = sheet.reshape(sheet.shape[0] // 2, 2, sheet.shape[1] // 2, 2, 4).mean((1, 3))
    width, height = ADVANCE * len(TEXT) + 2 * CELL, 44
    grounds = {name: box(data, letter, width, height) for name, letter in BOXES.items()}
    grounds["night"] = np.zeros((height, width, 3))
    failed = False
    for name, ground in grounds.items():
        mean, low = measure(font, ground)
        failed |= bool(mean < LEAST)
        print("%s%-14s contrast beside the letters %4.1f, worst tenth %4.1f" % ("WRONG  " if mean < LEAST else "", name, mean, low))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
