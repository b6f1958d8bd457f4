#!/usr/bin/python3
"""models/block1.ksm to block16.ksm, the blocks of the pieces, and models/box.ksm, the menu's box.

A block is a unit cube round the origin. Its front looks towards -y, the player, and is bevelled. Block n
shows tile n - 1 of a picture of 4 x 4 tiles, counted row by row from the lower left; the other faces take the
edge of that tile, its dark joint and its bright rim. A landed block turns about the y axis, so the solid is the same
in every quarter turn.
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
# Depths below the edge of a tile, as fractions of it: the bevels are cut out of the joint; the sides run from the joint
# at their back to the rim at their front; the back is a panel of rim colour in a border of joint.
JOINT_FROM, JOINT_TO, RIM = 0.012, 0.034, 0.082
BACK_BORDER = 0.09
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
    def strips(outer, inner):
        """Strips along the four edges of the tile, bottom, right, top, left; the corners of a strip run along its
        outer edge first, then back along its inner one."""
        corners = [[(d, d), (1 - d, d), (1 - d, 1 - d), (d, 1 - d)] for d in (outer, inner)]
        return [[uv(*corners[0][i]), uv(*corners[0][(i + 1) % 4]), uv(*corners[1][(i + 1) % 4]), uv(*corners[1][i])]
                for i in range(4)]

    joint, side = strips(JOINT_FROM, JOINT_TO), strips(JOINT_FROM, RIM)
    mesh = ksm.Mesh()
    inner = front_square(BEVEL, -HALF)
    edge = front_square(0, -HALF + BEVEL_DEPTH)
    back = front_square(0, HALF)
    panel = front_square(BACK_BORDER, HALF)
    mesh.quad(inner, face)
    for i in range(4):
        j = (i + 1) % 4
        mesh.quad([edge[i], edge[j], inner[j], inner[i]], joint[i])
        mesh.quad([back[i], back[j], edge[j], edge[i]], side[i])
        mesh.quad([back[j], back[i], panel[i], panel[j]], joint[i])
    # A piece of the lower rim near its right end, where no motif crosses it, stretched over the panel.
    mesh.quad([panel[1], panel[0], panel[3], panel[2]],
              [uv(0.82, RIM - 0.01), uv(0.88, RIM - 0.01), uv(0.88, RIM + 0.01), uv(0.82, RIM + 0.01)])
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
