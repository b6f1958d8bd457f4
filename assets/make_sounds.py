#!/usr/bin/python3
"""sounds/*.wav: every sound effect at 22050 Hz, and beside it the HQ_ variant at 44100 Hz.

The temple sets the materials: the pieces are cut stone, the interface is wood with bronze edges, the signature is a
harp, a frame drum and a gong. What is heard often is short, dry and soft; a cleared row is the loudest. The modes of
the bodies stand in ratios of plates and bars, not of strings, so that nothing sounds like a pitched beep. Peaks are kept
low and bodies dense: whatever sounds together in a game must stay below full scale with the music.
"""
import sys

import numpy as np

from sound.synthesis import (body, dense, fade, grains, grit, high_pass, low_pass, place, string, times, write, MASTER)

# D of the Phrygian dominant scale on which the music rests too.
D2 = 73.416


def semitones(steps):
    return D2 * 2 ** (steps / 12)


def slab(length, pitch, ring, hardness=1.0):
    """A block of sandstone that is touched by another: short, with most of its sound in the first modes."""
    ratios = ((1.00, 1.0, 1.0), (1.58, 0.75, 0.8), (2.24, 0.55, 0.62), (2.92, 0.42 * hardness, 0.5),
              (4.16, 0.34 * hardness, 0.38), (5.43, 0.25 * hardness, 0.3), (7.1, 0.16 * hardness, 0.22))
    return body(length, [(pitch * r, level, ring * d) for r, level, d in ratios])


def block_move():
    """A stone shifts by its own width: a muted knock with a little grit."""
    total = np.zeros(len(times(0.068)))
    place(total, slab(0.068, 392, 0.075), 0.004)
    place(total, grit(0.060, 1500, 6500, 0.05, 11), 0.0, 0.40)
    return dense(total, 3.2)


def block_rotate():
    """A stone turns over: the lift and the set-down, the second one higher."""
    total = np.zeros(len(times(0.078)))
    place(total, slab(0.06, 470, 0.045, 1.2), 0.0, 0.6)
    place(total, slab(0.05, 640, 0.055, 1.3), 0.026)
    place(total, grit(0.05, 2400, 8000, 0.045, 12, attack=0.004), 0.002, 0.28)
    return dense(total, 3.6)


def block_fall():
    """A stone comes to rest: a blow that is felt, the crack of the faces, a breath of dust."""
    total = np.zeros(len(times(0.26)))
    place(total, body(0.26, [(84, 1.0, 0.20), (131, 0.6, 0.14), (178, 0.4, 0.1)], attack=0.0012, bend=0.6), 0.0, 0.75)
    place(total, slab(0.2, 262, 0.13, 1.2), 0.001, 0.75)
    place(total, slab(0.1, 520, 0.05, 1.2), 0.016, 0.2)
    place(total, grit(0.24, 500, 4200, 0.16, 13), 0.0, 0.45)
    place(total, grit(0.05, 3500, 16000, 0.03, 14), 0.0, 0.22)
    return dense(total, 1.8)


def splinter(random):
    pitch = 900 * 2 ** random.uniform(0, 2.1)
    return slab(0.06, pitch, random.uniform(0.02, 0.05), 1.4) * random.uniform(0.3, 1.0)


def block_explotion():
    """A row bursts, and the same sound stands for four: a deep blow, stone that breaks and is swept from right to left
    as its sparks are, four bells that climb to the octave, and a shimmer of bronze that stays behind."""
    length = 1.9
    middle = np.zeros(len(times(length)))
    place(middle, body(length, [(52, 1.0, 0.6), (83, 0.7, 0.42), (131, 0.4, 0.26)], attack=0.004, bend=0.9), 0.006, 1.0)
    place(middle, slab(0.4, 205, 0.22, 1.3), 0.004, 0.62)
    place(middle, low_pass(grit(0.7, 180, 7000, 0.42, 21), 5200), 0.004, 0.62)
    place(middle, high_pass(grit(0.3, 2500, 14000, 0.12, 22), 2500), 0.004, 0.30)
    total = np.tile(0.5 * dense(middle, 3.0), (2, 1))
    # Five showers of splinters, each further to the left, and a last one that only trickles.
    for number in range(6):
        shower = grains(0.9, 150 if number < 5 else 30, 7, splinter, 23 + number)
        pan = 0.85 - 0.14 * number
        at = 0.02 + 0.095 * number
        place(total[0], shower, at, 0.15 * np.cos(pan * np.pi / 2))
        place(total[1], shower, at, 0.15 * np.sin(pan * np.pi / 2))
    # Bronze on D, F sharp, A and the upper D, with its stretched partials; the last one rings.
    for number, (step_, at, level) in enumerate(((36, 0.05, 1.0), (40, 0.15, 0.9), (43, 0.25, 0.95), (48, 0.36, 1.0),
                                                 (52, 0.50, 0.5), (55, 0.60, 0.4), (60, 0.72, 0.35))):
        pitch = semitones(step_)
        bell = body(length, [(pitch, 1.0, 1.7), (pitch * 2.003, 0.5, 1.1), (pitch * 2.76, 0.42, 0.7),
                             (pitch * 4.07, 0.25, 0.4), (pitch * 5.4, 0.16, 0.25)], attack=0.0010)
        pan = 0.7 - 0.07 * number
        place(total[0], bell, at, 0.085 * level * np.cos(pan * np.pi / 2))
        place(total[1], bell, at + 0.0006, 0.085 * level * np.sin(pan * np.pi / 2))
    return dense(total, 1.6)


