#!/usr/bin/python3
"""models/block1.ksm to block16.ksm, the blocks of the pieces, and models/box.ksm, the menu's box.

A block is a unit cube round the origin. Its front looks towards -y, the player, and is bevelled. Block n
shows tile n - 1 of a picture of 4 x 4 tiles, counted row by row from the lower left, as if the inlay went through the stone:
its back shows the same place of the picture as lies straight in front of it, so that a piece seen from behind has its whole
motif, mirrored. The sides take the edge of the tile. A landed block turns about the y axis, so the solid is the same in
every quarter turn.
The box of the menu shows 2 x 2 tiles on each of its six sides: the whole picture would sparkle where it is drawn small.
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
# Depths below the edge of a tile, as fractions of it: the bevels are cut out of the joint; the sides run from the rim at their
# front, darkening, to a seam near the back, and from there to a dark line that parts them from the back's bevel. Deeper than
# 0.08 lies the motif: sides that take it show stretched scraps of loops and wings.
JOINT_FROM, JOINT_TO = 0.012, 0.034
SIDE_FRONT, SIDE_SEAM = 0.076, 0.050
LINE_FROM, LINE_TO = 0.046, 0.016
LINE = 0.09  # how wide that line is
BACK_BEVEL_DEPTH = 0.06
BOX_TILES = 2  # tiles along a side of the box
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

    def ring(depth):
        return [uv(depth, depth), uv(1 - depth, depth), uv(1 - depth, 1 - depth), uv(depth, 1 - depth)]

    mesh = ksm.Mesh()
    front, edge = front_square(BEVEL, -HALF), front_square(0, -HALF + BEVEL_DEPTH)
    seam, rear = front_square(0, HALF - BACK_BEVEL_DEPTH - LINE), front_square(0, HALF - BACK_BEVEL_DEPTH)
    back = front_square(BEVEL, HALF)

    def band(near, far, near_depth, far_depth):
        """The four strips between two squares, of which near lies before far."""
        inner, outer = ring(near_depth), ring(far_depth)
        for i in range(4):
            j = (i + 1) % 4
            mesh.quad([far[i], far[j], near[j], near[i]], [outer[i], outer[j], inner[j], inner[i]])

    face = ring(TILE_INSET)
    mesh.quad(front, face)
    band(front, edge, JOINT_TO, JOINT_FROM)
    band(edge, seam, SIDE_FRONT, SIDE_SEAM)
    band(seam, rear, LINE_FROM, LINE_TO)
    band(rear, back, JOINT_FROM, JOINT_TO)
    mesh.quad([back[1], back[0], back[3], back[2]], [face[1], face[0], face[3], face[2]])
    return mesh


def box():
    """A cube with the picture's lower left on each side, bevelled edges and cut corners."""
    mesh = ksm.Mesh()
    part = BOX_TILES / 4
    shown = [(0, 0), (part, 0), (part, part), (0, part)]
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
        mesh.quad(corners, shown)
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
