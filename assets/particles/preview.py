#!/usr/bin/python3
"""Shows particle effects without the game: simulates them from their data files and draws them at several moments.

    assets/particles/preview.py --effects 4 --times 0.5,1,2 --out torch.png
    assets/particles/preview.py --effects 5 --row 6 --step 66 ...      as a slow machine would show it
    assets/particles/preview.py --scene menu --effects 0,1 --out menu.png

The places are those at which the game and the menu start the effects, the camera is theirs too: --moment says how many
seconds of a game have passed (0 is close before the gate, 5 and later the view at rest). Free flight, gravity, kicks
and the drawing forms 1, 2 and 3 are simulated, which is all that the shipped effects use; nothing hides anything, and
the brightest sum of light (its luminance, 1 for white) is printed. --background lays the effects over a picture.
"""
import argparse
import math
import os
import re

import numpy as np
from PIL import Image, ImageDraw

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../data")
CELLS = {1: (1, 1), 2: (2, 1), 4: (2, 2), 6: (3, 2), 9: (3, 3), 12: (4, 3), 16: (4, 4)}
GAME = {2: [((-2, -25, 30), (0, 0, 0)), ((-2, -11, 30), (0, 0, 0))],
        3: [((-7, -10, 25), (5, 5, 0)), ((-8, -30, 25), (0.7, 1, 0))],
        4: [((3.1, -35.2, 10.2), (0, 1, 0)), ((-7.5, -35.2, 10.2), (0, 1, 0)), ((13, -21.6, 7.6), (0, 1, 0)),
            ((-17.5, -21.6, 7.6), (0, 1, 0))]}
MENU = {0: [((1, 2, 3), (0, 0, 0))], 1: [((5, 3.8, -4), (0, 0.2, 0))]}
FIELDS = ("red", "green", "blue", "alpha", "rota", "size", "randx", "randy", "randz")


def blocks(path):
    """A data file as a list of words: ('<', name), ('>', name) and (key, value)."""
    words = []
    with open(os.path.join(DATA, path)) as file:
        for line in file:
            line = line.strip()
            if not line or line[0] == ";":
                continue
            tag = re.fullmatch(r"<(/?)(\w+)>", line)
            if tag:
                words.append((">" if tag[1] else "<", tag[2]))
            else:
                key, value = re.match(r"(\w+)[ =]+(.*)", line).groups()
                words.append((key, value.strip('"')))
    return words


class Emitter:
    def __init__(self, path):
        self.keys, self.frames, inside = {}, [], None
        for key, value in blocks(path):
            if key == "<":
                inside = value
                if value == "Frame":
                    self.frames.append(dict.fromkeys(FIELDS, 0.0))
            elif key == ">":
                inside = None
            elif inside == "Frame":
                self.frames[-1][key] = float(value)
            else:
                self.keys[key] = value
        self.frames = np.array([[frame[field] for field in FIELDS] for frame in self.frames])
        self.picture = np.asarray(Image.open(os.path.join(DATA, self.keys["filename"])).convert("RGBA"), float) / 255
        self.columns, self.rows = CELLS[int(self.keys["framenum"])]

    def __getattr__(self, name):
        return float(self.keys.get(name, 0))


def effects():
    """The effects of the list, each as its emitters."""
    names = [value for key, value in blocks("particles/reason.txt") if key == "name"]
    return [[Emitter(path) for key, path in blocks(name) if key == "emittor"] for name in names]


def batches(loaded):
    """The place of each picture in the order of drawing: the game draws batch by batch, a picture's batch standing where the
    list first names it."""
    order = {}
    for effect in loaded:
        for emitter in effect:
            order.setdefault(emitter.keys["filename"], len(order))
    return order


