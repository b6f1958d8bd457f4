"""What is carved: signs of a made-up script after Egyptian ones, cartouches, lotus friezes, gods."""
import math
import random

from .carving import CARNELIAN, FLAT, GOLD, IVORY, LAPIS, SOOT, TURQUOISE

# A sign is a list of strokes in a unit square: line (points, width), ellipse (x, y, rx, ry), area (points); "cut" ones
# bring the flat wall back inside a sign.
SIGNS = [
    [("line", [(.5, .05), (.5, .55)], .13), ("line", [(.22, .5), (.78, .5)], .13), ("ellipse", .5, .75, .19, .23),
     ("cut ellipse", .5, .75, .09, .12)],
    [("line", [(.05, y + .25), (.2, y + .1), (.35, y + .3), (.5, y + .1), (.65, y + .3), (.8, y + .1), (.95, y + .25)], .1)
     for y in (.3, .05)],
    [("line", [(.1, .6), (.35, .78), (.65, .75), (.92, .6), (.6, .45), (.3, .45), (.1, .6)], .08),
     ("ellipse", .5, .6, .11, .11), ("line", [(.45, .45), (.4, .15)], .09), ("line", [(.55, .45), (.85, .2)], .08)],
    [("area", [(.4, .05), (.52, .05), (.72, .55), (.68, .85), (.5, .97), (.36, .8), (.38, .5)])],
    [("area", [(.12, .35), (.35, .62), (.38, .82), (.52, .95), (.68, .88), (.8, .8), (.66, .77), (.68, .6), (.62, .38),
               (.45, .28), (.3, .3)]), ("line", [(.45, .3), (.45, .06), (.6, .06)], .07), ("line", [(.54, .3), (.54, .06)],
                                                                                           .07),
     ("line", [(.12, .35), (.02, .2)], .1)],
    [("ellipse", .5, .5, .34, .34), ("cut ellipse", .5, .5, .13, .13)],
    [("area", [(.08, .3), (.92, .3), (.85, .55), (.7, .7), (.3, .7), (.15, .55)])],
    [("line", [(.06, .3), (.3, .3), (.4, .55), (.55, .3), (.75, .3), (.82, .6), (.95, .65)], .11)],
    [("area", [(.1, .12), (.9, .12), (.9, .8), (.1, .8)]), ("cut area", [(.24, .12), (.76, .12), (.76, .64), (.24, .64)])],
    [("line", [(.5, .05), (.5, .9)], .2)] + [("line", [(.2, y), (.8, y)], .09) for y in (.62, .75, .88)]
    + [("line", [(.3, .08), (.7, .08)], .1)],
    [("line", [(.5, .02), (.45, .85)], .08), ("line", [(.45, .85), (.75, .95), (.8, .8)], .08),
     ("line", [(.5, .02), (.38, -.02)], .07)],
    [("ellipse", .5, .42, .24, .3), ("ellipse", .5, .76, .16, .12)]
    + [("line", [(.5 + side * .2, .4 + y), (.5 + side * .45, .5 + y * 1.8)], .06) for side in (-1, 1) for y in (-.15, .02, .18)],
    [("area", [(.2, .08), (.8, .08), (.72, .4), (.5, .5), (.28, .4)]), ("ellipse", .5, .7, .2, .22)],
    [("line", [(x, .1), (x, .9)], .1) for x in (.25, .5, .75)],
]
ANKH, FEATHER, SUN, SCARAB, DJED = 0, 3, 5, 11, 9
PAINTS = [LAPIS, TURQUOISE, CARNELIAN, GOLD, LAPIS, TURQUOISE]


def sign(wall, kind, x, y, size, height=62, colour=None, alpha=130):
    for stroke, *numbers in SIGNS[kind]:
        if stroke.endswith("ellipse"):
            cx, cy, rx, ry = numbers
            cut = stroke.startswith("cut")
            wall.ellipse(x + cx * size, y + cy * size, rx * size, ry * size, FLAT if cut else height, None if cut else colour,
                         alpha)
            continue
        points = [(x + px * size, y + py * size) for px, py in numbers[0]]
        if stroke == "line":
            wall.line(points, numbers[1] * size, height, colour, alpha)
        else:
            cut = stroke.startswith("cut")
            wall.polygon(points, FLAT if cut else height, None if cut else colour, alpha)


def column(wall, x, bottom, top, width, seed, height=62):
    """A column of signs between two thin lines, read from the top."""
    choice = random.Random(seed)
    for edge in (x - .08 * width, x + 1.08 * width):
        wall.line([(edge, bottom), (edge, top)], .045 * max(1, width / 1.2), 78)
    y, last = top - width * 1.02, -1
    while y >= bottom:
        kind = choice.randrange(len(SIGNS))
        if kind == last:
            kind = (kind + 3) % len(SIGNS)
        last = kind
        sign(wall, kind, x + .06 * width, y + .03 * width, width * .88, height, choice.choice(PAINTS), 105)
        y -= width * 1.02


def cartouche(wall, x, y, width, height, seed):
    corner = width * .25
    ring = [(x + width * .2, y), (x + width * .8, y), (x + width, y + corner), (x + width, y + height - corner),
            (x + width * .8, y + height), (x + width * .2, y + height), (x, y + height - corner), (x,
                                                                                                   y + corner), (x + width * .2, y)]
    wall.line(ring, .16, 58, GOLD, 180)
    wall.line([(x - .1, y - .16), (x + width + .1, y - .16)], .2, 58, GOLD, 180)
    choice = random.Random(seed)
    for i in range(int((height - .5) / (width * .8))):
        sign(wall, choice.randrange(len(SIGNS)), x + width * .14, y + .3 + i * width * .8, width * .74, 58,
             choice.choice([LAPIS, CARNELIAN, TURQUOISE]), 150)


