"""What lies behind the court: dunes, pyramids, palms and the inside of the sky."""
import math
import random

import numpy as np

from . import sky
from .grid import GROUND, MIDDLE

SKY_RADIUS = 198


# Columns of the dunes stand so many degrees apart.
DUNE_STEP = 2.6


def dunes(scene, name, near, far, low, high, seed, density, columns, heights):
    """columns: first and last, counted from straight ahead; heights: of the rows, 0 at the foot and 1 behind the crest.
    Gate, colonnades and pyramids hide the rest from everywhere on the camera's way, however wide the picture."""
    phases = np.random.default_rng(seed).uniform(0, 6.28, 8)
    points = []
    for t in heights:
        radius, row = near + (far - near) * t, []
        for a in np.radians(DUNE_STEP * np.arange(columns[0], columns[1] + 1)):
            swell = .5 + .28 * math.sin(a * 7 + phases[0]) + .16 * math.sin(a * 15 + phases[1]) + .08 * math.sin(a * 31 + phases[2])
            z = (low + (high - low) * swell) * math.sin(min(1, t * 1.05) * 1.57) + GROUND
            row.append((MIDDLE + radius * math.sin(a), radius * math.cos(a), z))
        points.append(row)
    scene.add(name, points, density, "dune", mirror=False, smooth=True)


def pyramid(scene, left, front, right, apex, density):
    """The two faces that look at the court."""
    for a, b in ((left, front), (front, right)):
        a, b, c = (np.array(q, float) for q in (a, b, apex))
        points = [[(a * (1 - s) + b * s) * (1 - t) + c * t for s in np.linspace(0, 1, 9)] for t in (0, .25, .5, .75, .97)]
        scene.add("pyramids", points, density, "pyramid", mirror=False)


def palm(scene, x, y, height, seed, lean, fronds):
    choice = random.Random(seed)
    top = np.array([x + lean, y, GROUND + height])
    points = []
    for t in np.linspace(0, 1, 6):
        radius, centre = .62 - .3 * t, np.array([x + lean * t ** 1.8, y, GROUND + height * t])
        points.append([centre + (radius * math.cos(a), radius * math.sin(a), 0) for a in np.radians(np.linspace(170, 370, 5))])
    scene.add("palms.trunk", points, 3, "palm", mirror=False, smooth=True)
    for i in range(fronds):
        # Three tiers: upright in the middle, spread, and hanging dry ones below.
        tier = i % 3
        angle = 2 * math.pi * i / fronds * 1.0 + choice.uniform(-.22, .22)
        length = height * (.34, .40, .30)[tier] * choice.uniform(.9, 1.12)
        rise = (1.15, .55, -.05)[tier] + choice.uniform(-.12, .12)
        direction = np.array([math.cos(angle), math.sin(angle) * .8])
        side = np.array([-direction[1], direction[0], 0.])
        left, spine, right = [], [], []
        for k, s in enumerate(np.linspace(0, 1, 8)):
            middle = top + (direction[0] * length * s, direction[1] * length * s,
                            length * (rise * s - (.95 if tier else 1.2) * s * s))
            # Leaflets: the edge goes in and out, and hangs lower than the rib.
            width = length * .135 * math.sin(min(1, s * .97 + .08) * math.pi) ** .6 * (1.15 if k % 2 else .5)
            droop = np.array([0, 0, width * .75])
            forward = np.array([*direction, 0]) * width * .5
            left.append(middle + side * width - droop + forward)
            spine.append(middle)
            right.append(middle - side * width - droop + forward)
        scene.add("palms.frond", [left, spine, right], 2.5, "palm", mirror=False, smooth=True)


def dome(scene):
    v = np.concatenate([np.linspace(0, sky.BEND, 8), np.linspace(sky.BEND, 1, 5)[1:]])
    u = sky.width_of(np.concatenate([np.linspace(-sky.HALF_ANGLE, -sky.MIDDLE_ANGLE, 3),
                                     np.linspace(-sky.MIDDLE_ANGLE, sky.MIDDLE_ANGLE, 27)[1:-1],
                                     np.linspace(sky.MIDDLE_ANGLE, sky.HALF_ANGLE, 3)]))
    points, design = [], []
    for b in v:
        up = math.radians(float(sky.elevation(b)))
        row = []
        for a in u:
            azimuth = math.radians(float(sky.azimuth_of(a)))
            row.append((MIDDLE + SKY_RADIUS * math.cos(up) * math.sin(azimuth), SKY_RADIUS * math.cos(up) * math.cos(azimuth),
                        SKY_RADIUS * math.sin(up)))
        points.append(row)
        design.append([(a, b) for a in u])
    patch = scene.add("sky", points, 1, "sky", design=design, size=(sky.WIDTH, sky.HEIGHT), mirror=False)
    patch.spread = np.array(design)


def build(scene):
    for columns in ((-21, -10), (13, 18)):
        dunes(scene, "dunes", 140, 188, 9, 24, 9, 2.4, columns, (.25, .5, .75, 1))
    pyramid(scene, (44, 160, 0), (86, 116, 0), (128, 146, 0), (87, 150, 60), 2.4)
    pyramid(scene, (-110, 150, 0), (-70, 128, 0), (-34, 168, 0), (-72, 156, 50), 2.0)
    palm(scene, 60, 84, 30, 1, 3, 16)
    palm(scene, 68, 93, 25, 2, -3, 12)
    palm(scene, -51, 86, 29, 4, -4, 16)
    palm(scene, -60, 95, 24, 5, 3, 12)
    dome(scene)