def block_hover():
    """The pointer finds a box of the menu: one short touch of a string."""
    total = np.zeros(len(times(0.056)))
    pitch = semitones(38)
    place(total, body(0.056, [(pitch, 1.0, 0.06), (pitch * 2.0, 0.4, 0.045), (pitch * 3.01, 0.2, 0.03),
                              (pitch * 5.4, 0.1, 0.014)], attack=0.0012), 0.0)
    place(total, grit(0.02, 3000, 16000, 0.012, 31), 0.0, 0.16)
    return dense(total, 2.2)


def gui_hover():
    """The pointer passes over a button: a tick of dry wood."""
    total = np.zeros(len(times(0.032)))
    place(total, body(0.032, [(1180, 1.0, 0.022), (2360, 0.45, 0.014), (3890, 0.25, 0.009)], attack=0.0006), 0.0)
    place(total, grit(0.016, 4000, 16000, 0.008, 32, attack=0.0003), 0.0, 0.16)
    return dense(total, 2.2)


def gui_click():
    """A button gives way: wood on wood, then the bronze latch."""
    total = np.zeros(len(times(0.072)))
    place(total, body(0.07, [(540, 1.0, 0.042), (1270, 0.6, 0.026), (2210, 0.4, 0.017), (3500, 0.2, 0.01)]), 0.0)
    place(total, body(0.05, [(2930, 0.7, 0.045), (4720, 0.5, 0.035), (7350, 0.3, 0.022)], attack=0.0003), 0.019, 0.42)
    place(total, grit(0.02, 1800, 16000, 0.012, 41), 0.0, 0.25)
    return total


def move():
    """A stone is dragged over the floor: one stroke that swells and dies away, so that it can be repeated for ever."""
    length = 1.1
    t = times(length)
    random = np.random.RandomState(51)
    rumble = grit(length, 70, 420, 1e6, 52)
    rasp = grit(length, 700, 3400, 1e6, 53)
    # The faces catch and slip some thirty times a second.
    catch = np.zeros(len(t))
    at = 0.0
    while at < length:
        place(catch, np.exp(-times(0.05) / 0.012) * random.uniform(0.4, 1.0), at)
        at += random.uniform(0.022, 0.048)
    stroke = np.sin(np.pi * t / length) ** 1.5
    return (rumble * (0.6 + 0.4 * catch) + 0.55 * rasp * (0.25 + 0.75 * catch)) * stroke


def step():
    """A walking jackal: two soft pads on stone, a claw that ticks, then quiet until the next pair."""
    total = np.zeros(len(times(0.62)))
    for at, pitch, level, seed in ((0.0, 188, 1.0, 61), (0.31, 171, 0.85, 63)):
        place(total, body(0.12, [(pitch, 1.0, 0.075), (pitch * 1.7, 0.4, 0.05)], attack=0.003, bend=0.4), at, level)
        place(total, grit(0.12, 350, 3200, 0.06, seed, attack=0.003), at, 0.8 * level)
        place(total, body(0.03, [(2650, 1.0, 0.02), (4180, 0.6, 0.014)], attack=0.0004), at + 0.013, 0.20 * level)
    return total


def gong(length, pitch):
    """A wide gong whose upper modes bloom after the stroke; two rows, for left and right."""
    sides = []
    for detune in (0.9985, 1.0015):
        low = body(length, [(pitch * r * detune, level, d) for r, level, d in
                            ((1, 1.0, 5.5), (1.51, 0.5, 4.6), (2.02, 0.55, 4.2), (2.49, 0.3, 3.4))], attack=0.012)
        high = body(length, [(pitch * r * detune, level, d) for r, level, d in
                             ((3.36, 0.3, 3.0), (4.1, 0.24, 2.6), (5.27, 0.2, 2.3), (6.63, 0.15, 2.0), (8.4, 0.1, 1.6))],
                    attack=0.22)
        sides.append(low + high)
    return np.array(sides)


