"""The sphinxes along the way and the two seated kings before the gate, modelled as grids.

A statue is made in its own axes: X forward, S to its left, Z up, and put into the court by a Figure. Nobody ever sees the
back of a king or the far side of a sphinx (the camera always looks along +y), so these are left out.
Both share one head: a surface given by its distance from the axis of the neck for each direction and height, in units
in which the face is one high from chin to brow band.
"""
import math

import numpy as np

from .grid import GROUND, at
from .reliefs import HEAD_BOTTOM, HEAD_HEIGHT, HEAD_WIDTH

# Where the headcloth begins, in degrees from the middle of the face.
CLOTH = 56


def signed_power(value, power):
    return math.copysign(abs(value) ** power, value)


class Figure:
    """Puts a statue's points into the court: forward and left are directions in the plane."""

    def __init__(self, scene, name, origin, forward, scale, density, copies=()):
        self.scene, self.name, self.scale, self.density = scene, name, scale, density
        self.origin = np.array(origin, float)
        self.forward = np.array([*forward, 0.0])
        self.left = np.array([-forward[1], forward[0], 0.0])
        self.copies = [np.array(c, float) for c in copies]

    def place(self, points):
        p = np.asarray(points, float) * self.scale
        return self.origin + p[..., :1] * self.forward + p[..., 1:2] * self.left + p[..., 2:] * (0, 0, 1)

    def add(self, points, material, density=1.0, **more):
        """density is relative to the figure's; columns to the right and rows upwards as seen from outside."""
        return self.scene.add(self.name, self.place(points), self.density * density, material, copies=self.copies, smooth=True,
                              **more)

    def block(self, x, s, z, material, faces, density=1.0, **more):
        """A box; faces as seen by the statue's beholder: front (+X), left (+S), right (-S), top."""
        (x0, x1), (s0, s1), (z0, z1) = x, s, z
        quads = {"f": [[(x1, s0, z0), (x1, s1, z0)], [(x1, s0, z1), (x1, s1, z1)]],
                 "l": [[(x1, s1, z0), (x0, s1, z0)], [(x1, s1, z1), (x0, s1, z1)]],
                 "r": [[(x0, s0, z0), (x1, s0, z0)], [(x0, s0, z1), (x1, s0, z1)]],
                 "t": [[(x1, s0, z1), (x1, s1, z1)], [(x0, s0, z1), (x0, s1, z1)]]}
        for face in faces:
            self.scene.add(self.name, self.place(quads[face]), self.density * density, material, copies=self.copies, **more)

    def tube(self, centres, radii, material, start, end, columns, density=1.0, **more):
        """A limb: rings round the points of a path, turned from start to end degrees; 0 is up for a level limb and
        forward for an upright one, 90 its left side."""
        centres = np.array(centres, float)
        rings = []
        for i, (centre, radius) in enumerate(zip(centres, radii)):
            along = centres[min(i + 1, len(centres) - 1)] - centres[max(i - 1, 0)]
            along /= np.linalg.norm(along)
            zero = np.array([1.0, 0, 0]) if abs(along[2]) > .75 else np.array([0, 0, 1.0])
            zero = zero - along * np.dot(zero, along)
            zero /= np.linalg.norm(zero)
            side = np.cross((0, 0, 1.0), zero) if abs(along[2]) > .75 else np.array([0, 1.0, 0]) - along * along[1]
            side /= np.linalg.norm(side)
            angles = np.radians(np.linspace(start, end, columns + 1))
            rings.append([centre + radius * (math.cos(a) * zero + math.sin(a) * side) for a in angles])
        return self.add(rings, material, density, **more)


# ---- the head

_FRONT = ([-.55, -.07, -.02, .02, .12, .19, .23, .27, .32, .38, .42, .55, .70, .79, .90, 1.0],
          [.42, .40, .46, .60, .665, .625, .655, .655, .665, .645, .64, .635, .615, .66, .655, .63])
_SIDE = ([-.55, -.07, .0, .12, .25, .45, .65, .85, 1.0], [.40, .36, .30, .36, .45, .51, .535, .545, .54])
_CLOTH_SIDE = ([-.55, -.3, 0, .3, .6, .85, 1.02, 1.2, 1.38, 1.5, 1.56],
               [1.06, 1.0, .93, .85, .77, .70, .63, .57, .43, .22, .02])
_CLOTH_FRONT = ([-.55, .9, 1.0, 1.04, 1.14, 1.3, 1.42, 1.52, 1.56], [.62, .62, .66, .70, .70, .63, .48, .22, .02])
_NOSE = ([.36, .39, .42, .46, .55, .66, .74, .80], [0, .06, .135, .175, .125, .065, .03, 0])


def _hill(value, centre, width):
    return np.exp(-((value - centre) / width) ** 2)


