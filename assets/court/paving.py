"""The floor of the court: right half, large dark slabs, lighter to the sides, with a paved way in the middle."""
import numpy as np
from PIL import Image, ImageFilter

from .carving import noise, store

# Offsets from the court's middle, and y.
WIDTH, FRONT, BACK = 50, -12, 72
DENSITY = 14
# From, to, length and depth of the slabs, how much their tones differ, shift of every other row.
FIELDS = ((0, 7, 7, 5.25, .10, 0), (7, 7.9, .9, 5.25, .06, 0), (7.9, 50, 7, 5.25, .13, 3.5))
MIDDLE, SIDE = np.array([.235, .2, .215]), np.array([.36, .285, .235])
INLAY = np.array([.42, .3, .16])


def paint(folder):
    width, height = WIDTH * DENSITY, (BACK - FRONT) * DENSITY
    y, x = BACK - (np.arange(height) + .5) / DENSITY, (np.arange(width) + .5) / DENSITY
    tone, joint = np.zeros((height, width)), np.zeros((height, width))
    random = np.random.default_rng(3)
    for start, end, length, depth, amount, shift in FIELDS:
        tones = random.normal(0, 1, (200, 200)) * amount
        row = np.floor((y + 100) / depth).astype(int)
        along = x[None, :] + ((row % 2) * shift)[:, None]
        chosen = (x >= start) & (x < end)
        to_row = np.minimum((y + 100) % depth, depth - (y + 100) % depth)[:, None]
        to_end = np.minimum(along % length, length - along % length)
        tone[:, chosen] = tones[row[:, None] % 200, np.floor(along / length).astype(int) % 200][:, chosen]
        joint[:, chosen] = np.clip(1.25 - np.minimum(to_row, to_end) / .09, 0, 1)[:, chosen]
    broad, fine = noise(height, width, 9, 5), noise(height, width, 45, 6, 3)
    edge = np.exp(-((x - 7.45) / .42) ** 4)[None, :, None]
    aside = np.clip((x - 9) / 24, 0, 1)[None, :, None]
    colour = (MIDDLE * (1 - aside) + SIDE * aside) * (1 + tone + .5 * (broad - .5) + .28 * (fine - .5))[..., None]
    colour = (colour * (1 - .12 * edge) + INLAY * .35 * edge) * (1 - .62 * joint[..., None])
    relief = .5 - .32 * joint + .12 * (fine - .5) + .02 * tone
    store(folder, "floor", colour, relief)
    path = f"{folder}/floor-height.png"
    Image.open(path).filter(ImageFilter.GaussianBlur(.8)).save(path)
