#!/usr/bin/python3
"""models/block1.ksm to block16.ksm, the blocks of the pieces, and models/box.ksm, the menu's box.

A block is a unit cube round the origin. Its front looks towards -y, the player, and is bevelled. Block n
shows tile n - 1 of a picture of 4 x 4 tiles, counted row by row from the lower left; the other faces take the
dark joint round that tile. A landed block turns about the y axis, so the solid is the same in every quarter turn.
The box of the menu shows the whole picture on each of its six sides.
"""
import os
import sys

import ksm

HALF = 0.5
# How far the bevel of a block goes in along the front, and how deep it is.
BEVEL = 0.07
BEVEL_DEPTH = 0.09
# The front shows its tile without this much of each edge, so that no neighbour shines in at a quarter turn.
TILE_INSET = 0.030
# Where the joint of a tile lies, as a fraction of the tile; bevels and sides are cut out of it.
JOINT_FROM, JOINT_TO = 0.012, 0.034
# The box has small bevels on all its edges.
BOX_BEVEL = 0.035
# A piece of bright tile rim in the picture, from which the box's bevels are cut: the menu draws it without
# light, so only bright edges tell its sides apart.
BOX_RIM = (0.0185, 0.0215, 0.05, 0.20)


def front_square(inset, y):
    """The corners of a square in a plane of constant y, counter-clockwise as seen from -y."""
    a = HALF - inset
    return [(-a, y, -a), (a, y, -a), (a, y, a), (-a, y, a)]


def block(tile):
    """The block that shows one tile, 0..15."""
    column, row = tile % 4, tile // 4

    def uv(s, t):
        return ((column + s) / 4, (row + t) / 4)

    low, high = TILE_INSET, 1 - TILE_INSET
    face = [uv(low, low), uv(high, low), uv(high, high), uv(low, high)]
    # Strips of joint along the four edges of the tile: bottom, right, top, left, outer edge first.
    a, b = JOINT_FROM, JOINT_TO
    strips = [[uv(a, a), uv(1 - a, a), uv(1 - a, b), uv(a, b)],
              [uv(1 - a, a), uv(1 - a, 1 - a), uv(1 - b, 1 - a), uv(1 - b, a)],
              [uv(1 - a, 1 - a), uv(a, 1 - a), uv(a, 1 - b), uv(1 - a, 1 - b)],
              [uv(a, 1 - a), uv(a, a), uv(b, a), uv(b, 1 - a)]]
    mesh = ksm.Mesh()
    inner = front_square(BEVEL, -HALF)
    rim = front_square(0, -HALF + BEVEL_DEPTH)
    back = front_square(0, HALF)
    mesh.quad(inner, face)
    for i in range(4):
        j = (i + 1) % 4
        mesh.quad([rim[i], rim[j], inner[j], inner[i]], strips[i])
        mesh.quad([back[i], back[j], rim[j], rim[i]], strips[i])
    mesh.quad([back[1], back[0], back[3], back[2]], [strips[0][k] for k in (0, 1, 2, 3)])
    return mesh


def box():
    """A cube with the whole picture on each side, bevelled edges and cut corners."""
    mesh = ksm.Mesh()
    whole = [(0, 0), (1, 0), (1, 1), (0, 1)]
    left, right, low, high = BOX_RIM
    rim = [(left, low), (left, high), (right, high), (right, low)]
    a, b = HALF - BOX_BEVEL, HALF
    # Sides: normal axis and sign, and the axes of u and v; u x v points outside.
    for normal, sign, u, su, v, sv in ((1, -1, 0, 1, 2, 1), (1, 1, 0, -1, 2, 1), (0, 1, 1, 1, 2, 1),
                                       (0, -1, 1, -1, 2, 1), (2, 1, 0, 1, 1, 1), (2, -1, 0, 1, 1, -1)):
        corners = []
        for cu, cv in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
            p = [0.0, 0.0, 0.0]
            p[normal], p[u], p[v] = sign * b, cu * su * a, cv * sv * a
            corners.append(tuple(p))
        mesh.quad(corners, whole)
    # Edges: along each axis, between two neighbouring sides.
    for axis in range(3):
        m, n = (axis + 1) % 3, (axis + 2) % 3
        for sm in (-1, 1):
            for sn in (-1, 1):
                def at(along, on_m):
                    p = [0.0, 0.0, 0.0]
                    p[axis] = along * a
                    p[m], p[n] = (sm * b, sn * a) if on_m else (sm * a, sn * b)
                    return tuple(p)
                quad = [at(-1, True), at(1, True), at(1, False), at(-1, False)]
                # axis x m = n, so this order looks outside when the two signs differ.
                mesh.quad(quad if sm * sn < 0 else quad[::-1], rim)
    for sx in (-1, 1):
        for sy in (-1, 1):
            for sz in (-1, 1):
                corner = [(sx * b, sy * a, sz * a), (sx * a, sy * b, sz * a), (sx * a, sy * a, sz * b)]
                mesh.triangle(corner if sx * sy * sz > 0 else corner[::-1], rim[:3])
    return mesh


if __name__ == "__main__":
    folder = os.path.join(sys.argv[1], "models")
    os.makedirs(folder, exist_ok=True)
    for tile in range(16):
        block(tile).write(os.path.join(folder, f"block{tile + 1}.ksm"))
    box().write(os.path.join(folder, "box.ksm"))
