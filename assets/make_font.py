#!/usr/bin/python3
"""font/basic4.png: the bitmap font, 16 x 16 cells of 32 texels, white with alpha and a soft dark outline.

Cells 0 to 127 hold the bytes 32 to 159 of the text face, cells 128 to 255 the same bytes of the display face; bytes
without a letter stay empty. The game draws a cell as 16 x 16 pixels of a 640 x 480 screen (of any screen for the label
in the menu) and moves on by 10, so a letter lives in the left 20 texels of its cell. Two texels are one pixel there:
heights are bent so that base line, small letters and capitals end between two pixels, and each letter is set where
its stems come out sharpest.
"""
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFont
from scipy.ndimage import distance_transform_edt, gaussian_filter

import paint

CELL, PEN = 32, 20
# Letters are rendered this much larger and then reduced.
FINE = 16
BASE_LINE = 24
# How far letters may reach below and above the base line.
LOWEST, HIGHEST = 6.0, 23.0
# Alpha of the outline by its distance from the letter, in texels, and how much finer than these distances are measured.
OUTLINE = ((0, .88), (1, .80), (2, .58), (3, .30), (4, .12), (5, .04), (6, 0))
DISTANCE_FINE = 4

TEXT = dict(
    path="/usr/share/fonts/truetype/dejavu/DejaVuSerifCondensed-Bold.ttf", size=29.5, small=16, capital=22, widest=18.5,
    # The pen is fixed, so narrow letters are widened lest they leave holes.
    widened=dict(i=1.22, j=1.22, l=1.22, I=1.2, t=1.1, f=1.1, r=1.08), fattened=0)
DISPLAY = dict(
    path="/usr/share/fonts/opentype/linux-libertine/LinBiolinum_RB.otf", size=33, small=14, capital=22, widest=19.0,
    widened={}, fattened=0.4)


def render(face, font, letter):
    """The letter's coverage, FINE times larger than the cell, cut to its ink at left and right; None for a blank."""
    big = Image.new("L", (CELL * FINE * 2, CELL * FINE))
    ImageDraw.Draw(big).text((CELL * FINE // 2, BASE_LINE * FINE), letter, font=font, fill=255, anchor="ls",
                             stroke_width=round(face["fattened"] * FINE))
    box = big.getbbox()
    return None if box is None else big.crop((box[0], 0, box[2], big.height))


def heights(face, font):
    """Where the face's lowest letter ends, and how far small letters, capitals and the highest letter reach above the
    base line, in texels."""
    boxes = {letter: font.getbbox(letter, anchor="ls") for letter in map(chr, range(33, 127))}
    lowest, highest = max(box[3] for box in boxes.values()), max(-box[1] for box in boxes.values())
    fat = face["fattened"]
    return (-lowest / FINE - fat, -boxes["x"][1] / FINE, -boxes["H"][1] / FINE, highest / FINE + fat)


def bend(ink, natural, face):
    """Stretches the letter vertically in four pieces, so that small letters and capitals get the wanted heights and
    what hangs below or stands above them keeps clear of the cell's edges, where filtering takes in the neighbours."""
    rows = BASE_LINE - (np.arange(CELL * FINE) + 0.5) / FINE
    source = np.interp(rows, [-LOWEST, 0, face["small"], face["capital"], HIGHEST],
                       [natural[0], 0, *natural[1:]],
                       left=-CELL, right=CELL)
    index = np.round((BASE_LINE - source) * FINE - 0.5).astype(int)
    inside = (index >= 0) & (index < CELL * FINE)
    return Image.fromarray(np.where(inside[:, None], np.asarray(ink)[np.clip(index, 0, CELL * FINE - 1)], 0).astype("u1"))


def squeeze(ink, letter, face):
    """The letter's width in texels: narrow ones widened, wide ones squeezed to fit the pen."""
    width = ink.width / FINE * face["widened"].get(letter, 1.0)
    return min(width, face["widest"])


def place(ink, width, left):
    """The cell with the letter's ink from left to left + width, in texels."""
    wide = ink.resize((max(1, round(width * FINE)), CELL * FINE), Image.BOX)
    cell = Image.new("L", (CELL * FINE, CELL * FINE))
    cell.paste(wide, (round(left * FINE), 0))
    return np.asarray(cell, float).reshape(CELL, FINE, CELL, FINE).mean((1, 3)) / 255


def sharpness(cell):
    """How black and white the letter is when two by two texels are one pixel."""
    pixels = cell.reshape(CELL // 2, 2, CELL // 2, 2).mean((1, 3))
    return float(((pixels - 0.5) ** 2).sum())


def glyph(face, font, letter):
    ink = render(face, font, letter)
    if ink is None:
        return np.zeros((CELL, CELL))
    ink = bend(ink, heights(face, font), face)
    width = squeeze(ink, letter, face)
    centre = (PEN - width) / 2
    best = None
    # A shift of less than a pixel and a width changed by less than half a pixel go unnoticed; blurred stems do not.
    for stretch in (0, -0.5, 0.5, -1.0, 1.0):
        if width + stretch > face["widest"] or width + stretch < 2:
            continue
        for shift in np.arange(-1.0, 1.01, 0.125):
            left = centre - stretch / 2 + shift
            if left < 1 or left + width + stretch > PEN:
                continue
            cell = place(ink, width + stretch, left)
            score = sharpness(cell) - 1.5 * abs(shift) - 1.5 * abs(stretch)
            if best is None or score > best[0]:
                best = (score, cell)
    return best[1] if best else place(ink, width, max(1.0, centre))


def outlined(ink):
    """A cell's white letter over its dark outline."""
    size = CELL * DISTANCE_FINE
    solid = np.asarray(Image.fromarray((ink * 255).astype("u1")).resize((size, size), Image.BICUBIC)) > 127
    distance = distance_transform_edt(~solid) / DISTANCE_FINE
    rim = np.interp(distance, *zip(*OUTLINE)).reshape(CELL, DISTANCE_FINE, CELL, DISTANCE_FINE).mean((1, 3))
    rim = gaussian_filter(rim, .35)
    # Left of the letter the last one may still stand: what is drawn over it must be weak, its own outline lies there.
    x = np.arange(CELL)
    first = np.nonzero(ink.max(0) > .3)[0][0]
    rim *= np.where(x < first, np.clip((x + 1.0) / 3, 0, 1), 1)
    # Nor may filtering draw the outline at a neighbour's edge.
    rim *= np.clip((CELL - 1 - x) / 2, 0, 1)
    rim *= np.clip(np.minimum(x, CELL - 1 - x)[:, None] / 1.5, 0, 1)
    alpha = ink + (1 - ink) * rim
    white = np.where(alpha > 0, ink / np.maximum(alpha, 1e-9), 1)
    return np.dstack([white, white, white, alpha])


def sheet():
    picture = np.ones((16 * CELL, 16 * CELL, 4)) * (1, 1, 1, 0)
    for first_cell, face in ((0, TEXT), (128, DISPLAY)):
        font = ImageFont.truetype(face["path"], round(face["size"] * FINE))
        for byte in range(33, 127):
            cell = first_cell + byte - 32
            row, column = divmod(cell, 16)
            picture[row * CELL:(row + 1) * CELL, column * CELL:(column + 1) * CELL] = outlined(glyph(face, font, chr(byte)))
    return picture


if __name__ == "__main__":
    paint.save(paint.to_image(sheet()), sys.argv[1], "font/basic4.png")
