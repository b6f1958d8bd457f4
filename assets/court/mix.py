"""Makes the texture of the court from what was baked: cleans the light, mixes its groups, brings it into the range of a
screen, and takes out what the game's own light will add.
"""
import dataclasses
import os

import numpy as np
from PIL import Image
from scipy import ndimage

import paint
from colour import from_linear
from . import light, model, packing
from .grid import MIDDLE

# How bright each group of lights is.
WEIGHTS = {"torch": .78, "brazier": 1.0, "inner": 1.0, "sky": 1.0}
# Parts that are made brighter or darker than they would be, by patch name: the floor is stone as dark as night without help,
# and what lies behind the well must stay calm.
GAINS = {"floor": 2.0, "floor.far": 2.0, "gate.inner": .74, "gate.tower": .86, "gate.portal": .95, "gate.door": 1.45,
         "gate.wing": 1.12, "well.base": 2.3, "well.step": 2.1, "well.post": 3.2,
         "palms.frond": 2.4, "palms.trunk": 1.6, "king": 1.05, "sphinx": 1.3,
         "sphinx.pedestal": 1.15, "brazier.pillar": 1.25, "brazier.bowl": 1.8}
# A game begins close before the gate, under a veil that takes two fifths of the picture's brightness. What shows then and does
# not lie behind the well later is therefore lit more: by LIFT above the torches and beside them, less towards the outer
# ends, and by FOOT near the ground. From where to where each comes in, in height or in distance from the middle.
LIFTED = ("gate", "mast", "king.pedestal")
LIFT, ABOVE, BESIDE, OUTER_END, LEFT_THERE = 2.4, (26.5, 30), (18.2, 20.5), (24, 42), .25
FOOT, NEAR_GROUND = .7, (7, 3.5)
# Up to SHOULDER light is shown as it is; above, it bends towards 1.
SHOULDER = .42
# The texture is divided by the light's mean factor to this power, but by no less than LEAST: where the light falls from the side
# at times it would turn pale. Upright parts of the court itself, in front of LOW_Y, see the light from both sides.
POWER, LEAST, LEAST_IN_COURT, LOW_Y = .8, .66, .72, 45
# Half the window of the filter, and the variance that counts as none: noise is smoothed, bumps are kept.
WINDOW, CALM = 4, 4e-3


def tone(value):
    bent = SHOULDER + (1 - SHOULDER) * (1 - np.exp(-(value - SHOULDER) / (1 - SHOULDER)))
    return from_linear(np.where(value < SHOULDER, value, bent))


def guided(noisy, guide):
    """Smooths noisy (h x w x c) so that in each window it is a linear function of guide (h x w x 3).

    Diffuse light is such a function of the surface's direction, so bumps stay and the sampling's noise goes.
    """
    size = (2 * WINDOW + 1, 2 * WINDOW + 1, 1)

    def mean(a):
        return ndimage.uniform_filter(a, size, mode="nearest")
    mean_guide, mean_noisy = mean(guide), mean(noisy)
    h, w = guide.shape[:2]
    spread = mean((guide[..., :, None] * guide[..., None, :]).reshape(h, w, 9)).reshape(h, w, 3, 3)
    spread -= mean_guide[..., :, None] * mean_guide[..., None, :]
    spread += CALM * np.eye(3)
    channels = noisy.shape[2]
    cross = mean((guide[..., :, None] * noisy[..., None, :]).reshape(h, w, 3 * channels)).reshape(h, w, 3, channels)
    cross -= mean_guide[..., :, None] * mean_noisy[..., None, :]
    slope = np.linalg.solve(spread, cross)
    offset = mean_noisy - np.einsum("hwg,hwgc->hwc", mean_guide, slope)
    slope = mean(slope.reshape(h, w, 3 * channels)).reshape(h, w, 3, channels)
    return np.maximum(np.einsum("hwg,hwgc->hwc", guide, slope) + mean(offset), 0)


def without_outliers(values):
    """A texel far from the middle of its neighbours takes their middle."""
    middle = ndimage.median_filter(values, (3, 3, 1), mode="nearest")
    bright, usual = values.max(2), middle.max(2)
    bad = (bright > 1.35 * usual + .01) | (bright < .7 * usual - .01)
    return np.where(bad[..., None], middle, values)


