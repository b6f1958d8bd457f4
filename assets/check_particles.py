#!/usr/bin/python3
"""Measures the particle effects in the simulation of particles/preview.py and fails when one gets in the player's way.

The files must stand in the order in which they are read and stay in place; a game with four rows cleared at once may not
hold too many particles; the row burst must have swept the row within half a second and be over within two, with one row as
with four, at 60 frames a second as at 15.

How bright it may be is what the eye bears. The gold covers the row, as bright as the court allows and itself never over half
of white; splinters and sparks that glint above that are what makes it look like metal, as long as they stay single points:
at most GLINTS of what is lit. A flash over the whole picture, which tires, would change far more than BLINKS of it. And the next
piece must be seen all the time: no more than HIDDEN of the place above the well where it begins may change, in specks that
fly, even when the four highest rows go.
"""
import os
import sys

import numpy as np

import colour
from court import light
from court import preview as court
from particles import preview

LIVING = 2500
SIZE = (640, 480)
ROW_SWEPT, ROW_OVER = 0.5, 2.0
# Greatest share of the lit pixels that rises over GLINT, of white; before the torchlit gate, which is half as bright itself,
# more. Nothing is filtered here, so that points count more than they are seen.
GLINT, GLINTS, GLINTS_TOP = 0.6, 0.05, 0.13
# Greatest share of the whole picture, and of the next piece's place, that changes by more than CHANGE of white.
CHANGE, BLINKS, HIDDEN = 0.25, 0.05, 0.15
# The flash of the first 120 ms: over the dark of the lower well it must be so many times as bright as the court, and at least so
# much of the row must have become clearly brighter. The torchlit gate behind the highest rows leaves less room.
FLASH_TIMES, FLASH_TIMES_TOP, FLASH_COVERS, FLASH_COVERS_TOP, BRIGHTER = 2.5, 1.25, 0.9, 0.5, 0.05

# Mean L* of the first second of a game, whose torches blaze up under the veil that it begins with.
FIRST_MOMENTS, FIRST_MEAN = (100, 500, 1000), 25


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


def luminance(picture):
    return picture @ (0.2126, 0.7152, 0.0722)


def place_of(camera, bottom, height, left=-0.5, width=10.0):
    """The pixels of a part of the well's front, `height` rows from the row `bottom` on: slices of y and x."""
    z = (bottom - 0.5, bottom - 0.5 + height)
    corners = camera.project([(left, -0.5, z[0]), (left + width, -0.5, z[1])])
    (x0, y1), (x1, y0) = np.rint(corners).astype(int)
    return slice(max(y0, 0), y1), slice(x0, x1)


def run_rows(loaded, rows, step, ground, fail):
    """Rows cleared at once, the court with nothing in its well behind them."""
    table = preview.Table(1)
    batch = preview.batches(loaded)
    instances = [preview.Instance(emitter, (-4.5, 1.0, 0.02 * (19 - row) + 0.47 * (row + 1)), (12, 0, 0), table)
                 for row in rows for emitter in loaded[5]]
    instances.sort(key=lambda each: batch[each.e.keys["filename"]])
    camera = preview.camera_of("game", 5, SIZE)
    row_place = place_of(camera, rows[0], len(rows))
    piece_place = place_of(camera, 20, 2, 3.5, 3)
    before = luminance(ground)
    worst = {"glints": 0.0, "blinks": 0.0, "hidden": 0.0}
    flash, covered, swept, now = [], [], None, 0
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
        if now // 60 == (now - step) // 60 and now != step:
            continue
        picture = ground.copy()
        for instance in instances:
            preview.draw(picture, instance, camera)
        seen = luminance(picture)
        change = np.abs(seen - before)
        # Too few lit pixels make no share: the first moment may be one small point.
        if (change > 0.02).sum() > 300:
            worst["glints"] = max(worst["glints"], ((seen > GLINT) & (before <= GLINT))[change > 0.02].mean())
        worst["blinks"] = max(worst["blinks"], (change > CHANGE).mean())
        worst["hidden"] = max(worst["hidden"], (change[piece_place] > CHANGE).mean())
        if now <= 120:
            flash.append(seen[row_place].mean() / before[row_place].mean())
            covered.append((seen[row_place] - before[row_place] > BRIGHTER).mean())
    print("%d row(s) from %2d, %2d ms a frame: swept in %.2f s, over in %.2f s; flash %.1f times the court, %.0f%% of the row; "
          "%.1f%% of what is lit over %.1f, %.1f%% of the picture and %.1f%% of the next piece's place changed by over %.2f"
          % (len(rows), rows[0] + 1, step, (swept or 0) / 1000, now / 1000, min(flash), 100 * min(covered),
             100 * worst["glints"], GLINT, 100 * worst["blinks"], 100 * worst["hidden"], CHANGE))
    fail(swept is None or swept > 1000 * ROW_SWEPT, "the row burst does not sweep the row in time")
    fail(now > 1000 * ROW_OVER, "the row burst lasts %.2f s" % (now / 1000))
    top = rows[0] > 14
    fail(worst["glints"] > (GLINTS_TOP if top else GLINTS), "the row burst glares")
    fail(worst["blinks"] > BLINKS, "the row burst flashes over the picture")
    fail(worst["hidden"] > HIDDEN, "the row burst hides the next piece")
    fail(min(flash) < (FLASH_TIMES_TOP if top else FLASH_TIMES), "the row burst is no brighter than the court")
    fail(min(covered) < (FLASH_COVERS_TOP if top else FLASH_COVERS), "the flash does not cover the row")


def first_second(loaded, model, step=20):
    """Mean L* of the first second, before the gate and with its torches; statues hide nothing here."""
    table, size, values, now = preview.Table(1), (SIZE[0] // 2, SIZE[1] // 2), [], 0
    instances = [preview.Instance(emitter, place, direction, table) for place, direction in preview.GAME[4]
                 for emitter in loaded[4]]
    for moment in FIRST_MOMENTS:
        while now < moment:
            for instance in instances:
                instance.update(step)
            now += step
        fade = moment / 5000
        picture = court.take(*model, court.Camera(fade, 20), light.MEAN, *size) / 255
        for instance in instances:
            preview.draw(picture, instance, preview.camera_of("game", moment / 1000, size))
        values.append(float(colour.lab(np.clip(picture, 0, 1) * (1 - light.VEIL * (1 - fade)))[..., 0].mean()))
    return values


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
    model = court.load(os.path.join(data, "models/egypt.ksm"), os.path.join(data, "textures/EGYPT-TE.png"))
    beginning = first_second(effects, model)
    print("first second of a game under its veil: mean L* %s" % ", ".join("%.1f" % value for value in beginning))
    fail(np.mean(beginning) < FIRST_MEAN, "a game begins in the dark")
    ground = court.render(*model, "rest-empty", SIZE[0]) / 255
    for rows, step in (((0,), 15), ((9,), 15), ((19,), 15), ((3, 4, 5, 6), 15), ((9,), 60), ((16, 17, 18, 19), 30)):
        run_rows(effects, rows, step, ground, fail)
    for text in failures:
        print("WRONG  %s" % text)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
