"""The pictures of a cleared row: gold bars that crumble, the splinters that they break into, and the light at their edge.

gold_row is a film of sixteen cells, shown by a streak (form 3) whose head stands at the right end of the row: along runs v
from the right end to the left, across runs u from the top down. Half the streak's width is `size`, its length 4 x size, so
a cell shows 4 x size by 2 x size drawn units. flare has a picture of its own, because pictures are drawn in the order in
which the effect list first names them: the star of the other effects would lie under the gold. shard tumbles twice in
sixteen cells and flashes when it faces the light.
"""
import math

import numpy as np
from scipy.spatial import cKDTree

SIZE = 2.34  # of the streak, drawn units: 9.36 long
LENGTH, HEIGHT = 4 * SIZE, 2 * SIZE
BLOCK = 0.93  # the width of a block at the burst's place, which lies nearer to the eye
PITCH = 0.90  # how much higher the burst of the next row stands
# As seen, the burst stands 0.6 above the middle of the lowest row, 0.3 above the tenth and 0.1 below the highest: it is painted
# lower by what is right for the lower half of the well.
LIFT = -0.30
ACROSS, ALONG = 128, 256  # texels of a cell
STEP = 33.75  # ms that a cell is shown: framespeed x key frames / 16
HOLD, SWEEP = 120.0, 130.0  # ms before the gold crumbles; ms in which the crumbling gets through 63 % of the row


def smooth(a, b, x):
    t = np.clip((x - a) / (b - a), 0, 1)
    return t * t * (3 - 2 * t)


def seen():
    """Places of the texels as seen: x to the left from the right end, y upwards from the row's middle, drawn units."""
    x = (np.arange(ALONG) + 0.5) / ALONG * LENGTH
    y = HEIGHT / 2 - (np.arange(ACROSS) + 0.5) / ACROSS * HEIGHT - LIFT
    return np.meshgrid(x, y, indexing="ij")  # [v, u]


def fragments(seed=5, to_a_block=9):
    """The splinters that the row breaks into: for each texel a random number from 0 to 1 that it shares with its splinter."""
    random = np.random.RandomState(seed)
    count = 10 * to_a_block
    places = np.stack([(np.arange(count) + random.rand(count)) / count * LENGTH, (random.rand(count) - 0.5) * PITCH], -1)
    x, y = seen()
    _, nearest = cKDTree(places).query(np.stack([x, y], -1))
    return random.rand(count)[nearest], places[nearest][..., 0]


def gold_row(step):
    """The cleared row `step` cells after it turned to gold: red, green, blue and alpha of each texel."""
    x, y = seen()
    time = STEP * (step + 0.5)
    late, middle = fragments()
    # Ten gold bars with bevelled edges, lit from above and from the left, and a joint between two.
    across, up = 1 - 2 * ((x / BLOCK) % 1), y / (PITCH / 2)
    edge = np.maximum(np.abs(across), np.abs(up))
    upright = np.abs(across) > np.abs(up)
    bevel = np.where(upright, np.where(across < 0, 0.88, 0.52), np.where(up > 0, 1.0, 0.45))
    face = 0.79 + 0.17 * np.exp(-((across + 0.15) ** 2 + (up - 0.2) ** 2) / 0.30) + 0.06 * (late - 0.5)
    bar = face + (bevel - face) * smooth(0.66, 0.76, edge)
    bar = bar * (1 - 0.45 * smooth(0.90, 1.0, np.abs(across)))
    # Where the crumbling has come to. A splinter goes as a whole, some a while after the front has passed.
    front = LENGTH * 1.08 * (1 - math.exp(-max(time - HOLD, 0) / SWEEP))
    whole = np.clip((middle - front + 0.25 + 2.0 * late ** 1.5) / 0.35, 0, 1)
    # A crest of light runs along the front; a faint glow lies around the row, and around the crest for longer.
    crest = np.exp(-((x - front) / 0.5) ** 2) * smooth(1.6, 0.3, np.abs(up)) * (time > HOLD) * math.exp(-max(time - HOLD, 0) / 600)
    near = np.exp(-((x - front) / 1.6) ** 2) * (time > HOLD)
    halo = np.exp(-(y / 0.75) ** 2) * np.maximum(0.11 * math.exp(-time / 160), 0.10 * near)
    tone = np.maximum(bar, crest)
    alpha = np.maximum(smooth(1.06, 0.94, np.abs(up)) * whole, 0.9 * crest)
    # It covers what lies behind, so that gold stays gold on violet stone and cannot outshine white blocks.
    stops = (0.0, 0.45, 0.75, 1.0)
    colours = ((0.26, 0.12, 0.01), (0.62, 0.37, 0.03), (0.84, 0.57, 0.07), (0.92, 0.70, 0.22))
    rgb = np.stack([np.interp(tone, stops, channel) for channel in zip(*colours)], -1)
    rgb = rgb * alpha[..., None] + np.array((0.84, 0.56, 0.08)) * (1 - alpha[..., None])
    alpha = alpha + (1 - alpha) * halo
    alpha = alpha * smooth(0, 0.12, x) * smooth(LENGTH, LENGTH - 0.12, x)
    alpha = alpha * smooth(HEIGHT / 2, HEIGHT / 2 - 0.5, np.abs(y + LIFT)) * smooth(15.2, 11, step)
    return np.concatenate([rgb, alpha[..., None]], -1)


