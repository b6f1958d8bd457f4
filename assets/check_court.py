#!/usr/bin/python3
"""Holds the built court against what the game needs of it: size, the camera's way, the far plane, calm behind the well, no hole
however wide the picture, a bright beginning, and keys that can be read."""
import os
import sys

import numpy as np

import ksm
from court import measure, packing, preview
from court.model import FLIGHT

# The largest file that is read without a pause.
MOST_BYTES = 6_000_000
# Pictures as wide as these must be filled.
ASPECTS = {"4:3": 4 / 3, "16:9": 16 / 9, "21:9": 21 / 9}
# From the first second's mean L* up; and its bright places, which the torches light.
LEAST_MEAN, LEAST_BRIGHT = 17, 35
# Of the keys, wherever the light stands.
LEAST_CONTRAST = 4.5


def cameras():
    """The flight and what the player sees later, with pieces at the middle and at both ends of the well."""
    for fade in np.linspace(0, .95, 12):
        yield preview.Camera(fade, 20)
    for fade, row in ((.3, 10), (.6, 0), (1, 0), (1, 21)):
        for column in (0, 9):
            yield preview.Camera(fade, row, column)


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
    for camera in cameras():
        eye = camera.view(points.reshape(-1, 3))
        depth = -eye[:, 2]
        tangent = preview.HALF_VIEW * np.maximum(depth, 0)
        seen = (depth > 0) & (np.abs(eye[:, 1]) < tangent) & (np.abs(eye[:, 0]) < tangent * max(ASPECTS.values()))
        result = max(result, depth[seen].max(initial=0))
    return result


def holes(triangles, height=240):
    """For each aspect how many pixels, of all pictures together, show nothing at all. A narrow picture is the middle of a wide
    one."""
    width, result = round(height * max(ASPECTS.values())), dict.fromkeys(ASPECTS, 0)
    for camera in cameras():
        covered = preview.covered(triangles[..., :3], camera, width, height)
        for name, aspect in ASPECTS.items():
            side = (width - round(height * aspect)) // 2
            result[name] += int((~covered[:, side:width - side]).sum())
    return result


def main(data):
    model, picture = os.path.join(data, "models", "egypt.ksm"), os.path.join(data, "textures", "EGYPT-TE.png")
    triangles, texture = preview.load(model, picture)
    blocked, depth, size = in_the_way(triangles[..., :3]), deepest(triangles[..., :3]), os.path.getsize(picture)
    lines, calm = measure.report(triangles, texture)
    means, bright = measure.first_second(triangles, texture)
    good = {f"{len(triangles)} triangles of {ksm.MAX_TRIANGLES}": len(triangles) <= ksm.MAX_TRIANGLES,
            f"{blocked} triangles in the camera's way": blocked == 0,
            f"deepest visible corner {depth:.1f} of {preview.FAR}": depth < preview.FAR,
            f"texture of {texture.shape[:2]} texels, {size} bytes":
                texture.shape[:2] == (packing.SIDE, packing.SIDE) and size < MOST_BYTES,
            "\n".join(lines): calm,
            "first second under its veil: mean L* %s, a tenth above %s" % tuple(
                ", ".join(f"{v:.1f}" for v in values) for values in (means, bright)):
                np.mean(means) > LEAST_MEAN and np.mean(bright) > LEAST_BRIGHT}
    for name, count in holes(triangles).items():
        good[f"{count} empty pixels at {name}"] = count == 0
    for name, lamp in measure.LAMPS.items():
        words, caps = measure.keys_contrast(triangles, texture, lamp)
        good[f"keys, light {name}: contrast of words {words:.1f}, of signs {caps:.1f}"] = min(words, caps) >= LEAST_CONTRAST
    for text, holds in good.items():
        print(("" if holds else "WRONG  ") + text)
    return 0 if all(good.values()) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
