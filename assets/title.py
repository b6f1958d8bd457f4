"""What stands about the name in the game's title: a dusk with stars and pyramids, and the keys of the game under it.

The picture must look right over black and over the menu's own dusk, so its sky has the colours that the menu's dusk has at the
same place of the screen: where that is drawn, little changes. It is gone at every edge, so that no rectangle shows.
"""
import math

import cairo
import numpy as np

from colour import rgb
from paint import BRONZE_DARK, GOLD, LAPIS_DARK

WIDTH, HEIGHT = 1024, 512
STARS = 110
STARS_END = (270, 350)  # texels from the top between which the stars die away: none before the pyramids

# The dusk: place from the top (0) to the bottom (1) of the picture, colour. The upper three were measured in the menu at the
# same heights; the lower ones warm towards a horizon that only this picture has.
SKY = ((0, "#1B1B4C"), (.25, "#25215A"), (.5, "#322870"), (.66, "#4A3484"), (.76, "#744486"), (.85, "#AA5874"), (1, "#C86C60"))
SKY_ALPHA = .88
# The sky fades to nothing along an ellipse with flattened sides; v counts from MIDDLE, the lower half less.
FADE_FROM, FADE_POWER, MIDDLE, LOWER = .34, 2.4, 300, .55
# Pyramids: peak x and y, slope (half the width for each texel of height), how far they stand in the haze.
PYRAMIDS = ((400, 408, 1.4, .34), (648, 416, 1.4, .40), (214, 380, 1.35, .0), (818, 388, 1.35, .06))
FACE_LIT, FACE_DARK, HAZE, SUNSET = rgb("#623450"), rgb("#181030"), rgb("#96546C"), rgb("#F69E5C")
# The warmest height; picture and pyramids sink into mist from MIST_FROM on.
GLOW_Y, MIST_FROM = 440, 412

# A group of keys: word, its width in texels, and the caps: width and sign, a number for an arrow's quarter turns from the right.
CAP = 46
GROUPS = (("MOVE", 104, ((CAP, 2), (CAP, 0))), ("TURN", 96, ((CAP, 3),)), ("FASTER", 138, ((CAP, 1),)),
          ("DROP", 124, ((124, "SPACE"),)), ("PAUSE", 116, ((CAP, "P"),)))
CAPS_TOP, CAP_GAP, GROUP_GAP, WORDS_BASE, WORD_HEIGHT = 284, 10, 32, 366, 23
FACE = "DejaVu Sans Condensed"  # serifs are lost at nine pixels
SIGN = rgb("#1E1430")


def smooth(low, high, value):
    """0 below low, 1 above high, with no kink on the way."""
    t = np.clip((value - low) / (high - low), 0, 1)
    return t * t * t * (t * (6 * t - 15) + 10)


def places():
    """The middles of the texels: y from the top, x."""
    return np.mgrid[0:HEIGHT, 0:WIDTH].astype(float) + .5


def stars():
    """Premultiplied: stars that thin out towards the edges and are wide enough not to flicker where the picture is reduced."""
    y, x = np.mgrid[0:HEIGHT, 0:WIDTH]
    random = np.random.RandomState(11)
    light = np.zeros((HEIGHT, WIDTH))
    for _ in range(STARS):
        across, down, bright = random.rand(3)
        reach = min(across, 1 - across, 0.6 * (1 - down), 0.5 * down + 0.1) / 0.12
        place_x, place_y = 12 + across * (WIDTH - 24), 12 + down * (HEIGHT - 24)
        large = bright > 0.9
        level = min(reach, 1) * (1.0 if large else 0.30 + 0.5 * bright)
        r2 = (x - place_x) ** 2 + (y - place_y) ** 2
        light = np.maximum(light, level * np.exp(-r2 / (2 * (1.6 if large else 1.15) ** 2)))
        if large:
            for along, over in ((x - place_x, y - place_y), (y - place_y, x - place_x)):
                light = np.maximum(light, 0.7 * level * np.exp(-np.abs(along) / 3.2 - over ** 2 / 2.4))
    border = np.minimum(np.minimum(x, WIDTH - 1 - x), np.minimum(y, HEIGHT - 1 - y))
    light = light * (border > 4) * (1 - smooth(*STARS_END, y))
    return light[..., None] * np.append(rgb("#E6EAFF"), 1.0)


def fade():
    """The dusk's alpha: full about the name, nothing at the edges."""
    y, x = places()
    u = (x - WIDTH / 2) / (WIDTH / 2 - 4)
    v = np.where(y < MIDDLE, (MIDDLE - y) / (MIDDLE - 4), (y - MIDDLE) / (HEIGHT - MIDDLE) * LOWER)
    radius = (np.abs(u) ** FADE_POWER + np.abs(v) ** FADE_POWER) ** (1 / FADE_POWER)
    return SKY_ALPHA * (1 - smooth(FADE_FROM, 1, radius)) * (1 - smooth(MIST_FROM, HEIGHT - 3, y))


