"""Draws the court as the game does, in software: flat normals, one texture with plain linear filtering, one light.

    python3 -m court.preview MODEL.ksm TEXTURE.png OUT-DIRECTORY [WIDTH] [VIEW ...]

Run from assets/. Views are named in VIEWS; without names all are drawn. Blocks stand in for a game that is going on.
"""
import os
import random
import sys

import numpy as np
from PIL import Image

import ksm
from colour import rgb
from . import light

NEAR, FAR = 0.1, 230
# Sides in pixels up to which triangles are looked at together.
TOGETHER = (2, 4, 8, 16, 32)
HALF_VIEW = np.tan(np.radians(30))
# Fade value of the camera's flight, row of the falling piece, place of the light, whether blocks are drawn.
VIEWS = {"start": (0, 20, light.MEAN, False), "f15": (.15, 20, light.MEAN, False), "f30": (.3, 20, light.MEAN, False),
         "middle": (.45, 20, light.MEAN, False), "f60": (.6, 20, light.MEAN, False), "f75": (.75, 20, light.MEAN, False),
         "rest": (1, 20, light.MEAN, True), "floor": (1, 1, light.MEAN, True),
         "rest-empty": (1, 20, light.MEAN, False), "floor-empty": (1, 1, light.MEAN, False),
         "rest-near-gate": (1, 20, light.NEAR_GATE, True), "rest-behind": (1, 20, light.BEHIND_PLAYER, True),
         "rest-unlit": (1, 20, None, True), "start-unlit": (0, 20, None, False),
         "start-near-gate": (0, 20, light.NEAR_GATE, False), "start-behind": (0, 20, light.BEHIND_PLAYER, False)}
PIECES = [rgb(c) for c in ("#1F3A93", "#B8432E", "#6A4C93", "#3E8E57", "#E3B23C", "#28A79F", "#EFE6CF")]


class Camera:
    """The game's camera for a fade value and the row and column of the falling piece."""

    def __init__(self, fade, row, column=5):
        self.eye = np.array([column - 1.0, 52 - 75 * fade, 7 + 10 * fade])
        self.tilt = np.radians(35 * fade - 120 - .5 * row + 15)

    def view(self, points):
        """Eye coordinates: x right, y up, z towards the viewer."""
        p = points - self.eye
        c, s = np.cos(self.tilt), np.sin(self.tilt)
        return np.stack([p[..., 0], c * p[..., 1] - s * p[..., 2], s * p[..., 1] + c * p[..., 2]], -1)

    def screen(self, points, width, height):
        """Pixels (x, y from the top) of points before the camera."""
        e = self.view(np.asarray(points, float))
        k = height / 2 / HALF_VIEW / -e[..., 2]
        return np.stack([width / 2 + e[..., 0] * k, height / 2 - e[..., 1] * k], -1)


def clip_near(corners):
    """Cuts triangles (rows: x, y, z in eye space, then what is interpolated) at the near plane; returns a list."""
    result = []
    ahead = -corners[:, :, 2] > NEAR
    for t in np.nonzero(ahead.any(1))[0]:
        if ahead[t].all():
            result.append(corners[t])
            continue
        polygon = []
        for i in range(3):
            a, b = corners[t, i], corners[t, (i + 1) % 3]
            if ahead[t, i]:
                polygon.append(a)
            if ahead[t, i] != ahead[t, (i + 1) % 3]:
                polygon.append(a + (b - a) * ((-NEAR - a[2]) / (b[2] - a[2])))
        for i in range(1, len(polygon) - 1):
            result.append(np.array([polygon[0], polygon[i], polygon[i + 1]]))
    return result


def sample(texture, u, v):
    """Linear filtering; texture rows from the bottom, 0 to 255."""
    height, width = texture.shape[:2]
    x, y = u * width - .5, v * height - .5
    x0, y0 = np.floor(x).astype(int), np.floor(y).astype(int)
    fx, fy = (x - x0)[:, None], (y - y0)[:, None]

    def texel(i, j):
        return texture[np.clip(j, 0, height - 1), np.clip(i, 0, width - 1)]
    return ((texel(x0, y0) * (1 - fx) + texel(x0 + 1, y0) * fx) * (1 - fy)
            + (texel(x0, y0 + 1) * (1 - fx) + texel(x0 + 1, y0 + 1) * fx) * fy)


