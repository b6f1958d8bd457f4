"""Evening Court, the music of the menu: 48 slow bars in D Phrygian dominant.

    bars  1-4   prelude: drone, harp out of the depth
    bars  5-12  theme, harp alone over the drone
    bars 13-20  theme, flute with graces; frame drum enters
    bars 21-28  second theme, strings, rising over G minor to the C sharp of the double harmonic scale
    bars 29-36  interlude: lute and flute answer each other, drum in single strokes
    bars 37-44  theme, flute and strings in octaves, the height of the piece in its fifth bar
    bars 45-48  postlude: the harp descends, the drone leads back to the prelude
"""
from sound.harmony import arpeggio, bass, pad
from sound.score import BEATS, Part, Tempo, pitch

NAME, TITLE = "KolvexIntro", "Evening Court"
BARS = 48
HALL = 3.2
LOUDNESS = -20.0
# Share of the slow changes of level that is taken back: a menu is heard in pieces, none of which may be lost.
EVENNESS = 0.5

THEME = """A4:3 Bb4:0.5 A4:0.5 | G4:1 ^F#4:2 r:1 | F#4:1 G4:1 A4:1 C5:1 | Bb4:1.5 A4:2.5 |
           D5:3 Eb5:0.5 D5:0.5 | C5:1 Bb4:1 ^A4:2 | G4:0.5 A4:0.5 Bb4:1 A4:1 G4:0.5 F#4:0.5 | Eb4:1 D4:3"""
THEME_GRACED = """^A4:2.5 Bb4:0.25 A4:0.25 Bb4:0.5 A4:0.5 | G4:1 ^F#4:2.5 r:0.5 | F#4:0.5 G4:0.5 A4:0.75 Bb4:0.25 A4:1 C5:1 |
           ^Bb4:1.5 A4:2 r:0.5 | ^D5:2.5 Eb5:0.25 D5:0.25 Eb5:0.5 D5:0.5 | C5:0.75 D5:0.25 C5:0.5 Bb4:0.5 ^A4:2 |
           G4:0.5 A4:0.5 Bb4:0.75 C5:0.25 Bb4:0.5 A4:0.5 G4:0.5 F#4:0.5 | ^Eb4:1 D4:2.5 r:0.5"""
THEME_CHORDS = "D D D Gm Gm Cm Eb D"

SECOND = """G4:2 Bb4:1 C5:1 | D5:3 C5:1 | Eb5:2 D5:1 C5:1 | D5:2 A4:2 |
            Bb4:2 C5:1 Bb4:1 | A4:1 G4:1 F#4:2 | G4:1 A4:1 Bb4:1 C#5:1 | D5:3 r:1"""
SECOND_BELOW = """D4:4 | Bb4:2 G4:2 | G4:2 G4:2 | F#4:4 | G4:4 | Eb4:2 D4:2 | Eb4:2 G4:2 | F#4:3 r:1"""
SECOND_ABOVE = """r:4 | r:2 G5:1 A5:1 | ^G5:3 r:1 | r:1 A5:0.5 Bb5:0.5 A5:1 F#5:1 |
                  G5:3 r:1 | r:2 F#5:0.5 Eb5:0.5 D5:1 | r:4 | r:1 A5:0.5 Bb5:0.5 A5:2"""
SECOND_CHORDS = "Gm Gm Cm D Eb D Gm D"

LUTE = """D4:1 Eb4:0.5 F#4:0.5 G4:0.5 F#4:0.5 Eb4:1 | D4:2 A3:1 r:1 | r:4 | r:4 |
          F#4:0.5 G4:0.5 A4:1 Bb4:0.5 A4:0.5 G4:1 | F#4:0.5 Eb4:0.5 F#4:1 D4:2 | r:4 | r:2 A3:0.5 Bb3:0.5 C4:0.5 Eb4:0.5"""
