"""The temple gate at y = 69: two towers, the portal between them with its doors, masts and torches.

The first frame of every game looks at the portal from twenty units away, so texels are densest there.
"""
import math

import numpy as np

from .grid import GROUND, at, cavetto
from .reliefs import TOWER_HEIGHT

TOP = 36.5

PORTAL_Y = 68.9
TORCH_OFFSET, TORCH_Y = 10.5, 70.0


def front(z):
    """The y of the towers' front, which leans back."""
    return 69.0 + 3.0 * (z - GROUND) / (TOP - GROUND)


def inner(z):
    return 6.2 + .9 * (z - GROUND) / (TOP - GROUND)


def outer(z):
    return 42.0 - 2.4 * (z - GROUND) / (TOP - GROUND)


def towers(scene):
    for start, end, columns, rows, density in ((0, .30, 4, 12, 36), (.30, .55, 3, 10, 21), (.55, 1, 4, 9, 13)):
        points, design = [], []
        for z in np.linspace(GROUND, TOP, rows + 1):
            along = np.linspace(start, end, columns + 1)
            points.append([(at(inner(z) + (outer(z) - inner(z)) * t), front(z), z) for t in along])
            design.append([(t, (z - GROUND) / TOWER_HEIGHT) for t in along])
        name = "gate.inner" if start == 0 else "gate.tower"
        scene.add(name, points, density, "tower", design=design)
    # The side that faces the gap shows above the portal only.
    heights = np.linspace(GROUND + 20, TOP, 5)
    scene.add("gate.flank", [[(at(inner(z)), front(z) + s * 11, z) for s in (1, .5, 0)] for z in heights], 9, "stone")
    path = [(at(inner(TOP)), front(TOP) + 11), (at(inner(TOP)), front(TOP)), (at(16), front(TOP)), (at(27), front(TOP)),
            (at(outer(TOP)), front(TOP)), (at(outer(TOP)), front(TOP) + 4)]
    profile = [(out, TOP + z) for out, z in cavetto(3.6, 1.7)]
    scene.sweep("gate.cornice", path[:4], profile, 20, "cornice")
    scene.sweep("gate.cornice", path[3:], profile, 12, "cornice")
    for edge, density in ((inner, 20), (outer, 10)):
        points = [[(at(edge(z)) + .38 * math.cos(a), front(z) + .05 + .38 * math.sin(a), z)
                   for a in np.radians(np.linspace(150, 350, 6))] for z in np.linspace(GROUND, TOP, 6)]
        scene.add("gate.torus", points, density, "stone", smooth=True)


def portal(scene):
    y = PORTAL_Y

    def frame(x0, x1, z0, z1, columns, rows):
        low, high = y + .25 * (z0 - GROUND) / 23.5, y + .25 * (z1 - GROUND) / 23.5
        scene.quad("gate.portal", (at(x0), low, z0), (at(x1), low, z0), (at(x1), high, z1), (at(x0), high, z1), 42, "portal",
                   columns, rows, design=(x0 / 6.6, (z0 - GROUND) / 23.5, x1 / 6.6, (z1 - GROUND) / 23.5))
    frame(3.3, 6.6, GROUND, 15.5, 2, 6)
    frame(0, 6.6, 15.5, 22.0, 3, 3)
    scene.quad("gate.jamb", (at(3.3), y + 2.4, GROUND), (at(3.3), y, GROUND), (at(3.3), y + .18, 15.5),
               (at(3.3), y + 2.4, 15.5), 18, "stone", 1, 3)
    scene.quad("gate.soffit", (at(0), y + 2.4, 15.5), (at(3.3), y + 2.4, 15.5), (at(3.3), y + .18, 15.5),
               (at(0), y + .18, 15.5), 18, "stone")
    scene.quad("gate.door", (at(0), y + 2.2, GROUND), (at(3.3), y + 2.2, GROUND), (at(3.3), y + 2.2, 15.5),
               (at(0), y + 2.2, 15.5), 40, "door", 1, 4, design=(1, 0, 0, 1))
    scene.quad("gate.side", (at(6.6), y, GROUND), (at(6.6), y + 3, GROUND), (at(6.6), y + 3, 22.), (at(6.6), y + .25, 22.), 8,
               "stone", 1, 3)
    # The cornice with the winged disc.
    profile, stations = cavetto(4.4, 1.5), (0, 2.4, 4.8, 6.9)
    run = np.concatenate([[0], np.cumsum([math.dist(a, b) for a, b in zip(profile, profile[1:])])])
    low, high = run[5], run[10]
    scene.add("gate.wing", [[(at(x), y + .25 - out, 22. + z) for x in stations] for out, z in profile], 44, "wing",
              design=[[(x / 7.6,
                        min(1, max(0, (s - low) / (high - low))) * .98 + .01) for x in stations] for s in run], smooth=True)
    scene.quad("gate.side", (at(6.9), y + .25, 22.), (at(6.9), y + 4, 22.), (at(6.9), y + 4, 26.4), (at(6.9), y - 1.2, 26.4),
               8, "stone")


def masts(scene):
    for offset, density in ((16.9, 14), (28.6, 8)):
        points = []
        for t in np.linspace(0, 1, 6):
            radius = .34 - .14 * t
            points.append([(at(offset) + radius * math.cos(a), front(GROUND + t * 38) - 1.0 + radius * math.sin(a),
                            GROUND + t * 50)
                           for a in np.radians(np.linspace(150, 342, 5))])
        scene.add("mast.pole", points, density, "cedar", smooth=True)
        x = at(offset)
        scene.box("mast.socket", (x - .8, x + .8), (front(GROUND) - 1.9, front(GROUND)), (GROUND, 2.2), 10, "bronze")
        scene.box("mast.clamp", (x - .55, x + .55), (front(26) - 1.6, front(26)), (26, 26.7), 10, "bronze", faces="flrtu")
        points = []
        for t in np.linspace(0, 1, 3):
            points.append([(x + s * 5.4, front(36) - 1.0 - .55 * math.sin(s * 6.5) * s ** .5,
                            47.4 - 2.6 * (1 - t) * (1 - .72 * s) - s * 1.5 - .35 * math.sin(s * 5)) for s in np.linspace(0, 1, 9)])
        scene.add("mast.pennant", points, 12, "pennant", smooth=True, design=(0, 0, 1, 1))
        scene.lathe("mast.tip", (x, front(36) - 1.0), [(.2, 48.3), (.42, 48.9), (.2, 49.5), (.02, 50.6)], 3, 8, "gold",
                    start=144, end=360)


def torches(scene):
    x = at(TORCH_OFFSET)
    scene.box("torch.arm", (x - .22, x + .22), (69.9, 71.2), (17.2, 17.7), 16, "bronze", faces="flrtu")
    scene.lathe("torch.bowl", (x, TORCH_Y), [(.12, 16.6), (.3, 17.1), (.22, 17.6), (.42, 18.2), (.95, 18.9), (1.15, 19.4),
                                             (1.0, 19.5)], 8, 22, "bronze", start=150, end=390)


def build(scene):
    towers(scene)
    portal(scene)
    masts(scene)
    torches(scene)
