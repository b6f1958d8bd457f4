"""What stands in the court: floor, obelisks, braziers, the colonnades, the well's base and its two posts."""
import numpy as np

from . import keys, paving
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
    for face in "fl":
        scene.box("obelisk.shaft", (x - half, x + half), (y - half, y + half), (1.6, top), density, "obelisk", faces=face,
                  taper=width * .16, cells=(1, 5), design=(0, 0, 1, 1))
    half = width * .34
    for face in "fl":
        scene.box("obelisk.tip", (x - half, x + half), (y - half, y + half), (top, top + 2.1), 14, "gold", faces=face,
                  taper=half * .97)


def brazier(scene):
    x, y = at(BRAZIER_OFFSET), BRAZIER_Y

    def square(half):
        return (x - half, x + half), (y - half, y + half)
    scene.box("brazier.base", *square(2.3), (GROUND, -.6), 12, "stone")
    scene.box("brazier.base", *square(1.9), (-.6, .4), 12, "frieze", design=(0, 0, .24, 1), top="stone")
    for face in "fl":
        scene.box("brazier.pillar", *square(1.5), (.4, 10.2), 22, "pillar", faces=face, taper=.28, cells=(1, 4),
                  design=(0, 0, 1, 1))
    path = [(x - 1.22, y + 1.2), (x - 1.22, y - 1.22), (x + 1.22, y - 1.22), (x + 1.22, y + 1.2)]
    scene.sweep("brazier.cap", path, [(out * .62, 10.2 + z * .52) for out, z in cavetto(3.4, 1.5)], 18, "cornice")
    scene.box("brazier.cap", *square(2.05), (11.9, 12.0), 8, "stone", faces="t")
    scene.lathe("brazier.bowl", (x, y), [(.5, 11.95), (.42, 12.3), (.7, 12.7), (1.6, 13.4), (2.05, 14.1), (2.15, 14.5)], 10, 14,
                "bronze", start=135, end=360)
    scene.lathe("brazier.bowl", (x, y), [(2.15, 14.5), (1.95, 14.6), (1.2, 14.2)], 16, 14, "bronze")


def colonnade(scene):
    """Its front half stands once more before it, where only wide pictures reach: the columns moved, the rest turned round."""
    x = at(COLONNADE_OFFSET)
    profile = [(1.3, GROUND + .9), (1.3, GROUND + 1.4), (1.05, GROUND + 1.45), (1.1, 2.0), (.9, 9.4), (1.02, 9.6),
               (1.25, 10.6), (1.8, 11.5), (1.9, 11.9), (1.2, 12.0)]
    half = len(COLUMNS_Y) // 2
    for i, y in enumerate(COLUMNS_Y):
        more = {"beyond": (1, COLUMNS_Y[-1] - COLUMNS_Y[half - 1]) if i >= half else None}
        scene.lathe("colonnade.column", (x, y), profile, 8, 13, "column", start=136, end=305, design=(.0755, 0, .52, 1), **more)
        scene.box("colonnade.abacus", (x - .95, x + .95), (y - .95, y + .95), (12.0, 12.7), 6, "stone", faces="fl", **more)
    # The back end reaches into the gate's tower; a piece of wall closes the corner beside it.
    front, middle, back = COLUMNS_Y[-1] - 3, 44.5, 71
    colonnade_half(scene, x, middle, back, None)
    colonnade_half(scene, x, front, middle, (-1, 2 * front))
    scene.quad("colonnade.corner", (at(40.5), 70.8, GROUND), (at(44.6), 70.8, GROUND), (at(44.6), 70.8, 12.8),
               (at(40.5), 70.8, 12.8), 5, "stone")


