#!/usr/bin/python3
"""Holds the jackal against what the game needs of it: frames, ground, tags whose direction can be told."""
import os
import struct
import sys

import numpy as np

import md2
from jackal import motion

# A foot may sink this deep into the ground, from packing coordinates into bytes.
SINKS = 0.02
# Two loops must not jump where they close: largest step of a vertex from the last frame to the first, against the usual one.
SEAM = 2.5


def tags(path, frames):
    with open(path, "rb") as file:
        data = file.read()
    if struct.unpack_from("<H", data)[0] != md2.TAG_MARKER or len(data) != 2 + 24 * frames:
        return None
    return np.frombuffer(data, "<f4", offset=2).reshape(frames, 2, 3)


def main(data):
    model = md2.read(os.path.join(data, "models", "jackal.md2"))
    frames = model["frames"]
    points = tags(os.path.join(data, "models", "jackal.mdw"), len(frames))
    lowest = frames[..., 2].min()
    count = len(model["triangles"])
    apart = points is not None and (np.abs(points[:, 0, 1] - points[:, 1, 1]) > 1e-3).mean()
    good = {f"{len(frames)} frames, {count} triangles": len(frames) == motion.FRAMES and 300 <= count <= 700,
            f"lowest point {lowest:.3f}": lowest > -SINKS,
            "tags for every frame, nearly all with a direction": apart > .9}
    for name, first, last, circle, _ in motion.ANIMATIONS:
        steps = np.linalg.norm(np.diff(frames[first:last + 1], axis=0), axis=2).max(1)
        if circle:
            seam = np.linalg.norm(frames[first] - frames[last], axis=1).max()
            good[f"{name} closes with a step of {seam:.3f}, the largest within is {steps.max():.3f}"] = seam < SEAM * steps.max()
        good[f"{name} moves"] = steps.max() > .01
    for text, holds in good.items():
        if not holds or " moves" not in text:
            print(("" if holds else "WRONG  ") + text)
    return 0 if all(good.values()) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
