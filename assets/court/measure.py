"""Brightness of the empty court where it matters, from pictures of preview.py: mean L* behind the well and elsewhere."""
import numpy as np

import colour
from . import preview

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
