#!/usr/bin/python3
"""Measures every sound and both pieces of music, and fails when one is out of its range: length, rate, peak, loudness,
ends that could click, a rate that is only pretended, and the seam at which the music starts again.

The loudness of an effect is the highest K-weighted level (ITU-R BS.1770) of any 50 ms of it, in decibels below full
scale: what the ear takes a short sound for. Needs numpy, scipy and ffmpeg.
"""
import os
import re
import subprocess
import sys
import wave

import numpy as np
from scipy.signal import lfilter

# name: shortest and longest seconds, lowest and highest loudness.
EFFECTS = {
    "block_move": (0.04, 0.08, -28, -22),
    "block_rotate": (0.04, 0.08, -28, -22),
    "block_fall": (0.10, 0.35, -22, -15),
    "block_explotion": (0.6, 1.5, -13, -7),
    "block_hover": (0.02, 0.06, -30, -22),
    "gui_hover": (0.01, 0.06, -36, -27),
    "gui_click": (0.03, 0.10, -28, -21),
    "move": (0.5, 1.5, -30, -20),
    "step": (0.4, 1.0, -32, -22),
    "Logo": (4.9, 5.1, -19, -12),
}
# Both files of an effect are the same event.
PAIR_LOUDNESS, PAIR_LENGTH = 1.0, 0.002
PEAK = -1.0
# The first and last sample, in decibels below full scale.
END = -60.0
# Share of the energy of an HQ_ file above what 22050 Hz can hold, at least; the rounding to 16 bits alone stays below.
TREBLE_FROM, TREBLE, ROUNDING = 11500, -62.0, 3.0

MUSIC = ("KolvexIntro", "Kolvex_NewAge")
MUSIC_SECONDS, MUSIC_LOUDNESS, MUSIC_PEAK, MUSIC_BYTES = (120, 240), (-20.5, -16.0), -1.0, 4_000_000
# Where the loop closes: the jump from the last to the first sample against the largest jump in the quarter second
# around, and the change of level against what neighbouring stretches of the same length do elsewhere in the piece.
SEAM_JUMP, SEAM_LEVEL = 1.0, 0.95


def level(value):
    return 10 * np.log10(value + 1e-12)


def read(path):
    with wave.open(path) as file:
        channels, rate = file.getnchannels(), file.getframerate()
        if file.getsampwidth() != 2:
            raise ValueError("%s does not hold 16-bit samples" % path)
        samples = np.frombuffer(file.readframes(file.getnframes()), "<i2")
    return rate, samples.reshape(-1, channels).T / 32768


def k_weighted(samples, rate):
    """The two filters of BS.1770: a shelf for the head, and the ear's deafness to the deep."""
    k = np.tan(np.pi * 1681.974 / rate)
    vh, vb, q = 10 ** (3.99984 / 20), 10 ** (3.99984 / 20 * 0.4996667), 0.7071752
    a0 = 1 + k / q + k * k
    shelf = ([(vh + vb * k / q + k * k) / a0, 2 * (k * k - vh) / a0, (vh - vb * k / q + k * k) / a0],
             [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0])
    k, q = np.tan(np.pi * 38.13547 / rate), 0.5003270
    a0 = 1 + k / q + k * k
    deep = ([1, -2, 1], [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0])
    return lfilter(*deep, lfilter(*shelf, samples))


def effect_loudness(samples, rate):
    """A mono sound comes out of both speakers, a stereo one has its power shared between them."""
    power = (k_weighted(samples, rate) ** 2).mean(0)
    window = int(0.05 * rate)
    power = np.concatenate([power, np.zeros(window)])
    sums = np.cumsum(np.concatenate([[0], power]))
    return level((sums[window:] - sums[:-window]).max() / window)


def treble(samples, rate):
    """Energy above TREBLE_FROM as a share of all, and how far it stands above the noise of rounding, in decibels."""
    spectrum = np.abs(np.fft.rfft(samples.mean(0))) ** 2
    frequencies = np.fft.rfftfreq(samples.shape[1], 1 / rate)
    high = spectrum[frequencies > TREBLE_FROM].sum()
    rounding = samples.shape[1] ** 2 / 2 * (1 / 32768) ** 2 / 12 * (1 - TREBLE_FROM / (rate / 2))
    return level(high / spectrum.sum()), level(high / rounding)


