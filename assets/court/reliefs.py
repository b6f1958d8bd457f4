"""The carved and painted faces of the court: gate, door, columns, obelisks, pillars, friezes, statues."""
import math
import random

import numpy as np
from PIL import Image, ImageFilter

from . import signs
from .carving import CARNELIAN, FLAT, GOLD, IVORY, LAPIS, SOOT, TURQUOISE, Wall, noise

STRIPES = (LAPIS, TURQUOISE, CARNELIAN, TURQUOISE)
# The face of a tower, in units from its inner edge and from the ground.
TOWER_WIDTH, TOWER_HEIGHT = 36, 38


def tower(folder):
    wall = Wall(TOWER_WIDTH, TOWER_HEIGHT, 34)
    wide = TOWER_WIDTH
    wall.rectangle(0, 0, wide, 3.0, 118)
    wall.line([(0, 3.0), (wide, 3.0)], .16, 60)
    for i in range(24):
        x = i * 1.5
        wall.rectangle(x + .14, .4, x + .62, 2.6, 84, LAPIS if i % 2 else CARNELIAN, 70)
        wall.rectangle(x + .86, .4, x + 1.36, 2.6, 96, TURQUOISE if i % 2 else GOLD, 55)
    signs.lotus_frieze(wall, .6, wide - .6, 3.4, 1.7)
    wall.line([(0, 5.4), (wide, 5.4)], .12, 70)
    # The falcon stands below the torch and beside the colossus, so that both leave its head free.
    signs.god(wall, 7.1, 6.0, 10.2, "falcon", 1)
    signs.god(wall, 19.6, 6.0, 13.2, "jackal", 1)
    signs.god(wall, 28.4, 6.0, 13.2, "ibis", 1)
    for first, count, bottom, seed in ((10.3, 3, 8.0, 11), (23.2, 2, 8.0, 31), (31.6, 3, 8.0, 41)):
        for i in range(count):
            signs.column(wall, first + i * 1.35, bottom, 20.0, 1.15, seed + i)
    signs.column(wall, .55, 6.6, 20.0, 1.15, 27)
    for y in (20.9, 21.5):
        wall.line([(0, y), (wide, y)], .1, 72)
    for i in range(30):
        signs.star(wall, .7 + i * 1.19, 21.2, .26)
    for i, x in enumerate((1.4, 4.4, 7.4)):
        signs.cartouche(wall, x, 23.4, 1.9, 7.4, 60 + i)
    for i in range(3):
        signs.column(wall, 10.3 + i * 1.5, 23.2, 31.4, 1.3, 71 + i)
    for i, x in enumerate((17.4, 20.6, 23.8)):
        signs.cartouche(wall, x, 23.4, 1.9, 7.4, 80 + i)
    for i in range(5):
        signs.column(wall, 27.0 + i * 1.6, 23.2, 31.4, 1.4, 91 + i)
    wall.line([(0, 32.1), (wide, 32.1)], .12, 70)
    signs.lotus_frieze(wall, .5, wide - .5, 32.6, 1.6)
    wall.line([(0, 34.6), (wide, 34.6)], .12, 70)
    for i in range(48):
        wall.rectangle(i * .75 + .08, 35.0, i * .75 + .6, 37.6, 88, (LAPIS, TURQUOISE, CARNELIAN, TURQUOISE)[i % 4], 105)
    wall.save(folder, "tower", seed=3)


def portal(folder):
    """Right half of the door's frame: x 0 is the middle, the jamb begins at 3.3, the lintel at 17."""
    wall = Wall(6.6, 23.5, 44)
    for i in range(2):
        signs.column(wall, 3.75 + i * 1.3, 1.6, 16.2, 1.05, 101 + i)
    wall.rectangle(3.3, 0, 6.6, 1.3, 92, LAPIS, 60)
    wall.line([(3.45, 0), (3.45, 17.2), (0, 17.2)], .14, 70, GOLD, 150)
    wall.line([(6.45, 0), (6.45, 23.3)], .12, 70)
    wall.line([(0, 17.8), (6.6, 17.8)], .1, 70)
    for i, (kind, colour) in enumerate(((signs.SUN, GOLD), (signs.ANKH, TURQUOISE), (signs.SCARAB, LAPIS), (2, CARNELIAN))):
        signs.sign(wall, kind, .35 + i * 1.5, 18.1, 1.3, 58, colour, 170)
    wall.line([(0, 19.7), (6.6, 19.7)], .1, 70)
    for i in range(13):
        wall.rectangle(.05 + i * .5, 19.95, .43 + i * .5, 20.9, 88, (LAPIS, TURQUOISE, CARNELIAN, GOLD)[i % 4], 150)
    wall.line([(0, 21.2), (6.6, 21.2)], .12, 70)
    for i, (kind, colour) in enumerate(((signs.SCARAB, GOLD), (signs.DJED, TURQUOISE), (signs.ANKH, LAPIS),
                                        (signs.FEATHER, CARNELIAN))):
        signs.sign(wall, kind, .35 + i * 1.55, 21.6, 1.3, 58, colour, 150)
    wall.save(folder, "portal", seed=13, courses=(1.7, 3.3))


