#!/usr/bin/python3
"""Holds the built court against what the game needs of it: size, the camera's way, the far plane, calm behind the well."""
import os
import sys

import numpy as np

import ksm
from court import measure, packing, preview
from court.model import FLIGHT

# The game's far plane; and the largest file that is read without a pause.
FAR = 230
MOST_BYTES = 6_000_000


def in_the_way(points):
    """How many triangles reach into the box through which the camera flies."""
    inside = np.ones(len(points), bool)
    for axis, (low, high) in enumerate(FLIGHT):
        values = points[..., axis]
        inside &= (values.min(1) < high) & (values.max(1) > low)
    return int(inside.sum())


def deepest(points):
    """The largest depth of any corner that is seen from anywhere on the camera's way."""
    result = 0.0
    for fade in np.linspace(0, 1, 11):
        for row in (1, 20):
            eye = preview.Camera(fade, row).view(points.reshape(-1, 3))
            depth = -eye[:, 2]
            tangent = preview.HALF_VIEW * np.maximum(depth, 0)
            seen = (depth > 0) & (np.abs(eye[:, 1]) < tangent) & (np.abs(eye[:, 0]) < tangent * 4 / 3)
            result = max(result, depth[seen].max(initial=0))
    return result


def main(data):
    model, picture = os.path.join(data, "models", "egypt.ksm"), os.path.join(data, "textures", "EGYPT-TE.png")
    triangles, texture = preview.load(model, picture)
    blocked, depth, size = in_the_way(triangles[..., :3]), deepest(triangles[..., :3]), os.path.getsize(picture)
    lines, calm = measure.report(triangles, texture)
    good = {f"{len(triangles)} triangles of {ksm.MAX_TRIANGLES}": len(triangles) <= ksm.MAX_TRIANGLES,
            f"{blocked} triangles in the camera's way": blocked == 0,
            f"deepest visible corner {depth:.1f} of {FAR}": depth < FAR,
            f"texture of {texture.shape[:2]} texels, {size} bytes":
                texture.shape[:2] == (packing.SIDE, packing.SIDE) and size < MOST_BYTES,
            "\n".join(lines): calm}
    for text, holds in good.items():
        print(("" if holds else "WRONG  ") + text)
    return 0 if all(good.values()) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
