"""The few building blocks that every sound effect is made of: struck bodies, grit, plucked strings, and how a
finished sound is brought to its rates and written.

Everything is computed at MASTER samples a second and reduced once to each of the two rates the game plays, so both
files of a sound are the same event and the one at 44100 Hz really has the treble that the other lacks. A signal is a
one-dimensional array of floats, or two rows for left and right. Times are in seconds, frequencies in Hz.
"""
import os
import wave

import numpy as np
from scipy.signal import butter, lfilter, resample_poly, sosfilt

MASTER = 88200
RATES = (44100, 22050)


def times(length):
    return np.arange(int(round(length * MASTER))) / MASTER


def decibels(value):
    """A level in decibels as a factor."""
    return 10 ** (value / 20)


def place(total, part, at, gain=1.0):
    """Adds part to total from the time at on; what reaches over the end is cut."""
    first = int(round(at * MASTER))
    room = total.shape[-1] - first
    if room > 0:
        total[..., first:first + part.shape[-1]] += gain * part[..., :room]


def body(length, modes, attack=0.0004, bend=0.0):
    """A struck body: modes are (frequency, level, time in which the mode falls by 60 dB). The blow takes attack
    seconds. bend lets every mode start higher by that share and sink, as a slack or hard-hit body does."""
    t = times(length)
    total = np.zeros(len(t))
    for number, (frequency, level, decay) in enumerate(modes):
        # The whole glide is over within the first third of the decay.
        phase = frequency * (t + bend * decay / 9 * (1 - np.exp(-9 * t / decay)))
        total += level * np.sin(2 * np.pi * phase + 0.7 * number) * np.exp(-6.91 * t / decay)
    return total * (1 - np.exp(-t / attack))


def grit(length, low, high, decay, seed, attack=0.0008):
    """A burst of noise between two frequencies: the contact of rough stone, dust, the breath of an impact."""
    t = times(length)
    noise = np.random.RandomState(seed).standard_normal(len(t))
    band = butter(2, [low, min(high, 0.45 * MASTER)], "bandpass", fs=MASTER, output="sos")
    noise = sosfilt(band, noise)
    noise /= np.abs(noise).max()
    return noise * np.exp(-6.91 * t / decay) * (1 - np.exp(-t / attack))


def grains(length, rate_start, rate_end, make, seed):
    """Many small events, rate_start a second at the beginning and rate_end at the end. make(random) gives one."""
    random = np.random.RandomState(seed)
    total = np.zeros(len(times(length)))
    at = 0.0
    while at < length:
        rate = rate_start * (rate_end / rate_start) ** (at / length)
        at += random.exponential(1 / rate)
        place(total, make(random), at, (1 - at / length) ** 2 if at < length else 0.0)
    return total


def string(length, frequency, brightness, decay, seed):
    """A plucked gut string: a delay line as long as one period, whose loss falls on the treble first. brightness
    from 0 to 1 is how hard the nail hits; decay is the time in which the lowest partial falls by 60 dB."""
    count = len(times(length))
    period = MASTER / frequency
    whole, rest = int(period), period - int(period)
    random = np.random.RandomState(seed)
    nail = sosfilt(butter(1, 500 + 7000 * brightness ** 2, fs=MASTER, output="sos"),
                   np.tile(random.uniform(-1, 1, whole), 3))[-whole:]
    pluck = np.zeros(count)
    pluck[:whole] = nail - nail.mean()
    # Plucked a sixth along the string: the partials that have a node there stay silent.
    pluck[whole // 6:] -= pluck[:-(whole // 6)]
    loss, softening = 10 ** (-3 / frequency / decay), 0.30
    loop = np.convolve([softening / 2, 1 - softening, softening / 2], [1 - rest, rest])
    feedback = np.zeros(whole + 3)
    feedback[0] = 1
    feedback[whole - 1:whole + 3] -= loss * loop
    out = lfilter([1.0], feedback, pluck)
    return out / np.abs(out).max()


def low_pass(signal, frequency, order=2):
    return sosfilt(butter(order, frequency, fs=MASTER, output="sos"), signal)


def high_pass(signal, frequency, order=2):
    return sosfilt(butter(order, frequency, "highpass", fs=MASTER, output="sos"), signal)


def dense(signal, drive):
    """Soft saturation: more body under the same peak, so that a sound carries without pushing a sum over full scale."""
    return np.tanh(drive * signal / np.abs(signal).max())


def fade(signal, rate, start, end):
    """Raised-cosine ends of the given lengths, so that neither end can click."""
    signal = signal.copy()
    for length, part in ((start, slice(None)), (end, slice(None, None, -1))):
        count = min(int(length * rate), signal.shape[-1])
        ramp = 0.5 - 0.5 * np.cos(np.pi * np.arange(count) / max(count, 1))
        signal[..., part][..., :count] *= ramp
    return signal


def write(directory, name, signal, peak, start=0.0005, end=0.008):
    """Writes sounds/NAME.wav and sounds/HQ_NAME.wav with the given peak in decibels below full scale."""
    gain = None
    for rate in RATES:
        reduced = fade(resample_poly(signal, 1, MASTER // rate, axis=-1), rate, start, end)
        gain = gain or decibels(peak) / np.abs(reduced).max()
        reduced *= gain
        pcm = np.rint(reduced * 32767).astype("<i2")
        path = os.path.join(directory, "sounds", ("HQ_" if rate == 44100 else "") + name + ".wav")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with wave.open(path, "wb") as file:
            file.setnchannels(1 if pcm.ndim == 1 else 2)
            file.setsampwidth(2)
            file.setframerate(rate)
            file.writeframes(pcm.T.tobytes())
