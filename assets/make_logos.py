#!/usr/bin/python3
"""The three logos: textures/quarvello-logo.png and porvinal-logo.png, stored upright, and veklogo.png, stored upside
down because its quads have v = 0 on top. What stands about the game's name is in title.py. The maker's picture is two in
one: down to v = 0.65 the sign with the name, which the menu shows too, and below it the word PRESENTS, which the intro
shows alone.

Two texels stay clear along every edge, because textures repeat.
"""
import math
import sys

import cairo
import numpy as np
from PIL import Image
from scipy.ndimage import gaussian_filter

import paint
import title
from colour import rgb
from paint import (BRONZE, BRONZE_DARK, GOLD, GOLD_DARK, GOLD_LIGHT, INK, LAPIS, LAPIS_DARK, LAPIS_LIGHT, SAND, SAND_DARK,
                   SAND_LIGHT, TURQUOISE)
from piece_motifs import star

# The game reduces pictures with plain linear filtering, so each is softened (in texels) to what its smallest showing
# can resolve. The medal is shown 70 to 150 pixels wide and stored at half the size it is painted in.
GAME_SOFTNESS, MAKER_SOFTNESS, MEDAL_SOFTNESS = 0.5, 1.0, 0.8
MEDAL_REDUCTION = 2
# Where the maker's picture is cut in two.
MAKER_CUT = 0.65
# Wings and name of the game are drawn smaller and higher than their own measures, so that the keys and a horizon have room.
NAME_SCALE, NAME_UP = .86, 54


def gold_gradient(top, bottom):
    """Polished gold: a bright sky above, a dark horizon in the middle, a warm floor."""
    gradient = cairo.LinearGradient(0, top, 0, bottom)
    for place, text in ((0, "#FFF3C4"), (0.30, "#F0C552"), (0.50, "#C98F26"), (0.53, "#8A5A14"), (0.62, "#C08A2A"),
                        (0.85, "#F4D27A"), (1, "#B07A20")):
        gradient.add_color_stop_rgb(place, *rgb(text))
    return gradient


def letters(c, text, x, y, size, spacing):
    """The outline of a line of capitals, centred on x with its base line at y."""
    c.select_font_face("Cardo", cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_BOLD)
    c.set_font_size(size)
    advances = [c.text_extents(letter).x_advance for letter in text]
    pen = x - (sum(advances) + spacing * (len(text) - 1)) / 2
    c.new_path()
    for letter, advance in zip(text, advances):
        c.move_to(pen, y)
        c.text_path(letter)
        pen += advance + spacing


def raised(c, path, top, bottom, depth, rim):
    """Golden relief letters: an extrusion of bronze below, a lapis rim, the polished face, a thin light."""
    c.set_line_join(cairo.LINE_JOIN_ROUND)
    for i in range(depth, 0, -1):
        c.save()
        c.translate(0, i)
        path()
        c.set_source_rgb(*BRONZE_DARK)
        c.set_line_width(rim)
        c.stroke_preserve()
        c.fill()
        c.restore()
    for colour, width in ((LAPIS_DARK, rim + 3), (BRONZE, rim * 0.5)):
        path()
        c.set_source_rgb(*colour)
        c.set_line_width(width)
        c.stroke()
    path()
    c.set_source(gold_gradient(top, bottom))
    c.fill_preserve()
    c.set_source_rgba(1, 0.96, 0.78, 0.9)
    c.set_line_width(1.6)
    c.stroke()


def feather(c, x, y, angle, length, width, root, tip):
    """A feather with a round end, from its root at (x, y)."""
    c.save()
    c.translate(x, y)
    c.rotate(angle)
    c.new_path()
    c.move_to(-6, -0.30 * width)
    c.curve_to(length * 0.3, -0.62 * width, length * 0.8, -0.60 * width, length - width * 0.4, -0.42 * width)
    c.curve_to(length + width * 0.1, -0.3 * width, length + width * 0.1, 0.3 * width, length - width * 0.4, 0.42 * width)
    c.curve_to(length * 0.8, 0.60 * width, length * 0.3, 0.62 * width, -6, 0.30 * width)
    c.close_path()
    gradient = cairo.LinearGradient(0, 0, length, 0)
    gradient.add_color_stop_rgb(0, *root)
    gradient.add_color_stop_rgb(0.72, *tip)
    gradient.add_color_stop_rgb(1, *(0.6 * tip + 0.4 * np.ones(3)))
    c.set_source(gradient)
    c.fill_preserve()
    c.set_source_rgb(*GOLD_LIGHT)
    c.set_line_width(1.7)
    c.stroke()
    c.restore()


