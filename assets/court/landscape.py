"""What lies behind the court: dunes, pyramids, palms and the inside of the sky."""
import math
import random

import numpy as np

from . import sky
from .grid import GROUND, MIDDLE

SKY_RADIUS = 198


def dunes(scene, name, near, far, low, high, seed, density, columns, rows):
    phases = np.random.default_rng(seed).uniform(0, 6.28, 8)
    points = []
    for t in np.linspace(0, 1, rows + 1):
        radius, row = near + (far - near) * t, []
        for a in np.radians(np.linspace(-52, 52, columns + 1)):
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
    v = np.concatenate([np.linspace(0, sky.BEND, 8), np.linspace(sky.BEND, 1, 6)[1:]])
    u = np.linspace(0, 1, 27)
    points, design = [], []
    for b in v:
        up = math.radians(float(sky.elevation(b)))
        row = []
        for a in u:
            azimuth = math.radians((a - .5) * 2 * sky.HALF_ANGLE)
            row.append((MIDDLE + SKY_RADIUS * math.cos(up) * math.sin(azimuth), SKY_RADIUS * math.cos(up) * math.cos(azimuth),
                        SKY_RADIUS * math.sin(up)))
        points.append(row)
        design.append([(a, b) for a in u])
    patch = scene.add("sky", points, 1, "sky", design=design, size=(sky.WIDTH, sky.HEIGHT), mirror=False)
    patch.spread = np.array(design)


def build(scene):
    dunes(scene, "dunes.near", 95, 135, 5, 14, 4, 2.6, 40, 4)
    dunes(scene, "dunes.far", 140, 188, 9, 24, 9, 2.4, 40, 4)
    pyramid(scene, (44, 160, 0), (86, 116, 0), (128, 146, 0), (87, 150, 60), 2.4)
    pyramid(scene, (26, 176, 0), (50, 150, 0), (74, 172, 0), (50, 172, 37), 2.2)
    pyramid(scene, (-110, 150, 0), (-70, 128, 0), (-34, 168, 0), (-72, 156, 50), 2.0)
    palm(scene, 60, 84, 30, 1, 3, 16)
    palm(scene, 68, 93, 25, 2, -3, 12)
    palm(scene, -51, 86, 29, 4, -4, 16)
    palm(scene, -60, 95, 24, 5, 3, 12)
    dome(scene)
