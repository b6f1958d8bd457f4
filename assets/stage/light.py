"""What the fires leave dark on the terrace: a veil over its paving and its wall, and shadows under what stands on the map."""
import numpy as np
from PIL import Image

from colour import rgb
from .mesh import Mesh
from .terrace import FAR, LEFT, NEAR, RIGHT, WALL_TOP

WIDTH, FLOOR_ROWS, WALL_ROWS = 512, 228, 28
HEIGHT = FLOOR_ROWS + WALL_ROWS
# The veil hangs so much before what it covers.
GAP = .03
DARK = rgb("#120C22")
# Height of a fire, its strength, and the light that is everywhere.
FIRE, STRENGTH, EVERYWHERE = 4.4, 16.0, .32
# Half length and half width of the shadow of what has a size of its own.
SHADOWS = {"jackal": (.75, .26), "jackal_night": (.98, .34), "jackal_pup": (.45, .16), "brazier": (.8, .7)}


def lit(x, y, z, up, fires):
    total = np.full(np.broadcast(x, y, z).shape, EVERYWHERE)
    for fx, fy in fires:
        dx, dy, dz = fx - x, fy - y, FIRE - z
        square = dx * dx + dy * dy + dz * dz
        slope = dz if up else -dy
        total = total + STRENGTH * np.clip(.35 * np.sqrt(square) + slope, 0, None) / (square + 1) ** 1.5 * .5
    return total


def make(things):
    fires = [(x, y) for name, x, y in things if name == "brazier"]
    x = (LEFT + (np.arange(WIDTH) + .5) * (RIGHT - LEFT) / WIDTH)[None, :]
    y = (FAR - (np.arange(FLOOR_ROWS) + .5) * (FAR - NEAR) / FLOOR_ROWS)[:, None]
    floor = lit(x, y, 0.0, True, fires)
    for name, at_x, at_y in things:
        if name in SHADOWS:
            length, width = SHADOWS[name]
            floor = floor * (1 - .72 * np.exp(-((x - at_x) / length) ** 2 - ((y - at_y) / width) ** 2))
    z = (WALL_TOP * (1 - (np.arange(WALL_ROWS) + .5) / WALL_ROWS))[:, None]
    wall = lit(x, FAR, z, False, fires)
    bright = np.concatenate([floor, wall])
    bright = 1 - np.exp(-1.1 * bright)
    picture = np.empty((HEIGHT, WIDTH, 4))
    picture[..., :3], picture[..., 3] = DARK, np.clip(1 - bright, 0, .93)
    # A grain of half a step, or the fall of the light shows rings.
    picture[..., 3] += (np.random.default_rng(3).random((HEIGHT, WIDTH)) - .5) / 255
    mesh = Mesh(WIDTH, HEIGHT)
    mesh.flat((LEFT, NEAR, GAP), (RIGHT - LEFT, 0, 0), (0, FAR - NEAR - GAP, 0), (1, 1, WIDTH - 1, FLOOR_ROWS - 1))
    mesh.flat((LEFT, FAR - GAP, 0), (RIGHT - LEFT, 0, 0), (0, 0, WALL_TOP), (1, FLOOR_ROWS + 1, WIDTH - 1, HEIGHT - 1))
    return mesh, Image.fromarray((np.clip(picture, 0, 1) * 255 + .5).astype(np.uint8))