def _oval(a, b, angle, power):
    return (np.abs(np.cos(angle) / a) ** power + np.abs(np.sin(angle) / b) ** power) ** (-1 / power)


def head_radius(degrees, z):
    """Distance of the surface from the head's axis."""
    angle = math.radians(abs(degrees))
    if abs(degrees) >= CLOTH or z > 1.01:
        return _oval(np.interp(z, *_CLOTH_FRONT), np.interp(z, *_CLOTH_SIDE), angle, 2.0)
    radius = _oval(np.interp(z, *_FRONT), np.interp(z, *_SIDE), angle, 2.25)
    s = radius * math.sin(angle)
    radius += np.interp(z, *_NOSE) * (_hill(s, 0, .082) + (.35 * _hill(s, .085, .04) if .38 < z < .46 else 0))
    radius -= .05 * _hill(s, .20, .12) * _hill(z, .665, .075)
    radius += .022 * _hill(s, .21, .07) * _hill(z, .675, .035)
    radius += .03 * _hill(z, .785, .045) * math.exp(-(s / .36) ** 4)
    radius += .035 * _hill(z, .31, .035) * _hill(s, 0, .16) + .04 * _hill(z, .245, .03) * _hill(s, 0, .13)
    radius += .025 * _hill(z, .10, .06) * _hill(s, 0, .14)
    radius += .02 * _hill(s, .30, .12) * _hill(z, .47, .12)
    # The ears stand out in front of the cloth.
    return radius + .07 * _hill(abs(degrees), 50, 5) * _hill(z, .62, .15)


def head(figure, at_point, size, columns, rows, yaw=0.0, density=1.0, beard=True, uraeus=True):
    """columns: degrees from right to left as the statue has them (its right side is negative); rows: heights."""
    base, turn = np.array(at_point, float), math.radians(yaw)

    def put(points):
        p = np.asarray(points, float)
        x, s = p[..., 0] * math.cos(turn) - p[..., 1] * math.sin(turn), p[..., 0] * math.sin(turn) + p[..., 1] * math.cos(turn)
        return base + size * np.stack([x, s, p[..., 2]], -1)
    surface, design = [], []
    for z in rows:
        surface.append([(head_radius(a, z) * math.cos(math.radians(a)), head_radius(a, z) * math.sin(math.radians(a)),
                         z) for a in columns])
        design.append([(.5 + a / 60 / HEAD_WIDTH, (z - HEAD_BOTTOM) / HEAD_HEIGHT) for a in columns])
    figure.add(put(surface), "head", density, design=design)
    if beard:
        top, foot, wide, far = (.64, .02), (.60, -.62), .085, .13
        left = [[(top[0], wide, top[1]), (top[0] - .2, wide, top[1])], [(foot[0], far, foot[1]), (foot[0] - .2, far, foot[1])]]
        front = [[(foot[0], -far, foot[1]), (foot[0], far, foot[1])], [(top[0], -wide, top[1]), (top[0], wide, top[1])]]
        figure.add(put(front), "lapis", density * .6)
        figure.add(put(left[::-1]), "lapis", density * .4)
        figure.add(put([[(q[0], -q[1], q[2]) for q in row[::-1]] for row in left[::-1]]), "lapis", density * .4)
    if uraeus:
        rings = []
        for x, z, r in ((.70, 1.0, .05), (.76, 1.10, .09), (.79, 1.24, .11), (.80, 1.34, .07), (.76, 1.42, .01)):
            rings.append([(x + r * math.cos(a), r * math.sin(a), z) for a in np.radians(np.linspace(-120, 120, 6))])
        figure.add(put(rings), "gold", density * .6)
    return put


def lappets(figure, put, density, drop=-1.35, forward=.52):
    """The two ends of the headcloth that hang down on the breast."""
    for side in (-1, 1):
        s0, s1 = sorted((side * .40, side * .74))
        rows = [(.30 + forward * .25, drop), (.30 + forward * .15, -.75), (.36, -.35)]
        figure.add(put([[(x, s0, z), (x + .08, (s0 + s1) / 2, z), (x, s1, z)] for x, z in rows]), "head", density,
                   design=[[(u, v) for u in (.70, .74, .78)] for v in (.02, .14, .26)])


# ---- the sphinx

SPHINX_OFFSET, SPHINX_SCALE, SPHINX_BASE = 20.5, 1.12, .55
SPHINX_YS = (14.5, 26, 37.5, 49)
SPHINX_BAKED = 2
SPHINX_COLUMNS = [-100, -76, -56, -54, -40, -28, -18, -9, 0, 9, 18, 28, 40, 54, 56, 76, 100, 128]
SPHINX_ROWS = [-.55, -.10, .02, .13, .25, .32, .41, .47, .60, .72, .80, 1.0, 1.05, 1.30, 1.50]
# The heads look a little towards those who come up the way.
SPHINX_YAW = 34


