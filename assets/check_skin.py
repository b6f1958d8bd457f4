#!/usr/bin/python3
"""Measures how well text reads on the skin: every style in every state is drawn as OpenGL would draw it, on a dark and on
a bright ground, and the contrast of the caption's colour with what lies under the caption is taken. Fails under 4.5.

The high-score list is a case of its own: it prints white and red by adding them to the window's field. The argument
is the data directory, whose picture gui/ravix.png is used; "sheet FILE" behind it stores a picture of all states.
"""
import os
import sys

import numpy as np
from PIL import Image

import paint
from colour import contrast, luminance
from skin_shots import CAPTION_HEIGHT, STATES, STYLES, TEXTURED

LEAST = 4.5
# Scene behind translucent windows at its darkest and at its brightest.
GROUNDS = {"night": (0.04, 0.04, 0.10), "flame": (0.95, 0.70, 0.45)}
# Size in pixels in which each style is drawn, as the game uses it; width, height.
SIZES = {8: (267, 149), 9: (267, 149), 13: (128, 182)}
USUAL_SIZE = (96, 24)
# Styles that carry no caption of their own.
SIGNS = (4, 5, 6, 7, 10, 15)
# Where captions of these styles are printed, outside the component, on a window's field.
ON_FIELD = (1, 11, 12)
SCALE = 2


class Screen:
    """A picture in which shots are drawn, SCALE times 640 x 480."""

    def __init__(self, skin, width, height, ground):
        self.skin = skin
        self.pixels = np.ones((height * SCALE, width * SCALE, 3)) * np.asarray(ground)

    def draw(self, shots, x, y, width, height):
        anchors = [(x + a * width, y + b * height) for a, b in ((0, 0), (1, 0), (1, 1), (0, 1), (.5, 0), (.5, 1), (0, .5),
                                                                (1, .5), (.5, .5))]
        for mode, vertices in shots:
            points = [(np.add(anchors[v.anchor], (v.x, v.y)) * SCALE, np.array(v.colour), v.u, v.v) for v in vertices]
            if mode == 1:
                self._loop(points)
            else:
                self._fan(points, mode == TEXTURED)

    def _loop(self, points):
        for (a, colour, *_), (b, *_) in zip(points, points[1:] + points[:1]):
            steps = int(max(abs(b - a))) + 1
            cells = np.unique(np.floor(a + (b - a) * np.linspace(0, 1, steps)[:, None]).astype(int), axis=0)
            for px, py in cells:
                if 0 <= py < self.pixels.shape[0] and 0 <= px < self.pixels.shape[1]:
                    self.pixels[py, px] += (colour[:3] - self.pixels[py, px]) * colour[3]

    def _fan(self, points, textured):
        places = np.array([p[0] for p in points])
        (x0, y0), (x1, y1) = np.floor(places.min(0)).astype(int).clip(0), np.ceil(places.max(0)).astype(int)
        region = self.pixels[y0:y1, x0:x1]
        if not region.size:
            return
        gy, gx = np.mgrid[y0:y0 + region.shape[0], x0:x0 + region.shape[1]] + 0.5
        done = np.zeros(gx.shape, bool)
        for i in range(1, len(points) - 1):
            corners = (points[0], points[i], points[i + 1])
            (ax, ay), (bx, by), (cx, cy) = (c[0] for c in corners)
            area = (by - cy) * (ax - cx) + (cx - bx) * (ay - cy)
            if abs(area) < 1e-9:
                continue
            wa = ((by - cy) * (gx - cx) + (cx - bx) * (gy - cy)) / area
            wb = ((cy - ay) * (gx - cx) + (ax - cx) * (gy - cy)) / area
            inside = (wa >= -1e-6) & (wb >= -1e-6) & (wa + wb <= 1 + 1e-6) & ~done
            done |= inside
            weights = np.stack([wa[inside], wb[inside], 1 - wa[inside] - wb[inside]], -1)
            colour = np.clip(weights @ np.array([c[1] for c in corners]), 0, 1)
            if textured:
                colour = colour * self._texel(weights @ [c[2] for c in corners], weights @ [c[3] for c in corners])
            region[inside] += (colour[:, :3] - region[inside]) * colour[:, 3:]

    def _texel(self, u, v):
        size = self.skin.shape[0]
        x, y = np.clip(u * size - 0.5, 0, size - 1.001), np.clip((1 - v) * size - 0.5, 0, size - 1.001)
        i, j = x.astype(int), y.astype(int)
        fx, fy = (x - i)[:, None], (y - j)[:, None]
        return ((self.skin[j, i] * (1 - fx) + self.skin[j, i + 1] * fx) * (1 - fy)
                + (self.skin[j + 1, i] * (1 - fx) + self.skin[j + 1, i + 1] * fx) * fy)


