"""A wall to carve and paint on: colour and height pictures of stone with sunk reliefs.

Lengths are in units of the scene, with the origin at the lower left.
"""
import os

import numpy as np
from PIL import Image, ImageDraw, ImageFilter

from colour import rgb

LAPIS, TURQUOISE, GOLD = (tuple(int(v * 255 + .5) for v in rgb(c)) for c in ("#1F3A93", "#28A79F", "#E3B23C"))
CARNELIAN, IVORY, SOOT = (tuple(int(v * 255 + .5) for v in rgb(c)) for c in ("#B8432E", "#EFE6CF", "#28222C"))
STONE_MIDDLE, STONE_LIGHT = rgb("#B28C5C"), rgb("#DDBE8E")
# Heights are grey values: FLAT is the wall's surface, less is sunk, more is raised.
FLAT = 128
# Pictures are drawn at this multiple of their size.
OVERSIZE = 2


def noise(height, width, cells, seed=0, octaves=4):
    """Clouds between 0 and 1; cells is how many of the largest fit into the width."""
    random, total, weight, sum_of_weights = np.random.default_rng(seed), np.zeros((height, width)), 1.0, 0.0
    for octave in range(octaves):
        rows = max(2, int(cells * height / width * 2 ** octave) + 2)
        columns = max(2, int(cells * 2 ** octave) + 2)
        patch = Image.fromarray(random.random((rows, columns)).astype(np.float32))
        total += weight * np.array(patch.resize((width, height), Image.BICUBIC))
        sum_of_weights += weight
        weight *= 0.5
    return total / sum_of_weights


class Wall:
    def __init__(self, width, height, density):
        """A bare wall; density is in pixels a unit."""
        self.width, self.height, self.density = width, height, density
        self.size = (int(width * density), int(height * density))
        large = tuple(OVERSIZE * n for n in self.size)
        self.relief = Image.new("L", large, FLAT)
        self.paint = Image.new("RGBA", large, (0, 0, 0, 0))
        self._cut, self._brush = ImageDraw.Draw(self.relief), ImageDraw.Draw(self.paint)

    def _place(self, points):
        k = self.density * OVERSIZE
        return [(x * k, (self.height - y) * k) for x, y in points]

    def polygon(self, points, height=60, colour=None, alpha=120):
        self._cut.polygon(self._place(points), fill=height)
        if colour:
            self._brush.polygon(self._place(points), fill=colour + (alpha,))

    def rectangle(self, x0, y0, x1, y1, height=60, colour=None, alpha=120):
        self.polygon([(x0, y0), (x1, y0), (x1, y1), (x0, y1)], height, colour, alpha)

    def ellipse(self, x, y, rx, ry, height=60, colour=None, alpha=120):
        (x0, y0), (x1, y1) = self._place([(x - rx, y + ry), (x + rx, y - ry)])
        self._cut.ellipse([x0, y0, x1, y1], fill=height)
        if colour:
            self._brush.ellipse([x0, y0, x1, y1], fill=colour + (alpha,))

    def line(self, points, width, height=60, colour=None, alpha=120):
        pixels = max(1, int(width * self.density * OVERSIZE))
        self._cut.line(self._place(points), fill=height, width=pixels, joint="curve")
        if colour:
            self._brush.line(self._place(points), fill=colour + (alpha,), width=pixels, joint="curve")

    def save(self, folder, name, ground=None, courses=(1.6, 3.6), seed=1, dirt=0.6, fading=0.35):
        """Writes name.png (colour) and name-height.png.

        ground: colours of the bare wall, sandstone by default; courses: height and length of the masonry's stones, or None;
        dirt: how much darkness lies in the hollows; fading: how much paint has stayed where most of it has gone.
        """
        width, height = self.size
        relief = self.relief.resize(self.size, Image.LANCZOS)

        def blurred(units):
            return np.array(relief.filter(ImageFilter.GaussianBlur(max(.5, units * self.density)))).astype(float) / 255

        # A fine edge and a wide bulge: either alone looks like flat paint.
        fine, surface = blurred(.03), .55 * blurred(.05) + .45 * blurred(.2)
        paint = np.array(self.paint.resize(self.size, Image.LANCZOS)).astype(float) / 255
        broad = noise(height, width, max(3, self.width / 9), seed)
        small = noise(height, width, max(6, self.width / 1.2), seed + 1)
        if ground is None:
            t = np.clip(.5 + (broad - .5) * 1.5 + (small - .5) * .35, 0, 1)[..., None]
            ground = (STONE_MIDDLE * (1 - t) + STONE_LIGHT * t) * .93
        colour = ground
        if courses:
            tint, joint = self._masonry(courses, seed)
            colour = colour * (1 + .045 * tint)[..., None] * (1 - .22 * joint)[..., None]
            surface = surface - .10 * joint
        stays = np.clip(fading + 1.3 * noise(height, width, max(4, self.width / 3), seed + 5), 0, 1)
        alpha = (paint[..., 3] * stays)[..., None]
        colour = colour * (1 - alpha) + paint[..., :3] * alpha
        sunk = np.clip((.5 - surface) * 2, 0, 1)[..., None]
        colour = colour * (1 - dirt * sunk * .55)
        # The upper rim of a hollow lies in shade, its lower rim catches the light.
        slope = np.clip((np.roll(fine, -1, 0) - np.roll(fine, 1, 0)) * 2.6 + (np.roll(fine, -1, 1) - np.roll(fine, 1, 1)) * .9,
                        -.75, .75)
        colour = colour * (1 + np.where(slope > 0, slope * .75, slope))[..., None]
        surface = surface + (small - .5) * .08
        store(folder, name, colour, surface)

    def _masonry(self, courses, seed):
        """For each pixel the tint of its stone (mean 0, deviation 1) and how much it belongs to a joint."""
        width, height = self.size
        course, length = courses
        y, x = np.arange(height)[::-1] / self.density, np.arange(width) / self.density
        random = np.random.default_rng(seed + 9)
        tints, shifts = random.normal(0, 1, (400, 400)), random.random(400) * length
        row = np.floor(y / course).astype(int) % 400
        along = x[None, :] + shifts[row][:, None]
        column = np.floor(along / length).astype(int) % 400
        to_bed = np.minimum(y % course, course - y % course)[:, None]
        to_end = np.minimum(along % length, length - along % length)
        return tints[row[:, None], column], np.clip(1 - np.minimum(to_bed, to_end) / .055, 0, 1)


def store(folder, name, colour, height=None):
    """Writes a colour picture and, if there is one, its height picture; values from 0 to 1."""
    Image.fromarray((np.clip(colour, 0, 1) * 255).astype(np.uint8)).save(os.path.join(folder, name + ".png"))
    if height is not None:
        picture = Image.fromarray((np.clip(height, 0, 1) * 255).astype(np.uint8))
        picture.save(os.path.join(folder, name + "-height.png"))
