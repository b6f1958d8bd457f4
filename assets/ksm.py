"""Writes and reads KSM models, the game's format for static textured triangle meshes.

A KSM file is little-endian: an unsigned 16-bit number that no reader uses, an unsigned 16-bit triangle
count, then three vertices of five 32-bit floats (x, y, z, u, v) for each triangle.

Callers work in the conventions of modelling tools: triangles run counter-clockwise as seen from outside, and
v counts from the bottom row of the picture. The file wants both the other way round: the game builds the
normal (C - A) x (B - A), which points outside only for clockwise triangles, and turns v over when it loads.
write() and read() do both conversions, so no script has to think of them again.
"""
import struct

import numpy as np

# Three vertices of each triangle are counted with a 16-bit index.
MAX_TRIANGLES = 21845


class Mesh:
    """Collects triangles; points are (x, y, z), texture coordinates (u, v) with v from the bottom."""

    def __init__(self):
        self._triangles = []

    def __len__(self):
        return len(self._triangles)

    def triangle(self, points, uvs):
        """Adds one triangle, counter-clockwise as seen from outside."""
        self._triangles.append([tuple(p) + tuple(t) for p, t in zip(points, uvs)])

    def quad(self, points, uvs):
        """Adds a flat four-cornered face as two triangles, counter-clockwise as seen from outside."""
        self.triangle([points[i] for i in (0, 1, 2)], [uvs[i] for i in (0, 1, 2)])
        self.triangle([points[i] for i in (0, 2, 3)], [uvs[i] for i in (0, 2, 3)])

    def array(self):
        """All triangles as an array of shape (count, 3, 5)."""
        return np.array(self._triangles, dtype=np.float64).reshape(-1, 3, 5)

    def write(self, path):
        write(path, self.array())


def write(path, triangles):
    """Writes an array of shape (count, 3, 5): counter-clockwise from outside, v from the bottom."""
    triangles = np.asarray(triangles, dtype=np.float64).reshape(-1, 3, 5)
    count = len(triangles)
    if count > MAX_TRIANGLES:
        raise ValueError(f"{path}: {count} triangles, a KSM model holds at most {MAX_TRIANGLES}")
    if not np.isfinite(triangles).all():
        raise ValueError(f"{path}: a coordinate is not a finite number")
    stored = triangles[:, [0, 2, 1], :].copy()
    stored[..., 4] = 1.0 - stored[..., 4]
    with open(path, "wb") as file:
        file.write(struct.pack("<HH", 1, count))
        file.write(stored.astype("<f4").tobytes())


def read(path):
    """Reads a model back in the conventions of write(); raises ValueError if the size does not fit."""
    with open(path, "rb") as file:
        data = file.read()
    if len(data) < 4:
        raise ValueError(f"{path}: shorter than its head")
    count = struct.unpack_from("<HH", data)[1]
    if len(data) != 4 + 60 * count:
        raise ValueError(f"{path}: {len(data)} bytes do not fit {count} triangles")
    stored = np.frombuffer(data, dtype="<f4", offset=4).reshape(-1, 3, 5).astype(np.float64)
    triangles = stored[:, [0, 2, 1], :].copy()
    triangles[..., 4] = 1.0 - triangles[..., 4]
    return triangles
