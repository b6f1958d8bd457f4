#!/usr/bin/python3
"""textures/particles/*.png: the pictures that particle effects are drawn with.

All are white or nearly white with their shape in alpha, so that the colours of an emitter's key frames decide; the
torchlight, which multiplies, has its shape in its brightness; only the flame, the dusk and the gold of a cleared row
(particles/row.py) have colours of their own. Cells of a sheet are numbered row by row from v = 0, which is why the files
are stored upside down; so is the streak, whose head is at v = 0. Two texels along every edge of a cell stay clear, because
filtering would draw the neighbour's.
"""
import math
import sys

import numpy as np
from scipy.ndimage import gaussian_filter, map_coordinates

import paint
from particles import row

FOLDER = "textures/particles/"


def grid(size):
    """Coordinates from -1 to 1 of the texels' middles: x to the right, y upwards."""
    line = (np.arange(size) + 0.5) / size * 2 - 1
    return np.meshgrid(line, -line)


def edge(x, y, width=0.08):
    """1 inside, sinking to 0 over width before the edge of the cell is reached."""
    reach = np.maximum(np.abs(x), np.abs(y))
    return np.clip((1 - 0.03 - reach) / width, 0, 1)


def white(alpha):
    """White texels with this alpha."""
    return np.concatenate([np.ones((*alpha.shape, 3)), np.clip(alpha, 0, 1)[..., None]], -1)


def sheet(cells, columns):
    """Cells laid out row by row from the top."""
    rows = [np.concatenate(cells[i:i + columns], 1) for i in range(0, len(cells), columns)]
    return np.concatenate(rows, 0)


def glow(size=64):
    """A soft round light: a gaussian that ends in nothing at the rim."""
    x, y = grid(size)
    r = np.hypot(x, y)
    alpha = np.exp(-(r / 0.42) ** 2) - math.exp(-(0.95 / 0.42) ** 2)
    return white(np.clip(alpha, 0, 1) * edge(x, y))


def torchlight(size=64):
    """What a torch lends to the stone about it: bright around, black at the rim, since it is drawn by multiplying; less in the
    middle, where the stone is bright enough and would turn from gold to lemon."""
    x, y = grid(size)
    square = x ** 2 + y ** 2
    light = np.clip(1 - square / 0.9, 0, 1) ** 1.5 * (1 - 0.8 * np.exp(-square / 0.04)) * edge(x, y)
    return np.repeat(light[..., None], 3, -1)


def mote(size=16):
    """A grain with a bright middle and a faint halo. It is shown a few pixels wide, so it has only a few texels: more
    would be skipped by the filter and make it flicker."""
    x, y = grid(size)
    r = np.hypot(x, y)
    return white((0.85 * np.exp(-(r / 0.30) ** 2) + 0.28 * np.exp(-(r / 0.52) ** 2) - 0.01) * edge(x, y, 0.14))


def streak(width=32, length=64):
    """A spark in flight: a round head at v = 0 and a tail that thins and fades. Across runs u, along runs v."""
    x = np.broadcast_to(((np.arange(width) + 0.5) / width * 2 - 1)[None, :], (length, width))
    v = np.broadcast_to(((np.arange(length) + 0.5) / length)[:, None], (length, width))
    head = np.clip((v - 0.03) / 0.10, 0, 1)
    tail = np.clip(1 - (v - 0.10) / 0.86, 0, 1) ** 1.6
    thin = 0.42 * (0.35 + 0.65 * tail)
    alpha = np.sqrt(head) * tail * np.exp(-(x / thin) ** 2)
    alpha[np.abs(x) > 0.94] = 0
    return white(alpha)


def ring(size=128):
    """A thin circle of light that is softer on its inside: the front of a wave."""
    x, y = grid(size)
    r = np.hypot(x, y)
    outside, inside = np.exp(-((r - 0.80) / 0.045) ** 2), np.exp(-((r - 0.80) / 0.20) ** 2)
    return white(np.where(r > 0.80, outside, 0.25 * outside + 0.75 * inside) * edge(x, y))