def check_effect(directory, name, fail):
    shortest, longest, lowest, highest = EFFECTS[name]
    found = {}
    for prefix, rate_wanted in (("", 22050), ("HQ_", 44100)):
        path = os.path.join(directory, "sounds", prefix + name + ".wav")
        rate, samples = read(path)
        seconds, peak = samples.shape[1] / rate, 2 * level(np.abs(samples).max())
        rms, loud = level((samples ** 2).mean()), effect_loudness(samples, rate)
        ends = 2 * level(max(np.abs(samples[:, 0]).max(), np.abs(samples[:, -1]).max()))
        share, above = treble(samples, rate) if prefix else (0, 99)
        print("%-20s %6.3f s %5d Hz  peak %6.1f  rms %6.1f  loudness %6.1f  ends %6.1f%s" % (
            prefix + name, seconds, rate, peak, rms, loud, max(ends, -96), "  treble %6.1f" % share if prefix else ""))
        fail(rate != rate_wanted, "%s%s: %d Hz" % (prefix, name, rate))
        fail(not shortest <= seconds <= longest, "%s%s: %.3f s long" % (prefix, name, seconds))
        fail(peak > PEAK, "%s%s: peak at %.1f" % (prefix, name, peak))
        fail(not lowest <= loud <= highest, "%s%s: loudness %.1f" % (prefix, name, loud))
        fail(ends > END, "%s%s: an end at %.1f" % (prefix, name, ends))
        fail(prefix and (share < TREBLE or above < ROUNDING), "%s%s: nothing above %d Hz" % (prefix, name, TREBLE_FROM))
        found[prefix] = (seconds, loud)
    fail(abs(found[""][0] - found["HQ_"][0]) > PAIR_LENGTH, "%s: variants differ in length" % name)
    fail(abs(found[""][1] - found["HQ_"][1]) > PAIR_LOUDNESS, "%s: variants differ in loudness" % name)
    return found["HQ_"][1]


def music_summary(path):
    report = subprocess.run(["ffmpeg", "-hide_banner", "-nostats", "-i", path, "-af", "ebur128=peak=true", "-f", "null", "-"],
                            capture_output=True, text=True, check=True).stderr
    summary = report[report.rindex("Summary:"):]
    return [float(re.search(key + r":\s+(-?[\d.]+)", summary).group(1)) for key in ("I", "LRA", "Peak")]


def seam(samples, rate):
    """The jump at the loop point relative to the largest near it, and the rank (0 to 1) of the change of level there
    among all such changes in the piece."""
    quarter = rate // 4
    around = np.concatenate([samples[:, -quarter:], samples[:, :quarter]], 1)
    jumps = np.abs(np.diff(around, axis=1))
    jump = (jumps[:, quarter - 1] / jumps.max(1)).max()
    power = (k_weighted(samples, rate) ** 2).mean(0)
    stretches = level(power[:len(power) // quarter * quarter].reshape(-1, quarter).mean(1))
    # Rises where a note is struck belong to the music; what would be heard as a seam is a sudden loss of level.
    falls = stretches - np.roll(stretches, -1)
    here = level(power[-quarter:].mean()) - level(power[:quarter].mean())
    return jump, float((falls < here).mean()), here


def check_music(directory, name, fail):
    path = os.path.join(directory, "music", name + ".ogg")
    size = os.path.getsize(path)
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "f32le", "-ac", "2", "-"], check=True, capture_output=True)
    samples, rate = np.frombuffer(raw.stdout, "<f4").reshape(-1, 2).T, 44100
    seconds = samples.shape[1] / rate
    loud, span, peak = music_summary(path)
    jump, rank, change = seam(samples, rate)
    print("%-16s %6.1f s  %4.2f MB  %5.1f LUFS  range %4.1f LU  true peak %5.1f  seam: jump %.2f of the largest near it, "
          "level falls by %.1f dB (more than %.0f%% of all)" % (name, seconds, size / 1e6, loud, span, peak, jump, change, 100 * rank))
    fail(not MUSIC_SECONDS[0] <= seconds <= MUSIC_SECONDS[1], "%s: %.0f s long" % (name, seconds))
    fail(not MUSIC_LOUDNESS[0] <= loud <= MUSIC_LOUDNESS[1], "%s: %.1f LUFS" % (name, loud))
    fail(peak > MUSIC_PEAK, "%s: true peak at %.1f" % (name, peak))
    fail(size > MUSIC_BYTES, "%s: %d bytes" % (name, size))
    fail(jump > SEAM_JUMP, "%s: the loop clicks" % name)
    fail(rank > SEAM_LEVEL, "%s: the level falls by %.1f dB where the loop closes" % (name, change))


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "../data")
    failures = []

    def fail(wrong, text):
        if wrong:
            failures.append(text)

    louds = {name: check_effect(data, name, fail) for name in EFFECTS}
    fail(max(louds, key=louds.get) != "block_explotion", "the explosion is not the loudest")
    fail(louds["block_move"] > louds["block_fall"], "a move is louder than a landing")
    for name in MUSIC:
        check_music(data, name, fail)
    for text in failures:
        print("WRONG  %s" % text)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