def colonnade_half(scene, x, near, far, beyond):
    """What lies over, under and behind the columns from y near to far."""
    line, more = np.linspace(far, near, 5), {"beyond": beyond}
    scene.add("colonnade.architrave", [[(x - 1.0, y, z) for y in line] for z in (12.7, 14.2)], 12, "frieze",
              design=[[((69.5 - y) / 16, t) for y in line] for t in (0, 1)], **more)
    scene.add("colonnade.cornice", [[(x - 1.0 - out * .8, y, 14.2 + z * .62) for y in line] for out, z in cavetto(3.2, 1.3)],
              10, "cornice", smooth=True, **more)
    wall = at(46)
    scene.quad("colonnade.roof", (x - 1.7, near, 16.15), (wall, near, 16.15), (wall, far, 16.15), (x - 1.7, far, 16.15), 3,
               "stone", 2, 3, **more)
    scene.quad("colonnade.under", (x - 1.0, far, 12.7), (wall, far, 12.7), (wall, near, 12.7), (x - 1.0, near, 12.7), 3,
               "stone", 1, 2, **more)
    rows = [[(at(44.5), y, z) for y in line] for z in np.linspace(GROUND, 12.7, 4)]
    scene.add("colonnade.wall", rows, 7, "stone", **more)
    steps = ((0, GROUND), (0, GROUND + .55), (.9, GROUND + .55), (.9, GROUND + 1.0), (8.6, GROUND + 1.0))
    scene.add("colonnade.step", [[(x - 2.6 + a, y, z) for y in line] for a, z in steps], 7, "slab", **more)


def floor(scene):
    def field(o0, o1, y0, y1, density, columns, rows):
        depth = paving.BACK - paving.FRONT
        scene.quad("floor", (at(o0), y0, GROUND), (at(o1), y0, GROUND), (at(o1), y1, GROUND), (at(o0), y1, GROUND), density,
                   "floor", columns, rows, design=(o0 / paving.WIDTH, (y0 - paving.FRONT) / depth, o1 / paving.WIDTH,
                                                   (y1 - paving.FRONT) / depth))
    field(0, 14, -9, 9, 17, 4, 5)
    field(14, 30, -9, 9, 13, 4, 4)
    field(30, 37, -9, 9, 9, 2, 4)
    field(37, 46, -7, -3, 6, 1, 1)
    field(0, 18, 9, 38, 12, 5, 7)
    field(18, 37, 9, 38, 9, 4, 6)
    field(0, 40, 38, 72, 7, 8, 7)


def well(scene):
    """The base is a lectern: its top lies a little under the lowest line of the game's grid, its front is the slope of keys."""
    (top_y, top), (foot_y, low), left, right, back = keys.TOP, keys.FOOT, keys.LEFT, keys.RIGHT, 1.5
    scene.box("well.step", (-3.0, 12.0), (-3.15, 2.4), (GROUND, low), 10, "basalt", mirror=False)
    scene.quad("well.keys", (left, foot_y, low), (right, foot_y, low), (right, top_y, top), (left, top_y, top), keys.DENSITY,
               "keys", 6, 2, mirror=False, size=keys.SIZE)
    scene.quad("well.base", (left, top_y, top), (right, top_y, top), (right, back, top), (left, back, top), 14, "basalt", 2,
               mirror=False)
    # The cheeks, upright behind and a triangle beside the slope: a quad whose upper corners meet.
    for x, y0, y1, y2 in ((left, back, top_y, foot_y), (right, top_y, back, foot_y)):
        scene.quad("well.base", (x, y0, low), (x, y1, low), (x, y1, top), (x, y0, top), 10, "basalt", mirror=False)
        y0, y1 = (top_y, y2) if x == left else (y2, top_y)
        scene.quad("well.base", (x, y0, low), (x, y1, low), (x, top_y, top), (x, top_y, top), 10, "basalt", mirror=False)
    profile = [(.42, top), (.42, -.2), (.3, -.15), (.27, 1), (.25, 9), (.23, 17.6), (.32, 17.7), (.32, 17.95), (.23, 18.0),
               (.3, 18.5), (.52, 19.3), (.55, 19.5)]
    scene.lathe("well.post", (at(POST_OFFSET), 0), profile, 9, 24, "post", start=108, end=432, design=(.3, 0, 1.2, 1))


def build(scene):
    obelisk(scene, 21.5, 58.5, 3.3, 31.0, 17)
    brazier(scene)
    colonnade(scene)
    floor(scene)
    well(scene)