def wing(c, side, x, y, span):
    """A spread wing: three rows of feathers, the longest behind, hung from a golden leading edge."""
    def edge(t):
        return x + side * span * t, y - 30 * math.sin(math.pi * t ** 0.8) + 12 * t

    rows = ((17, 0.17, 0.97, 70, 92, LAPIS_DARK, LAPIS_LIGHT, 16), (15, 0.14, 0.90, 50, 60, rgb("#125E5C"), TURQUOISE, 15),
            (13, 0.12, 0.84, 30, 34, GOLD_DARK, GOLD, 14))
    for count, first, last, near, far, root, tip, width in rows:
        for k in range(count):
            t = k / (count - 1)
            fx, fy = edge(first + (last - first) * t)
            lean = math.radians(76 - 58 * t ** 0.9)
            angle = lean if side > 0 else math.pi - lean
            reach = near + (far - near) * math.sin(0.5 * math.pi * t) * (1 - 0.35 * t ** 6)
            feather(c, fx, fy, angle, reach, width * (1 - 0.25 * t), root, tip)
    c.new_path()
    c.move_to(x + side * span * 0.06, y - 22)
    c.curve_to(x + side * span * 0.3, y - 74, x + side * span * 0.7, y - 56, x + side * span * 1.06, y + 14)
    c.curve_to(x + side * span * 0.7, y - 34, x + side * span * 0.3, y - 44, x + side * span * 0.08, y + 4)
    c.close_path()
    c.set_source(gold_gradient(y - 62, y + 14))
    c.fill_preserve()
    c.set_source_rgb(*BRONZE_DARK)
    c.set_line_width(1.5)
    c.stroke()


def sun(c, x, y, radius):
    for grow, colour in ((7, LAPIS_DARK), (5, GOLD_DARK), (3, GOLD_LIGHT)):
        c.new_path()
        c.arc(x, y, radius + grow, 0, 2 * math.pi)
        c.set_source_rgb(*colour)
        c.fill()
    gradient = cairo.RadialGradient(x - radius * 0.3, y - radius * 0.35, radius * 0.1, x, y, radius)
    for place, text in ((0, "#FFB070"), (0.5, "#D8542E"), (1, "#7A2212")):
        gradient.add_color_stop_rgb(place, *rgb(text))
    c.set_source(gradient)
    c.new_path()
    c.arc(x, y, radius, 0, 2 * math.pi)
    c.fill()


def rule(c, x, y, width, height):
    c.new_path()
    c.rectangle(x, y, width, height)
    c.set_source(gold_gradient(y, y + height))
    c.fill()


def cobra(c, side, x, y):
    """A rearing snake beside the sun, as a curl of gold with a dark outline."""
    for width, colour in ((12, BRONZE_DARK), (7, GOLD)):
        c.new_path()
        c.move_to(x + side * 40, y + 46)
        c.curve_to(x + side * 70, y + 66, x + side * 84, y + 40, x + side * 69, y + 25)
        c.curve_to(x + side * 62, y + 18, x + side * 56, y + 27, x + side * 62, y + 33)
        c.set_line_cap(cairo.LINE_CAP_ROUND)
        c.set_line_width(width)
        c.set_source_rgb(*colour)
        c.stroke()


