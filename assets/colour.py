"""Colour arithmetic: sRGB, CIE Lab, the CIEDE2000 distance, and how colours look to colour-blind eyes.

Colours are arrays whose last axis is red, green, blue from 0 to 1, or L*, a*, b* under the D65 white.
"""
import numpy as np

_TO_XYZ = np.array([[0.4124564, 0.3575761, 0.1804375],
                    [0.2126729, 0.7151522, 0.0721750],
                    [0.0193339, 0.1191920, 0.9503041]])
_FROM_XYZ = np.linalg.inv(_TO_XYZ)
_WHITE = np.array([0.95047, 1.0, 1.08883])

# Full dichromacy after Machado, Oliveira and Fernandes (2009); the matrices act on linear light.
VISIONS = {
    "normal": np.eye(3),
    "protan": np.array([[0.152286, 1.052583, -0.204868],
                        [0.114503, 0.786281, 0.099216],
                        [-0.003882, -0.048116, 1.051998]]),
    "deutan": np.array([[0.367322, 0.860646, -0.227968],
                        [0.280085, 0.672501, 0.047413],
                        [-0.011820, 0.042940, 0.968881]]),
    "tritan": np.array([[1.255528, -0.076749, -0.178779],
                        [-0.078411, 0.930809, 0.147602],
                        [0.004733, 0.691367, 0.303900]]),
}


def rgb(text):
    """The colour of a text such as "#E3B23C"."""
    return np.array([int(text[i:i + 2], 16) / 255 for i in (1, 3, 5)])


def to_linear(colour):
    colour = np.asarray(colour, float)
    return np.where(colour <= 0.04045, colour / 12.92, ((colour + 0.055) / 1.055) ** 2.4)


def from_linear(light):
    light = np.clip(light, 0, 1)
    return np.where(light <= 0.0031308, light * 12.92, 1.055 * light ** (1 / 2.4) - 0.055)


def luminance(colour):
    """Relative luminance, 0 to 1."""
    return to_linear(colour) @ _TO_XYZ[1]


def contrast(a, b):
    """Contrast ratio of two luminances, 1 to 21, as the web's accessibility guidelines define it."""
    high, low = np.maximum(a, b), np.minimum(a, b)
    return (high + 0.05) / (low + 0.05)


def lab(colour):
    t = to_linear(colour) @ _TO_XYZ.T / _WHITE
    f = np.where(t > 0.008856, np.cbrt(t), 7.787 * t + 16 / 116)
    return np.stack([116 * f[..., 1] - 16, 500 * (f[..., 0] - f[..., 1]), 200 * (f[..., 1] - f[..., 2])], -1)


def from_lab(value):
    value = np.asarray(value, float)
    fy = (value[..., 0] + 16) / 116
    f = np.stack([fy + value[..., 1] / 500, fy, fy - value[..., 2] / 200], -1)
    t = np.where(f > 0.206893, f ** 3, (f - 16 / 116) / 7.787)
    return from_linear(t * _WHITE @ _FROM_XYZ.T)


def seen_by(colour, vision):
    """The colour as an eye of the named vision sees it."""
    return from_linear(to_linear(colour) @ VISIONS[vision].T)


def ciede2000(first, second):
    """The CIEDE2000 difference of two Lab colours (Sharma, Wu and Dalal, 2005)."""
    l1, a1, b1 = np.moveaxis(np.asarray(first, float), -1, 0)
    l2, a2, b2 = np.moveaxis(np.asarray(second, float), -1, 0)
    mean7 = ((np.hypot(a1, b1) + np.hypot(a2, b2)) / 2) ** 7
    g = 0.5 * (1 - np.sqrt(mean7 / (mean7 + 25.0 ** 7)))
    a1, a2 = a1 * (1 + g), a2 * (1 + g)
    c1, c2 = np.hypot(a1, b1), np.hypot(a2, b2)
    h1, h2 = np.degrees(np.arctan2(b1, a1)) % 360, np.degrees(np.arctan2(b2, a2)) % 360
    dl, dc = l2 - l1, c2 - c1
    dh = 2 * np.sqrt(c1 * c2) * np.sin(np.radians(((h2 - h1 + 180) % 360 - 180) / 2))
    lm, cm = (l1 + l2) / 2, (c1 + c2) / 2
    hm = np.where(np.abs(h1 - h2) > 180, (h1 + h2 + 360) / 2, (h1 + h2) / 2)
    t = (1 - 0.17 * np.cos(np.radians(hm - 30)) + 0.24 * np.cos(np.radians(2 * hm))
         + 0.32 * np.cos(np.radians(3 * hm + 6)) - 0.20 * np.cos(np.radians(4 * hm - 63)))
    sl = 1 + 0.015 * (lm - 50) ** 2 / np.sqrt(20 + (lm - 50) ** 2)
    sc, sh = 1 + 0.045 * cm, 1 + 0.015 * cm * t
    rt = -np.sin(np.radians(60 * np.exp(-((hm - 275) / 25) ** 2))) * 2 * np.sqrt(cm ** 7 / (cm ** 7 + 25.0 ** 7))
    return np.sqrt((dl / sl) ** 2 + (dc / sc) ** 2 + (dh / sh) ** 2 + rt * (dc / sc) * (dh / sh))
