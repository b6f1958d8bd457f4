"""Paints the jackal's skins: every texel is coloured from the place and the direction of the surface it covers.

The game draws creatures without light, so the soft light from above and the shade of the belly are painted in.
"""
import numpy as np
from PIL import Image

from . import shape


def rgb(code):
    return np.array([int(code[i:i + 2], 16) for i in (1, 3, 5)]) / 255


GOLD, LAPIS, TURQUOISE, CARNELIAN = rgb("#E3B23C"), rgb("#1F3A93"), rgb("#28A79F"), rgb("#B8432E")
# Fur of the back, the flanks and the belly, the muzzle's end, and the hollow of the ears.
COATS = {"sand": dict(back=rgb("#4E3B30"), flank=rgb("#B88A55"), belly=rgb("#E8D8B8"), leg=rgb("#C48F55"),
                      hollow=rgb("#D9A98A"), eye=rgb("#F0B030")),
         "night": dict(back=rgb("#23222E"), flank=rgb("#343346"), belly=rgb("#4A4660"), leg=rgb("#2E2D3E"),
                       hollow=rgb("#8A5A4A"), eye=rgb("#FFC845"))}
INK = rgb("#15110F")


def smooth(low, high, x):
    t = np.clip((x - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def mix(a, b, t):
    return a * (1 - t[:, None]) + b * t[:, None]


def grain(points, scale, seed):
    """A cheap three-dimensional noise between -1 and 1, from crossed sine waves."""
    g = np.random.default_rng(seed)
    total = np.zeros(len(points))
    for k in range(1, 4):
        for _ in range(4):
            direction = g.normal(size=3)
            total += np.sin(points @ direction * scale * k + g.uniform(0, 6.28)) / k
    return np.clip(total / 3.2, -1, 1)


def neck_run(points):
    """How far along the neck from the shoulder (0) to the nape (1)."""
    a, b = np.array([0.235, 0, 0.50]), np.array([0.375, 0, 0.705])
    return (points - a) @ (b - a) / np.dot(b - a, b - a)


def colour(coat, part, points, normals):
    """Colours of surface points of one part, in the resting pose."""
    c = COATS[coat]
    x, y, z = points.T
    up = normals[:, 2]
    fur = grain(points * (1, 1, 2.2), 60, 3)
    streak = grain(points * (.35, 1, 1), 160, 8)
    if part == "trunk":
        result = np.tile(c["flank"], (len(points), 1))
        result = mix(result, c["belly"], smooth(-.25, -.8, up + .12 * fur))
        ridge = smooth(.30, .75, up + .22 * fur) * smooth(.36, .26, x) + smooth(.35, .8, up + .2 * fur) * smooth(.30, .40, x) * .6
        result = mix(result, c["back"], np.clip(ridge, 0, 1))
        throat = smooth(.1, -.5, normals[:, 2] - normals[:, 0] * .5) * smooth(.22, .30, x) * smooth(.6, .5, x)
        result = mix(result, c["belly"], throat * .8)
        # The face: pale cheeks, dark bridge, nose, eyes with a long painted corner.
        result = mix(result, c["belly"], smooth(.47, .53, x) * smooth(.2, -.3, up) * .8)
        result = mix(result, c["back"], smooth(.50, .58, x) * smooth(.35, .75, up) * .7)
        result = mix(result, INK, smooth(.636, .642, x))
        eye = np.hypot((x - .492) / .019, (z - .757) / .0125)
        corner = smooth(.010, .004, np.abs(z - .755 - (.488 - x) * .12)) * smooth(.42, .43, x) * smooth(.52, .51, x)
        side = smooth(.25, .4, np.abs(normals[:, 1]))
        result = mix(result, INK, np.clip(corner + smooth(1.7, 1.35, eye), 0, 1) * side)
        result = mix(result, c["eye"], smooth(1.1, .9, eye) * side)
        result = mix(result, INK, smooth(.010, .006, np.hypot(x - .494, z - .757)) * side)
        # A broad collar: gold, lapis and turquoise rows, and drops below.
        run = neck_run(points)
        angle = np.arctan2(y, (points - np.array([.30, 0, .60])) @ np.array([-.82, 0, .57]))
        collar = (run > .06) & (run < .62)
        rows = np.floor((run - .06) / .56 * 7).astype(int)
        beads = (np.abs((angle * 14 / np.pi) % 1 - .5) < .38)
        band = np.select([(rows == 0)[:, None], (rows == 1)[:, None], (rows == 2)[:, None], (rows == 3)[:, None],
                          (rows == 4)[:, None], (rows == 5)[:, None]], [GOLD, LAPIS, GOLD, TURQUOISE, GOLD, CARNELIAN], GOLD)
        band = np.where((np.isin(rows, (1, 3, 5)) & ~beads)[:, None], band * .55, band)
        result = np.where(collar[:, None], band, result)
        fur = np.where(collar, 0, fur)
        streak = np.where(collar, 0, streak)
    elif part == "tail":
        result = mix(np.tile(c["flank"], (len(points), 1)), c["back"], smooth(.2, .8, up + .3 * fur))
        result = mix(result, INK, smooth(.24, .16, z + .02 * fur))
    elif part == "ear":
        result = np.tile(c["flank"] * .9, (len(points), 1))
        result = mix(result, c["back"], smooth(.90, .98, z))
    elif part == "jaw":
        result = mix(np.tile(c["belly"], (len(points), 1)), INK, smooth(.625, .635, x))
    else:
        result = mix(np.tile(c["leg"], (len(points), 1)), c["flank"], smooth(.25, .42, z))
        inner = smooth(.1, .8, -normals[:, 1] * np.sign(y))
        result = mix(result, c["belly"], inner * .5 * smooth(.42, .3, z))
        result = mix(result, c["back"], smooth(.035, .0, z) * .75)
        toes = (np.abs((y * 1000 / 14) % 1 - .5) < .12) & (z < .02) & (normals[:, 0] > .2)
        result = np.where(toes[:, None], INK, result)
        ring = (z > .125) & (z < .158) if part[0] == "f" else (z > .150) & (z < .183)
        edge = (z < .130) | (z > .153) if part[0] == "f" else (z < .155) | (z > .178)
        result = np.where(ring[:, None], np.where(edge[:, None], GOLD * .65, GOLD), result)
    light = .58 + .34 * np.clip(up, -1, 1) + .12 * np.clip(normals[:, 0], 0, 1) + .10 * np.clip(z / .6, 0, 1)
    if part in shape.LEGS:
        light -= .16 * smooth(.1, .9, -normals[:, 1] * np.sign(y)) * smooth(.1, .35, z)
    light = np.clip(light + .28, .40, 1.12)
    shade = np.stack([light, light * .98 + .01, light * .93 + .05], 1)
    return np.clip(result * (1 + .10 * fur + .10 * streak)[:, None] * shade, 0, 1)


def vertex_normals(mesh):
    points = np.array(mesh.points)
    total = np.zeros_like(points)
    for ids in mesh.triangles:
        n = np.cross(points[ids[1]] - points[ids[0]], points[ids[2]] - points[ids[0]])
        total[ids] += n
    return total / np.maximum(np.linalg.norm(total, axis=1, keepdims=True), 1e-9)


def paint(mesh, coat):
    """The skin as an image whose top row is t = 0."""
    size = shape.SKIN
    points, normals = np.array(mesh.points), vertex_normals(mesh)
    places = np.array(mesh.texcoords)
    canvas = np.zeros((size, size, 3))
    filled = np.zeros((size, size), bool)
    hollow_edge = sum(shape.RECTANGLES["ear"][::2]) / 2
    for ids, texture, part in zip(mesh.triangles, mesh.texture_triangles, mesh.parts):
        # Right legs use the skin of the left ones.
        if part in ("fr", "hr"):
            continue
        a, b, c = places[texture]
        low = np.floor(np.minimum(np.minimum(a, b), c)).astype(int) - 3
        high = np.ceil(np.maximum(np.maximum(a, b), c)).astype(int) + 4
        low, high = np.maximum(low, 0), np.minimum(high, size)
        gx, gy = np.meshgrid(np.arange(low[0], high[0]), np.arange(low[1], high[1]))
        q = np.stack([gx.ravel() + .5, gy.ravel() + .5], 1)
        area = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])
        if abs(area) < 1e-6:
            continue
        v = ((q[:, 0] - a[0]) * (c[1] - a[1]) - (q[:, 1] - a[1]) * (c[0] - a[0])) / area
        w = ((b[0] - a[0]) * (q[:, 1] - a[1]) - (b[1] - a[1]) * (q[:, 0] - a[0])) / area
        u = 1 - v - w
        inside = (u >= -1e-6) & (v >= -1e-6) & (w >= -1e-6)
        # A margin of three texels round each triangle, where nothing is painted yet, keeps filtering clean.
        near = (np.min([u, v, w], 0) > -3 * np.ptp(np.array([a, b, c]), axis=0).max() / abs(area))
        column, row = gx.ravel(), gy.ravel()
        use = inside | (near & ~filled[row, column])
        weights = np.clip(np.stack([u, v, w], 1)[use], 0, 1)
        weights /= weights.sum(1, keepdims=True)
        n = weights @ normals[ids]
        n /= np.maximum(np.linalg.norm(n, axis=1, keepdims=True), 1e-9)
        tint = colour(coat, part, weights @ points[ids], n)
        if part == "ear" and max(a[0], b[0], c[0]) < hollow_edge:
            edge = smooth(.0, .25, weights.min(1))
            tint = mix(tint * .7, COATS[coat]["hollow"] * .75, edge)
        canvas[row[use], column[use]] = tint
        filled[row[inside], column[inside]] = True
    canvas[canvas.sum(2) == 0] = COATS[coat]["flank"] * .5
    return Image.fromarray((canvas * 255 + .5).astype(np.uint8))
