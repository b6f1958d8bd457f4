#!/usr/bin/python3
"""default/blank.png: plain sandstone, which stands in for a picture that cannot be loaded."""
import sys

import numpy as np

import paint

SIZE = 64

if __name__ == "__main__":
    grain = paint.noise(SIZE, 3, ((4, 1.0), (16, 0.5)))[..., None]
    paint.save(paint.to_image(np.clip(paint.SAND * (1 + 0.05 * grain), 0, 1)), sys.argv[1], "default/blank.png")
