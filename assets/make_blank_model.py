#!/usr/bin/python3
"""default/blank.ksm: the small cube that stands in for a model that cannot be loaded."""
import os
import sys

import ksm

HALF_SIDE = 0.3


def cube(half):
    """A plain cube with the whole picture on every side."""
    mesh = ksm.Mesh()
    whole = [(0, 0), (1, 0), (1, 1), (0, 1)]
    # For each side the outward normal and the directions that u and v run along; u x v = normal.
    for u, v, normal in (((1, 0, 0), (0, 0, 1), (0, -1, 0)), ((-1, 0, 0), (0, 0, 1), (0, 1, 0)),
                         ((0, 1, 0), (0, 0, 1), (1, 0, 0)), ((0, -1, 0), (0, 0, 1), (-1, 0, 0)),
                         ((1, 0, 0), (0, 1, 0), (0, 0, 1)), ((1, 0, 0), (0, -1, 0), (0, 0, -1))):
        corners = [tuple(half * (n + su * a + sv * b) for n, a, b in zip(normal, u, v))
                   for su, sv in ((-1, -1), (1, -1), (1, 1), (-1, 1))]
        mesh.quad(corners, whole)
    return mesh


if __name__ == "__main__":
    folder = os.path.join(sys.argv[1], "default")
    os.makedirs(folder, exist_ok=True)
    cube(HALF_SIDE).write(os.path.join(folder, "blank.ksm"))