class Table:
    """The engine's table of random numbers with its cursors."""

    def __init__(self, seed):
        random = np.random.RandomState(seed)
        self.values = (random.randint(0, 32768, 256) % 20000 - 10000) * 0.0001
        self.cursors = {"x": random.randint(255), "y": random.randint(255), "z": random.randint(255),
                        "launch": 0, "start": 0, "age": 0}

    def next(self, cursor):
        value = self.values[self.cursors[cursor]]
        self.cursors[cursor] = (self.cursors[cursor] + 1) % 256
        return value


class Instance:
    def __init__(self, emitter, place, direction, table):
        self.e, self.place, self.table = emitter, np.array(place, float), table
        a = math.atan2(direction[0], direction[1]) - math.pi / 2
        b = math.atan2(direction[1], direction[2]) - math.pi / 2
        self.axes = np.array([[math.cos(a), math.sin(a) * math.cos(b), -math.sin(a) * math.sin(b)],
                              [-math.sin(a), math.cos(a) * math.cos(b), -math.cos(a) * math.sin(b)],
                              [0, math.sin(b), math.cos(b)]])
        count = int(emitter.particleNum)
        self.alive = np.zeros(count, bool)
        self.age, self.kicked = np.zeros(count), np.full(count, -1)
        self.position, self.previous, self.velocity = np.zeros((count, 3)), np.zeros((count, 3)), np.zeros((count, 3))
        self.look = np.zeros((count, 6))
        self.elapsed, self.timer, self.stopped, self.finished = 0, 0, False, False
        self.emit()

    def emit(self):
        e, count = self.e, 0
        for i in np.flatnonzero(~self.alive):
            self.age[i] = int((self.table.next("age") + 1) * e.life * e.liferand)
            start = np.array([self.table.next("start") for _ in range(3)]) * (e.startx, e.starty, e.startz)
            launch = np.array([self.table.next("launch") for _ in range(3)]) * (e.dirx, e.diry, e.dirz) + (e.power, 0, 0)
            self.position[i] = self.previous[i] = self.axes @ start + self.place
            self.velocity[i], self.alive[i], self.kicked[i] = self.axes @ launch, True, -1
            self.look[i] = e.frames[0, :6]
            count += 1
            if count >= e.emitnum:
                break
        self.timer = 0

    def evaluate(self):
        e = self.e
        counter = ((self.age + 0.1) / e.framespeed).astype(int)
        now = counter % len(e.frames)
        share = ((self.age - e.framespeed * counter) / e.framespeed)[:, None]
        self.look = (1 - share) * e.frames[now, :6] + share * e.frames[(now + 1) % len(e.frames), :6]
        if e.framerandom:
            for i in np.flatnonzero(self.alive & (self.kicked != counter)):
                sign = 1 if counter[i] % 2 == 0 else -1
                self.velocity[i] += [sign * self.table.next(axis) * e.frames[now[i], 6 + n] for n, axis in enumerate("xyz")]
                self.kicked[i] = counter[i]

    def update(self, dt):
        e = self.e
        self.elapsed += dt
        self.age += dt
        if int(e.dietype) & 1:
            self.alive &= self.age < e.life
        if int(e.die) & 1 and self.elapsed >= e.totallife:
            self.stopped = True
        if (int(e.die) & 2 or self.stopped) and not self.alive.any():
            self.finished = True
        if e.acceleration:
            self.evaluate()
            self.move(dt)
        self.timer += dt
        if self.timer >= e.emittime and not self.stopped:
            self.emit()

    def move(self, dt):
        e = self.e
        k, d = (1, 1) if e.acceleration == 1 else (1 - e.friction, 1 - e.friction * dt)
        live, size = self.alive, self.look[:, 5]
        self.previous[live] = self.position[live]
        self.position[live, :2] += dt * k * self.velocity[live, :2]
        self.velocity[live, :2] *= d
        z, vz = self.position[:, 2].copy(), self.velocity[:, 2].copy()
        if e.gravity == 1:
            vz -= dt * e.gravpower * k
            z += vz * dt
        elif e.gravity == 2:
            z -= e.gravpower * dt
        else:
            z, vz = z + dt * vz * k, vz * d
        if e.gravity in (1, 2):
            floor = live & (z < size)
            z[floor] = size[floor] if e.gravborder else 0
            vz[floor] *= e.bounce
            if int(e.dietype) & 8:
                self.alive = self.alive & ~floor
        self.position[live, 2], self.velocity[live, 2] = z[live], vz[live]

    def corners(self, i, eye, right, up):
        """The four corners of a particle's quad in drawing space, with those of its cell following v."""
        e, scale = self.e, np.array([-2, -2, 2])
        at, size = scale * self.position[i], self.look[i, 5]
        if e.form == 1:
            turn = math.radians(self.look[i, 4])
            a = size * (math.sin(turn) * right + math.cos(turn) * up)
            b = size * (math.cos(turn) * right - math.sin(turn) * up)
            return [at - b + a, at + b + a, at + b - a, at - b - a]
        if e.form == 2:
            end = scale * self.place
        else:
            way = at - scale * self.previous[i]
            length = np.linalg.norm(way)
            if length < 1e-9:
                return None
            end = scale * self.previous[i] - (2 * length + 4 * size) * way / length
        middle = (at + end) / 2
        width = np.cross(end - middle, eye - middle)
        if np.linalg.norm(width) < 1e-9:
            return None
        width *= size / np.linalg.norm(width)
        return [at + width, at - width, end - width, end + width]

    def cell(self, i):
        e = self.e
        count = e.rows * e.columns
        each = int(e.framespeed * len(e.frames)) // count
        index = int(self.age[i] / each) % count if each and count > 1 else 0
        return index % e.columns, index // e.columns


