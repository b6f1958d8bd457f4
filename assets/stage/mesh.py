"""Still models for the stage: quads in the scene's own units and places, written as MD2 models of one frame.

x runs to the right, y away from the eye, z upwards; the origin lies on the ground below the eye. An entity of size 0.25 that
stands on the map where the eye stands shows a model exactly so.
"""
import numpy as np

import md2


class Mesh:
    def __init__(self, width, height):
        """width and height are those of the skin in texels."""
        self.size = (width, height)
        self.points, self.texels, self.quads = [], [], []

    def quad(self, corners, texels):
        """Corners counter-clockwise as they are seen, each with its texel (from the left, from the top)."""
        first = len(self.points)
        self.points += [tuple(map(float, c)) for c in corners]
        self.texels += [tuple(t) for t in texels]
        self.quads.append(first)

    def flat(self, origin, along, up, box):
        """A rectangle from its lower left corner, as it is seen, along two edges; box: left, top, right and bottom texel."""
        a, u, v = (np.array(p, float) for p in (origin, along, up))
        left, top, right, bottom = box
        self.quad((a, a + u, a + u + v, a + v), ((left, bottom), (right, bottom), (right, top), (left, top)))

    def turned(self, profile, sides, box):
        """A body of revolution about the z axis; profile: (radius, z, height of the texel in the box from 0 at its foot)."""
        left, top, right, bottom = box
        angles = np.arange(sides + 1) * 2 * np.pi / sides
        for (r0, z0, v0), (r1, z1, v1) in zip(profile, profile[1:]):
            for i in range(sides):
                (c0, s0), (c1, s1) = ((np.cos(angles[k]), np.sin(angles[k])) for k in (i, i + 1))
                t0, t1 = (bottom + (top - bottom) * v for v in (v0, v1))
                u0, u1 = (left + (right - left) * k / sides for k in (i, i + 1))
                self.quad(((r0 * c0, r0 * s0, z0), (r0 * c1, r0 * s1, z0), (r1 * c1, r1 * s1, z1), (r1 * c0, r1 * s0, z1)),
                          ((u0, t0), (u1, t0), (u1, t1), (u0, t1)))

    def write(self, path, name):
        """The game turns a creature that looks straight ahead by half a circle, so models stand the other way round."""
        points, which = np.unique(np.array(self.points) * (-1, -1, 1), axis=0, return_inverse=True)
        which = which.ravel()
        corners = np.array([(q, q + 1, q + 2, q, q + 2, q + 3) for q in self.quads]).reshape(-1, 3)
        triangles = which[corners]
        # A tip's quads are triangles: of their two halves one has no area.
        whole = [len(set(t)) == 3 for t in triangles]
        md2.write(path, [points], [name], triangles[whole], self.texels, corners[whole], self.size)
        return int(np.sum(whole))