def dusk():
    """Premultiplied: the sky behind the name with its stars, the pyramids on its horizon."""
    y, x = places()
    heights, colours = zip(*((place, rgb(text)) for place, text in SKY))
    colour = np.stack([np.interp(y / HEIGHT, heights, channel) for channel in zip(*colours)], -1)
    # A warm heart over the horizon, where the sun has gone down.
    heart = np.exp(-((x - WIDTH / 2) / 330) ** 2 - ((y - GLOW_Y) / 52) ** 2)[..., None]
    colour = colour + heart * (SUNSET - colour) * .7
    for peak_x, peak_y, slope, far in PYRAMIDS:
        down = y - peak_y
        inside = np.clip(slope * down - np.abs(x - peak_x) + .5, 0, 1) * (down > 0)
        # The edge between the two faces leans towards the middle.
        lit_side = np.clip((x - peak_x) * (1 if peak_x < WIDTH / 2 else -1) - .28 * down + .5, 0, 1)
        face = FACE_DARK + (FACE_LIT - FACE_DARK) * lit_side[..., None]
        mist = np.clip(far + smooth(peak_y + 20, GLOW_Y + 50, y) * .55, 0, 1)[..., None]
        colour = colour + inside[..., None] * (face + (HAZE - face) * mist - colour)
    alpha = fade()
    sky, points = np.dstack([colour, np.ones_like(alpha)]) * alpha[..., None], stars()
    return points + sky * (1 - points[..., 3:])


def rounded(c, x, y, w, h, r):
    c.new_path()
    for cx, cy, a in ((x + w - r, y + r, -.5), (x + w - r, y + h - r, 0), (x + r, y + h - r, .5), (x + r, y + r, 1)):
        c.arc(cx, cy, r, a * math.pi, (a + .5) * math.pi)
    c.close_path()


def gradient(top, bottom, *stops):
    result = cairo.LinearGradient(0, top, 0, bottom)
    for place, text in stops:
        result.add_color_stop_rgb(place, *rgb(text))
    return result


def key_cap(c, x, y, w, h):
    for grow, drop, colour in ((4, 5, LAPIS_DARK), (2, 4, BRONZE_DARK), (1, 0, GOLD)):
        rounded(c, x - grow, y - grow, w + 2 * grow, h + 2 * grow + drop, 8 + grow)
        c.set_source_rgb(*colour)
        c.fill()
    rounded(c, x, y, w, h, 8)
    c.set_source(gradient(y, y + h, (0, "#FFF6DC"), (.55, "#EAD9AC"), (1, "#C9AE74")))
    c.fill()


def arrow(c, x, y, size, turns):
    """The outline of an arrow that points to the right, turned by quarters."""
    c.save()
    c.translate(x, y)
    c.rotate(turns * math.pi / 2)
    c.scale(size, size)
    c.new_path()
    for point in ((-.40, -.12), (.0, -.12), (.0, -.37), (.44, 0), (.0, .37), (.0, .12), (-.40, .12)):
        c.line_to(*point)
    c.close_path()
    c.restore()


def capitals(c, text, x, base, height, spacing=1.5):
    """The outline of capitals of that height, centred on x."""
    c.select_font_face(FACE, cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_BOLD)
    c.set_font_size(100)
    c.set_font_size(100 * height / -c.text_extents("H").y_bearing)
    advances = [c.text_extents(letter).x_advance + spacing for letter in text]
    pen = x - (sum(advances) - spacing) / 2
    c.new_path()
    for letter, advance in zip(text, advances):
        c.move_to(pen, base)
        c.text_path(letter)
        pen += advance


def word(c, text, x):
    """What a group of keys does, in gold with a dark rim."""
    capitals(c, text, x, WORDS_BASE, WORD_HEIGHT)
    c.set_line_join(cairo.LINE_JOIN_ROUND)
    for colour, width in ((LAPIS_DARK, 8), (BRONZE_DARK, 4.5)):
        c.set_source_rgb(*colour)
        c.set_line_width(width)
        c.stroke_preserve()
    c.set_source(gradient(WORDS_BASE - WORD_HEIGHT, WORDS_BASE, (0, "#FFF3C4"), (.5, "#F3CF66"), (1, "#E0B04A")))
    c.fill()


def keys(c):
    """The line of keys, the default ones, with their words."""
    x = WIDTH / 2 - (sum(group[1] for group in GROUPS) + GROUP_GAP * (len(GROUPS) - 1)) / 2
    for text, wide, caps in GROUPS:
        left = x + (wide - sum(w for w, _ in caps) - CAP_GAP * (len(caps) - 1)) / 2
        for w, sign in caps:
            key_cap(c, left, CAPS_TOP, w, CAP - 2)
            middle = CAPS_TOP + CAP / 2 - 1
            if isinstance(sign, int):
                arrow(c, left + w / 2, middle, 40, sign)
            else:
                size = 27 if len(sign) == 1 else 21
                capitals(c, sign, left + w / 2, middle + size / 2, size)
            c.set_source_rgb(*SIGN)
            c.fill()
            left += w + CAP_GAP
        word(c, text, x + wide / 2)
        x += wide + GROUP_GAP


def before_dusk(image):
    """The picture with the dusk behind it, as pixels to store."""
    near = np.asarray(image).astype(float) / 255
    near[..., :3] *= near[..., 3:]
    pixels = near + dusk() * (1 - near[..., 3:])
    alpha = pixels[..., 3]
    # Half a step of noise in the alpha, or the fade shows as rings in eight bits.
    noise = (np.random.RandomState(3).rand(HEIGHT, WIDTH) - .5) / 255 * (alpha > 1 / 255)
    colours = np.where(alpha[..., None] > 1 / 512, pixels[..., :3] / np.maximum(alpha, 1e-6)[..., None], rgb(SKY[0][1]))
    y, x = np.mgrid[0:HEIGHT, 0:WIDTH]
    border = np.minimum(np.minimum(x, WIDTH - 1 - x), np.minimum(y, HEIGHT - 1 - y))
    return np.dstack([colours, np.where(border < 2, 0, alpha + noise)])