def sphinx(scene):
    y = SPHINX_YS[SPHINX_BAKED]
    copies = [(0, other - y, 0) for i, other in enumerate(SPHINX_YS) if i != SPHINX_BAKED]
    f = Figure(scene, "sphinx", (at(SPHINX_OFFSET), y, SPHINX_BASE), (-1, 0), SPHINX_SCALE, 24, copies)
    # Body, from the breast back to the rump: place, half width, height of the back.
    rings = [(1.95, .50, 2.05), (1.65, .86, 2.45), (1.0, 1.06, 2.50), (.3, 1.0, 2.18), (-.7, .88, 1.90), (-1.6, .94, 1.84),
             (-2.4, 1.06, 1.98), (-3.05, .92, 1.70), (-3.45, .60, 1.15), (-3.62, .2, .5)]
    angles = np.radians([0, 20, 42, 63, 85, 110])
    body = []
    for a in angles:
        c, s = math.cos(a), math.sin(a)
        body.append([(x, w * signed_power(c, .75), top * signed_power(s, .85)) for x, w, top in rings])
    f.add(body, "sand")
    # The breast between the forelegs.
    f.add([[(1.95 + .22 * (1 - abs(s) ** 2) * k, s * .62, z) for s in (-1, -.4, .4, 1)] for z,
           k in ((.4, .6), (1.2, 1.0), (2.0, .7), (2.5, .1))], "sand")
    # Forelegs with paws: sections from the foot of the near side over the top.
    section = [(.36, 0), (.39, .42), (.26, .70), (-.18, .72), (-.36, .45), (-.36, 0)]
    legs = [(3.90, .05, .35), (3.86, .8, .62), (3.72, 1.0, .86), (3.35, 1.16, 1.0), (2.95, 1.02, .86), (2.2, .96, .92),
            (.8, 1.0, 1.06)]
    for s in (.72, -.72):
        f.add([[(x, s + ds * w, z * h) for x, w, h in legs] for ds, z in section], "sand", .9)
    # The haunch, its paw, and the tail that lies round it.
    haunch = []
    for v in np.radians([-62, -30, 0, 32, 64]):
        haunch.append([(-2.25 + 1.05 * math.sin(u) * math.cos(v), .74 + .50 * math.cos(u) * math.cos(v),
                        .90 + .95 * math.sin(v))
                       for u in np.radians([78, 45, 12, -20, -52, -82])])
    f.add(haunch, "sand")
    paw = [(-.50, .05, .4), (-.54, .8, .7), (-.68, 1, .9), (-1.0, 1.1, 1.0), (-1.5, .9, .8), (-2.3, .9, .8)]
    f.add([[(x, 1.16 + ds * w * .62, z * h * .62) for x, w, h in paw] for ds, z in section[:4]], "sand", .9)
    f.tube([(-3.5, .5, .35), (-3.3, 1.15, .2), (-2.6, 1.46, .16), (-1.7, 1.5, .16), (-1.3, 1.46, .2)],
           (.15, .15, .14, .14, .08), "sand", 95, -70, 4)
    put = head(f, (1.22, 0, 2.86), 1.24, SPHINX_COLUMNS, SPHINX_ROWS, SPHINX_YAW, density=1.75, uraeus=False)
    lappets(f, put, .9)
    extent = (at(SPHINX_OFFSET) - 4.5, at(SPHINX_OFFSET) + 4.3), (y - 1.75, y + 1.75), (GROUND, .6)
    scene.box("sphinx.pedestal", *extent, 9, "frieze", faces="f", design=(0, 0, .55, 1), cells=(2, 1), copies=f.copies)
    scene.box("sphinx.pedestal", *extent, 5, "stone", faces="lt", copies=f.copies)


# ---- the seated king

KING_OFFSET, KING_Y, KING_SCALE, KING_BASE = 8.5, 66.4, 1.15, 5.0
KING_COLUMNS = [-112, -86, -68, -56, -54, -49, -42, -34, -26, -19, -13, -8, -4, 0, 4, 8, 13, 19, 26, 34, 42, 49, 54, 56, 68,
                86]
KING_ROWS = [-.55, -.3, -.07, 0, .05, .12, .19, .24, .275, .32, .38, .42, .46, .52, .60, .66, .72, .79, .88, .97, 1.0, 1.04,
             1.14, 1.28, 1.41, 1.51, 1.56]


