"""River Stones, the music of the game: 72 steady bars in D Phrygian dominant that can be heard for hours.

    bars  1-4   harp figure and drum come in
    bars  5-12  theme, flute, sparse
    bars 13-20  theme again, dulcimer, with a second voice below
    bars 21-28  second theme, low strings
    bars 29-36  the figure alone; lute calls
    bars 37-40  drums alone
    bars 41-48  long notes of the strings over a quieter figure
    bars 49-56  second theme, lute and flute in octaves
    bars 57-64  theme, flute and dulcimer take turns
    bars 65-72  the voices leave one after the other; the figure leads back to the start
"""
from sound.harmony import arpeggio, bass, pad
from sound.score import BEATS, Part, Tempo

NAME, TITLE = "Kolvex_NewAge", "River Stones"
BARS = 72
HALL = 1.9
LOUDNESS = -21.0
EVENNESS = 0.15

THEME = """r:1 D5:0.5 Eb5:0.5 F#5:1.5 G5:0.5 | F#5:1 Eb5:0.5 D5:2.5 | r:1 A4:0.5 Bb4:0.5 C5:1 D5:1 |
           Eb5:0.5 D5:0.5 C5:0.5 D5:2.5 | r:1 F#5:0.5 G5:0.5 A5:1.5 Bb5:0.5 | A5:1 G5:0.5 F#5:0.5 G5:1 F#5:1 |
           Eb5:1 F#5:0.5 Eb5:0.5 D5:1 C5:1 | D5:3 r:1"""
THEME_BELOW = """r:4 | r:2 A4:1 F#4:1 | r:4 | r:2 G4:1 Bb4:1 | r:4 | r:4 | G4:2 Bb4:1 A4:1 | F#4:3 r:1"""
# The same line on strings that are struck: repeated notes in place of held ones.
THEME_STRUCK = """r:1 D5:0.5 Eb5:0.5 F#5:0.5 F#5:0.5 F#5:0.5 G5:0.5 | F#5:1 Eb5:0.5 D5:0.5 D5:0.5 A4:0.5 D5:1 |
           r:1 A4:0.5 Bb4:0.5 C5:0.5 C5:0.5 D5:1 | Eb5:0.5 D5:0.5 C5:0.5 D5:0.5 D5:0.5 A4:0.5 D5:1 |
           r:1 F#5:0.5 G5:0.5 A5:0.5 A5:0.5 A5:0.5 Bb5:0.5 | A5:1 G5:0.5 F#5:0.5 G5:1 F#5:1 |
           Eb5:1 F#5:0.5 Eb5:0.5 D5:1 C5:1 | D5:0.5 D5:0.5 A4:0.5 D5:1.5 r:1"""
THEME_CHORDS = "D D Gm Cm D Gm Eb D"

SECOND = """D4:1.5 Eb4:0.5 D4:1 C4:1 | Bb3:2 A3:2 | Bb3:1 C4:1 D4:1 Eb4:1 | F#4:3 r:1 |
            G4:1.5 A4:0.5 Bb4:1 A4:1 | G4:1 F#4:1 Eb4:2 | F#4:1 Eb4:1 D4:1 C#4:1 | D4:3 r:1"""
SECOND_CHORDS = "Cm Gm Gm D Gm Eb Dopen D"

CALLS = """r:4 | r:2 A3:0.5 Bb3:0.5 A3:1 | r:4 | r:2 D4:0.5 Eb4:0.5 C4:1 | r:4 | r:2 F#4:0.5 G4:0.5 F#4:0.5 Eb4:0.5 |
           r:2 D4:0.5 C4:0.5 Bb3:1 | A3:1 r:3"""
LONG = """A4:4 | Bb4:2 A4:2 | G4:4 | Eb4:2 G4:2 | F#4:4 | G4:2 Bb4:2 | A4:2 G4:2 | F#4:4"""
LONG_CHORDS = "D Gm Gm Cm D Gm Eb D"
QUIET_CHORDS = "D D Cm D D D Eb D"

# Eight strings of the chord a bar, and the same with room in it.
FIGURE = "0 2 4 3 1 4 2 3"
SPARSE = "0 . 2 . 1 . 3 2"


def harp():
    part = Part("harp", 46, pan=-0.25, level=-1.0, wet=-11, loose=0.009)
    arpeggio(part, 0, "D D", SPARSE, 46)
    arpeggio(part, 2, "D D", FIGURE, 50)
    for first, chords, figure, loudness in ((4, THEME_CHORDS, FIGURE, 54), (12, THEME_CHORDS, FIGURE, 56),
                                            (20, SECOND_CHORDS, SPARSE, 56), (28, QUIET_CHORDS, FIGURE, 56),
                                            (40, LONG_CHORDS, SPARSE, 50), (48, SECOND_CHORDS, FIGURE, 56),
                                            (56, THEME_CHORDS, "0 2 4 5 3 4 2 3", 58), (64, QUIET_CHORDS, FIGURE, 52)):
        arpeggio(part, first, chords, figure, loudness)
    for bar in (37, 39):
        arpeggio(part, bar, "D", ". . . . 5 4 3 2", 44)
    return part


def flute():
    part = Part("flute", 73, pan=0.25, level=-9.5, wet=-7, loose=0.014)
    part.melody(4, THEME, (64, 74, 80, 66), legato=0.97, breathe=True)
    part.melody(48, SECOND, (58, 70, 76, 62), transpose=12, legato=0.97, breathe=True)
    bars = THEME.split("|")
    part.melody(56, "|".join(bars[:4]), (70, 78), legato=0.97, breathe=True)
    part.melody(62, "|".join(bars[6:]), (78, 66), legato=0.97, breathe=True)
    return part