class Camera:
    def __init__(self, eye, tilt, size):
        self.eye, self.size = np.array(eye, float), size
        t = math.radians(tilt)
        # rot2 of the game: 0 looks along -z, -90 along +y.
        self.right, self.up = np.array([1.0, 0, 0]), np.array([0, math.cos(t), -math.sin(t)])
        self.back = np.array([0, math.sin(t), math.cos(t)])

    def project(self, points):
        p = np.array(points) - self.eye
        depth = -(p @ self.back)
        if (depth < 0.05).any():
            return None
        scale = self.size[1] / 2 / math.tan(math.radians(30))
        return np.stack([self.size[0] / 2 + scale * (p @ self.right) / depth,
                         self.size[1] / 2 - scale * (p @ self.up) / depth], -1)


def draw(frame, instance, camera):
    """Draws every live particle of an instance by running over the pixels of its quad."""
    e = instance.e
    height, width = e.picture.shape[:2]
    for i in np.flatnonzero(instance.alive):
        corners = instance.corners(i, camera.eye, camera.right, camera.up)
        flat = camera.project(corners) if corners is not None else None
        if flat is None:
            continue
        low = np.maximum(np.floor(flat.min(0)).astype(int), 0)
        high = np.minimum(np.ceil(flat.max(0)).astype(int) + 1, camera.size)
        if (high <= low).any():
            continue
        across, along = flat[1] - flat[0], flat[3] - flat[0]
        area = across[0] * along[1] - across[1] * along[0]
        if abs(area) < 1e-6:
            continue
        x, y = np.meshgrid(np.arange(low[0], high[0]) + 0.5 - flat[0, 0], np.arange(low[1], high[1]) + 0.5 - flat[0, 1])
        u, v = (x * along[1] - y * along[0]) / area, (across[0] * y - across[1] * x) / area
        inside = (u >= 0) & (u < 1) & (v >= 0) & (v < 1)
        column, row = instance.cell(i)
        # The files are stored upside down: v = 0 is their last row.
        texels = e.picture[height - 1 - ((row + np.clip(v, 0, 0.999)) / e.rows * height).astype(int),
                           ((column + np.clip(u, 0, 0.999)) / e.columns * width).astype(int)]
        alpha = texels[..., 3:] * np.clip(instance.look[i, 3], 0, 1) * inside[..., None]
        colour = texels[..., :3] * np.clip(instance.look[i, :3], 0, 1)
        part = frame[low[1]:high[1], low[0]:high[0]]
        # The factors that the effects use: light added, light that brightens what it falls on, covering by opacity, and
        # covering whatever it shows.
        source = alpha if e.sfactor == 770 else part * inside[..., None] if e.sfactor == 774 else inside[..., None]
        kept = {0: 1 - inside[..., None], 1: 1, 771: 1 - alpha}[e.dfactor]
        part[...] = part * kept + colour * source


