#!/usr/bin/python3
"""Measures the particle effects in the simulation of particles/preview.py and fails when one gets in the player's way.

The files must stand in the order in which they are read and stay in place; a game with four rows cleared at once may not
hold too many particles; the row burst must have swept the row within half a second, be over within two, and leave the
board readable: its light may exceed half of white only in single glints, with one row as with four, at 60 frames a
second as at 15.
"""
import os
import sys

import numpy as np

from particles import preview

LIVING = 2500
SIZE = (640, 480)
ROW_SWEPT, ROW_OVER = 0.5, 2.0
# Share of the lit pixels whose light may exceed half of white: at 30 frames a second and more, and at 15, where the
# streaks of the first frames are long and still lie close together.
GLINTS, GLINTS_SLOW = 0.01, 0.03


def check_files(data, fail):
    """Texture, key frames, then plain keys; the lists name files that exist; no emitter follows an object."""
    for name in sorted(os.listdir(os.path.join(data, "particles"))):
        path = "particles/" + name
        words = preview.blocks(path)
        opened = [value for key, value in words if key == "<"]
        for key, value in words:
            if key in ("name", "emittor", "filename"):
                fail(not os.path.exists(os.path.join(data, value)), "%s: no file %s" % (path, value))
        if opened[0] != "TEmittor":
            continue
        fail(opened[1:3] != ["texture", "Frames"] or ("particleNum" in dict(words[:words.index((">", "Frames"))])),
             "%s: not in the order texture, Frames, keys" % path)
        emitter = preview.Emitter(path)
        frames = len(emitter.frames)
        fail(emitter.updatepos or emitter.collision or emitter.sectordependant, "%s: does not stay in its place" % path)
        fail(emitter.form not in (1, 2, 3) or emitter.shape != 7, "%s: is not drawn with quads" % path)
        fail(emitter.framespeed <= 0 or frames == 0, "%s: has no key frames" % path)
        fail(emitter.friction * 200 > 1, "%s: friction turns the longest frame round" % path)
        alpha = emitter.frames[:, 3]
        fail(alpha[-1] > 0.01 and alpha.ptp() > 0, "%s: vanishes at once" % path)
        fail(emitter.life > frames * emitter.framespeed and alpha.ptp() > 0, "%s: flares up again" % path)


def run_rows(effect, rows, step, fail):
    table = preview.Table(1)
    instances = [preview.Instance(emitter, (-4.5, 1.0, 0.02 * (19 - row) + 0.47 * (row + 1)), (12, 0, 0), table)
                 for row in rows for emitter in effect]
    camera = preview.camera_of("game", 5, SIZE)
    worst, swept, now = 0.0, None, 0
    while any(not instance.finished for instance in instances) and now < 5000:
        for instance in instances:
            instance.update(step)
        instances = [instance for instance in instances if not instance.finished]
        now += step
        # Columns are counted from GL x 0; the effect starts at the right end, at 9.
        reach = min(((-2 * instance.position[instance.alive, 0]).min() for instance in instances if instance.alive.any()),
                    default=9)
        if swept is None and reach < 0.5:
            swept = now
        if now // 32 != (now - step) // 32:
            light = np.zeros((SIZE[1], SIZE[0], 3))
            for instance in instances:
                preview.draw(light, instance, camera)
            luminance = light @ (0.2126, 0.7152, 0.0722)
            lit = (luminance > 0.02).sum()
            # Too few lit pixels make no share: the first moment is one small point.
            if lit > 300:
                worst = max(worst, (luminance > 0.5).sum() / lit)
    print("%d row(s), %2d ms a frame: swept in %4.2f s, over in %4.2f s, at most %.1f%% of the lit pixels over half white"
          % (len(rows), step, (swept or 0) / 1000, now / 1000, 100 * worst))
    fail(swept is None or swept > 1000 * ROW_SWEPT, "the row burst does not sweep the row in time")
    fail(now > 1000 * ROW_OVER, "the row burst lasts %.2f s" % (now / 1000))
    fail(worst > (GLINTS if step <= 33 else GLINTS_SLOW), "the row burst covers the board")


def main():
    data = sys.argv[1] if len(sys.argv) > 1 else preview.DATA
    preview.DATA = data
    failures = []

    def fail(wrong, text):
        if wrong:
            failures.append(text)

    check_files(data, fail)
    effects = preview.effects()
    fail(len(effects) != 6, "%d effects in place of 6" % len(effects))
    slots = [sum(int(emitter.particleNum) for emitter in effect) for effect in effects]
    game = sum(slots[number] * len(places) for number, places in preview.GAME.items()) + 4 * slots[5]
    print("slots of the effects: %s; a game with four rows cleared at once holds at most %d" % (slots, game))
    fail(game > LIVING, "%d particles in a game" % game)
    for rows, step in (((4,), 16), ((3, 4, 5, 6), 16), ((4,), 66), ((15, 16, 17, 18), 33)):
        run_rows(effects[5], rows, step, fail)
    for text in failures:
        print("WRONG  %s" % text)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
