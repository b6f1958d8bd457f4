"""The terrace of the stage: paving, a low wall with signs, pillars; and the brazier."""
import os
import random

import numpy as np
from PIL import Image, ImageFilter
from scipy import ndimage

from colour import rgb
from court import signs
from court.carving import GOLD, LAPIS, TURQUOISE, CARNELIAN, Wall
from .mesh import Mesh

SIDE = 1024
# The skin's picture runs round in x: so many units are its width.
PERIOD, DENSITY = 16.0, 64
LEFT, RIGHT = -32.0, 31.75
# From the eye on: the paving's near part is as fine as it is wide, its far part is squeezed; then the wall.
NEAR, MIDDLE, FAR = 1.0, 7.5, 20.0
WALL_TOP, WALL_BACK = 2.7, 21.2
# Bands of the picture, from the top: their height in texels. A rim of them repeats the edge, for filtering across it.
RIM = 3
BANDS = {"near": 400, "far": 160, "wall": 172, "cap": 24, "pillar": 232}
PILLAR_WIDTH, PILLAR_TOP, PILLAR_TEXELS = 1.25, 6.6, 48
PILLARS = (-29.0, -23.0, -17.0, -11.0, 9.75, 15.75, 21.75, 27.75)
BEAM_TOP = 7.65
SLAB = 2.0


def clouds(height, width, cells, seed):
    """Noise of mean 0 and deviation 1 that runs round in x."""
    rng, total = np.random.default_rng(seed), np.zeros((height, width))
    for octave in range(4):
        n = cells * 2 ** octave
        patch = rng.random((max(2, round(n * height / width)), n))
        zoom = (height / patch.shape[0], width / n)
        total += ndimage.zoom(patch, zoom, order=3, mode="grid-wrap", grid_mode=True) / 1.6 ** octave
    return (total - total.mean()) / total.std()


def paving():
    """Slabs of sandstone, as fine along as across, from the far end on top to the near one."""
    rows = round((FAR - NEAR) * DENSITY)
    y = (FAR - (np.arange(rows) + .5) / DENSITY)[:, None]
    x = ((np.arange(SIDE) + .5) / DENSITY)[None, :]
    tones = np.random.default_rng(5).normal(0, 1, (64, round(PERIOD / SLAB)))
    row = np.floor(y / SLAB).astype(int)
    along = (x + .5 * SLAB * (row % 2)) % PERIOD
    tone = tones[row % 64, np.floor(along / SLAB).astype(int) % tones.shape[1]]
    edge = np.minimum(np.minimum(y % SLAB, SLAB - y % SLAB), np.minimum(along % SLAB, SLAB - along % SLAB))
    joint = np.clip(1.3 - edge / .035, 0, 1)
    bevel = np.clip(1 - edge / .11, 0, 1)
    value = 1 + .085 * tone + .07 * clouds(rows, SIDE, 12, 21) + .055 * clouds(rows, SIDE, 96, 22)
    value = value * (1 - .16 * bevel) * (1 - .55 * joint)
    picture = rgb("#A5835B") * value[..., None]
    picture[..., 2] *= 1 + .06 * tone
    return picture


def squeezed(picture, rows, blur=0.0):
    """What is squeezed by the distance must be soft, or it flickers."""
    picture = ndimage.gaussian_filter(picture, (0, blur, 0), mode="wrap") if blur else picture
    size = (SIDE, rows)
    return np.stack([np.array(Image.fromarray(picture[..., c].astype(np.float32)).resize(size, Image.BOX)) for c in range(3)], -1)


def drawn(wall, folder, name, size, **how):
    wall.save(folder, name, **how)
    return np.array(Image.open(os.path.join(folder, name + ".png")).resize(size, Image.LANCZOS), float) / 255


