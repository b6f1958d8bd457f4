"""What stands in the court: floor, obelisks, braziers, the colonnades, the well's base and its two posts."""
import numpy as np

from . import paving
from .grid import GROUND, at, cavetto

BRAZIER_OFFSET, BRAZIER_Y = 30.5, 43.0
COLONNADE_OFFSET = 38.5
COLUMNS_Y = [66 - 6.2 * i for i in range(8)]
POST_OFFSET = 5.55


def obelisk(scene, offset, y, width, top, density):
    x, half = at(offset), width * .85
    scene.box("obelisk.base", (x - half, x + half), (y - half, y + half), (GROUND, 1.6), 12, "frieze", design=(0, 0, .18, 1),
              top="basalt")
    half = width / 2
    for face in "flr":
        scene.box("obelisk.shaft", (x - half, x + half), (y - half, y + half), (1.6, top),
                  density if face != "r" else density * .5, "obelisk", faces=face, taper=width * .16, cells=(1, 5),
                  design=(0, 0, 1, 1))
    half = width * .34
    for face in "flr":
        scene.box("obelisk.tip", (x - half, x + half), (y - half, y + half), (top, top + 2.1), 14, "gold", faces=face,
                  taper=half * .97)


def brazier(scene):
    x, y = at(BRAZIER_OFFSET), BRAZIER_Y

    def square(half):
        return (x - half, x + half), (y - half, y + half)
    scene.box("brazier.base", *square(2.3), (GROUND, -.6), 12, "stone")
    scene.box("brazier.base", *square(1.9), (-.6, .4), 12, "frieze", design=(0, 0, .24, 1), top="stone")
    for face in "flr":
        scene.box("brazier.pillar", *square(1.5), (.4, 10.2), 22 if face != "r" else 10, "pillar", faces=face, taper=.28,
                  cells=(1, 4), design=(0, 0, 1, 1))
    path = [(x - 1.22, y + 1.2), (x - 1.22, y - 1.22), (x + 1.22, y - 1.22), (x + 1.22, y + 1.2)]
    scene.sweep("brazier.cap", path, [(out * .62, 10.2 + z * .52) for out, z in cavetto(3.4, 1.5)], 18, "cornice")
    scene.box("brazier.cap", *square(2.05), (11.9, 12.0), 8, "stone", faces="t")
    scene.lathe("brazier.bowl", (x, y), [(.5, 11.95), (.42, 12.3), (.7, 12.7), (1.6, 13.4), (2.05, 14.1), (2.15, 14.5),
                                         (1.95, 14.6), (1.2, 14.2)], 16, 14, "bronze")


def colonnade(scene):
    x = at(COLONNADE_OFFSET)
    profile = [(1.3, GROUND + .9), (1.3, GROUND + 1.4), (1.05, GROUND + 1.45), (1.1, 2.0), (.9, 9.4), (1.02, 9.6),
               (1.25, 10.6), (1.8, 11.5), (1.9, 11.9), (1.2, 12.0)]
    for y in COLUMNS_Y:
        scene.lathe("colonnade.column", (x, y), profile, 9, 13, "column", start=115, end=305, design=(.02, 0, .98 * .53, 1))
        scene.box("colonnade.abacus", (x - .95, x + .95), (y - .95, y + .95), (12.0, 12.7), 6, "stone", faces="fl")
    front, back = COLUMNS_Y[-1] - 3, 69.5
    line = np.linspace(back, front, 9)
    scene.add("colonnade.architrave", [[(x - 1.0, y, z) for y in line] for z in (12.7, 14.2)], 12, "frieze",
              design=[[((back - y) / 16, t) for y in line] for t in (0, 1)])
    scene.add("colonnade.cornice", [[(x - 1.0 - out * .8, y, 14.2 + z * .62) for y in line] for out, z in cavetto(3.2, 1.3)],
              10, "cornice", smooth=True)
    wall = at(46)
    scene.quad("colonnade.roof", (x - 1.7, front, 16.15), (wall, front, 16.15), (wall, back, 16.15), (x - 1.7, back, 16.15), 3,
               "stone", 2, 6)
    scene.quad("colonnade.under", (x - 1.0, back, 12.7), (wall, back, 12.7), (wall, front, 12.7), (x - 1.0, front, 12.7), 3,
               "stone", 1, 4)
    rows = [[(at(44.5), y, z) for y in np.linspace(back, front, 8)] for z in np.linspace(GROUND, 12.7, 4)]
    scene.add("colonnade.wall", rows, 7, "stone")
    steps = ((0, GROUND), (0, GROUND + .55), (.9, GROUND + .55), (.9, GROUND + 1.0), (8.6, GROUND + 1.0))
    scene.add("colonnade.step", [[(x - 2.6 + a, y, z) for y in line] for a, z in steps], 7, "slab")


def floor(scene):
    def field(o0, o1, y0, y1, density, columns, rows):
        depth = paving.BACK - paving.FRONT
        scene.quad("floor", (at(o0), y0, GROUND), (at(o1), y0, GROUND), (at(o1), y1, GROUND), (at(o0), y1, GROUND), density,
                   "floor", columns, rows, design=(o0 / paving.WIDTH, (y0 - paving.FRONT) / depth, o1 / paving.WIDTH,
                                                   (y1 - paving.FRONT) / depth))
    field(0, 14, -12, 9, 17, 4, 6)
    field(14, 30, -12, 9, 13, 4, 5)
    field(0, 18, 9, 38, 12, 5, 7)
    field(18, 46, 9, 38, 9, 6, 6)
    field(0, 40, 38, 72, 7, 8, 7)
    scene.quad("floor.far", (at(30), -12, GROUND), (at(60), -12, GROUND), (at(60), 9, GROUND), (at(30), 9, GROUND), 3, "floor",
               2, 2, design=(.6, 0, 1, .25))


def well(scene):
    low = GROUND + .45
    scene.box("well.step", (-2.6, 11.6), (-2.4, 2.4), (GROUND, low), 16, "basalt", mirror=False)
    scene.box("well.base", (-1.7, 10.7), (-1.5, 1.5), (low, -.5), 26, "frieze", faces="f", mirror=False,
              design=(0, 0, .775, 1), cells=(4, 1))
    scene.box("well.base", (-1.7, 10.7), (-1.5, 1.5), (low, -.5), 14, "basalt", faces="lrt", mirror=False, cells=(2, 1))
    profile = [(.42, -.5), (.42, -.2), (.3, -.15), (.27, 1), (.25, 9), (.23, 17.6), (.32, 17.7), (.32, 17.95), (.23, 18.0),
               (.3, 18.5), (.52, 19.3), (.55, 19.5), (.0, 19.55)]
    scene.lathe("well.post", (at(POST_OFFSET), 0), profile, 10, 24, "post", design=(0, 0, 1, 1))


def build(scene):
    obelisk(scene, 21.5, 58.5, 3.3, 31.0, 17)
    brazier(scene)
    colonnade(scene)
    floor(scene)
    well(scene)
