"""The evening behind the stage: the court's sky on a bow round the eye, with pyramids, palms and dunes before it."""
import numpy as np
from PIL import Image, ImageDraw, ImageFilter

from colour import rgb
from court import sky
from .mesh import Mesh

# Height of the eye, distance of the bow, and what it spans in degrees.
EYE_HEIGHT, DISTANCE = 4.0, 58.0
HALF_ANGLE, LOW, HIGH = 54.0, -4.0, 26.0
WIDTH, HEIGHT, OVERSIZE = 1024, 288, 2
COLUMNS, ROWS = 24, 5
# Azimuth of the middle, half width and height in degrees, and how much of the haze lies before it.
PYRAMIDS = ((-31.0, 9.5, 8.6, .25), (-19.5, 5.6, 5.2, .45), (36.5, 10.5, 9.6, .2), (48.5, 6.0, 5.4, .45), (-46.5, 5.0, 4.4, .5),
            (8.5, 3.4, 3.0, .6))
# Azimuth, height of the crown in degrees, lean.
PALMS = ((-10.2, 4.6, .5), (-8.4, 3.5, -.3), (-50.5, 6.5, .6), (17.0, 5.2, -.5), (18.8, 3.9, .4), (24.6, 3.0, .2), (-39.5, 3.6, -.4))
NIGHT_SIDE, DAY_SIDE, HAZE, PALM = rgb("#171231"), rgb("#5E3A4C"), rgb("#7A4A55"), rgb("#0E0B1E")


def place(azimuth, elevation):
    """Pixels of the picture as it is painted."""
    k = OVERSIZE
    return ((azimuth + HALF_ANGLE) / (2 * HALF_ANGLE) * WIDTH * k, (HIGH - elevation) / (HIGH - LOW) * HEIGHT * k)


def colour(value):
    return tuple(int(round(255 * v)) for v in np.clip(value, 0, 1))


def background(picture):
    """The part of the sky that shows, on even scales."""
    source = np.array(picture.convert("RGB"), float)
    azimuth = np.linspace(-HALF_ANGLE, HALF_ANGLE, WIDTH * OVERSIZE)
    elevation = np.linspace(HIGH, LOW, HEIGHT * OVERSIZE)
    x = np.clip(sky.width_of(azimuth) * source.shape[1] - .5, 0, source.shape[1] - 1.001)
    y = np.clip((1 - np.array([sky.height_of(e) for e in elevation])) * source.shape[0] - .5, 0, source.shape[0] - 1.001)
    x0, y0 = x.astype(int), y.astype(int)
    fx, fy = (x - x0)[None, :, None], (y - y0)[:, None, None]
    rows = source[y0] * (1 - fy) + source[y0 + 1] * fy
    return rows[:, x0] * (1 - fx) + rows[:, x0 + 1] * fx


def pyramid(draw, azimuth, half, height, haze):
    """The sun has set on the right: that side is lit, the other dark."""
    peak = place(azimuth, height)
    left, right, edge = place(azimuth - half, -2), place(azimuth + half, -2), place(azimuth + .42 * half, -2)
    draw.polygon([left, peak, edge], fill=colour(NIGHT_SIDE * (1 - haze) + HAZE * .55 * haze))
    draw.polygon([edge, peak, right], fill=colour(DAY_SIDE * (1 - haze) + HAZE * haze))


def palm(draw, azimuth, height, lean):
    trunk = [place(azimuth + lean * t * t, -2 + (height + 2) * t) for t in np.linspace(0, 1, 9)]
    draw.line(trunk, fill=colour(PALM), width=round(.2 * trunk[0][1] / 30) + 3)
    top = azimuth + lean
    for i in range(9):
        angle = np.radians(-25 + i * 230 / 8)
        reach = 1.5 * height ** .35
        ribs = [(top + reach * t * np.cos(angle), height + reach * (t * np.sin(angle) - .55 * t * t)) for t in np.linspace(0, 1, 8)]
        upper = [place(x, y + .13 * np.sin(np.pi * t)) for (x, y), t in zip(ribs, np.linspace(0, 1, 8))]
        lower = [place(x, y - .26 * np.sin(np.pi * t)) for (x, y), t in zip(ribs, np.linspace(0, 1, 8))]
        draw.polygon(upper + lower[::-1], fill=colour(PALM))


def make(picture):
    values = background(picture)
    image = Image.fromarray(values.astype(np.uint8))
    draw = ImageDraw.Draw(image)
    for far in sorted(PYRAMIDS, key=lambda p: -p[3]):
        pyramid(draw, *far)
    azimuth = np.linspace(-HALF_ANGLE, HALF_ANGLE, 241)
    for base, swing, seed, tint in ((-.4, .5, 1, "#3A2540"), (-1.3, .45, 4, "#231632"), (-2.3, .3, 7, "#150E22")):
        height = base + swing * (np.sin(azimuth * .13 + seed) + .5 * np.sin(azimuth * .37 + 2 * seed))
        draw.polygon([place(a, h) for a, h in zip(azimuth, height)] + [place(HALF_ANGLE, LOW), place(-HALF_ANGLE, LOW)],
                     fill=colour(rgb(tint)))
        if seed == 1:
            for tree in PALMS:
                palm(draw, *tree)
    image = image.filter(ImageFilter.GaussianBlur(.6)).resize((WIDTH, HEIGHT), Image.LANCZOS)
    mesh = Mesh(WIDTH, HEIGHT)
    for i in range(COLUMNS):
        for j in range(ROWS):
            corners, texels = [], []
            for u, v in ((i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1)):
                a = np.radians((2 * u / COLUMNS - 1) * HALF_ANGLE)
                e = np.radians(LOW + v / ROWS * (HIGH - LOW))
                corners.append((DISTANCE * np.sin(a), DISTANCE * np.cos(a), EYE_HEIGHT + DISTANCE * np.tan(e)))
                # Half a texel off the edges, across which the picture would repeat itself.
                texels.append((np.clip(u / COLUMNS * WIDTH, 1, WIDTH - 1), np.clip((1 - v / ROWS) * HEIGHT, 1, HEIGHT - 1)))
            mesh.quad(corners, texels)
    return mesh, image
