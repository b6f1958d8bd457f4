#!/usr/bin/python3
"""Measures how far apart the seven pieces are in colour: the CIEDE2000 distance of the mean colours of the tiles
they show, for normal and for three kinds of colour-blind eyes. Fails when two pieces come closer than 15.

The mean is taken over Lab values, as an eye that does not resolve the motif would see it. The argument is the data
directory; without one the committed one is measured.
"""
import itertools
import os
import sys

import numpy as np
from PIL import Image

from colour import VISIONS, ciede2000, lab, seen_by
from piece_motifs import LETTERS, TILES

SMALLEST_ALLOWED = 15.0


def shown_texels(data, kind):
    """The texels of the four tiles that a piece shows."""
    pixels = np.asarray(Image.open(os.path.join(data, f"textures/floor1{LETTERS[kind]}.png")).convert("RGB")) / 255
    side = pixels.shape[0] // 4
    return np.concatenate([pixels[(3 - row) * side:(4 - row) * side, column * side:(column + 1) * side].reshape(-1, 3)
                           for column, row in TILES[kind]])


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "../data")
    texels = {kind: shown_texels(data, kind) for kind in LETTERS}
    for kind, colours in texels.items():
        print("%-7s mean L* %5.1f a* %5.1f b* %5.1f" % (kind, *lab(colours).mean(0)))
    smallest = np.inf
    for vision in VISIONS:
        means = {kind: lab(seen_by(colours, vision)).mean(0) for kind, colours in texels.items()}
        distance, pair = min((float(ciede2000(means[a], means[b])), (a, b))
                             for a, b in itertools.combinations(means, 2))
        print("%-7s smallest distance %5.1f between %s and %s" % (vision, distance, *pair))
        smallest = min(smallest, distance)
    print("smallest of all %.1f, at least %.1f is asked for" % (smallest, SMALLEST_ALLOWED))
    return 0 if smallest >= SMALLEST_ALLOWED else 1


if __name__ == "__main__":
    sys.exit(main())