def winged_disc(folder):
    """Right half of the cornice over the door."""
    wall = Wall(7.6, 4.2, 48)
    for i in range(16):
        wall.rectangle(.03 + i * .48, .1, .39 + i * .48, 4.1, 112, STRIPES[i % 4], 46)
    wing = [(.6, 2.35), (2.2, 2.75), (4.6, 2.75), (7.1, 2.35), (6.2, 1.85), (4.6, 1.45), (2.8, 1.25), (1.2, 1.3), (.5, 1.6)]
    wall.polygon(wing, 190, GOLD, 235)
    for i in range(17):
        t = i / 16
        x = .9 + t * 5.9
        wall.line([(x, 2.45 + .25 * math.sin(t * 3.1)), (x + .25 - .1 * t, 1.3 + .55 * t ** 2)], .05, 120, LAPIS, 235)
    wall.line([(.6, 2.2), (2.2, 2.45), (4.6, 2.45), (6.9, 2.3)], .16, 205, TURQUOISE, 240)
    wall.line([(.6, 1.98), (2.4, 2.15), (4.6, 2.12), (6.4, 2.1)], .06, 150, CARNELIAN, 220)
    wall.ellipse(0, 2.05, 1.0, 1.0, 215, GOLD, 255)
    wall.ellipse(0, 2.05, .82, .82, 235, CARNELIAN, 235)
    wall.line([(.95, 1.5), (1.25, .9), (1.0, .5), (1.3, .35)], .16, 205, GOLD, 255)
    wall.save(folder, "wing", seed=23, courses=None)


def door(folder):
    """One leaf, hinge at x 0: dark cedar with gold bands."""
    wall = Wall(3.3, 17.5, 44)
    width, height = wall.size
    wood = np.array([.16, .095, .075]) * (.75 + .5 * noise(height, width, 8, 5))[..., None]
    for y in (.5, 4.4, 8.5, 12.6, 16.6):
        wall.rectangle(0, y, 3.3, y + .55, 190, GOLD, 215)
        for i in range(6):
            wall.ellipse(.28 + i * .55, y + .27, .12, .12, 240, IVORY, 120)
    for y in (1.35, 5.3, 9.4, 13.5):
        wall.rectangle(.35, y, 2.95, y + 2.75, 110, LAPIS, 150)
        wall.rectangle(.55, y + .2, 2.75, y + 2.55, FLAT, (52, 34, 26), 150)
        for cx, cy in ((.75, .4), (2.55, .4), (.75, 2.35), (2.55, 2.35)):
            signs.star(wall, cx, y + cy, .17, 180, GOLD, 200)
    for y in (1.75, 5.7, 9.8, 13.9):
        wall.ellipse(1.65, y + .95, .66, .66, 185, GOLD, 220)
        wall.ellipse(1.65, y + .95, .42, .42, 200, CARNELIAN, 200)
    wall.rectangle(0, 0, .12, 17.5, 40, (10, 8, 14), 255)
    wall.save(folder, "door", ground=wood, courses=None, seed=33, dirt=.9)


def column(folder):
    """A column's skin: x runs once around, y from the base to the abacus."""
    wall = Wall(6.6, 14, 30)
    for i in range(12):
        wall.polygon([(i * .55 + .03, 0), (i * .55 + .52, 0), (i * .55 + .275, 1.5)], 96, (TURQUOISE, LAPIS)[i % 2], 150)
    for y, colour in ((1.7, GOLD), (2.1, LAPIS), (7.9, GOLD), (8.25, CARNELIAN), (8.6, LAPIS), (10.0, TURQUOISE),
                      (10.35, GOLD)):
        wall.rectangle(0, y, 6.6, y + .26, 92, colour, 150)
    for i in range(5):
        signs.column(wall, .15 + i * 1.32, 2.6, 7.7, 1.0, 111 + i)
    for i in range(7):
        wall.ellipse(.47 + i * .943, 9.3, .3, .42, 80, (GOLD, CARNELIAN)[i % 2], 140)
    for i in range(14):
        x = i * .471
        wall.polygon([(x, 10.9), (x + .44, 10.9), (x + .36, 13.9), (x + .08, 13.9)], 92, STRIPES[(i + 1) % 4], 125)
    wall.save(folder, "column", seed=43, courses=(2.4, 6.7))


