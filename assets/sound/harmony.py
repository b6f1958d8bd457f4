"""The chords that both pieces rest on, all of them from D Phrygian dominant (D Eb F# G A Bb C), and the figures in which
harp, strings and bass play them."""
from sound.score import BEATS, pitch

# Bass, the four voices of the strings from low to high, and the seven strings a harp figure runs over.
CHORDS = {
    "D": ("D2", "D3 A3 D4 F#4", "D3 A3 D4 F#4 A4 D5 F#5"),
    "Dopen": ("D2", "D3 A3 D4 A4", "D3 A3 D4 Eb4 A4 D5 Eb5"),
    "Gm": ("G2", "D3 G3 Bb3 D4", "G2 D3 G3 Bb3 D4 G4 Bb4"),
    "Cm": ("C2", "Eb3 G3 C4 Eb4", "C3 G3 C4 Eb4 G4 C5 Eb5"),
    "Eb": ("Eb2", "Eb3 G3 Bb3 G4", "Eb3 Bb3 Eb4 G4 Bb4 D5 G5"),
}


def bass(chord):
    return pitch(CHORDS[chord][0])


def voices(chord):
    return [pitch(name) for name in CHORDS[chord][1].split()]


def strings_of_harp(chord):
    return [pitch(name) for name in CHORDS[chord][2].split()]


def arpeggio(part, bar, chords, figure, loudness, step=0.5, ring=2.0):
    """A broken chord a bar. figure lists the harp's strings, one every step beats; '.' leaves one out. The middle
    of the bar is a little louder than its ends, and the first note carries the bar."""
    places = figure.split()
    for number, chord in enumerate(chords.split()):
        keys = strings_of_harp(chord)
        for i, place in enumerate(places):
            if place == ".":
                continue
            shape = 1 - abs(2 * i / len(places) - 1)
            velocity = loudness * (0.84 + 0.16 * shape) + (7 if i == 0 else 0)
            part.note((bar + number) * BEATS + i * step, ring, keys[int(place)], velocity)


def pad(part, bar, chords, loudness, overlap=0.35):
    """Held chords. A voice that keeps its pitch is held over; the others change with a small overlap."""
    names = chords.split()
    held = {}
    for number, chord in enumerate(names + [None]):
        beat = (bar + number) * BEATS
        keys = voices(chord) if chord else []
        for key in [key for key in held if key not in keys]:
            part.note(held[key], beat - held[key] + overlap, key, loudness)
            del held[key]
        for key in keys:
            held.setdefault(key, beat)