def shard(step, size=64, multiple=4):
    """A four-cornered splinter of two faces that meet in a ridge, `step` cells into its two turns."""
    line = (np.arange(size * multiple) + 0.5) / (size * multiple) * 2 - 1
    x, y = np.meshgrid(line, -line)
    turn = 4 * math.pi * step / 16 + 0.3
    narrow = max(abs(math.cos(turn)), 0.30)
    sway = 0.25 * math.sin(turn)
    u = (x * math.cos(sway) + y * math.sin(sway)) / narrow
    v = y * math.cos(sway) - x * math.sin(sway)
    corners = np.array([(-0.46, -0.12), (0.04, -0.78), (0.52, 0.06), (-0.06, 0.84)])
    inside = np.full(u.shape, 9.0)
    for (ax, ay), (bx, by) in zip(corners, np.roll(corners, -1, 0)):
        inside = np.minimum(inside, ((bx - ax) * (v - ay) - (by - ay) * (u - ax)) / math.hypot(bx - ax, by - ay))
    # Each face is bright when it looks at the light; the edge is always a little brighter.
    left, right = 0.5 + 0.5 * math.cos(turn - 0.9), 0.5 + 0.5 * math.cos(turn + 1.6)
    tone = 0.2 + 0.8 * np.where(u - 0.05 * v < 0, left, right) + 0.3 * np.exp(-(inside / 0.07) ** 2)
    stops = (0.0, 0.4, 0.8, 1.1)
    colours = ((0.38, 0.20, 0.02), (0.66, 0.41, 0.05), (0.82, 0.57, 0.11), (0.88, 0.68, 0.25))
    rgb = np.stack([np.interp(tone, stops, channel) for channel in zip(*colours)], -1)
    alpha = np.clip(inside / 0.05, 0, 1) * np.clip((0.94 - np.maximum(np.abs(x), np.abs(y))) / 0.06, 0, 1)
    both = np.concatenate([rgb * alpha[..., None], alpha[..., None]], -1)
    both = both.reshape(size, multiple, size, multiple, 4).mean((1, 3))
    # Clear texels get a gold of their own, since filtering mixes it in.
    colour = np.where(both[..., 3:] > 0.02, both[..., :3] / np.maximum(both[..., 3:], 0.02), (0.66, 0.41, 0.05))
    return np.concatenate([colour, both[..., 3:]], -1)


def flare(size=64):
    """A light with a tall ray and a long, flat one."""
    line = (np.arange(size) + 0.5) / size * 2 - 1
    x, y = np.meshgrid(line, -line)
    alpha = 0.75 * np.exp(-((x / 0.16) ** 2 + (y / 0.16) ** 2)) + 0.20 * np.exp(-((x / 0.36) ** 2 + (y / 0.36) ** 2))
    for along, across in ((x, y), (y, x)):
        taper = np.clip(1 - np.abs(along) / 0.92, 0, 1)
        alpha = np.maximum(alpha, 0.9 * taper ** 1.6 * np.exp(-(across / (0.03 + 0.06 * taper)) ** 2))
    alpha = alpha * np.clip((0.96 - np.maximum(np.abs(x), np.abs(y))) / 0.1, 0, 1)
    return np.concatenate([np.ones((size, size, 3)), alpha[..., None]], -1)