def smooth_factors(patch):
    """The factor of the mean light at each point of a patch, as if its surface were smooth where it is meant to be.

    Places that wide pictures alone show do not count.
    """
    total = []
    for grid, turned in model.instances(dataclasses.replace(patch, beyond=None)):
        faces = patch.triangles()
        if turned:
            faces = faces[:, ::-1]
        flat = grid.reshape(-1, 3)
        normal = np.cross(flat[faces[:, 1]] - flat[faces[:, 0]], flat[faces[:, 2]] - flat[faces[:, 0]])
        at_points = np.zeros_like(flat)
        for k in range(3):
            np.add.at(at_points, faces[:, k], normal)
        at_points /= np.maximum(np.linalg.norm(at_points, axis=1, keepdims=True), 1e-12)
        ray = np.array(light.MEAN) - flat
        ray /= np.linalg.norm(ray, axis=1, keepdims=True)
        total.append(np.minimum(light.AMBIENT + light.DIFFUSE * np.clip((ray * at_points).sum(1), 0, 1), 1))
    return np.mean(total, 0).reshape(patch.points.shape[:2])


def over_rectangle(patch, values, size):
    """Spreads a value of each grid point over the texels of the patch's rectangle, linearly."""
    width, height = size
    u, v = np.linspace(0, 1, width), np.linspace(0, 1, height)
    across = np.array([np.interp(u, patch.spread[0, :, 0], row) for row in values])
    return np.array([np.interp(v, patch.spread[:, 0, 1], column) for column in across.T]).T


def divisor(patch, size):
    upright = not patch.name.startswith(("floor", "dunes", "sky"))
    in_court = upright and patch.points[..., 1].mean() < LOW_Y
    factor = np.maximum(over_rectangle(patch, smooth_factors(patch), size), LEAST_IN_COURT if in_court else LEAST)
    return factor[..., None] ** POWER


def step(value, edges):
    """0 before the first of the two edges, 1 behind the second, smooth between."""
    t = np.clip((value - edges[0]) / (edges[1] - edges[0]), 0, 1)
    return t * t * (3 - 2 * t)


def lift(patch, size):
    """By how much each texel's light is multiplied for the sake of a game's first second."""
    if not patch.name.startswith(LIFTED):
        return 1.0
    aside = over_rectangle(patch, np.abs(patch.points[..., 0] - MIDDLE), size)
    height = over_rectangle(patch, patch.points[..., 2], size)
    free = np.maximum(step(height, ABOVE), step(aside, BESIDE)) * (1 - (1 - LEFT_THERE) * step(aside, OUTER_END))
    return (1 + LIFT * free + FOOT * step(height, NEAR_GROUND))[..., None]


def painted(work, name, size):
    picture = Image.open(os.path.join(work, name)).convert("RGB")
    return np.array(picture.resize(size, Image.LANCZOS) if picture.size != size else picture)[::-1] / 255


def texture(court, work):
    """The finished picture, top row first, values from 0 to 1."""
    def load(name):
        return np.load(os.path.join(work, name + ".npy"), mmap_mode="r")
    colour, normal = load("colour"), load("normal")
    lights = {name: load("light-" + name) for name in WEIGHTS}
    result = np.zeros((packing.SIDE, packing.SIDE, 3))
    for patch, size, (x, y) in zip(court.patches, court.sizes, court.places):
        window = (slice(y, y + size[1]), slice(x, x + size[0]))
        if patch.material in model.PAINTED:
            values = painted(work, model.PAINTED[patch.material], size)
        else:
            guide = normal[window].astype(float) * 2 - 1
            total = sum(weight * guided(without_outliers(lights[name][window].astype(float)), guide) for name,
                        weight in WEIGHTS.items())
            shown = tone(total * colour[window].astype(float) * GAINS.get(patch.name, 1.0) * lift(patch, size))
            values = np.clip(shown / divisor(patch, size), 0, 1)
        # The margin repeats the edge, for filtering across it.
        m = packing.MARGIN
        result[y - m:y + size[1] + m, x - m:x + size[0] + m] = np.pad(values, ((m, m), (m, m), (0, 0)), mode="edge")
    return result[::-1]


def write(court, work, path):
    pixels = (np.clip(texture(court, work), 0, 1) * 255 + .5).astype(np.uint8)
    paint.save_png(Image.fromarray(pixels), path)
    return (pixels == 255).any(2).mean()