def finished(canvas, radius, strength, softness, reduction=1):
    """The canvas reduced, softened, and laid on a soft dark halo, so that it stands off any background."""
    pixels = canvas.premultiplied()
    height, width = (n // reduction for n in pixels.shape[:2])
    pixels = pixels.reshape(height, reduction, width, reduction, 4).mean((1, 3))
    pixels = gaussian_filter(pixels, (softness, softness, 0))
    alpha = pixels[..., 3]
    halo = np.clip(gaussian_filter(alpha, radius) * strength, 0, 1)
    # Nothing may reach the edge: the halo fades over the last texels.
    y, x = np.mgrid[0:alpha.shape[0], 0:alpha.shape[1]]
    border = np.minimum(np.minimum(x, alpha.shape[1] - 1 - x), np.minimum(y, alpha.shape[0] - 1 - y))
    halo = halo * np.clip((border - 2) / (1.5 * radius), 0, 1)
    total = alpha + halo * (1 - alpha)
    shade = np.array([8, 8, 28]) / 255
    colours = (pixels[..., :3] + shade * (halo * (1 - alpha))[..., None]) / np.maximum(total, 1e-6)[..., None]
    colours = np.where(total[..., None] > 0, colours, shade)
    return paint.to_image(np.dstack([colours, total]))


def game_logo():
    canvas = paint.Canvas(title.WIDTH, title.HEIGHT)
    c = canvas.context
    c.save()
    c.translate(512 * (1 - NAME_SCALE), -NAME_UP)
    c.scale(NAME_SCALE, NAME_SCALE)
    for side in (-1, 1):
        wing(c, side, 512, 140, 385)
    for side in (-1, 1):
        cobra(c, side, 512, 144)
    sun(c, 512, 140, 54)
    raised(c, lambda: letters(c, "QUARVELLO", 512, 352, 144, 1), 243, 356, 9, 8)
    c.restore()
    title.keys(c)
    return paint.to_image(title.before_dusk(finished(canvas, 6, 1.1, GAME_SOFTNESS)))


def course(c, y, count, side, first, second):
    """A row of square blocks of the maker's pyramid."""
    for i in range(count):
        x = 256 + (i - count / 2) * side
        c.rectangle(x, y, side, side)
        c.set_source_rgb(*rgb("#20140A"))
        c.fill()
        c.rectangle(x + 1.5, y + 1.5, side - 3, side - 3)
        gradient = cairo.LinearGradient(x, y, x + side, y + side)
        gradient.add_color_stop_rgb(0, *(first, second)[i % 2])
        gradient.add_color_stop_rgb(1, *rgb("#6A4826"))
        c.set_source(gradient)
        c.fill()
        c.move_to(x + 1.5, y + side - 1.5)
        c.line_to(x + 1.5, y + 1.5)
        c.line_to(x + side - 1.5, y + 1.5)
        c.set_source_rgba(1, 0.95, 0.8, 0.8)
        c.set_line_width(2)
        c.stroke()


def maker_logo():
    """The sign: a pyramid of blocks under a shining capstone, the name below it; then PRESENTS between two rules."""
    canvas = paint.Canvas(512, 512)
    c = canvas.context
    for k in range(-5, 6):
        angle = -math.pi / 2 + k * 0.24
        reach = 58 if k % 2 else 48
        c.new_path()
        c.move_to(256 + 34 * math.cos(angle), 66 + 34 * math.sin(angle))
        c.line_to(256 + reach * math.cos(angle), 66 + reach * math.sin(angle))
        c.set_source_rgb(*GOLD)
        c.set_line_width(5)
        c.set_line_cap(cairo.LINE_CAP_ROUND)
        c.stroke()
    course(c, 86, 1, 40, rgb("#F0C552"), rgb("#F0C552"))
    course(c, 126, 3, 40, SAND_LIGHT, rgb("#E8CC9E"))
    course(c, 166, 5, 40, SAND_LIGHT, rgb("#CFAE7C"))
    c.new_path()
    for x, y in ((230, 86), (282, 86), (256, 44)):
        c.line_to(x, y)
    c.close_path()
    c.set_source(gold_gradient(44, 86))
    c.fill_preserve()
    c.set_source_rgb(*BRONZE_DARK)
    c.set_line_width(2)
    c.stroke()
    raised(c, lambda: letters(c, "VEK GAMES", 256, 280, 74, 3), 226, 284, 4, 5)
    rule(c, 56, 302, 400, 4)
    rule(c, 106, 374, 300, 3)
    rule(c, 106, 474, 300, 3)
    raised(c, lambda: letters(c, "PRESENTS", 256, 445, 52, 8), 407, 447, 3, 4)
    for side in (-1, 1):
        star(256 + side * 182, 425, 14, 4, 0.35)(c)
        c.set_source_rgb(*GOLD)
        c.fill()
    image = finished(canvas, 7, 1.4, MAKER_SOFTNESS)
    pixels = np.asarray(image).copy()
    # The two parts are cut apart at 0.65: the rows about the cut stay clear.
    cut = round(MAKER_CUT * 512)
    pixels[cut - 2:cut + 3, :, 3] = 0
    return Image.fromarray(pixels)


def ring_of_letters(c, text, radius, size, step):
    """A name along the upper half of a circle round the middle."""
    c.select_font_face("Cardo", cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_BOLD)
    c.set_font_size(size)
    for i, letter in enumerate(text):
        angle = (i - (len(text) - 1) / 2) * step
        c.save()
        c.translate(256 + radius * math.sin(angle), 256 - radius * math.cos(angle))
        c.rotate(angle)
        c.move_to(-c.text_extents(letter).x_advance / 2, 0)
        c.text_path(letter)
        c.set_source_rgb(*rgb("#3A240A"))
        c.set_line_width(5)
        c.stroke_preserve()
        c.set_source_rgb(*GOLD_LIGHT)
        c.fill()
        c.restore()


def medal(c):
    """The rings of the medal and its lapis ground."""
    for radius, colour in ((246, INK), (240, GOLD_DARK), (234, GOLD), (226, GOLD_LIGHT), (221, GOLD_DARK), (216, LAPIS_DARK)):
        c.new_path()
        c.arc(256, 256, radius, 0, 2 * math.pi)
        c.set_source_rgb(*colour)
        c.fill()
    gradient = cairo.RadialGradient(256, 170, 20, 256, 256, 216)
    for place, colour in ((0, LAPIS_LIGHT), (0.6, LAPIS), (1, LAPIS_DARK)):
        gradient.add_color_stop_rgb(place, *colour)
    c.new_path()
    c.arc(256, 256, 213, 0, 2 * math.pi)
    c.set_source(gradient)
    c.fill()
    c.new_path()
    c.arc(256, 256, 156, 0, 2 * math.pi)
    c.set_line_width(6)
    c.set_source_rgb(*GOLD)
    c.stroke()


def polygon(c, corners, colour):
    c.new_path()
    for x, y in corners:
        c.line_to(x, y)
    c.close_path()
    c.set_source_rgb(*colour)
    c.fill()


def porvinal_logo():
    """A medal: an obelisk that carries the sun, between two pyramids, under the name."""
    canvas = paint.Canvas(512, 512)
    c = canvas.context
    medal(c)
    ring_of_letters(c, "PORVINAL", 166, 60, 0.345)
    for i in range(7):
        angle = math.pi + (i - 3) * 0.27
        star(256 + 186 * math.sin(angle), 256 - 186 * math.cos(angle), 16 if i % 2 == 0 else 11, 5, 0.42,
             math.pi / 2 - angle)(c)
        c.set_source_rgb(*GOLD)
        c.fill()
    c.save()
    c.new_path()
    c.arc(256, 256, 152, 0, 2 * math.pi)
    c.clip()
    for side in (-1, 1):
        x = 256 + side * 88
        polygon(c, ((256 + side * 150, 372), (x, 250), (256 + side * 26, 372)), SAND if side < 0 else rgb("#8A6440"))
        polygon(c, ((x, 250), (256 + side * 26, 372), (256 + side * 70, 372)), SAND_DARK)
    polygon(c, ((236, 400), (243, 176), (256, 146), (256, 400)), SAND_LIGHT)
    polygon(c, ((276, 400), (269, 176), (256, 146), (256, 400)), rgb("#8A6844"))
    for k in range(4):
        polygon(c, ((251, 204 + 40 * k), (261, 204 + 40 * k), (261, 228 + 40 * k), (251, 228 + 40 * k)), rgb("#5C4028"))
    polygon(c, ((90, 368), (422, 368), (422, 430), (90, 430)), rgb("#3A2A30"))
    rule(c, 90, 367, 332, 5)
    c.restore()
    sun(c, 256, 136, 18)
    return finished(canvas, 3, 1.2, MEDAL_SOFTNESS, MEDAL_REDUCTION)


if __name__ == "__main__":
    paint.save(game_logo(), sys.argv[1], "textures/quarvello-logo.png")
    paint.save(porvinal_logo(), sys.argv[1], "textures/porvinal-logo.png")
    paint.save(maker_logo(), sys.argv[1], "textures/veklogo.png", flipped=True)