def dulcimer():
    part = Part("dulcimer", 15, pan=0.38, level=0.0, wet=-9, loose=0.011)
    part.melody(12, THEME_STRUCK, (60, 70, 76, 62), legato=1.5)
    part.melody(12, THEME_BELOW, (50, 58, 60), legato=1.5)
    part.melody(60, "|".join(THEME_STRUCK.split("|")[4:6]), (72, 70), legato=1.5)
    part.melody(64, CALLS, (52, 58, 50), transpose=12, legato=1.5)
    return part


def lute():
    part = Part("lute", 24, pan=-0.42, level=-3.0, wet=-11, loose=0.012)
    part.melody(28, CALLS, (62, 74, 66), legato=1.2)
    part.melody(48, SECOND, (64, 74, 76, 64), legato=1.2)
    return part


def strings():
    part = Part("strings", 48, pan=0.10, level=-12.0, wet=-6, loose=0.012)
    part.melody(20, SECOND, (64, 78, 80, 68), legato=1.05, breathe=True)
    part.melody(40, LONG, (60, 74, 78, 64), legato=1.05, breathe=True)
    return part


def soft_strings():
    part = Part("soft strings", 49, pan=0.0, level=-14.0, wet=-5, loose=0.02)
    part.swell(0, BEATS, 70, 70)
    for first, chords, loudness in ((12, THEME_CHORDS, 52), (20, SECOND_CHORDS, 54), (40, LONG_CHORDS, 54),
                                    (48, SECOND_CHORDS, 56), (56, THEME_CHORDS, 60)):
        pad(part, first, chords, loudness)
        part.swell(first * BEATS, 4 * BEATS, 76, 98)
        part.swell((first + 5) * BEATS, 3 * BEATS, 98, 76)
    return part


def low_strings():
    """Plucked basses on the first beat and before the third."""
    part = Part("plucked basses", 45, pan=0.08, level=-4.5, wet=-14, loose=0.008)
    for first, chords, loudness in ((4, THEME_CHORDS, 62), (12, THEME_CHORDS, 66), (20, SECOND_CHORDS, 66),
                                    (28, QUIET_CHORDS, 64), (40, LONG_CHORDS, 58), (48, SECOND_CHORDS, 66),
                                    (56, THEME_CHORDS, 70), (64, QUIET_CHORDS, 60)):
        for number, chord in enumerate(chords.split()):
            beat, key = (first + number) * BEATS, bass(chord) + (12 if bass(chord) < 38 else 0)
            part.note(beat, 0.9, key, loudness)
            part.note(beat + 1.5, 0.5, key, loudness * 0.72)
            part.note(beat + 3, 0.8, key + 7 if chord not in ("Cm", "Eb") else key, loudness * 0.8)
    return part


# Strokes of the frame drum: beat, low skin (L), high skin (h) or finger tick (t), share of the loudness.
WALK = ((0, "L", 1.0), (0.5, "h", 0.62), (1.5, "h", 0.7), (2, "L", 0.85), (3, "h", 0.75))
WALK_TICKS = WALK + ((1, "t", 0.4), (2.5, "t", 0.45), (3.5, "t", 0.5))
REST = ((0, "L", 1.0), (1.5, "h", 0.6), (3, "h", 0.55))
TURN = ((0, "L", 1.0), (0.5, "h", 0.6), (1.5, "h", 0.7), (2, "L", 0.8), (2.5, "h", 0.6), (2.75, "t", 0.5), (3, "h", 0.8),
        (3.25, "t", 0.55), (3.5, "h", 0.7), (3.75, "t", 0.6))


def drum(part, keys):
    def bars(first, last, strokes, loudness):
        for bar in range(first, last):
            # Every eighth bar turns into the next phrase.
            played = TURN if bar % 8 == 3 and strokes is not REST else strokes
            for beat, kind, share in played:
                if kind in keys:
                    part.note(bar * BEATS + beat, 0.5, keys[kind], loudness * share)

    bars(1, 4, REST, 48)
    bars(4, 12, WALK, 54)
    bars(12, 20, WALK_TICKS, 56)
    bars(20, 28, WALK_TICKS, 58)
    bars(28, 36, WALK, 54)
    bars(36, 40, WALK_TICKS, 62)
    bars(40, 48, REST, 50)
    bars(48, 64, WALK_TICKS, 58)
    bars(64, 70, WALK, 50)
    bars(70, 72, REST, 46)
    return part


def skin():
    return drum(Part("frame drum, skin", 116, pan=-0.06, level=-0.5, wet=-11, loose=0.006), {"L": 53})


def fingers():
    """The high strokes and ticks come from bongos, which sound like a small skin struck near its rim."""
    return drum(Part("frame drum, rim", 0, pan=-0.12, level=4.0, wet=-11, loose=0.006, drums=True), {"h": 61, "t": 60})


def jingles():
    part = Part("jingles", 0, pan=0.4, level=-10.0, wet=-7, loose=0.008, drums=True)
    for bar in list(range(12, 28)) + list(range(36, 40)) + list(range(48, 64)):
        for beat in (1, 3):
            part.note(bar * BEATS + beat, 0.4, 54, 52 + 5 * (beat == 3))
    for bar in (4, 20, 40, 48, 64):
        part.note(bar * BEATS, 2, 81, 52)
    return part


def compose():
    return Tempo(96, BARS), [harp(), flute(), dulcimer(), lute(), strings(), soft_strings(), low_strings(), skin(), fingers(),
                             jingles()]
