"""Brightness and contrast of the empty court where it matters, from pictures of preview.py."""
import numpy as np

import colour
from . import keys, light, preview

# Lights under which the keys must be read.
LAMPS = {"mean": light.MEAN, "near the gate": light.NEAR_GATE, "behind the player": light.BEHIND_PLAYER, "off": None}
# What lies behind the well must stay below this under the light, or the pieces do not stand out.
LIMIT = 30


def inside(corners, width, height):
    """Which pixels lie in the four-sided figure whose corners run clockwise on the screen, from the lower left."""
    y, x = np.mgrid[0:height, 0:width] + .5
    result = np.ones((height, width), bool)
    for (ax, ay), (bx, by) in zip(corners, np.roll(corners, -1, 0)):
        result &= (bx - ax) * (y - ay) - (by - ay) * (x - ax) <= 0
    return result


def behind_well(lightness, camera, low, high, left=.2, right=8.8):
    """Mean and 90th percentile of what shows behind rows low..high of the well."""
    height, width = lightness.shape
    corners = camera.screen([(left, 0, low), (right, 0, low), (right, 0, high), (left, 0, high)], width, height)
    values = lightness[inside(corners, width, height)]
    return values.mean(), np.percentile(values, 90)


def report(triangles, texture, width=640):
    """Lines of text, and whether everything behind the well is calm."""
    lines, calm = [], True
    for view in ("rest-empty", "floor-empty"):
        fade, row, _, _ = preview.VIEWS[view]
        camera = preview.Camera(fade, row)
        lightness = colour.lab(preview.render(triangles, texture, view, width) / 255)[..., 0]
        for low in (0, 5, 10, 15):
            mean, high = behind_well(lightness, camera, low - .5, low + 4.5)
            calm = calm and mean < LIMIT
            lines.append(f"{view}: behind rows {low} to {low + 4} L* {mean:.1f}, nine tenths below {high:.1f}")
        mean, high = behind_well(lightness, camera, 19.5, 23.5, 3.5, 6.5)
        lines.append(f"{view}: behind a new piece L* {mean:.1f}, nine tenths below {high:.1f}")
    return lines, calm


def first_second(triangles, texture, width=320):
    """Mean L*, and the level that a tenth exceeds, of the first pictures of a game as they are seen under its veil."""
    values = []
    for fade in np.linspace(0, light.FIRST_SECOND, 3):
        picture = preview.take(triangles, texture, preview.Camera(fade, 20), light.MEAN, width, width * 3 // 4)
        values.append(colour.lab(picture / 255 * (1 - light.VEIL * (1 - fade)))[..., 0])
    return [float(v.mean()) for v in values], [float(np.percentile(v, 90)) for v in values]


def on_slope(camera, x0, x1, y0, y1, width, height):
    """Which pixels show a rectangle of the plate of keys, given in its units from its upper left corner."""
    def place(x, y):
        return (keys.LEFT + x, *(a + (b - a) * y / keys.LENGTH for a, b in zip(keys.TOP, keys.FOOT)))
    return inside(camera.screen([place(x0, y1), place(x1, y1), place(x1, y0), place(x0, y0)], width, height), width, height)


def keys_contrast(triangles, texture, lamp, width=640):
    """The smallest contrast of a word, and of a sign on its cap, to what is round it, with a piece half way down: the
    brightest fifth of the pixels of its place against the darkest."""
    height, camera = width * 3 // 4, preview.Camera(1, 10)
    luminance = colour.luminance(preview.take(triangles, texture, camera, lamp, width, height) / 255)

    def contrast(x0, x1, y0, y1):
        values = np.sort(luminance[on_slope(camera, x0, x1, y0, y1, width, height)])
        fifth = max(1, len(values) // 5)
        return float(colour.contrast(values[:fifth].mean(), values[-fifth:].mean()))
    caps, words, _ = keys.layout()
    half = min(wide for _, wide, _ in keys.GROUPS) / 2
    return (min(contrast(x - half, x + half, keys.BASELINE - keys.LETTER, keys.BASELINE) for x, _ in words),
            min(contrast(x + .1, x + w - .1, keys.CAP_TOP + .1, keys.CAP_TOP + .8) for x, w, _ in caps))
