#!/usr/bin/python3
"""default/blank.md2: the small cube, one frame long, that stands in for a creature that cannot be loaded."""
import os
import sys

import numpy as np

import md2
from make_blank_model import cube

HALF_SIDE = 0.3
SKIN = 32

if __name__ == "__main__":
    folder = os.path.join(sys.argv[1], "default")
    os.makedirs(folder, exist_ok=True)
    corners = cube(HALF_SIDE).array()
    # It stands on the ground, as creatures do.
    points, faces = np.unique(corners[..., :3].reshape(-1, 3) + (0, 0, HALF_SIDE), axis=0, return_inverse=True)
    places, texture_faces = np.unique(corners[..., 3:].reshape(-1, 2) * SKIN, axis=0, return_inverse=True)
    md2.write(os.path.join(folder, "blank.md2"), [points], ["blank"], faces.reshape(-1, 3), places,
              texture_faces.reshape(-1, 3), (SKIN, SKIN))