FLUTE_ANSWER = """r:4 | r:4 | r:0.5 A4:0.5 Bb4:0.5 A4:0.5 G4:0.5 F#4:0.5 G4:1 | ^F#4:3 r:1 | r:4 | r:4 |
                  r:0.5 D5:0.5 Eb5:0.5 D5:0.5 C#5:0.5 Bb4:0.5 A4:1 | ^A4:3 r:1"""

RISE = "0 1 2 3 4 5 4 3"
WIDE = "0 2 4 6 5 4 3 2"


def harp():
    part = Part("harp", 46, pan=-0.28, level=0.0, wet=-9, loose=0.014)
    # Prelude: every bar reaches one string higher.
    for bar, (figure, loudness) in enumerate((("0 1 2 1 . . . .", 46), ("0 1 2 3 2 . . .", 52),
                                              ("0 1 2 3 4 3 . .", 60), ("0 1 2 3 4 5 6 .", 66))):
        arpeggio(part, bar, ("D", "D", "Cm", "D")[bar], figure, loudness, ring=3.5)
    part.melody(4, THEME, (70, 80, 86, 72), legato=1.6)
    for number, chord in enumerate(THEME_CHORDS.split()):
        arpeggio(part, 4 + number, chord, "0 . 1 . 2 . 1 .", 50, ring=3)
    arpeggio(part, 12, THEME_CHORDS, RISE, 50, ring=2.5)
    arpeggio(part, 20, SECOND_CHORDS, WIDE, 56, ring=2.5)
    # Interlude: only the ground of every second bar, and a run that leads on.
    for bar in (28, 30, 32, 34):
        arpeggio(part, bar, "Dopen", "0 1 2 . . . . .", 44, ring=4)
    run = [pitch(name) for name in "D3 Eb3 F#3 G3 A3 Bb3 C4 D4 Eb4 F#4 G4 A4 Bb4 C5".split()]
    for i, key in enumerate(run):
        part.note(35 * BEATS + 2 + i / 7, 2.5, key, 46 + 2 * i)
    arpeggio(part, 36, THEME_CHORDS, "0 1 2 3 4 5 6 5", 62, ring=2.5)
    for bar, (figure, loudness) in enumerate((("6 5 4 3 2 1 0 .", 56), ("6 4 3 2 1 0 . .", 54),
                                              ("5 3 2 1 0 . . .", 54), ("2 1 0 2 1 0 2 1", 52))):
        arpeggio(part, 44 + bar, ("D", "Eb", "Cm", "D")[bar], figure, loudness, ring=3.5)
    return part


def flute():
    part = Part("flute", 73, pan=0.22, level=-7.0, wet=-6, loose=0.016)
    part.melody(12, THEME_GRACED, (72, 84, 92, 70), legato=0.99, breathe=True)
    part.melody(20, SECOND_ABOVE, (60, 72, 64), legato=0.97, breathe=True)
    part.melody(28, FLUTE_ANSWER, (64, 78, 72), legato=0.98, breathe=True)
    part.melody(36, THEME_GRACED, (72, 84, 92, 70), transpose=12, legato=0.99, breathe=True)
    return part


def lute():
    part = Part("lute", 24, pan=-0.42, level=-2.0, wet=-9, loose=0.018)
    part.melody(28, LUTE, (66, 80, 72), legato=1.3)
    return part


def high_strings():
    """The melody of the second theme and the lower octave of the last one."""
    part = Part("high strings", 48, pan=0.35, level=-6.0, wet=-5, loose=0.012)
    part.melody(20, SECOND, (66, 84, 90, 76), legato=1.06, breathe=True)
    part.melody(20, SECOND_BELOW, (56, 70, 72, 60), legato=1.06)
    part.melody(36, THEME, (66, 84, 94, 66), legato=1.06, breathe=True)
    return part