def may_show(corners, width, height):
    """Which triangles (as for clip_near) do not lie beyond one of the picture's edges."""
    reach = np.array([width / height, 1]) * HALF_VIEW * -corners[:, :, 2:3]
    return ~((corners[..., :2] > reach).all(1) | (corners[..., :2] < -reach).all(1)).any(1)


def draw(batches, camera, width, height):
    """batches: (points n x 3 x 3, uv n x 3 x 2, factor n x 3, texture). Returns the picture, 0 to 255, and which pixels it
    covers: those where something stands before the far plane."""
    picture, depth = np.zeros((height, width, 3)), np.full((height, width), 1 / FAR)
    for points, uv, factor, texture in batches:
        rows = np.concatenate([camera.view(points), uv, factor[..., None]], 2)
        for corner in clip_near(rows[may_show(rows, width, height)]):
            inverse = -1 / corner[:, 2]
            k = height / 2 / HALF_VIEW
            x, y = width / 2 + corner[:, 0] * k * inverse, height / 2 - corner[:, 1] * k * inverse
            area = (x[1] - x[0]) * (y[2] - y[0]) - (y[1] - y[0]) * (x[2] - x[0])
            x0, x1 = max(0, int(np.floor(x.min() - .5))), min(width - 1, int(np.ceil(x.max())))
            y0, y1 = max(0, int(np.floor(y.min() - .5))), min(height - 1, int(np.ceil(y.max())))
            if abs(area) < 1e-9 or x0 > x1 or y0 > y1:
                continue
            gx, gy = np.arange(x0, x1 + 1) + .5, (np.arange(y0, y1 + 1) + .5)[:, None]
            b = ((gx - x[0]) * (y[2] - y[0]) - (gy - y[0]) * (x[2] - x[0])) / area
            c = ((x[1] - x[0]) * (gy - y[0]) - (y[1] - y[0]) * (gx - x[0])) / area
            a = 1 - b - c
            near = a * inverse[0] + b * inverse[1] + c * inverse[2]
            window = depth[y0:y1 + 1, x0:x1 + 1]
            hit = (a >= 0) & (b >= 0) & (c >= 0) & (near > window)
            if not hit.any():
                continue
            window[hit] = near[hit]
            weights = np.stack([a[hit] * inverse[0], b[hit] * inverse[1], c[hit] * inverse[2]], 1) / near[hit][:, None]
            values = weights @ corner[:, 3:]
            picture[y0:y1 + 1, x0:x1 + 1][hit] = sample(texture, values[:, 0], values[:, 1]) * values[:, 2:]
    return np.clip(picture, 0, 255), depth > 1 / FAR


def block(x, z):
    """Triangles of a stand-in for a block."""
    h, b = .5, .43
    front = [(-b, -h, -b), (b, -h, -b), (b, -h, b), (-b, -h, b)]
    rim = [(-h, -.41, -h), (h, -.41, -h), (h, -.41, h), (-h, -.41, h)]
    back = [(-h, h, -h), (h, h, -h), (h, h, h), (-h, h, h)]
    quads = [front]
    for i in range(4):
        j = (i + 1) % 4
        quads += [[rim[i], rim[j], front[j], front[i]], [back[i], back[j], rim[j], rim[i]]]
    return np.array([[q[i] for i in three] for q in quads for three in ((0, 1, 2), (0, 2, 3))]) + (x, 0, z)