def king(scene):
    f = Figure(scene, "king", (at(KING_OFFSET), KING_Y, KING_BASE), (0, -1), KING_SCALE, 30)
    x0, x1 = at(KING_OFFSET) - 1.9, at(KING_OFFSET) + 1.9
    front, back = KING_Y - 3.0, KING_Y + 2.4
    scene.box("king.pedestal", (x0 - .25, x1 + .25), (front - .25, back), (GROUND, -.6), 9, "stone")
    scene.box("king.pedestal", (x0, x1), (front, back), (-.6, KING_BASE - .5), 15, "relief", faces="f", design=(0, 0, 1, 1))
    scene.box("king.pedestal", (x0, x1), (front, back), (-.6, KING_BASE - .5), 9, "stone", faces="lr")
    scene.box("king.pedestal", (x0 - .15, x1 + .15), (front - .15, back), (KING_BASE - .5, KING_BASE), 14, "frieze",
              faces="flr", design=(0, 0, .26, 1), top="stone")
    scene.box("king.pedestal", (x0 - .15, x1 + .15), (front - .15, back), (KING_BASE - .5, KING_BASE), 10, "stone", faces="t")
    f.block((-1.7, .95), (-1.3, 1.3), (0, 2.3), "frieze", "flr", .5, design=(0, 0, .15, 1))
    f.block((-1.9, -1.3), (-1.3, 1.3), (2.3, 3.6), "granite", "flrt", .5)
    f.block((-1.9, 2.45), (-1.3, 1.3), (0, .18), "granite", "flrt", .5)
    for s in (-.55, .55):
        f.tube([(1.38, s, .18), (1.36, s, .6), (1.40, s, 1.3), (1.42, s, 2.0), (1.50, s, 2.5), (1.40, s, 2.95)],
               (.27, .27, .38, .40, .42, .30), "granite", -125, 125, 8, .9)
        f.add([[(2.42, s - .30, .18), (2.45, s, .18), (2.42, s + .30, .18)],
               [(2.38, s - .28, .34), (2.42, s, .36), (2.38, s + .28, .34)], [(1.5, s - .28, .62), (1.5, s, .72),
                                                                              (1.5, s + .28, .62)]], "granite", .8)
        f.add([[(2.42, s + .30, .18), (1.3, s + .3, .18)], [(2.38, s + .28, .34), (1.4, s + .28, .64)]], "granite", .6)
        f.add([[(1.3, s - .3, .18), (2.42, s - .30, .18)], [(1.4, s - .28, .64), (2.38, s - .28, .34)]], "granite", .6)
    # The kilt over both thighs, from the knees back to the lap.
    across = [(-1.08, 2.15), (-1.10, 2.6), (-.86, 2.98), (-.55, 3.06), (-.2, 2.94), (.2, 2.94), (.55, 3.06), (.86, 2.98),
              (1.10, 2.6), (1.08, 2.15)]
    rows = [(2.0, .96, -.6), (2.06, 1.0, -.25), (1.86, 1.0, .0), (1.2, 1.0, .0), (.4, 1.02, .05), (-.4, 1.02, .08)]
    f.add([[(x, s * w, max(2.1, z + dz)) for s, z in across] for x, w, dz in rows], "kilt", .9, design=(0, 0, 1, 1))
    # Trunk: height, half width, depth.
    trunk = [(2.7, .86, .62), (3.4, .80, .56), (4.1, .98, .66), (4.7, 1.16, .76), (5.0, 1.24, .78)]
    yoke = [(5.0, 1.24, .78), (5.3, 1.36, .72), (5.6, 1.34, .60), (5.82, 1.05, .48), (5.98, .55, .40)]
    angles = np.radians(np.linspace(-100, 100, 11))

    def breast(angle, z):
        return .09 * float(_hill(z, 4.75, .35) * _hill(abs(angle), .5, .35))

    def shell(sections):
        return [[(-.75 + breast(a, z) + d * signed_power(math.cos(a), .8), w * signed_power(math.sin(a), .85),
                  z) for a in angles]
                for z, w, d in sections]
    f.add(shell(trunk), "granite", .9)
    f.add(shell(yoke), "collar", 1.2, design=(0, 0, 1, 1))
    for side in (-1, 1):
        f.tube([(-.72, side * 1.30, 3.3), (-.76, side * 1.47, 3.9), (-.76, side * 1.48, 4.6), (-.74, side * 1.42, 5.2),
                (-.74, side * 1.22, 5.62)],
               (.30, .33, .36, .37, .24), "granite", -150 if side < 0 else -100, 100 if side < 0 else 150, 8, .8)
        f.tube([(1.50, side * .60, 3.12), (1.1, side * .72, 3.22), (.2, side * 1.02, 3.32), (-.7, side * 1.28, 3.38)],
               (.17, .19, .25, .31), "granite", -105, 105, 6, .8)
        f.block((1.1, 1.82), (side * .60 - .24, side * .60 + .24), (3.0, 3.24), "granite", "flrt", .8)
    put = head(f, (-.72, 0, 6.10), 1.28, KING_COLUMNS, KING_ROWS, density=1.75)
    lappets(f, put, 1.2, -1.2, .75)


def build(scene):
    sphinx(scene)
    king(scene)
