#!/usr/bin/python3
"""textures/floor1a.png to floor1g.png: one picture of 4 x 4 tiles for each type of piece.

Each piece has its own stone, brightness and motif; check_piece_colours.py measures that they stay apart for
colour-blind eyes as well. A tile has a bevel and a joint of its own, the same on all four sides because a landed
tile turns with its piece. The game shows a tile 15 to 40 pixels wide and reduces it with plain linear filtering,
so the finished picture is softened to what such sizes can show.
"""
import math
import sys

import numpy as np
from scipy.ndimage import gaussian_filter

import paint
from colour import rgb
from piece_motifs import LETTERS, MOTIFS, TILES, Inlay, star

SIZE = 512
# Width of the dark joint and of the bright rim inside it, and the reach of the soft shoulder, in tiles.
JOINT, RIM, SHOULDER = 0.055, 0.030, 0.155
# Low-pass of the finished picture, in texels.
SOFTNESS = 1.9

# stone: the ground; cut: grooves and joint; light, mid, accent: the inlays; rim: the bright edge of a tile.
# The stones were tuned until the mean colours of the seven types lay as far apart as they go.
PALETTES = {
    "bar": dict(stone="#1C1C8E", cut="#0A0C45", light="#E3B23C", mid="#2A50C8", accent="#F6E3A0"),
    "Z": dict(stone="#825390", cut="#381F4B", light="#E9D8F4", mid="#C08DD4", accent="#E3B23C"),
    "L": dict(stone="#910000", cut="#400000", light="#F2B98A", mid="#C74428", accent="#F4D27A"),
    "S": dict(stone="#2A9078", cut="#0E4236", light="#B0E4AE", mid="#0A6C54", accent="#E3C25C"),
    "square": dict(stone="#4AE5EF", cut="#106974", light="#EAF8F2", mid="#9CF6FB", accent="#177C86"),
    "T": dict(stone="#FFC610", cut="#915F0C", light="#FFF1B8", mid="#F4CF6A", accent="#A4481E"),
    "J": dict(stone="#FFF9EC", cut="#AE9877", light="#FFFDF6", mid="#EBD3A0", accent="#B07A28"),
}
# Which inlay colour the bright rim leans to, and how far. The menu multiplies the box under the pointer by pure red, so
# the rims of the blue and the green stones are warm: they keep the box visible then.
RIM_TINTS = {"bar": ("light", 0.42), "S": ("light", 0.62), "square": ("light", 0.65), "T": ("light", 0.55)}
# Only the menu's box shows the tiles that neither motif meets: there these stones get a large bright star in a bright frame and a
# brighter rim, for the same reason; and the blue one leans to red, so that it is not black.
WARM_STARS = ("bar", "S", "square")
FREE_RIM, FREE_STONES = 0.8, {"bar": "#4A2C92"}
JOINT_OF_IVORY, RIM_OF_IVORY = rgb("#D3BE96"), rgb("#FFFDF5")


def ground(palette, seed, free, free_stone):
    """The stone: mottled, with diagonal veins, each tile a shade brighter in its middle; another one, if given, where free is 1."""
    grain = paint.noise(SIZE, seed)
    y, x = np.mgrid[0:SIZE, 0:SIZE] / SIZE
    vein = np.exp(-9 * np.abs(np.sin(6 * (1.3 * x + 0.8 * y) + 0.55 * grain)))
    stone = np.tile(palette["stone"], (SIZE, SIZE, 1))
    if free_stone is not None:
        stone = stone + (rgb(free_stone) - stone) * free[..., None]
    stone = stone * (1 + 0.07 * grain[..., None])
    stone = stone + 0.10 * vein[..., None] * (palette["mid"] - palette["stone"])
    cushion = 0.93 + 0.12 * np.clip((edge_distance() - 0.1) / 0.4, 0, 1)
    return np.clip(stone * cushion[..., None], 0, 1)


def edge_distance():
    """Distance of each texel from the edge of its tile, in tiles."""
    along = (np.arange(SIZE) + 0.5) * 4 / SIZE % 1
    along = np.minimum(along, 1 - along)
    return np.minimum(along[:, None], along[None, :])