def shaft(folder, name, width, height, seed, framed):
    wall = Wall(width, height, 26)
    frame = [(.22, .3), (.22, height - .3), (width - .22, height - .3), (width - .22, .3), (.22, .3)]
    wall.line(frame, .1, 72, GOLD if framed else None, 150)
    signs.column(wall, .75, 1.0, height - .6, 1.7, seed)
    wall.save(folder, name, seed=seed, courses=None)


def frieze(folder):
    wall = Wall(16, 2, 32)
    for y in (.14, 1.86):
        wall.line([(0, y), (16, y)], .1, 72, GOLD, 200)
    choice = random.Random(5)
    for i in range(12):
        signs.sign(wall, choice.randrange(len(signs.SIGNS)), .12 + i * 1.33, .35, 1.25, 60,
                   choice.choice([LAPIS, TURQUOISE, GOLD, CARNELIAN]), 170)
    wall.save(folder, "frieze", seed=71, courses=None)


def well_post(folder):
    """The skin of the slim posts beside the well: a lotus stem of lapis and turquoise in gold rings."""
    wall = Wall(1.8, 20, 40)
    wall.rectangle(0, 0, 1.8, 20, FLAT, (58, 66, 120), 255)
    for i in range(40):
        y = .9 + i * .42
        for k in range(4):
            x = (k + .5 * (i % 2)) * .45
            wall.polygon([(x - .20, y), (x, y - .20), (x + .20, y), (x, y + .34)], 150,
                         (44, 92, 150) if i % 4 else (40, 140, 140), 200)
    for y, tall, colour in ((0, .8, GOLD), (5.0, .16, GOLD), (5.2, .35, TURQUOISE), (5.6, .16, GOLD), (11.2, .16, GOLD),
                            (11.4, .35, CARNELIAN), (11.8, .16, GOLD), (17.3, .5, GOLD), (17.8, .5, TURQUOISE), (18.3, .2, GOLD),
                            (18.5, 1.1, TURQUOISE), (19.6, .4, GOLD)):
        wall.rectangle(0, y, 1.8, y + tall, 176, colour, 255)
    for k in range(6):
        wall.polygon([(k * .3, 18.5), (k * .3 + .3, 18.5), (k * .3 + .15, 19.6)], 190, LAPIS, 255)
    wall.save(folder, "post", courses=None, seed=83, fading=1)


# The skin of a head: x is the angle round it, y the height over the shoulders; see statues.py.
HEAD_WIDTH, HEAD_HEIGHT = 6.0, 2.1
HEAD_BOTTOM = -.55


def head(folder):
    """The painted face and headcloth of the statues: 60 degrees of angle are one unit, the middle of the face is at x = 3."""
    wall = Wall(HEAD_WIDTH, HEAD_HEIGHT, 150)
    middle, base = HEAD_WIDTH / 2, -HEAD_BOTTOM
    face_edge = 56 / 60

    def eyes(draw):
        for side in (-1, 1):
            draw(side, lambda x, y: (middle + side * x, base + y))

    # The headcloth: lapis bands between gold-brown ones, sinking towards the shoulders.
    for i in range(26):
        y = -.6 + i * .1
        colour = LAPIS if i % 2 else (196, 150, 62)
        for side in (-1, 1):
            wall.polygon([(middle + side * face_edge, base + y), (middle + side * 3.0, base + y - .22),
                          (middle + side * 3.0, base + y - .12), (middle + side * face_edge, base + y + .1)],
                         104 if i % 2 else 140, colour, 150)
    wall.rectangle(middle - face_edge, base - .02, middle + face_edge, base + 1.06, FLAT, (178, 104, 66), 120)
    # Neck, and over the brow the band and the cloth's front.
    wall.rectangle(middle - face_edge, 0, middle + face_edge, base - .02, FLAT, (150, 88, 58), 140)
    for i in range(8):
        x = middle - face_edge + i * face_edge / 4
        wall.polygon([(x + .03, base + 1.12), (x + face_edge / 4 - .03, base + 1.12), (x + face_edge / 4 - .05, base + 1.6),
                      (x + .05, base + 1.6)],
                     104, LAPIS, 150)
    wall.rectangle(middle - face_edge - .05, base + 1.0, middle + face_edge + .05, base + 1.12, 170, GOLD, 230)
    for side in (-1, 1):
        wall.line([(middle + side * face_edge, base + 1.06), (middle + side * face_edge, 0)], .05, 100, GOLD, 200)

    def eye(side, at):
        almond = [at(.20, .665), (at(.30, .715)), at(.43, .735), at(.55, .71), at(.66, .66), at(.55, .63), at(.40, .615),
                  at(.28, .63)]
        wall.polygon(almond, 150, IVORY, 255)
        wall.line(almond + almond[:1], .032, 92, SOOT, 255)
        wall.line([at(.64, .665), at(.86, .64)], .034, 92, SOOT, 250)
        centre = at(.425, .675)
        wall.ellipse(*centre, .085, .058, 120, SOOT, 255)
        wall.ellipse(centre[0] - .02, centre[1] + .02, .016, .014, 150, IVORY, 255)
        wall.line([at(.20, .80), at(.40, .845), at(.62, .825), at(.84, .77)], .042, 100, SOOT, 235)
    eyes(eye)
    # Lips, nostrils, and the shadow beside the nose.
    wall.polygon([(middle - .30, base + .285), (middle - .12, base + .325), (middle, base + .315), (middle + .12, base + .325),
                  (middle + .30, base + .285), (middle + .15, base + .235), (middle, base + .222), (middle - .15, base + .235)],
                 146, (150, 62, 46), 225)
    wall.line([(middle - .30, base + .283), (middle - .1, base + .288), (middle + .1, base + .288),
               (middle + .30, base + .283)], .02, 84, (70, 30, 26), 230)
    for side in (-1, 1):
        wall.ellipse(middle + side * .085, base + .405, .035, .018, 80, (70, 34, 26), 220)
        wall.line([(middle + side * .16, base + .42), (middle + side * .12, base + .62)], .02, 110, (120, 66, 44), 120)
    wall.save(folder, "head", courses=None, seed=93, fading=.75, dirt=.75)
    # Painted edges this large must be soft: the statue shows them at a third of their size.
    for suffix in ("", "-height"):
        path = f"{folder}/head{suffix}.png"
        Image.open(path).filter(ImageFilter.GaussianBlur(.8)).save(path)


