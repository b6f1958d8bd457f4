"""From parts to a looping OGG file: the sound font plays every part alone and dry, the parts are placed in one hall, and
whatever rings past the end of the piece is laid over its start, so that the loop has no seam to hear."""
import os
import re
import subprocess
import tempfile

import numpy as np
from scipy.io import wavfile
from scipy.signal import butter, oaconvolve, sosfilt

RATE = 44100
SOUND_FONT = "/usr/share/sounds/sf2/FluidR3_GM.sf2"
# Seconds that are rendered before the first beat; they are folded round the loop's end.
LEAD = 0.25
# Peak of the music: what is left up to full scale belongs to the sounds that are heard with it.
CEILING = 10 ** (-8.5 / 20)


def play(part, tempo, seed):
    """The dry sound of a part, two rows of samples; the first beat lies LEAD seconds in."""
    with tempfile.TemporaryDirectory() as directory:
        score, sound = os.path.join(directory, "part.mid"), os.path.join(directory, "part.raw")
        with open(score, "wb") as file:
            file.write(part.midi(tempo, seed, LEAD))
        subprocess.run(["fluidsynth", "-q", "-n", "-i", "-R", "0", "-C", "0", "-g", "0.6", "-r", str(RATE), "-O", "float",
                        "-T", "raw", "-F", sound, SOUND_FONT, score], check=True, stdout=subprocess.DEVNULL)
        samples = np.fromfile(sound, "<f4").astype(float)
    return np.ascontiguousarray(samples.reshape(-1, 2).T)


def fold(samples, first, count):
    """Lays samples round a circle of count samples, so that sample number first becomes number 0."""
    out = np.zeros((2, count))
    at = -first
    taken = 0
    while taken < samples.shape[1]:
        place = at % count
        part = samples[:, taken:taken + count - place]
        out[:, place:place + part.shape[1]] += part
        at += part.shape[1]
        taken += part.shape[1]
    return out


def answer_of_hall(seconds, seed):
    """The answer of a stone court: a few early echoes, then a decay that grows darker, different on both sides."""
    random = np.random.RandomState(seed)
    count = int(seconds * RATE)
    t = np.arange(count) / RATE
    answer = np.zeros((2, count))
    for side in range(2):
        noise = random.standard_normal(count)
        late = np.zeros(count)
        # Each band dies away in its own time: stone keeps the low middle longest.
        for low, high, share in ((120, 500, 1.0), (500, 2000, 0.85), (2000, 5000, 0.6), (5000, 11000, 0.38)):
            band = sosfilt(butter(2, [low, high], "bandpass", fs=RATE, output="sos"), noise)
            late += band * np.exp(-6.91 * t / (seconds * share))
        answer[side] = late * (1 - np.exp(-t / 0.03))
        answer[side] /= np.sqrt((answer[side] ** 2).sum())
        for _ in range(7):
            at = random.uniform(0.012, 0.075)
            answer[side, int(at * RATE)] += random.choice([-1, 1]) * 0.16 * (0.02 / at) ** 0.5
    return answer


def decibels(value):
    return 10 ** (value / 20)


def mix(parts, tempo, hall_seconds, seed):
    """All parts as they sound in the hall, as one circle of samples."""
    count = int(round(tempo.length * RATE))
    dry, send = np.zeros((2, count)), np.zeros((2, count))
    for number, part in enumerate(parts):
        circle = fold(play(part, tempo, seed + number), int(LEAD * RATE), count)
        # Constant power; the width of the sampled instrument itself is kept.
        angle = (part.pan + 1) * np.pi / 4
        circle *= decibels(part.level) * np.sqrt(2) * np.array([[np.cos(angle)], [np.sin(angle)]])
        dry += circle
        send += circle * decibels(part.wet)
    answer = answer_of_hall(hall_seconds, seed)
    wet = np.array([oaconvolve(send[side], answer[side]) for side in range(2)])
    total = dry + fold(wet, 0, count)
    # Nothing that can be heard lies below 30 Hz. Filtered twice round, so that the filter's start is not part of the loop.
    rumble = butter(2, 30, "highpass", fs=RATE, output="sos")
    return sosfilt(rumble, np.concatenate([total, total], 1))[:, count:]


def loudness(path):
    """Integrated loudness (LUFS), loudness range (LU) and true peak (dBFS) as ffmpeg measures them."""
    report = subprocess.run(["ffmpeg", "-hide_banner", "-nostats", "-i", path, "-af", "ebur128=peak=true", "-f", "null", "-"],
                            capture_output=True, text=True, check=True).stderr
    summary = report[report.rindex("Summary:"):]
    return tuple(float(re.search(key + r":\s+(-?[\d.]+|-inf)", summary).group(1)) for key in ("I", "LRA", "Peak"))


def limit(samples, ceiling):
    """Holds peaks under a ceiling with a gain that moves slowly, itself a circle like the piece."""
    peak = np.abs(samples).max(0)
    need = np.minimum(1, ceiling / np.maximum(peak, 1e-9))
    reach = int(0.004 * RATE)
    lowest = need.copy()
    for shift in range(-reach, reach + 1, 8):
        lowest = np.minimum(lowest, np.roll(need, shift))
    window = np.hanning(2 * reach + 1)
    window /= window.sum()
    smooth = oaconvolve(np.concatenate([lowest[-reach:], lowest, lowest[:reach]]), window, mode="valid")
    return samples * smooth


def even(samples, share, seconds=2.5):
    """Rides the level as a hand on the fader does: takes back a share of every slow deviation, in decibels, from the
    middle level of the piece. A circle like the piece, so that the seam is ridden too."""
    reach = int(seconds * RATE)
    window = np.hanning(2 * reach + 1)
    power = (samples ** 2).mean(0)
    smooth = oaconvolve(np.concatenate([power[-reach:], power, power[:reach]]), window / window.sum(), mode="valid")
    level = 10 * np.log10(np.maximum(smooth, 1e-9))
    return samples * decibels(-share * (level - np.median(level)))


def write_loop(samples, path, target, quality, title):
    """Brings the piece to target LUFS and encodes it. The serial number is fixed, so that the file is always the same."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with tempfile.TemporaryDirectory() as directory:
        sound = os.path.join(directory, "loop.wav")
        samples = samples / np.abs(samples).max() * 0.5
        wavfile.write(sound, RATE, np.rint(samples.T * 32767).astype("<i2"))
        samples = limit(samples * decibels(target - loudness(sound)[0]), CEILING)
        noise = np.random.RandomState(1).uniform(-0.5, 0.5, (2, *samples.shape)).sum(0)
        wavfile.write(sound, RATE, np.rint(np.clip(samples * 32767 + noise, -32768, 32767)).T.astype("<i2"))
        subprocess.run(["oggenc", "-Q", "-q", str(quality), "-s", "1", "-t", title, "-o", path, sound], check=True)