def free_tiles(kind):
    """Columns and rows of the tiles that neither the motif nor its turned copy meets."""
    shown = set(TILES[kind])
    met = shown | {(3 - column, 3 - row) for column, row in shown}
    return [(column, row) for column in range(4) for row in range(4) if (column, row) not in met]


def free_texels(kind):
    """1 on the tiles that only the menu's box shows, 0 elsewhere."""
    mask, side = np.zeros((SIZE, SIZE)), SIZE // 4
    for column, row in free_tiles(kind):
        mask[SIZE - (row + 1) * side:SIZE - row * side, column * side:(column + 1) * side] = 1
    return mask


def inlays(kind, palette):
    """The motif twice, the second time turned by 180 degrees in the tiles opposite, and a small star in each
    tile that is left. The second motif never meets the tiles of its piece; it fills the menu's box."""
    colours, marks = paint.Canvas(SIZE, SIZE), paint.Canvas(SIZE, SIZE)
    for canvas in (colours, marks):
        canvas.context.scale(SIZE / 4, -SIZE / 4)
        canvas.context.translate(0, -4)
    inlay = Inlay(colours.context, marks.context, palette)
    warm = kind in WARM_STARS
    # Half a side of the frame, width and strength of its line; radius and metal of the star.
    half, line, strength, size, metal = (0.3, 0.07, 0.85, 0.27, "light") if warm else (0.23, 0.05, 0.5, 0.17, "mid")
    for column, row in free_tiles(kind):
        colours.context.rectangle(column + 0.5 - half, row + 0.5 - half, 2 * half, 2 * half)
        colours.context.set_line_width(line)
        colours.context.set_source_rgba(*palette["light" if warm else "cut"], strength)
        colours.context.stroke()
        inlay.fill(star(column + 0.5, row + 0.5, size, 4, 0.5), metal, 0.02)
    for turned in (False, True):
        for canvas in (colours, marks):
            c = canvas.context
            c.save()
            if turned:
                c.translate(4, 4)
                c.rotate(math.pi)
            for column, row in TILES[kind]:
                c.rectangle(column, row, 1, 1)
            c.clip()
        MOTIFS[kind](inlay)
        for canvas in (colours, marks):
            canvas.context.restore()
    return colours.premultiplied(), marks.premultiplied()[..., 0]


def picture(kind):
    palette = {name: rgb(text) for name, text in PALETTES[kind].items()}
    colours, faces = inlays(kind, palette)
    free = free_texels(kind)
    image = paint.over(ground(palette, sum(map(ord, kind)), free, FREE_STONES.get(kind)), colours)
    # Inlays are domed: bright on the crown, darker towards the cut. No side is favoured, because tiles turn.
    dome = gaussian_filter(faces, 4.5)
    image = image * (1 + faces * (0.30 * (dome - 0.62)))[..., None]
    # Stone round a cut lies a little lower.
    depth = gaussian_filter(colours[..., 3], 3) * (1 - colours[..., 3])
    image = image * (1 - 0.25 * depth[..., None])

    edge = edge_distance()
    shoulder = np.clip((SHOULDER - edge) / 0.07, 0, 1) * (edge > JOINT)
    rim = np.clip(1 - np.abs(edge - (JOINT + 0.025)) / RIM, 0, 1)
    joint = np.clip((JOINT - edge) / 0.02 + 0.5, 0, 1)
    if kind == "J":
        rim_colour, joint_colour = RIM_OF_IVORY, JOINT_OF_IVORY
    else:
        tint, share = RIM_TINTS.get(kind, ("mid", 0.55))
        if kind in WARM_STARS:
            share = (share + (FREE_RIM - share) * free)[..., None]
        rim_colour = (1 - share) * palette["stone"] + share * palette[tint]
        joint_colour = 0.9 * palette["cut"]
    image = image * (1 - 0.16 * shoulder[..., None])
    image = image + (rim_colour - image) * (0.75 * rim)[..., None]
    image = image + (joint_colour - image) * joint[..., None]
    return gaussian_filter(np.clip(image, 0, 1), (SOFTNESS, SOFTNESS, 0), mode="wrap")


if __name__ == "__main__":
    for kind, letter in LETTERS.items():
        paint.save(paint.to_image(picture(kind)), sys.argv[1], f"textures/floor1{letter}.png")