def hall(signal, seconds, seed, wet):
    """Adds the answer of a stone hall: decaying noise, darker the later it comes, different on both sides."""
    t = times(seconds)
    random = np.random.RandomState(seed)
    out = signal.copy()
    size = 1
    while size < signal.shape[-1] + len(t):
        size *= 2
    for side in range(2):
        answer = random.standard_normal(len(t)) * np.exp(-6.91 * t / seconds)
        bright, dark = low_pass(answer, 5200), low_pass(answer, 1500)
        share = np.minimum(t / (0.5 * seconds), 1)
        answer = high_pass(bright * (1 - share) + dark * share, 120)
        answer *= 1 - np.exp(-t / 0.015)
        answer /= np.sqrt((answer ** 2).sum())
        spectrum = np.fft.rfft(signal[side], size) * np.fft.rfft(answer, size)
        out[side] += wet * np.fft.irfft(spectrum, size)[:signal.shape[-1]]
    return out


def phrase(total, at, ground, climb, bells, weight):
    """A drum and a gong, the harp that climbs from them, and the bells where it arrives. Steps are above D."""
    drum = body(1.2, [(61, 1.0, 0.75), (96, 0.45, 0.45), (142, 0.22, 0.3)], attack=0.002, bend=0.5)
    drum += 0.16 * np.pad(grit(0.3, 200, 2200, 0.14, 71), (0, len(drum) - len(times(0.3))))
    for side in range(2):
        place(total[side], drum, at + 0.05, 0.95 * weight)
        place(total[side], drum, at + 3.02, 0.50 * weight)
    place(total, gong(5.0, semitones(ground)), at + 0.06, 0.34 * weight)
    for number, step_ in enumerate(climb):
        start = at + 0.80 + 0.178 * number + (0.05 if number == len(climb) - 1 else 0)
        note = fade(string(3.6, semitones(step_), 0.45 + 0.05 * number, 3.2, 80 + number), MASTER, 0.001, 0.3)
        pan = 0.32 + 0.36 * number / (len(climb) - 1)
        level = 0.30 + 0.03 * number
        place(total[0], note, start, level * np.cos(pan * np.pi / 2))
        place(total[1], note, start + 0.0004, level * np.sin(pan * np.pi / 2))
    for number, step_ in enumerate(bells):
        start, level = at + 2.36 + 0.05 * number, (1.0, 0.7, 0.55, 0.4)[number]
        pitch = semitones(step_)
        bell = body(2.6, [(pitch, 1.0, 2.6), (pitch * 2.004, 0.4, 1.9), (pitch * 2.75, 0.3, 1.2), (pitch * 5.4, 0.1, 0.5)],
                    attack=0.004)
        place(total[0], bell, start, 0.10 * level)
        place(total[1], bell, start + 0.0007, 0.10 * level)


def logo():
    """The maker's signature, ten seconds in two phrases, one to each picture of the intro. The first climbs the Phrygian
    dominant scale to the light; the second answers from the fourth, turns round the octave and comes home."""
    total = np.zeros((2, len(times(10.0))))
    # D, A, D, E flat, F sharp, A, B flat, D: the augmented second in the middle is what gives the place away.
    phrase(total, 0.0, 0, (12, 19, 24, 25, 28, 31, 32, 36), (36, 43, 48), 1.0)
    phrase(total, 5.0, 5, (17, 24, 29, 32, 36, 37, 32, 36), (36, 40, 43, 48), 0.95)
    return dense(hall(total, 2.2, 90, 0.5), 1.25)


def main():
    data = sys.argv[1]
    write(data, "block_move", block_move(), -12.5)
    write(data, "block_rotate", block_rotate(), -13)
    write(data, "block_fall", block_fall(), -12.5)
    write(data, "block_explotion", block_explotion(), -7, end=0.5)
    write(data, "block_hover", block_hover(), -11.5, end=0.012)
    write(data, "gui_hover", gui_hover(), -14.5)
    write(data, "gui_click", gui_click(), -11)
    write(data, "move", move(), -12, start=0.02, end=0.02)
    write(data, "step", step(), -10, end=0.05)
    write(data, "Logo", logo(), -6, end=1.5)


if __name__ == "__main__":
    main()
