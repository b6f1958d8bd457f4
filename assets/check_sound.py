#!/usr/bin/python3
"""Measures every sound and both pieces of music, and fails when one is out of its range: length, rate, peak, loudness,
ends that could click, a rate that is only pretended, the seam at which the music starts again, what carries over the
music, the intro's second phrase, and the sums of all that sounds together over a whole course of menu and game.

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
    "block_move": (0.04, 0.08, -22.5, -20),
    "block_rotate": (0.04, 0.08, -22.5, -20),
    "block_fall": (0.10, 0.35, -22, -15),
    "block_explotion": (1.5, 2.0, -12, -7),
    "block_hover": (0.02, 0.06, -22.5, -20),
    "gui_hover": (0.01, 0.06, -28, -25.5),
    "gui_click": (0.03, 0.10, -28, -21),
    "move": (0.5, 1.5, -30, -20),
    "step": (0.4, 1.0, -32, -22),
    "Logo": (9.9, 10.1, -19, -12),
}
# Both files of an effect are the same event.
PAIR_LOUDNESS, PAIR_LENGTH = 1.0, 0.002
PEAK = -1.0
# The first and last sample, in decibels below full scale.
END = -60.0
# Share of the energy of an HQ_ file above what 22050 Hz can hold, at least; the rounding to 16 bits alone stays below.
TREBLE_FROM, TREBLE, ROUNDING = 11500, -62.0, 3.0

MUSIC = ("KolvexIntro", "Kolvex_NewAge")
MUSIC_SECONDS, MUSIC_LOUDNESS, MUSIC_PEAK, MUSIC_BYTES = (120, 240), (-21.5, -17.0), -6.0, 4_000_000
MUSIC_RANGE = 7.0
# Where the loop closes: the jump from the last to the first sample against the largest jump in the quarter second
# around, and the change of level over it, up or down, in decibels.
SEAM_JUMP, SEAM_LEVEL = 1.0, 3.0
# How far the loudness of an effect may lie under that of the music it is heard with, in decibels.
UNDER_MUSIC = (("block_move", "Kolvex_NewAge", 2.0), ("block_rotate", "Kolvex_NewAge", 2.0),
               ("block_hover", "KolvexIntro", 2.0), ("gui_hover", "KolvexIntro", 8.0))
# The signature's second phrase comes with the second picture: how much louder the half second from there on is than the
# quarter before, and how little the second half of it may lie under the first.
SECOND_PICTURE, ENTRANCE, SECOND_HALF = 5.0, 6.0, 4.0
COURSES = 3


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
    """The jump at the loop point relative to the largest near it, and by how much the level changes there."""
    quarter = rate // 4
    around = np.concatenate([samples[:, -quarter:], samples[:, :quarter]], 1)
    jumps = np.abs(np.diff(around, axis=1))
    power = (k_weighted(samples, rate) ** 2).mean(0)
    change = level(power[:quarter].mean()) - level(power[-quarter:].mean())
    return (jumps[:, quarter - 1] / jumps.max(1)).max(), change


def check_music(directory, name, fail):
    path = os.path.join(directory, "music", name + ".ogg")
    size = os.path.getsize(path)
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "f32le", "-ac", "2", "-"], check=True, capture_output=True)
    samples, rate = np.frombuffer(raw.stdout, "<f4").reshape(-1, 2).T, 44100
    seconds = samples.shape[1] / rate
    loud, span, peak = music_summary(path)
    jump, change = seam(samples, rate)
    print("%-16s %6.1f s  %4.2f MB  %5.1f LUFS  range %4.1f LU  true peak %5.1f  seam: jump %.2f of the largest near it, "
          "level changes by %.1f dB" % (name, seconds, size / 1e6, loud, span, peak, jump, change))
    fail(not MUSIC_SECONDS[0] <= seconds <= MUSIC_SECONDS[1], "%s: %.0f s long" % (name, seconds))
    fail(not MUSIC_LOUDNESS[0] <= loud <= MUSIC_LOUDNESS[1], "%s: %.1f LUFS" % (name, loud))
    fail(peak > MUSIC_PEAK, "%s: true peak at %.1f" % (name, peak))
    fail(size > MUSIC_BYTES, "%s: %d bytes" % (name, size))
    fail(jump > SEAM_JUMP, "%s: the loop clicks" % name)
    fail(span > MUSIC_RANGE, "%s: range of %.1f LU" % (name, span))
    fail(abs(change) > SEAM_LEVEL, "%s: the level changes by %.1f dB where the loop closes" % (name, change))
    return samples, loud


def check_signature(directory, fail):
    rate, samples = read(os.path.join(directory, "sounds", "HQ_Logo.wav"))
    power = (k_weighted(samples, rate) ** 2).mean(0)

    def stretch(start, end):
        return level(power[int(start * rate):int(end * rate)].mean())

    rise = stretch(SECOND_PICTURE, SECOND_PICTURE + 0.5) - stretch(SECOND_PICTURE - 0.25, SECOND_PICTURE)
    halves = stretch(0, SECOND_PICTURE) - stretch(SECOND_PICTURE, 2 * SECOND_PICTURE)
    print("signature: %.1f dB up where the second picture comes, second half %.1f dB under the first" % (rise, halves))
    fail(rise < ENTRANCE, "the second picture is greeted by %.1f dB" % rise)
    fail(halves > SECOND_HALF, "the second half of the signature lies %.1f dB under the first" % halves)


def game_events(seconds, random):
    """What the rules start in a game of a hasty player, as (time, sound), in pictures of 1/60 s: pieces that are moved
    and turned while they fall, dropped, and complete rows."""
    at = 1.0
    while at < seconds:
        end = at + random.uniform(0.5, 2.5)
        while at < end:
            # A held key repeats; a turn may come in the same picture.
            for _ in range(random.randint(1, 5)):
                yield at, "block_move"
                if random.rand() < 0.3:
                    yield at, "block_rotate"
                at += random.choice((6, 9)) / 60
            yield at, "block_rotate"
            at += random.randint(0, 12) / 60
        if random.rand() < 0.5:
            yield at, "block_move"
        yield at, "block_fall"
        if random.rand() < 0.4:
            yield at, "block_explotion"
        at += random.randint(1, 20) / 60


def menu_events(seconds, random):
    at = 1.0
    while at < seconds:
        yield at, random.choice(("block_hover", "gui_hover", "gui_click", "block_explotion"), p=(0.4, 0.35, 0.2, 0.05))
        at += random.randint(0, 40) / 60


def highest_sum(directory, music, events, seed):
    """Of music and sounds as the mixer adds them, all at full volume, and at the music's rate."""
    total = music.copy()
    sounds = {}
    for at, name in events(total.shape[1] / 44100 - 3, np.random.RandomState(seed)):
        if name not in sounds:
            sounds[name] = read(os.path.join(directory, "sounds", "HQ_%s.wav" % name))[1]
        first = int(at * 44100)
        total[:, first:first + sounds[name].shape[1]] += sounds[name]
    return np.abs(total).max(), (np.abs(total) >= 1).sum()


def check_courses(directory, pieces, fail):
    for name, events in (("KolvexIntro", menu_events), ("Kolvex_NewAge", game_events)):
        for seed in range(COURSES):
            highest, over = highest_sum(directory, pieces[name][0], events, seed)
            print("course %d over %s: highest sum %.1f dB" % (seed + 1, name, 2 * level(highest)))
            fail(over > 0, "%s, course %d: %d sums over full scale" % (name, seed + 1, over))


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "../data")
    failures = []

    def fail(wrong, text):
        if wrong:
            failures.append(text)

    louds = {name: check_effect(data, name, fail) for name in EFFECTS}
    fail(max(louds, key=louds.get) != "block_explotion", "the explosion is not the loudest")
    fail(louds["block_move"] > louds["block_fall"], "a move is louder than a landing")
    pieces = {name: check_music(data, name, fail) for name in MUSIC}
    for effect, name, most in UNDER_MUSIC:
        under = pieces[name][1] - louds[effect]
        fail(under > most, "%s lies %.1f dB under %s" % (effect, under, name))
    check_signature(data, fail)
    check_courses(data, pieces, fail)
    for text in failures:
        print("WRONG  %s" % text)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