def under_caption(skin, number, state, ground):
    """The pixels on which a style's caption is printed."""
    style = STYLES[number - 1]
    width, height = SIZES.get(number, USUAL_SIZE)
    screen = Screen(skin, width + 20, height + 20, ground)
    screen.draw(style.states[state], 10, 10, width, height)
    if number in (8, 13):
        left, top = style.offset[0] * 640, style.offset[1] * 480
        area = (left, top, width - left, height - 14)
    elif number == 9:
        area = (style.text[0] * 640, style.text[1] * 480 - 5, width - 40, 3 + CAPTION_HEIGHT - 4)
    else:
        area = (style.text[0] * 640, style.text[1] * 480 - 5, width - style.text[0] * 640, style.text[1] * 480 + 8)
    x0, y0, x1, y1 = (int(round((10 + v) * SCALE)) for v in area)
    return screen.pixels[y0:y1, x0:x1].reshape(-1, 3)


def worst(text, pixels):
    """Contrast of a text colour with all but the most extreme twentieth of the pixels at either end."""
    low, high = np.percentile(luminance(pixels), (5, 95))
    ink = float(luminance(np.asarray(text)))
    return min(float(contrast(ink, low)), float(contrast(ink, high)))


def worst_added(text, pixels):
    """The same for text that is added to what lies under it."""
    pixels = pixels[np.argsort(luminance(pixels))[len(pixels) // 20:len(pixels) - len(pixels) // 20]]
    return float(contrast(luminance(np.clip(pixels + text, 0, 1)), luminance(pixels)).min())


def measure(skin):
    rows = []
    for number, style in enumerate(STYLES, 1):
        if number in SIGNS:
            continue
        for state in STATES:
            for name, ground in GROUNDS.items():
                if number in ON_FIELD:
                    # Labels and boxes stand in windows; those of a window that is disabled belong to a disabled scene.
                    pixels = np.concatenate([under_caption(skin, w, "normal", ground) for w in (8, 13)])
                else:
                    pixels = under_caption(skin, number, state, ground)
                rows.append((worst(style.colour, pixels), "style %s, %s, before %s" % (style.name, state, name)))
    for name, colour in (("white", (1, 1, 1)), ("red", (1, 0, 0))):
        rows.append((worst_added(np.array(colour), under_caption(skin, 8, "normal", GROUNDS["night"])),
                     "high-score list, %s" % name))
    # The item list lays a red veil over the row under the pointer.
    for state in ("normal", "hover", "clicked"):
        veiled = under_caption(skin, 14, state, GROUNDS["night"]) * 0.8 + np.array([0.2, 0, 0])
        rows.append((worst(STYLES[13].colour, veiled), "item under the pointer, %s" % state))
    return rows


def sheet(skin):
    """All styles in all states, one row a style."""
    screen = Screen(skin, 640, 480, (0.10, 0.09, 0.16))
    y = 8
    for number, style in enumerate(STYLES, 1):
        if number in (1, 8, 9, 13):
            continue
        for k, state in enumerate(STATES):
            screen.draw(style.states[state], 8 + 112 * k, y, *((22, 22) if number in SIGNS else USUAL_SIZE))
        y += 29
    for k, state in enumerate(STATES):
        for x, number in ((8, 8), (8, 9)):
            screen.draw(STYLES[number - 1].states[state], x + 154 * k, 344, 144, 110)
        screen.draw(STYLES[12].states[state], 470, 8 + 82 * k, 150, 74)
    return paint.to_image(screen.pixels)


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "../data")
    skin = np.asarray(Image.open(os.path.join(data, "gui/ravix.png")).convert("RGBA")) / 255
    if sys.argv[2:3] == ["sheet"]:
        sheet(skin).save(sys.argv[3])
    rows = measure(skin)
    for ratio, what in sorted(rows)[:12]:
        print("%5.1f  %s" % (ratio, what))
    print("worst contrast %.2f of %d, at least %.1f is asked for" % (min(rows)[0], len(rows), LEAST))
    return 0 if min(rows)[0] >= LEAST else 1


if __name__ == "__main__":
    sys.exit(main())
