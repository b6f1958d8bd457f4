"""Patches: grids of points that make up the whole court. Each is one rectangle of the texture.

Most stands twice, right and left of the plane x = MIDDLE: such a patch is given for the right side only, is mirrored when
the triangles are made, and both sides show the same texels. Distances from that plane are called offsets.
"""
import math
from dataclasses import dataclass, field

import numpy as np

MIDDLE = 4.5
GROUND = -1.5


@dataclass
class Patch:
    name: str
    points: np.ndarray            # rows x columns x 3
    size: tuple                   # wanted pixels, width and height
    material: str
    design: np.ndarray            # rows x columns x 2: where the material's picture is taken from
    spread: np.ndarray            # rows x columns x 2: place within the rectangle, 0 to 1
    mirror: bool = True
    smooth: bool = False
    copies: list = field(default_factory=list)    # shifts to further places of the same patch, with the same texels
    beyond: tuple = None          # (sign, shift): once more at sign * y + shift, where wide pictures alone show it

    def triangles(self):
        """Index triples into rows * columns and, in the same shape, nothing twice: flat cells are left out."""
        rows, columns = self.points.shape[:2]
        flat = self.points.reshape(-1, 3)
        result = []
        for j in range(rows - 1):
            for i in range(columns - 1):
                a, b, c, d = j * columns + i, j * columns + i + 1, (j + 1) * columns + i + 1, (j + 1) * columns + i
                for three in ((a, b, c), (a, c, d)):
                    p = flat[list(three)]
                    if np.linalg.norm(np.cross(p[1] - p[0], p[2] - p[0])) > 1e-6:
                        result.append(three)
        return np.array(result, int).reshape(-1, 3)


class Scene:
    """All patches, in the order in which they were added."""

    def __init__(self):
        self.patches = []

    def add(self, name, points, density, material, design=None, size=None, **more):
        """points: rows x columns; seen from outside, columns run to the right and rows upwards. density: texels a unit.
        design: array for each point, or (x0, y0, x1, y1) for the corners, or None for lengths in units."""
        points = np.array(points, float)
        across = np.linalg.norm(np.diff(points, axis=1), axis=2)
        along = np.linalg.norm(np.diff(points, axis=0), axis=2)
        wide, tall = across.sum(1).max(), along.sum(0).max()
        if size is None:
            size = (max(4, round(wide * density)), max(4, round(tall * density)))

        def running(steps):
            total = np.concatenate([[0], np.cumsum(steps)])
            return total / max(total[-1], 1e-9)
        spread = np.stack(np.meshgrid(running(across.mean(0)), running(along.mean(1))), -1)
        if design is None:
            design = spread * (wide, tall)
        elif isinstance(design, tuple):
            x0, y0, x1, y1 = design
            design = np.array([x0, y0]) + spread * (x1 - x0, y1 - y0)
        self.patches.append(Patch(name, points, size, material, np.array(design, float), spread, **more))
        return self.patches[-1]

    def quad(self, name, a, b, c, d, density, material, columns=1, rows=1, **more):
        """A flat face with the corners lower left, lower right, upper right, upper left."""
        a, b, c, d = (np.array(q, float) for q in (a, b, c, d))
        points = [[(a * (1 - s) + b * s) * (1 - t) + (d * (1 - s) + c * s) * t for s in np.linspace(0, 1, columns + 1)]
                  for t in np.linspace(0, 1, rows + 1)]
        return self.add(name, points, density, material, **more)

    def box(self, name, x, y, z, density, material, faces="flrt", taper=0.0, cells=(1, 1), top=None, **more):
        """A box from x[0] to x[1] and so on. faces: front (-y), left, right, top, back, under; taper: how far each side leans
        in; cells: columns and rows of the upright faces; top: another material for top and underside."""
        (x0, x1), (y0, y1), (z0, z1) = x, y, z
        X0, X1, Y0, Y1 = x0 + taper, x1 - taper, y0 + taper, y1 - taper
        sides = {"f": [(x0, y0, z0), (x1, y0, z0), (X1, Y0, z1), (X0, Y0, z1)],
                 "l": [(x0, y1, z0), (x0, y0, z0), (X0, Y0, z1), (X0, Y1, z1)],
                 "r": [(x1, y0, z0), (x1, y1, z0), (X1, Y1, z1), (X1, Y0, z1)],
                 "b": [(x1, y1, z0), (x0, y1, z0), (X0, Y1, z1), (X1, Y1, z1)]}
        level = {"t": [(X0, Y0, z1), (X1, Y0, z1), (X1, Y1, z1), (X0, Y1, z1)],
                 "u": [(x0, y1, z0), (x1, y1, z0), (x1, y0, z0), (x0, y0, z0)]}
        for key, corners in sides.items():
            if key in faces:
                self.quad(name, *corners, density, material, *cells, **more)
        more.pop("design", None)
        for key, corners in level.items():
            if key in faces:
                self.quad(name, *corners, density, top or material, **more)

    def lathe(self, name, centre, profile, segments, density, material, start=0, end=360, **more):
        """A turned solid: profile is (radius, z) from the foot up; the angle runs counter-clockwise as seen from above."""
        x, y = centre
        angles = np.radians(np.linspace(start, end, segments + 1))
        points = [[(x + r * math.cos(a), y + r * math.sin(a), z) for a in angles] for r, z in profile]
        return self.add(name, points, density, material, smooth=True, **more)

    def sweep(self, name, path, profile, density, material, **more):
        """A moulding: profile (outwards, z) along a path (x, y) that has its outside on the right."""
        path = [np.array(p, float) for p in path]
        normals = []
        for i in range(len(path)):
            before = path[i] - path[i - 1] if i > 0 else path[1] - path[0]
            after = path[i + 1] - path[i] if i + 1 < len(path) else before
            first, second = (np.array([d[1], -d[0]]) / np.linalg.norm(d) for d in (before, after))
            mitre = first + second
            normals.append(mitre / np.dot(mitre, first))
        points = [[(*(p + n * out), z) for p, n in zip(path, normals)] for out, z in profile]
        return self.add(name, points, density, material, smooth=True, **more)


def at(offset):
    """The x of an offset on the right side."""
    return MIDDLE + offset


def cavetto(height, depth):
    """The profile of an Egyptian cornice: a round bar, a hollow that leans out, a flat edge; (outwards, z) from z = 0."""
    bar = [(.0, 0), (.28, .0), (.34, .25), (.28, .5), (.0, .52)]
    hollow = [(depth * (1 - math.cos(t)) * .95, .52 + (height - 1.2) * math.sin(t)) for t in np.linspace(.05, 1.45, 6)]
    return bar + hollow + [(depth, height - .62), (depth, height), (depth - .2, height)]