def star(phase, size=64):
    """A twinkling star: four long rays and four short ones that grow and shrink against each other."""
    x, y = grid(size)
    r = np.hypot(x, y) + 1e-9
    swing = 0.5 + 0.5 * math.cos(phase)
    alpha = np.exp(-(r / 0.11) ** 2)
    for turn, reach, share in ((0, 0.5 + 0.42 * swing, 0.85), (math.pi / 4, 0.55 - 0.30 * swing, 0.5)):
        u = x * math.cos(turn) + y * math.sin(turn)
        v = y * math.cos(turn) - x * math.sin(turn)
        for along, across in ((u, v), (v, u)):
            taper = np.clip(1 - np.abs(along) / reach, 0, 1)
            alpha = np.maximum(alpha, share * taper ** 1.5 * np.exp(-(across / (0.035 + 0.05 * taper)) ** 2))
    return white(alpha * edge(x, y))


def flame(step, steps, noise, size=64):
    """One tongue of fire at a moment of its life: broad and hot at the start, then torn upwards until it is gone."""
    x, y = grid(size)
    share = step / (steps - 1)
    up = (y + 1) / 2
    # The air above the fire carries the noise upwards; it bends the tongue more the higher it reaches.
    rows = (np.arange(size) + 60 * share)[:, None] % (noise.shape[0] - 1)
    columns = np.broadcast_to(np.linspace(10, noise.shape[1] - 10, size)[None, :], (size, size))
    air = map_coordinates(noise, [np.broadcast_to(rows, (size, size)), columns], order=1, mode="wrap")
    bent = x + 0.16 * air * up + 0.10 * math.sin(2 * math.pi * share + 1.2) * up ** 2
    foot = 0.05 + 0.42 * share
    height = 0.92 - 0.12 * share
    along = np.clip((up - foot) / max(height - foot, 0.05), 0, 1)
    body = 0.54 * (1 - 0.35 * share) * np.sqrt(np.clip(along / 0.22, 0, 1)) * (1 - along) ** 0.85
    inside = 1 - np.abs(bent) / np.maximum(body, 1e-3)
    heat = np.clip(inside, 0, 1) ** 0.9 * np.clip((up - foot) / 0.06, 0, 1) * (1 - 0.55 * along)
    heat = gaussian_filter(np.clip(heat + 0.22 * air * heat, 0, 1), 1.2) * (1 - share) ** 0.6
    # From the heart outwards: pale yellow, orange, red.
    stops = np.array([0.0, 0.25, 0.55, 1.0])
    colours = np.array([[0.86, 0.26, 0.04], [1.0, 0.47, 0.09], [1.0, 0.74, 0.28], [1.0, 0.96, 0.72]])
    rgb = np.stack([np.interp(heat, stops, colours[:, i]) for i in range(3)], -1)
    return np.concatenate([rgb, (np.clip(heat * 1.35, 0, 1) * edge(x, y))[..., None]], -1)


def bird(phase, size=64):
    """An ibis seen from behind, gliding and beating its wings: the height of the wing tips follows the phase."""
    multiple = 4
    x, y = grid(size * multiple)
    lift = math.sin(phase)
    reach = 0.86
    span = np.abs(x) / reach
    # The wing rises from the shoulder to the wrist and bends from there to the tip.
    line = 0.05 + lift * (0.55 * span ** 1.2) - 0.20 * (1 - lift) * np.clip(span - 0.5, 0, 1)
    thick = 0.085 * np.clip(1 - span, 0, 1) ** 0.7 + 0.004
    wing = np.clip((thick - np.abs(y - line)) / 0.02, 0, 1) * (span < 1)
    trunk = np.clip(1.4 - np.hypot(x / 0.075, (y - 0.02) / 0.12), 0, 0.4) / 0.4
    shape = np.maximum(wing, trunk)
    alpha = shape.reshape(size, multiple, size, multiple).mean((1, 3))
    tips = np.clip((np.abs(grid(size)[0]) / reach - 0.72) / 0.15, 0, 1)
    colours = np.ones((size, size, 3)) * (1 - 0.82 * tips[..., None])
    return np.concatenate([colours, (alpha * edge(*grid(size)))[..., None]], -1)