def collar(folder):
    """The broad collar of the seated kings, from the breast up to the neck: rows of beads, drops at the lower edge."""
    wall = Wall(4.4, 1.4, 110)
    wall.rectangle(0, 0, 4.4, 1.4, FLAT, (150, 98, 66), 110)
    for i in range(26):
        x = .085 + i * .17
        wall.polygon([(x - .06, .34), (x, .12), (x + .06, .34)], 158, TURQUOISE if i % 2 else LAPIS, 220)
    for y, colour in ((.34, GOLD), (.42, LAPIS), (.56, GOLD), (.64, CARNELIAN), (.78, GOLD), (.86, TURQUOISE), (1.0, GOLD),
                      (1.08, LAPIS), (1.22, GOLD)):
        tall = .07 if colour == GOLD else .13
        wall.rectangle(0, y, 4.4, y + tall, 160, colour, 215)
        if colour != GOLD:
            for i in range(52):
                wall.line([(i * .085, y), (i * .085, y + tall)], .014, 90, SOOT, 160)
    wall.save(folder, "collar", courses=None, seed=95, fading=.8)


def kilt(folder):
    """The pleated kilt over the kings' thighs: y runs from the knees back to the lap."""
    wall = Wall(3.2, 3.0, 80)
    wall.rectangle(0, 0, 3.2, 3.0, FLAT, (206, 184, 150), 120)
    for i in range(40):
        wall.line([(i * .08, .9), (1.6 + (i * .08 - 1.6) * .8, 3.0)], .018, 92)
    wall.rectangle(0, .82, 3.2, .94, 160, GOLD, 200)
    wall.rectangle(0, 0, 3.2, .82, FLAT, (150, 98, 66), 110)
    wall.save(folder, "kilt", courses=None, seed=96, fading=.7)


def captives(folder):
    """The front of the kings' pedestals: a cartouche between papyrus stems that are tied round it."""
    wall = Wall(3.8, 5.1, 44)
    frame = [(.15, .15), (.15, 4.95), (3.65, 4.95), (3.65, .15), (.15, .15)]
    wall.line(frame, .09, 72, GOLD, 150)
    signs.cartouche(wall, 1.25, .75, 1.3, 3.6, 77)
    for side in (-1, 1):
        x = 1.9 + side * 1.25
        for bend in (-.22, 0, .22):
            wall.line([(x - bend * .3, .5), (x + bend * .4, 2.2), (x + bend, 3.7)], .07, 64, TURQUOISE, 150)
            top = x + bend
            wall.polygon([(top - .17, 4.35), (top, 3.65), (top + .17, 4.35), (top, 4.5)], 60, CARNELIAN if bend else LAPIS, 160)
        wall.line([(x - .2, 1.9), (x + .2, 1.9)], .12, 70, GOLD, 170)
    wall.save(folder, "relief", seed=97, courses=None)


def paint_all(folder):
    tower(folder)
    portal(folder)
    winged_disc(folder)
    door(folder)
    column(folder)
    shaft(folder, "pillar", 3.2, 14, 51, True)
    shaft(folder, "obelisk", 3.2, 32, 61, False)
    frieze(folder)
    well_post(folder)
    head(folder)
    collar(folder)
    kilt(folder)
    captives(folder)
