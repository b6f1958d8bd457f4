"""The evening sky: azimuth -64 to 64 degrees (0 is straight ahead, right is positive), elevation -4 to 54, both on bent scales.

It is not baked: mix.py puts this picture into its rectangle of the texture as it is.
"""
import math

import numpy as np
from PIL import Image

from colour import rgb
from .carving import noise

# The middle reaches to MIDDLE_ANGLE on both sides and is all that 4:3 shows; beyond lie the sides, coarser, to HALF_ANGLE.
MIDDLE_WIDTH, SIDE_WIDTH, HEIGHT = 1472, 96, 532
WIDTH = MIDDLE_WIDTH + 2 * SIDE_WIDTH
MIDDLE_ANGLE, HALF_ANGLE = 52, 64
# Columns of a side while it is painted, as fine as the middle.
PAINTED_SIDE = round(MIDDLE_WIDTH * (HALF_ANGLE - MIDDLE_ANGLE) / (2 * MIDDLE_ANGLE))
# Below BEND of the height the picture covers LOW..TURN degrees, above it TURN..HIGH: finer near the horizon.
BEND, LOW, TURN, HIGH = .6713, -4, 24, 54.35
MOON_AZIMUTH, MOON_ELEVATION, MOON_RADIUS = 30.5, 17.5, 1.25
STARS, STARS_ASIDE = 1150, 130
# Clouds are painted up to 62 degrees and cut off.
CLOUD_HEIGHT = 576


def elevation(v):
    """Degrees at height v of the picture, 0 at its foot."""
    return np.where(v < BEND, LOW + v / BEND * (TURN - LOW), TURN + (v - BEND) / (1 - BEND) * (HIGH - TURN))


def azimuth_of(u):
    """Degrees at u of the picture's width, 0 at its left."""
    side = SIDE_WIDTH / WIDTH
    return np.interp(u, (0, side, 1 - side, 1), (-HALF_ANGLE, -MIDDLE_ANGLE, MIDDLE_ANGLE, HALF_ANGLE))


def width_of(degrees):
    side = SIDE_WIDTH / WIDTH
    return np.interp(degrees, (-HALF_ANGLE, -MIDDLE_ANGLE, MIDDLE_ANGLE, HALF_ANGLE), (0, side, 1 - side, 1))


def height_of(degrees):
    return (degrees - LOW) / (TURN - LOW) * BEND if degrees < TURN else BEND + (degrees - TURN) / (HIGH - TURN) * (1 - BEND)


def blend(colour, other, amount):
    amount = np.clip(amount, 0, 1)[..., None]
    return colour * (1 - amount) + other * amount


def stars(height, width, left, right, count, random):
    """So many stars between two azimuths, on the picture as it is painted; some stand above its upper edge."""
    picture = np.zeros((height, width, 3))
    low, high = math.sin(math.radians(2.5)), math.sin(math.radians(61))
    for _ in range(count):
        azimuth = random.uniform(left, right)
        degrees = math.degrees(math.asin(random.uniform(low, high)))
        bright = .05 + .9 * random.random() ** 6
        size = .46 + .5 * bright
        tint = np.array([1, .93, .82]) if random.random() < .3 else np.array([.85, .92, 1.])
        if degrees > HIGH:
            continue
        x, y = azimuth * MIDDLE_WIDTH / (2 * MIDDLE_ANGLE) + width / 2, (1 - height_of(degrees)) * height
        # A round star is wide where circles of latitude are short, and low where the scale is coarse.
        wide, tall = size * 1.05 / math.cos(math.radians(degrees)), size * (1.0 if degrees < TURN else .6)
        x0, x1, y0, y1 = max(0, int(x) - 4), min(width, int(x) + 5), max(0, int(y) - 4), min(height, int(y) + 5)
        gx, gy = np.meshgrid(np.arange(x0, x1) + .5 - x, np.arange(y0, y1) + .5 - y)
        shape = np.exp(-(gx / wide) ** 2 - (gy / tall) ** 2)
        picture[y0:y1, x0:x1] = np.maximum(picture[y0:y1, x0:x1], bright * 1.1 * shape[..., None] * tint)
    return picture


def clouds(columns, cells, seed, octaves):
    """Clouds of the middle, continued to the sides by their mirrored image."""
    middle = Image.fromarray(noise(CLOUD_HEIGHT, columns, cells, seed, octaves).astype(np.float32))
    middle = np.array(middle.resize((MIDDLE_WIDTH, CLOUD_HEIGHT), Image.BICUBIC))[-HEIGHT:]
    return np.pad(middle, ((0, 0), (PAINTED_SIDE, PAINTED_SIDE)), mode="symmetric")