def wall_front(folder):
    wall = Wall(PERIOD, WALL_TOP, DENSITY)
    for low, high, paint in ((.06, .16, GOLD), (.2, .34, LAPIS), (2.28, 2.4, GOLD), (2.44, 2.64, CARNELIAN)):
        wall.rectangle(0, low, PERIOD, high, 84, paint, 150)
    choice = random.Random(12)
    for i in range(10):
        signs.sign(wall, choice.randrange(len(signs.SIGNS)), .1 + i * PERIOD / 10, .58, 1.42, 60,
                   choice.choice([LAPIS, TURQUOISE, GOLD, CARNELIAN]), 165)
    return drawn(wall, folder, "stage-wall", (SIDE, BANDS["wall"]), seed=31, courses=None)


def pillar_front(folder, seed):
    wall = Wall(PILLAR_WIDTH, PILLAR_TOP, PILLAR_TEXELS)
    for low, high, paint in ((.1, .3, GOLD), (.36, .7, LAPIS), (5.35, 5.5, GOLD), (5.56, 5.86, TURQUOISE), (5.92, 6.06, GOLD)):
        wall.rectangle(0, low, PILLAR_WIDTH, high, 84, paint, 160)
    signs.column(wall, .2, .95, 5.2, .84, seed)
    for i in range(4):
        x = .04 + i * .3
        wall.polygon([(x, 6.1), (x + .27, 6.1), (x + .135, 6.56)], 84, (LAPIS, CARNELIAN)[i % 2], 150)
    return drawn(wall, folder, "stage-pillar", (PILLAR_TEXELS, BANDS["pillar"]), seed=seed, courses=(1.65, 9))


def evening(picture, low, high):
    """The light on what stands upright: warm near the ground, where the fires are, violet and dark above."""
    t = np.linspace(high, low, picture.shape[0])[:, None, None]
    return picture * (t * np.array([.36, .31, .42]) + (1 - t) * np.array([.95, .78, .62]))


def bands(folder):
    """The picture from the top, and for each band the rows where it begins and ends."""
    wall = evening(wall_front(folder), .1, .55)
    cap = np.clip(rgb("#8A6A4C") * (1 + .1 * clouds(BANDS["cap"], SIDE, 40, 41))[..., None], 0, 1) * (.62, .56, .6)
    shafts = np.zeros((BANDS["pillar"], SIDE, 3))
    for i in range(4):
        front = evening(pillar_front(folder, 131 + i), .15, 1)
        # The same again, turned away from the fires.
        for k, shade in enumerate((1.0, .55)):
            x = (2 * i + k) * (PILLAR_TEXELS + 2 * RIM)
            shafts[:, x:x + PILLAR_TEXELS + 2 * RIM] = np.pad(front * shade, ((0, 0), (RIM, RIM), (0, 0)), mode="edge")
    ground = paving()
    far = round((FAR - MIDDLE) * DENSITY)
    parts = {"near": squeezed(ground[far:], BANDS["near"]), "far": squeezed(ground[:far], BANDS["far"], 1.4), "wall": wall, "cap": cap,
             "pillar": shafts}
    picture, places, y = np.zeros((SIDE, SIDE, 3)), {}, 0
    for name, part in parts.items():
        rows = np.pad(part, ((RIM, RIM), (0, 0), (0, 0)), mode="edge")
        picture[y:y + len(rows)] = rows
        places[name] = (y + RIM, y + len(rows) - RIM)
        y += len(rows)
    return picture, places