def dusk(size=1024, reach=1.4, middle=(-2.0, -1.3)):
    """The evening behind the menu: pyramids before the last light.

    It is seen only in the menu's lower left corner of 128 x 128 pixels, whose copies the program lays over the screen,
    each larger than the one before, and which together are 2.1 times as bright. So it is as dark as that asks for. What is
    drawn stays sharp where its outline runs towards the corner's middle, as the horizon and the feet of the pyramids do; the
    rest spreads outwards like haze. The corner is a tenth of the screen at 1280 pixels and a fifth at 640: the horizon falls
    near its middle at 1280 and at a quarter of its height at 640, and at every size pyramids stand at both sides of the light
    or in its middle. On wide screens the corner lies farther left, so that the row of pyramids goes on there.

    The quad is drawn around `middle`, `reach` to all sides, where half the window is 1.155 high. It ends in black above and to
    the right, because the eye passes it on the way to the credits.
    """
    horizon, slope = 0.0624, 1.2
    heights = (0.0, 0.048, horizon - 0.0004, horizon + 0.0002, 0.0704, 0.0816, 0.0976, 0.124, 0.176, 0.336)
    colours = ("#050409", "#0A070D", "#100B12", "#743A1A", "#6A3424", "#452440", "#241A40", "#0D0E28", "#050717", "#000000")
    # Place of the top and half the width in widths of a 4:3 screen; the side in shadow and the side towards the light.
    far, near = ("#0A0711", "#150D14"), ("#08060E", "#1E1212")
    pyramids = ((0.0824, 0.028, far), (0.0152, 0.030, near), (0.135, 0.027, far), (0.195, 0.029, near), (-0.05, 0.028, far),
                (-0.166, 0.034, near), (-0.29, 0.030, far), (-0.374, 0.035, near))

    def rgb(colour):
        return np.array([int(colour[i:i + 2], 16) for i in (1, 3, 5)]) / 255

    multiple = 2
    x, y = grid(size * multiple)
    across = ((middle[0] + reach * x) / (1.1547 * 4 / 3) + 1) / 2
    up = ((middle[1] + reach * y) / 1.1547 + 1) / 2
    pixels = np.stack([np.interp(up, heights, channel) for channel in np.transpose([rgb(c) for c in colours])], -1)
    for top, half, (shadow, light) in pyramids:
        width = half * (1 - (up - horizon) / (half * slope))
        inside = (up > horizon) & (np.abs(across - top) < width)
        pixels[inside & (across - top <= 0.32 * width)] = rgb(shadow)
        pixels[inside & (across - top > 0.32 * width)] = rgb(light)
    pixels *= np.clip((0.235 - across) / 0.03, 0, 1)[..., None]
    return pixels.reshape(size, multiple, size, multiple, 3).mean((1, 3))


def main():
    data = sys.argv[1]

    def save(name, pixels):
        paint.save(paint.to_image(paint.bleed(pixels)), data, FOLDER + name + ".png", flipped=True)

    noise = paint.noise(128, 7, ((5, 1.0), (10, 0.8), (20, 0.5), (40, 0.25)))
    save("glow", glow())
    paint.save(paint.to_image(torchlight()), data, FOLDER + "torchlight.png", flipped=True)
    save("mote", mote())
    save("streak", streak())
    save("ring", ring())
    save("star", sheet([star(math.pi / 2 * i) for i in range(4)], 2))
    save("flame", sheet([flame(i, 16, noise) for i in range(16)], 4))
    paint.save(paint.to_image(dusk()), data, FOLDER + "dusk.png", flipped=True)
    save("row_gold", sheet([row.gold_row(i) for i in range(16)], 4))
    save("row_flare", row.flare())
    save("shard", sheet([row.shard(i) for i in range(16)], 4))
    save("bird", sheet([bird(2 * math.pi * i / 16) for i in range(16)], 4))


if __name__ == "__main__":
    main()