def soft_strings():
    """The ground: a drone through the prelude, then chords that swell with the phrases."""
    part = Part("soft strings", 49, pan=0.0, level=-8.5, wet=-5, loose=0.02)
    # The drone of the postlude reaches over the loop's end into the prelude.
    for key in ("D3", "A3"):
        part.note(44 * BEATS, 4 * BEATS + 3, pitch(key), 62)
        part.note(0.5, 4 * BEATS - 0.2, pitch(key), 58)
        part.note(28 * BEATS, 8 * BEATS + 0.3, pitch(key), 56)
    part.note(2 * BEATS, 2 * BEATS + 0.2, pitch("D4"), 48)
    part.swell(0, 3 * BEATS, 96, 92)
    pad(part, 4, THEME_CHORDS, 52)
    part.swell(4 * BEATS, BEATS, 92, 66)
    pad(part, 12, THEME_CHORDS, 58)
    part.swell(12 * BEATS, 4 * BEATS, 66, 92)
    part.swell(17 * BEATS, 3 * BEATS, 92, 74)
    pad(part, 20, SECOND_CHORDS, 60)
    part.swell(20 * BEATS, 4 * BEATS, 74, 100)
    part.swell(26 * BEATS, 2 * BEATS, 100, 66)
    part.swell(34 * BEATS, 2 * BEATS, 66, 86)
    pad(part, 36, THEME_CHORDS, 66)
    part.swell(36 * BEATS, 4 * BEATS, 86, 112)
    part.swell(41 * BEATS, 3 * BEATS, 112, 80)
    part.swell(44 * BEATS, 3 * BEATS, 80, 96)
    return part


def basses():
    part = Part("basses", 43, pan=0.12, level=-7.0, wet=-9, loose=0.012)
    for first, chords, loudness in ((12, THEME_CHORDS, 56), (20, SECOND_CHORDS, 62), (36, THEME_CHORDS, 72)):
        for number, chord in enumerate(chords.split()):
            part.note((first + number) * BEATS, BEATS * 0.98, bass(chord) + 12 * (bass(chord) < 36), loudness)
    return part


def frame_drum():
    """Few strokes: the skin low on the first beat, the rim late in the bar, a roll of the fingers into a new section."""
    part = Part("frame drum", 116, pan=-0.08, level=3.0, wet=-7, loose=0.010)
    low, high = 52, 64

    def bars(first, last, strokes, loudness):
        for bar in range(first, last):
            for beat, key, share in strokes:
                part.note(bar * BEATS + beat, 0.8, key, loudness * share)

    soft = ((0, low, 1.0), (2.5, high, 0.5), (3, low, 0.6))
    full = ((0, low, 1.0), (1.5, high, 0.55), (2, low, 0.7), (3, high, 0.6), (3.5, high, 0.45))
    part.note(2 * BEATS, 1, low, 40)
    part.note(3 * BEATS, 1, low, 44)
    bars(12, 16, soft, 46)
    bars(16, 20, soft, 54)
    bars(20, 24, full, 54)
    bars(24, 28, full, 60)
    bars(28, 36, ((0, low, 1.0), (3.5, high, 0.45)), 42)
    bars(36, 40, full, 62)
    bars(40, 44, full, 66)
    bars(44, 48, ((0, low, 1.0),), 40)
    for bar in (19, 27, 35, 39):
        for i in range(8):
            part.note(bar * BEATS + 3 + i / 8, 0.2, high, 26 + 4 * i)
    return part


def jingles():
    """The tambourine's plates, heard from the far side of the court."""
    part = Part("jingles", 0, pan=0.45, level=-7.0, wet=-4, loose=0.012, drums=True)
    for first, last in ((20, 28), (36, 44)):
        for bar in range(first, last):
            for beat, velocity in ((1, 50), (3, 58)):
                part.note(bar * BEATS + beat, 0.4, 54, velocity)
    for bar in (4, 12, 28, 36, 44):
        part.note(bar * BEATS, 2, 81, 58)
    return part


def compose():
    breaths = {bar * BEATS + 3: 1.10 for bar in (3, 11, 19, 35, 43)}
    breaths.update({bar * BEATS + 2: 1.05 for bar in (3, 11, 19, 35, 43)})
    return Tempo(66, BARS, breaths), [harp(), flute(), lute(), high_strings(), soft_strings(), basses(), frame_drum(), jingles()]