def lotus_frieze(wall, x0, x1, y, size, height=66):
    count = int((x1 - x0) / (size * .7))
    for i in range(count):
        x = x0 + (x1 - x0) / count * (i + .5)
        if i % 2 == 0:
            petals = [(0, 0), (-.34, .75), (-.14, .55), (0, .9), (.14, .55), (.34, .75)]
            wall.polygon([(x + px * size, y + py * size) for px, py in petals], height, TURQUOISE if i % 4 == 0 else LAPIS, 150)
        else:
            wall.line([(x, y), (x, y + .55 * size)], .08 * size, height, TURQUOISE, 120)
            wall.ellipse(x, y + .62 * size, .13 * size, .17 * size, height, CARNELIAN, 140)


def star(wall, x, y, size, height=70, colour=GOLD, alpha=210):
    points = []
    for i in range(10):
        radius, angle = size if i % 2 == 0 else size * .385, math.pi / 2 + i * math.pi / 5
        points.append((x + radius * math.cos(angle), y + radius * math.sin(angle)))
    wall.polygon(points, height, colour, alpha)


def god(wall, x, y, size, kind, facing=1, height=54):
    """A striding god seen from the side; x is its middle, y its ground, size its height without the crown; facing 1 looks to
    -x. kind is "falcon", "jackal" or "ibis"."""
    skin = TURQUOISE if kind == "ibis" else CARNELIAN

    def place(points):
        return [(x - facing * px * size, y + py * size) for px, py in points]

    def area(points, colour, alpha=140, level=height):
        wall.polygon(place(points), level, colour, alpha)

    def line(points, width, level=height, colour=None, alpha=120):
        wall.line(place(points), width * size, level, colour, alpha)

    area([(-.10, 0), (.02, 0), (.02, .02), (-.03, .05), (.0, .4), (-.1, .4)], skin)
    area([(.08, 0), (.26, 0), (.26, .02), (.17, .05), (.12, .4), (0, .4)], skin)
    area([(-.12, .52), (.1, .52), (.2, .3), (.12, .27), (-.13, .33)], IVORY, 150, 70)
    line([(-.02, .5), (.17, .29)], .012, 96)
    line([(.03, .5), (.13, .29)], .01, 96)
    area([(-.1, .52), (.09, .52), (.16, .74), (.14, .78), (-.16, .78), (-.18, .74)], skin)
    line([(-.1, .52), (.09, .52)], .022, 100, GOLD, 190)
    line([(.14, .75), (.2, .6), (.34, .58)], .05, height, skin, 140)
    line([(-.16, .75), (-.2, .58), (-.19, .44)], .05, height, skin, 140)
    line([(.35, .0), (.35, .8)], .02, height, GOLD, 170)
    line([(.35, .8), (.42, .84), (.43, .78)], .02, height, GOLD, 170)
    sign(wall, ANKH, x + facing * .19 * size - .05 * size, y + .31 * size, .1 * size, height, GOLD, 170)
    line([(-.1, .785), (0, .755), (.09, .785)], .05, 86, TURQUOISE, 190)
    line([(-.09, .80), (0, .78), (.08, .8)], .02, 100, GOLD, 200)
    area([(-.1, .76), (-.04, .76), (-.02, .92), (-.1, .96)], LAPIS, 170)
    if kind == "falcon":
        area([(-.05, .775), (.025, .775), (.035, .875), (-.06, .875)], (196, 158, 104), 190)
        wall.ellipse(x - facing * .01 * size, y + .905 * size, .072 * size, .062 * size, height, (214, 178, 120), 190)
        area([(-.085, .90), (-.07, .95), (-.02, .972), (.035, .965), (.068, .93), (.02, .935), (-.03, .925)], LAPIS, 220)
        area([(.055, .925), (.10, .915), (.128, .885), (.122, .858), (.105, .88), (.058, .882)], GOLD, 220)
        area([(.045, .898), (.028, .895), (.0, .85), (.018, .848)], SOOT, 220)
        wall.ellipse(x - facing * .034 * size, y + .914 * size, .021 * size, .015 * size, 90, IVORY, 240)
        wall.ellipse(x - facing * .037 * size, y + .914 * size, .011 * size, .011 * size, 90, SOOT, 250)
    elif kind == "jackal":
        area([(-.07, .86), (.02, .86), (.17, .885), (.17, .91), (.04, .945), (.02, 1.08), (-.03, .97), (-.07, 1.05)], SOOT, 150)
    else:
        wall.ellipse(x - facing * .01 * size, y + .905 * size, .06 * size, .06 * size, height, IVORY, 120)
        line([(.04, .9), (.12, .86), (.16, .78)], .024, height, SOOT, 150)
        wall.ellipse(x - facing * .03 * size, y + .915 * size, .014 * size, .012 * size, 96, SOOT, 220)
    if kind != "jackal":
        wall.ellipse(x + facing * .02 * size, y + 1.035 * size, .075 * size, .075 * size, 70,
                     GOLD if kind == "falcon" else IVORY, 210)
        wall.ellipse(x + facing * .02 * size, y + 1.035 * size, .05 * size, .05 * size, 96, CARNELIAN, 170)
