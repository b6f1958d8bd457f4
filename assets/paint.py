"""Painting shared by the picture scripts: the palette, stone grain, vector canvases and how pictures are stored."""
import os
import struct
import zlib

import cairo
import numpy as np
from PIL import Image

from colour import rgb

GOLD, GOLD_LIGHT, GOLD_DARK = rgb("#E3B23C"), rgb("#F8E2A0"), rgb("#7A5418")
SAND_LIGHT, SAND, SAND_DARK = rgb("#DDBE8E"), rgb("#B28C5C"), rgb("#5A4330")
LAPIS, LAPIS_LIGHT, LAPIS_DARK = rgb("#1F3A93"), rgb("#3D62C8"), rgb("#101C50")
TURQUOISE, CARNELIAN, IVORY = rgb("#28A79F"), rgb("#B8432E"), rgb("#EFE6CF")
BRONZE, BRONZE_DARK = rgb("#6A430F"), rgb("#4A2C0C")
INK, BASALT, NIGHT = rgb("#1A1410"), rgb("#211F26"), rgb("#0B1030")


def noise(size, seed, octaves=((4, 1.0), (8, 0.6), (16, 0.4), (64, 0.25), (170, 0.18))):
    """Cloudy grain of mean 0 and deviation 1, size x size; octaves are (cells along a side, weight)."""
    random = np.random.RandomState(seed)
    total = np.zeros((size, size))
    for cells, weight in octaves:
        patch = Image.fromarray(random.rand(cells, cells).astype("f4"))
        total += weight * np.array(patch.resize((size, size), Image.BICUBIC))
    total -= total.mean()
    return total / total.std()


class Canvas:
    """A transparent vector canvas of width x height points, painted at a multiple and reduced at the end."""

    def __init__(self, width, height, multiple=4):
        self.width, self.height, self.multiple = width, height, multiple
        self.surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width * multiple, height * multiple)
        self.context = cairo.Context(self.surface)
        self.context.scale(multiple, multiple)

    def pixels(self):
        """The canvas as an array of height x width x 4 from 0 to 1, colours not multiplied by alpha."""
        return self._unmultiplied(self._reduced())

    def premultiplied(self):
        """As pixels(), but with colours multiplied by alpha."""
        return self._reduced()

    def image(self):
        return to_image(self.pixels())

    def _reduced(self):
        self.surface.flush()
        m = self.multiple
        raw = np.ndarray((self.height * m, self.surface.get_stride() // 4, 4), "u1", self.surface.get_data())
        big = raw[:, :self.width * m, [2, 1, 0, 3]].astype(float) / 255
        return big.reshape(self.height, m, self.width, m, 4).mean((1, 3))

    @staticmethod
    def _unmultiplied(pixels):
        alpha = pixels[..., 3:]
        colours = np.where(alpha > 0, pixels[..., :3] / np.maximum(alpha, 1e-9), 0)
        return np.concatenate([np.clip(colours, 0, 1), alpha], -1)


def over(below, above):
    """Lays premultiplied pixels (height x width x 4) over opaque ones (height x width x 3)."""
    return below * (1 - above[..., 3:]) + above[..., :3]


def to_image(pixels):
    """A PIL image of an array of colours from 0 to 1."""
    return Image.fromarray(np.rint(np.clip(pixels, 0, 1) * 255).astype("u1"))


def bleed(pixels, steps=6):
    """Spreads colour into fully transparent texels, so that linear filtering draws no dark rim round a shape."""
    colours, known = pixels[..., :3].copy(), pixels[..., 3] > 0
    for _ in range(steps):
        total, weight = np.zeros_like(colours), np.zeros(known.shape)
        for axis, shift in ((0, 1), (0, -1), (1, 1), (1, -1)):
            near = np.roll(known, shift, axis)
            total += np.roll(colours, shift, axis) * near[..., None]
            weight += near
        grown = ~known & (weight > 0)
        colours[grown] = total[grown] / weight[grown][:, None]
        known |= grown
    return np.concatenate([colours, pixels[..., 3:]], -1)


def save_png(image, path):
    """Writes a PNG whose rows are stored as they are or as differences from the row above, whichever is smaller: the
    other row filters make the files a tenth smaller at best, and the game unpacks them up to half as slow again."""
    colour_type = {"L": 0, "RGB": 2, "LA": 4, "RGBA": 6}[image.mode]
    width, height = image.size
    rows = np.asarray(image).reshape(height, -1)
    above = np.concatenate([np.zeros_like(rows[:1]), rows[:-1]])

    def packed(filter_type, filtered):
        kinds = np.full((height, 1), filter_type, np.uint8)
        return zlib.compress(np.concatenate([kinds, filtered], 1).tobytes(), 9)

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0)) +
                   chunk(b"IDAT", min(packed(0, rows), packed(2, rows - above), key=len)) + chunk(b"IEND", b""))


def save(image, directory, name, flipped=False):
    """Stores a picture under the data directory. flipped turns it upside down, for quads that draw v = 0 on top."""
    path = os.path.join(directory, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    if flipped:
        image = image.transpose(Image.FLIP_TOP_BOTTOM)
    if path.endswith(".png"):
        save_png(image, path)
    else:
        image.save(path)
