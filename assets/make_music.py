#!/usr/bin/python3
"""music/*.ogg: the two pieces, from the note lists in sound/. Needs fluidsynth with the sound font FluidR3, and oggenc."""
import os
import sys

from sound import evening_court, render, river_stones

# Quality 3 of oggenc is about 110 kbit/s, which is clear for harp and flute.
QUALITY = 3


def main():
    data = sys.argv[1]
    for number, piece in enumerate((evening_court, river_stones)):
        tempo, parts = piece.compose()
        samples = render.even(render.mix(parts, tempo, piece.HALL, 1000 * (number + 1)), piece.EVENNESS)
        path = os.path.join(data, "music", piece.NAME + ".ogg")
        render.write_loop(samples, path, piece.LOUDNESS, QUALITY, piece.TITLE)


if __name__ == "__main__":
    main()