def make(folder):
    picture, places = bands(folder)
    mesh, run = Mesh(SIDE, SIDE), round((RIGHT - LEFT) * DENSITY)

    def across(y0, z0, y1, z1, band):
        top, bottom = places[band]
        mesh.flat((LEFT, y0, z0), (RIGHT - LEFT, 0, 0), (0, y1 - y0, z1 - z0), (0, top, run, bottom))
    across(NEAR, 0, MIDDLE, 0, "near")
    across(MIDDLE, 0, FAR, 0, "far")
    across(FAR, 0, FAR, WALL_TOP, "wall")
    across(FAR, WALL_TOP, WALL_BACK, WALL_TOP, "cap")
    top, bottom = places["pillar"]
    depth = PILLAR_WIDTH
    for i, x in enumerate(PILLARS):
        front = (2 * (i % 4)) * (PILLAR_TEXELS + 2 * RIM) + RIM
        side = front + PILLAR_TEXELS + 2 * RIM
        y = FAR - .4
        mesh.flat((x, y, 0), (depth, 0, 0), (0, 0, PILLAR_TOP), (front, top, front + PILLAR_TEXELS, bottom))
        box = (side, top, side + PILLAR_TEXELS, bottom)
        if x > 0:
            mesh.flat((x, y + depth, 0), (0, -depth, 0), (0, 0, PILLAR_TOP), box)
        else:
            mesh.flat((x + depth, y, 0), (0, depth, 0), (0, 0, PILLAR_TOP), box)
    # A beam over the pillars of each side, shown by a strip of the wall.
    for ends in (PILLARS[:4], PILLARS[4:]):
        low, high = places["wall"][1] - 60, places["wall"][1]
        x0, x1 = ends[0] - .5, ends[-1] + depth + .5
        box = (0, low, round((x1 - x0) * DENSITY), high)
        mesh.flat((x0, FAR - .7, PILLAR_TOP), (x1 - x0, 0, 0), (0, 0, BEAM_TOP - PILLAR_TOP), box)
        end = x0 if x0 > 0 else x1
        step = -1.9 if x0 > 0 else 1.9
        start = FAR + 1.2 if x0 > 0 else FAR - .7
        mesh.flat((end, start, PILLAR_TOP), (0, step, 0), (0, 0, BEAM_TOP - PILLAR_TOP), (0, low, 120, high))
    return mesh, Image.fromarray((np.clip(picture, 0, 1) * 255 + .5).astype(np.uint8))


def make_brazier():
    """A bronze bowl on a slender pillar of stone, 3 units high, lit from above and darker below."""
    width, height = 128, 256
    # Radius, z, and the place on the skin; the last ones go down into the bowl.
    profile = [(.62, 0, 0), (.62, .16, .05), (.4, .28, .1), (.3, .5, .16), (.25, 1.2, .38), (.25, 2.0, .58), (.34, 2.2, .64),
               (.3, 2.26, .66), (.5, 2.42, .72), (.68, 2.7, .8), (.78, 2.94, .86), (.8, 3.0, .88), (.74, 3.0, .9), (.4, 2.8, .95),
               (0, 2.74, 1)]
    mesh = Mesh(width, height)
    mesh.turned(profile, 14, (0, 0, width, height))
    v = 1 - (np.arange(height) + .5)[:, None] / height
    u = (np.arange(width) + .5)[None, :] / width
    grain = clouds(height, width, 16, 51)
    stone = rgb("#94744E") * (1 + .08 * grain)[..., None]
    bronze = rgb("#B07C30") * (1 + .06 * grain + .18 * np.cos(u * 2 * np.pi * 14))[..., None]
    ember = np.array([1.0, .62, .22]) * (1 + .2 * grain)[..., None]
    picture = np.where((v > .66)[..., None], bronze, stone)
    for low, high, tint in ((.1, .115, "#E3B23C"), (.16, .175, "#E3B23C"), (.175, .21, "#1F3A93"), (.53, .55, "#E3B23C"),
                            (.55, .6, "#28A79F"), (.6, .66, "#E3B23C"), (.85, .9, "#E3B23C")):
        picture = np.where(((v > low) & (v < high) & (u > 0))[..., None], rgb(tint), picture)
    picture = np.where((v > .92)[..., None], ember, picture)
    shade = np.interp(v, (0, .1, .4, .6, .68, .86, .92, 1), (.6, .62, .46, .52, .7, 1.0, 1, 1))
    # Soft light from the front left, so that it looks round.
    side = np.where(v < .9, .78 + .3 * np.cos((u - .6) * 2 * np.pi), 1)
    picture = picture * (shade * side)[..., None] * np.array([1, .93, .9])
    image = Image.fromarray((np.clip(picture, 0, 1) * 255 + .5).astype(np.uint8))
    return mesh, image.filter(ImageFilter.GaussianBlur(.5))