def game_going_on(row):
    """Batches of coloured blocks: a heap, and the falling piece in its row."""
    choice, cells = random.Random(4), []
    for x, height in enumerate([7, 6, 6, 4, 3, 3, 4, 6, 7, 5]):
        cells += [(x, z, (x // 2 * 3 + z // 2 + (x * z) % 2) % 7) for z in range(height) if choice.random() > .07]
    base = max(row, 8)
    cells += [(4, base, 4), (5, base, 4), (6, base, 4), (5, base + 1, 4)]
    batches = []
    for colour in range(7):
        points = np.concatenate([block(x, z) for x, z, c in cells if c == colour])
        texture = np.tile(PIECES[colour] * 255, (1, 1, 1)).reshape(1, 1, 3)
        batches.append((points, np.zeros((len(points), 3, 2)), light.factors(points, (5.0, -5.0, float(row))), texture))
    return batches


def covered(points, camera, width, height):
    """The second result of draw() alone, many times as fast: which pixels show something before the far plane."""
    eye = camera.view(points)
    eye = eye[may_show(eye, width, height)]
    ahead = (-eye[..., 2] > NEAR).all(1)
    eye = np.concatenate([eye[ahead], np.array(clip_near(eye[~ahead])).reshape(-1, 3, 3)])
    inverse, k = -1 / eye[..., 2], height / 2 / HALF_VIEW
    x, y = width / 2 + eye[..., 0] * k * inverse, height / 2 - eye[..., 1] * k * inverse
    area = (x[:, 1] - x[:, 0]) * (y[:, 2] - y[:, 0]) - (y[:, 1] - y[:, 0]) * (x[:, 2] - x[:, 0])
    x0, x1 = np.maximum(0, np.floor(x.min(1) - .5)).astype(int), np.minimum(width - 1, np.ceil(x.max(1))).astype(int)
    y0, y1 = np.maximum(0, np.floor(y.min(1) - .5)).astype(int), np.minimum(height - 1, np.ceil(y.max(1))).astype(int)
    side = np.maximum(x1 - x0, y1 - y0) + 1
    usable, result = (np.abs(area) >= 1e-9) & (x0 <= x1) & (y0 <= y1), np.zeros((height, width), bool)

    def lay(chosen, wide, high):
        n = np.newaxis
        (ax, bx, cx), (ay, by, cy), (ai, bi, ci) = (values[chosen].T[:, :, n, n] for values in (x, y, inverse))
        column, row = x0[chosen, n, n] + np.arange(wide), y0[chosen, n, n] + np.arange(high)[:, n]
        b = ((column + .5 - ax) * (cy - ay) - (row + .5 - ay) * (cx - ax)) / area[chosen, n, n]
        c = ((bx - ax) * (row + .5 - ay) - (by - ay) * (column + .5 - ax)) / area[chosen, n, n]
        near = (1 - b - c) * ai + b * bi + c * ci
        hit = (b >= 0) & (c >= 0) & (b + c <= 1) & (near > 1 / FAR) & (column < width) & (row < height)
        result[np.broadcast_to(row, hit.shape)[hit], np.broadcast_to(column, hit.shape)[hit]] = True
    for low, high in zip((0, *TOGETHER), TOGETHER):
        lay(np.nonzero(usable & (side > low) & (side <= high))[0], high, high)
    for i in np.nonzero(usable & (side > TOGETHER[-1]))[0]:
        lay(np.array([i]), x1[i] - x0[i] + 1, y1[i] - y0[i] + 1)
    return result


def render(triangles, texture, view, width):
    """One view by name; triangles as ksm.read gives them, texture with its lowest row first."""
    fade, row, lamp, blocks = VIEWS[view]
    return take(triangles, texture, Camera(fade, row), lamp, width, width * 3 // 4, game_going_on(row) if blocks else [])


def take(triangles, texture, camera, lamp, width, height, blocks=()):
    """The court under a lamp, and what else stands in it, as batches."""
    points = triangles[..., :3]
    return draw([(points, triangles[..., 3:], light.factors(points, lamp), texture), *blocks], camera, width, height)[0]


def load(model, texture):
    return ksm.read(model), np.array(Image.open(texture).convert("RGB"))[::-1].astype(np.float32)


def main():
    model, texture, out, *rest = sys.argv[1:]
    width = int(rest.pop(0)) if rest and rest[0].isdigit() else 640
    triangles, picture = load(model, texture)
    os.makedirs(out, exist_ok=True)
    for view in rest or VIEWS:
        result = render(triangles, picture, view, width)
        Image.fromarray((result + .5).astype(np.uint8)).save(os.path.join(out, view + ".png"))


if __name__ == "__main__":
    main()