def stored(colour):
    """The picture with its sides brought to their width."""
    pixels = Image.fromarray((np.clip(colour, 0, 1) ** (1 / 2.2) * 255).astype(np.uint8))
    result, right = Image.new("RGB", (WIDTH, HEIGHT)), PAINTED_SIDE + MIDDLE_WIDTH
    for x, box, width in ((0, (0, PAINTED_SIDE), SIDE_WIDTH), (SIDE_WIDTH, (PAINTED_SIDE, right), MIDDLE_WIDTH),
                          (WIDTH - SIDE_WIDTH, (right, pixels.width), SIDE_WIDTH)):
        part = pixels.crop((box[0], 0, box[1], HEIGHT))
        result.paste(part if part.width == width else part.resize((width, HEIGHT), Image.BOX), (x, 0))
    return result


def paint(folder):
    def light(code):
        return rgb(code) ** 2.2
    width, height = MIDDLE_WIDTH + 2 * PAINTED_SIDE, HEIGHT
    azimuth = np.tile((np.arange(width) + .5 - width / 2) * 2 * MIDDLE_ANGLE / MIDDLE_WIDTH, (height, 1))
    up = np.tile(elevation(1 - (np.arange(height) + .5) / height)[:, None], (1, width))
    low = np.maximum(up, 0)
    # The sun has set on the right; a weaker glow lies on the left.
    glow = np.exp(-((azimuth - 29) / 17) ** 2) + .40 * np.exp(-((azimuth + 34) / 17) ** 2)
    t = np.clip(np.maximum(up, -1) / 30, 0, 1)[..., None] ** .75
    colour = light("#131540") * (1 - t) + light("#0B1030") * .75 * t
    colour = blend(colour, light("#4A3566"), np.exp(-low / 7.0) * (.50 + .6 * glow))
    near = np.clip(glow, 0, 1)
    rose = np.exp(-(low / (4.8 + 6.5 * near)) ** 1.5) * (.08 + .85 * glow)
    ember = np.exp(-(low / (2.6 + 4.6 * near)) ** 1.35) * (.04 + glow)
    colour = blend(blend(colour, light("#A24E5E"), rose), light("#E08A4E") * 1.05, ember)
    # Thin bars of cloud, lit from below.
    streaks = clouds(MIDDLE_WIDTH // 8, 4, 78, 4)
    cloud = np.clip((streaks - .53) * 6, 0, 1) * np.exp(-((up - 8.5) / 4.2) ** 2) * np.clip(.15 + glow, 0, 1)
    m = cloud[..., None] * .55
    colour = colour * (1 - m) + (light("#C4626A") * .55 * np.exp(-low / 11)[..., None] + light("#5A3A70") * .35) * m * 1.6
    # A faint band of the Milky Way.
    band = np.exp(-((azimuth * .55 + up - 34) / 9) ** 2) * (.4 + 1.2 * clouds(MIDDLE_WIDTH, 14, 91, 5))
    colour = colour + np.array([.011, .011, .026]) * (np.clip(band - .35, 0, 2) * np.clip((up - 12) / 14, 0, 1))[..., None]
    seen = np.clip((up - 3) / 13, 0, 1) * (1 - .75 * np.clip(np.clip(rose, 0, 1) + np.clip(ember, 0, 1), 0, 1))
    lights = stars(height, width, 1 - MIDDLE_ANGLE, MIDDLE_ANGLE - 1, STARS, np.random.default_rng(12))
    random = np.random.default_rng(13)
    for left, right in ((-HALF_ANGLE, -MIDDLE_ANGLE), (MIDDLE_ANGLE, HALF_ANGLE)):
        lights = np.maximum(lights, stars(height, width, left, right, STARS_ASIDE, random))
    colour = colour + lights * seen[..., None]
    dx, dy = (azimuth - MOON_AZIMUTH) * math.cos(math.radians(MOON_ELEVATION)), up - MOON_ELEVATION
    from_middle = np.hypot(dx, dy)
    disc = np.clip((MOON_RADIUS - from_middle) / .07, 0, 1)
    crescent = disc * (1 - np.clip((1.16 - np.hypot(dx + .52, dy - .34)) / .16, 0, 1))
    halo = np.exp(-(from_middle / 3.2) ** 1.1) * .42
    colour = (colour + np.array([1.0, .9, .72]) * .95 * crescent[..., None] + np.array([.05, .045, .06]) * .5 * disc[..., None]
              + np.array([.16, .12, .14]) * halo[..., None])
    stored(colour).save(f"{folder}/sky.png")
