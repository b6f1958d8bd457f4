"""Note lists: how the two pieces of music are written down, made to breathe like played ones, and turned into MIDI.

A melody is written as words: pitch:beats, for example "A4:3 Bb4:0.5 A4:0.5 | r:1". r rests, | stands between bars and
is checked, and ^ in front of a pitch adds a short grace note from the next step of the scale above. Positions are in
beats from the start of the piece. Notes and pedals may reach over the end of the piece: it is a loop, and what rings on
there is heard again at its start.
"""
import struct

import numpy as np

BEATS = 4
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
# D Phrygian dominant, as semitones above C.
SCALE = (2, 3, 6, 7, 9, 10, 0)
VOLUME, PAN, EXPRESSION, PEDAL, VIBRATO = 7, 10, 11, 64, 1


def pitch(name):
    """The MIDI number of a pitch such as Eb4 or F#5."""
    accidental = {"b": -1, "#": 1}.get(name[1], 0)
    return 12 * (int(name[-1]) + 1) + STEPS[name[0]] + accidental


def step_above(key):
    """The next higher pitch of the scale."""
    key += 1
    while key % 12 not in SCALE:
        key += 1
    return key


def parse(text):
    """A melody as a list of (beat, length, key or None, graced)."""
    notes, beat = [], 0.0
    for number, bar in enumerate(text.split("|")):
        for word in bar.split():
            name, length = word.split(":")
            graced = name.startswith("^")
            notes.append((beat, float(length), None if name == "r" else pitch(name.lstrip("^")), graced))
            beat += float(length)
        if abs(beat - BEATS * (number + 1)) > 1e-9:
            raise ValueError("bar %d of a melody does not hold %d beats: %s" % (number + 1, BEATS, bar))
    return notes


class Tempo:
    """Turns beats into seconds. breaths maps a beat to the factor by which it is longer than the others."""

    def __init__(self, per_minute, bars, breaths=None):
        self.beats = bars * BEATS
        lengths = np.full(self.beats, 60.0 / per_minute)
        for beat, factor in (breaths or {}).items():
            lengths[beat] *= factor
        self.marks = np.concatenate([[0], np.cumsum(lengths)])
        self.length = self.marks[-1]

    def seconds(self, beat):
        over = max(beat - self.beats, 0)
        return float(np.interp(beat, np.arange(self.beats + 1), self.marks)) + over * self.length / self.beats


class Part:
    """One player: an instrument of the sound font, a place in the room, and what is played.

    pan runs from -1 (left) to 1, level and wet (the share that the hall answers) are in decibels; loose is the
    deviation of a note's start in seconds, a player's own unevenness.
    """

    def __init__(self, name, program, pan=0.0, level=0.0, wet=-10.0, loose=0.010, drums=False):
        self.name, self.program, self.drums = name, program, drums
        self.pan, self.level, self.wet, self.loose = pan, level, wet, loose
        self.notes, self.controls = [], []

    def note(self, beat, length, key, velocity):
        self.notes.append((beat, length, key, velocity))

    def control(self, beat, number, value):
        self.controls.append((beat, number, value))

    def swell(self, beat, length, start, end):
        """Grows or falls from one expression (0..127) to another."""
        for i in range(int(length * 4) + 1):
            share = i / (length * 4)
            self.control(beat + i / 4, EXPRESSION, start + (end - start) * (0.5 - 0.5 * np.cos(np.pi * share)))

    def melody(self, bar, text, loudness, transpose=0, legato=1.0, breathe=False):
        """Plays a melody from the given bar on. loudness are velocities spread evenly over it. breathe lets every
        longer note of a wind or bowed instrument swell and sink, with a vibrato that comes late."""
        notes = parse(text)
        start, total = bar * BEATS, notes[-1][0] + notes[-1][1]
        marks = np.linspace(0, total, len(loudness))
        for beat, length, key, graced in notes:
            if key is None:
                continue
            velocity = np.interp(beat + length / 2, marks, loudness) + (3 if beat % BEATS == 0 else 0)
            if graced:
                self.note(start + beat - 0.06, 0.13, step_above(key) + transpose, velocity * 0.82)
                self.note(start + beat + 0.07, length * legato - 0.07, key + transpose, velocity)
            else:
                self.note(start + beat, length * legato, key + transpose, velocity)
            if breathe and length >= 1:
                for share, level in ((0, 92), (0.3, 112), (0.6, 116), (0.85, 98), (0.97, 84)):
                    self.control(start + beat + share * length, EXPRESSION, level)
                for share, depth in ((0, 0), (0.35, 8), (0.6, 34), (0.9, 22), (0.98, 0)):
                    self.control(start + beat + share * length, VIBRATO, depth)
            elif breathe:
                self.control(start + beat, EXPRESSION, 100)
                self.control(start + beat, VIBRATO, 0)

    def midi(self, tempo, seed, lead=0.0):
        """A MIDI file of one track in which a tick is a millisecond; everything starts lead seconds late, so that
        what a loose player plays before the first beat is kept."""
        random = np.random.RandomState(seed)
        channel = 9 if self.drums else 0
        events = [(0, 0, bytes([0xC0 | channel, self.program])), (0, 1, bytes([0xB0 | channel, VOLUME, 100])),
                  (0, 1, bytes([0xB0 | channel, PAN, 64])), (0, 1, bytes([0xB0 | channel, EXPRESSION, 100]))]
        for beat, number, value in self.controls:
            at = max(int(round(1000 * (tempo.seconds(beat) + lead))), 1)
            events.append((at, 2, bytes([0xB0 | channel, number, int(np.clip(round(value), 0, 127))])))
        sounding = {}
        for beat, length, key, velocity in sorted(self.notes):
            drift = np.clip(random.normal(0, self.loose), -2.5 * self.loose, 2.5 * self.loose)
            level = int(np.clip(round(velocity + random.normal(0, 3.2)), 1, 127))
            on = max(int(round(1000 * (tempo.seconds(max(beat, 0)) + min(beat, 0) * 60 / 70 + drift + lead))), 2)
            off = max(int(round(1000 * (tempo.seconds(beat + length) + drift + lead))), on + 30)
            # A key that is struck again before it was let go is let go first.
            if key in sounding and sounding[key][0] > on - 2:
                events.remove(sounding[key])
                sounding[key] = (on - 2, *sounding[key][1:])
                events.append(sounding[key])
            sounding[key] = (off, 3, bytes([0x80 | channel, key, 64]))
            events += [(on, 4, bytes([0x90 | channel, key, level])), sounding[key]]
        events.sort(key=lambda event: event[:2])
        track, last = b"\x00\xff\x51\x03" + (1000000).to_bytes(3, "big"), 0
        for at, _, data in events:
            track += variable(at - last) + data
            last = at
        # The renderer stops with the last event: leave it time to let everything ring out.
        track += variable(9000) + b"\xff\x2f\x00"
        return b"MThd" + struct.pack(">IHHH", 6, 0, 1, 1000) + b"MTrk" + struct.pack(">I", len(track)) + track


def variable(value):
    """A number in MIDI's seven bits a byte."""
    out = [value & 0x7F]
    while value > 0x7F:
        value >>= 7
        out.append(value & 0x7F | 0x80)
    return bytes(reversed(out))