def camera_of(scene, moment, size):
    if scene == "menu":
        return Camera((0, 0, 8), 0, size)
    f = min(moment / 5, 1)
    return Camera((4, -(75 * f - 52), 7 + 10 * f), 35 * f - 120 - 0.5 * 12 + 15, size)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--scene", choices=("game", "menu"), default="game")
    parser.add_argument("--effects", default="2,3,4", help="numbers, separated by commas")
    parser.add_argument("--times", default="0.2,0.5,1,2", help="seconds since the effects were started")
    parser.add_argument("--moment", type=float, default=5, help="second of the game whose camera is used")
    parser.add_argument("--row", type=int, nargs="*", default=[4], help="the cleared rows of effect 5")
    parser.add_argument("--step", type=int, default=16, help="milliseconds of a frame")
    parser.add_argument("--size", default="640x480")
    parser.add_argument("--background")
    parser.add_argument("--crop", help="left,top,right,bottom in pixels")
    parser.add_argument("--out", default="preview.png")
    options = parser.parse_args()
    size = tuple(int(n) for n in options.size.split("x"))
    places = dict(MENU if options.scene == "menu" else GAME)
    places[5] = [((-4.5, 1.0, 0.02 * (19 - row) + 0.47 * (row + 1)), (12, 0, 0)) for row in options.row]
    table, loaded = Table(1), effects()
    instances = [Instance(emitter, place, direction, table) for number in map(int, options.effects.split(","))
                 for place, direction in places[number] for emitter in loaded[number]]
    batch = batches(loaded)
    camera = camera_of(options.scene, options.moment, size)
    below = np.zeros((size[1], size[0], 3))
    if options.background:
        below = np.asarray(Image.open(options.background).convert("RGB").resize(size), float) / 255
    frames, now = [], 0
    for seconds in sorted(float(t) for t in options.times.split(",")):
        while now < seconds * 1000:
            for instance in instances:
                instance.update(options.step)
            instances = [instance for instance in instances if not instance.finished]
            now += options.step
        light, picture = np.zeros_like(below), below.copy()
        for target in (light, picture):
            for _ in range(3 if options.scene == "menu" else 1):
                for instance in sorted(instances, key=lambda each: batch[each.e.keys["filename"]]):
                    draw(target, instance, camera)
        alive = sum(int(instance.alive.sum()) for instance in instances)
        luminance = light @ (0.2126, 0.7152, 0.0722)
        top = np.unravel_index(luminance.argmax(), luminance.shape)
        print("%5.2f s: %4d alive, brightest light %.2f at x %d y %d, %d of %d lit pixels over half of white" % (
            now / 1000, alive, luminance.max(), top[1], top[0], (luminance > 0.5).sum(), (luminance > 0.02).sum()))
        image = Image.fromarray(np.rint(np.clip(picture, 0, 1) * 255).astype("u1"))
        if options.crop:
            image = image.crop([int(n) for n in options.crop.split(",")])
        ImageDraw.Draw(image).text((4, 4), "%.2f s" % (now / 1000), fill=(255, 255, 255))
        frames.append(image)
    columns = min(len(frames), 3)
    rows = -(-len(frames) // columns)
    total = Image.new("RGB", (columns * frames[0].width, rows * frames[0].height))
    for i, image in enumerate(frames):
        total.paste(image, (i % columns * image.width, i // columns * image.height))
    total.save(options.out)


if __name__ == "__main__":
    main()
