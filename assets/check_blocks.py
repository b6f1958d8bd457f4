#!/usr/bin/python3
"""Measures how well the next piece stands off its panel while it turns: the CIEDE2000 distance of its mean colour to the panel's.

Each piece is put together from its block models with its own picture and drawn from twenty-four sides as the game turns it, under
the light of the next window. Fails when a piece comes closer to the panel than LEAST from any side.
"""
import math
import os
import sys

import numpy as np
from PIL import Image

import ksm
from colour import ciede2000, lab
from court import light, preview
from piece_motifs import LETTERS, TILES
from skin_shots import panel

LEAST = 15.0
TURNS = 24
SIZE, DISTANCE = 72, 7.0  # pixels of a picture; units from the eye to the piece's middle
LAMP = (7.0, -5.0, 7.0)  # as seen from the eye


class Eye:
    """Eye coordinates are what preview.draw is given."""

    @staticmethod
    def view(points):
        return points


def turned(points, angle):
    """About x, then about z, by the same angle."""
    c, s = math.cos(angle), math.sin(angle)
    about_x = np.array([[1, 0, 0], [0, c, -s], [0, s, c]])
    about_z = np.array([[c, -s, 0], [s, c, 0], [0, 0, 1]])
    return points @ (about_z @ about_x).T


def piece(data, kind):
    """The triangles of a piece round its middle, and its picture with its lowest row first."""
    parts = []
    for column, row in TILES[kind]:
        block = ksm.read(os.path.join(data, "models/block%d.ksm" % (4 * row + column + 1)))
        block[..., :3] += (column, 0, row)
        parts.append(block)
    triangles = np.concatenate(parts)
    middle = (triangles[..., :3].min((0, 1)) + triangles[..., :3].max((0, 1))) / 2
    triangles[..., :3] -= middle
    picture = Image.open(os.path.join(data, "textures/floor1%s.png" % LETTERS[kind])).convert("RGB")
    return triangles, np.asarray(picture.resize((128, 128), Image.BOX))[::-1].astype(np.float32)


def panel_colour(data):
    """The mean colour of the panel's middle, as its shots lay it over black."""
    skin = np.asarray(Image.open(os.path.join(data, "gui/ravix.png")).convert("RGB")) / 255
    field = skin[:skin.shape[0] // 2, skin.shape[1] // 2:].mean((0, 1))
    colour = np.zeros(3)
    for mode, vertices in panel(0.90, 1.0, 1.0):
        tints = np.array([vertex.colour for vertex in vertices])
        # Only what reaches over the whole panel lies under the piece.
        if {vertex.anchor for vertex in vertices} == {0, 1, 2, 3} and len(vertices) == 4 and mode != 1:
            tint = tints.mean(0)
            colour += (tint[:3] * (field if mode == 2 else 1) - colour) * tint[3]
    return colour


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "../data")
    ground = lab(panel_colour(data))
    print("panel L* %.1f" % ground[0])
    least = np.inf
    for kind in LETTERS:
        triangles, picture = piece(data, kind)
        distances = []
        for turn in range(TURNS):
            points = turned(triangles[..., :3], 2 * math.pi * turn / TURNS) + (0, 0, -DISTANCE)
            shown, covered = preview.draw([(points, triangles[..., 3:], light.factors(points, LAMP), picture)], Eye, SIZE, SIZE)
            pixels = shown[covered] / 255
            distances.append(float(ciede2000(lab(pixels).mean(0), ground)))
        print("%-7s distance to the panel %4.1f to %4.1f" % (kind, min(distances), max(distances)))
        least = min(least, *distances)
    print("smallest of all %.1f, at least %.1f is asked for" % (least, LEAST))
    return 0 if least >= LEAST else 1


if __name__ == "__main__":
    sys.exit(main())
