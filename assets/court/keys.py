"""The slope of the well's base: a plate of lapis in which the default keys are inlaid in ivory, what they do in gold.

At rest with a new piece only the upper unit of the slope is seen, so the caps stand above and the words below. The picture is
not baked: shadows of the posts and the sampling's noise would eat letters that are six pixels high at 640 x 480.
"""
import math

import cairo
import numpy as np

import paint
from colour import rgb

# The slope runs from the ledge before the blocks down to the step; x and (y, z), in units.
LEFT, RIGHT = -2.2, 11.2
TOP, FOOT = (-.62, -.52), (-2.78, -1.27)
WIDTH, LENGTH = RIGHT - LEFT, math.dist(TOP, FOOT)
# Texels a unit: one to a pixel at 1280 x 960, two at 640 x 480, which linear filtering can just reduce.
DENSITY = 32
SIZE = (round(WIDTH * DENSITY), round(LENGTH * DENSITY))

# As far apart as it takes to be read when the light stands near the gate and leaves the slope in half shade.
PLATE, PLATE_LOW = rgb("#101A54"), rgb("#03061C")
CAP_FACE, CAP_EDGE, INK, WORD = rgb("#FFF2D0"), rgb("#86714A"), rgb("#000000"), rgb("#FFFFF6")
CAP, CAP_TOP, GAP, BASELINE, LETTER = 1.0, .13, .14, 1.82, .44
MARGIN = .25
# What a group does, its width, and its caps: (width, quarter turns of the arrow clockwise from right, or letters).
GROUPS = (("MOVE", 2.14, ((CAP, 2), (CAP, 0))), ("TURN", 1.8, ((CAP, 3),)), ("FASTER", 2.5, ((CAP, 1),)),
          ("DROP", 2.55, ((2.55, "SPACE"),)), ("PAUSE", 2.1, ((CAP, "P"),)))


def layout():
    """Caps as (left, width, sign), words as (middle, text) and the middles between groups, from the plate's left edge."""
    between = (WIDTH - 2 * MARGIN - sum(wide for _, wide, _ in GROUPS)) / (len(GROUPS) - 1)
    caps, words, dots, x = [], [], [], MARGIN
    for text, wide, signs in GROUPS:
        left = x + (wide - sum(w for w, _ in signs) - GAP * (len(signs) - 1)) / 2
        for w, sign in signs:
            caps.append((left, w, sign))
            left += w + GAP
        words.append((x + wide / 2, text))
        x += wide + between
        dots.append(x - between / 2)
    return caps, words, dots[:-1]


def rounded(c, x, y, width, height, radius):
    c.new_path()
    for cx, cy, start in ((x + width - radius, y + radius, -.5), (x + width - radius, y + height - radius, 0),
                          (x + radius, y + height - radius, .5), (x + radius, y + radius, 1)):
        c.arc(cx, cy, radius, start * math.pi, (start + .5) * math.pi)
    c.close_path()


def fill(c, colour):
    c.set_source_rgb(*colour)
    c.fill()


def cap(c, x, width):
    """A key cap of ivory in its socket: a shaded lower edge under a light face whose upper rim catches the light."""
    rounded(c, x - .05, CAP_TOP - .05, width + .1, CAP + .13, .17)
    fill(c, PLATE_LOW * .5)
    rounded(c, x, CAP_TOP, width, CAP, .14)
    fill(c, CAP_EDGE)
    rounded(c, x + .03, CAP_TOP, width - .06, CAP - .13, .12)
    fill(c, CAP_FACE)


def arrow(c, x, y, size, turns):
    c.save()
    c.translate(x, y)
    c.rotate(turns * math.pi / 2)
    c.scale(size, size)
    c.new_path()
    for point in ((-.40, -.13), (.0, -.13), (.0, -.38), (.44, 0), (.0, .38), (.0, .13), (-.40, .13)):
        c.line_to(*point)
    c.close_path()
    c.restore()
    fill(c, INK)


def word(c, text, x, baseline, height, colour):
    """Capitals of that height centred on x; a face without thin strokes, which are lost at this size."""
    c.select_font_face("DejaVu Sans Condensed", cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_BOLD)
    c.set_font_size(10)
    c.set_font_size(10 * height / -c.text_extents("H").y_bearing)
    advances = [c.text_extents(letter).x_advance + .035 for letter in text]
    pen = x - (sum(advances) - .035) / 2
    c.set_source_rgb(*colour)
    for letter, advance in zip(text, advances):
        c.move_to(pen, baseline)
        c.show_text(letter)
        pen += advance


def plate(c):
    ground = cairo.LinearGradient(0, 0, 0, LENGTH)
    ground.add_color_stop_rgb(0, *PLATE)
    ground.add_color_stop_rgb(1, *PLATE_LOW)
    c.rectangle(0, 0, WIDTH, LENGTH)
    c.set_source(ground)
    c.fill()
    for x, y, width, height in ((0, 0, WIDTH, .05), (0, LENGTH - .20, WIDTH, .06), (0, 0, .06, LENGTH - .14),
                                (WIDTH - .06, 0, .06, LENGTH - .14)):
        c.rectangle(x, y, width, height)
        fill(c, paint.GOLD)


def picture():
    """The slope's colours, top row first, 0 to 1."""
    canvas = paint.Canvas(SIZE[0], SIZE[1], 8)
    c = canvas.context
    c.scale(SIZE[0] / WIDTH, SIZE[1] / LENGTH)
    plate(c)
    caps, words, dots = layout()
    middle = CAP_TOP + (CAP - .13) / 2
    for x, width, sign in caps:
        cap(c, x, width)
        if isinstance(sign, int):
            arrow(c, x + width / 2, middle, .94, sign)
        else:
            height = .60 if len(sign) == 1 else .46
            word(c, sign, x + width / 2, middle + height / 2, height, INK)
    for x, text in words:
        word(c, text, x, BASELINE, LETTER, WORD)
    for x in dots:
        for y in (.3, .62, .94):
            c.new_path()
            c.arc(x, y, .045, 0, 2 * math.pi)
            fill(c, paint.GOLD)
    pixels = canvas.premultiplied()[..., :3]
    grain = paint.noise(max(SIZE), 5)[:SIZE[1], :SIZE[0], None]
    return np.clip(pixels * (1 + .025 * grain), 0, 1)


def paint_plate(folder):
    paint.to_image(picture()).save(f"{folder}/keys.png")
