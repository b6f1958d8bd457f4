"""How the jackal moves: twenty animations in 198 frames, as the game's table of animations cuts them.

An animation is a function of the time t (0 at its first frame, 1 at its last; a loop's last frame comes one step before
t = 1) and gives the differences from the resting pose of shape.py: degrees, or lengths in units of the shape. Most are
rows of keys between which the movement eases.
"""
import math

from . import shape

LEGS = ("fl", "fr", "hl", "hr")


def ease(t):
    return t * t * (3 - 2 * t)


def keys(t, *rows):
    """Rows (time, {name: value}); a name that a row leaves out is 0 there."""
    names = {n for _, row in rows for n in row}
    if t <= rows[0][0]:
        return dict(rows[0][1])
    for (ta, a), (tb, b) in zip(rows, rows[1:]):
        if t <= tb:
            s = ease((t - ta) / (tb - ta))
            return {n: a.get(n, 0) * (1 - s) + b.get(n, 0) * s for n in names}
    return dict(rows[-1][1])


def add(*moves):
    total = {}
    for move in moves:
        for name, value in move.items():
            total[name] = total.get(name, 0) + value
    return total


def wave(t, turns=1, shift=0.0):
    return math.sin(2 * math.pi * (t * turns + shift))


def pulse(t, start, end):
    """0 outside start..end, a smooth hill of height 1 between."""
    return math.sin(math.pi * (t - start) / (end - start)) ** 2 if start < t < end else 0.0


def breathe(t, times=4):
    return {"z": 0.004 * wave(t, times), "spine": 0.8 * wave(t, times), "neck": -1.5 * wave(t, times, 0.1),
            "tail_yaw": 9 * wave(t, times / 2)}


def feet(**lengths):
    """The same shift for all four feet."""
    return {f"{leg}_{axis}": value for leg in LEGS for axis, value in lengths.items()}


def stand(t):
    """Breathes, looks left and right, listens, noses at the ground once."""
    look = keys(t, (0, {}), (.10, {"head_yaw": 28, "neck_yaw": 14}), (.22, {"head_yaw": 28, "neck_yaw": 14, "head": 4}),
                (.32, {"head_yaw": -30, "neck_yaw": -16}), (.44, {"head_yaw": -30, "neck_yaw": -16, "head_roll": 12}),
                (.54, {}), (.66, {"neck": -58, "head": -2, "spine": -6}), (.70, {"neck": -55, "head": 6, "spine": -6}),
                (.75, {"neck": -60, "head": -4, "spine": -6}), (.86, {"neck": 6, "head": 4}), (1, {}))
    flick = {"ears": 22 * pulse(t, .14, .20) + 22 * pulse(t, .46, .50) - 8 * pulse(t, .84, .96)}
    return add(breathe(t), look, flick)


def gait(t, order, stride, lift, duty):
    """Feet that go round: each is on the ground for the share duty of the round and swings forward in the rest."""
    move = {}
    for leg, shift in order.items():
        s = (t + shift) % 1
        if s < duty:
            move[f"{leg}_x"] = stride * (0.5 - s / duty)
        else:
            q = (s - duty) / (1 - duty)
            move[f"{leg}_x"] = stride * (ease(q) - 0.5)
            move[f"{leg}_z"] = lift * math.sin(math.pi * q)
    return move


def run(t):
    """A gallop: hind feet, then fore feet; the back bends and stretches."""
    legs = gait(t, {"hl": 0, "hr": .12, "fl": .46, "fr": .58}, .44, .13, .42)
    return add(legs, {"z": .035 * wave(t, 1, .15) - .01, "pitch": 7 * wave(t, 1, .45), "spine": -12 * wave(t, 1, .2),
                      "neck": -20 + 6 * wave(t, 1, .4), "head": 8, "ears": -28, "tail": 55 + 12 * wave(t, 1, .3),
                      "tail_curl": -8, "jaw": 10})


def bite(t):
    """Crouches, leaps at what is before it, snaps twice."""
    body = keys(t, (0, {}), (.28, {"x": -.09, "z": -.09, "neck": -14, "head": 14, "ears": -30, "tail": 25}),
                (.52, {"x": .13, "z": .05, "pitch": 10, "neck": -28, "head": 4, "jaw": 38, "ears": -35, "tail": 45,
                       "fl_x": .24, "fl_z": .12, "fr_x": .20, "fr_z": .15}),
                (.66, {"x": .14, "z": .0, "neck": -30, "head": -6, "jaw": 2, "ears": -35, "tail": 40, "fl_x": .20,
                       "fr_x": .16}),
                (.80, {"x": .10, "neck": -20, "head": 4, "jaw": 30, "ears": -25, "tail": 30, "fl_x": .12, "fr_x": .10}),
                (1, {}))
    return body


def flinch(side, depth):
    """A hit: side is 1 from the right, -1 from the left, 0 from the front."""
    def move(t):
        hit = {"neck": -18 * depth, "neck_yaw": 26 * side, "head_yaw": 18 * side, "head_roll": 14 * side,
               "z": -.06 * depth, "x": -.06 * depth, "roll": -7 * side, "bend": 12 * side, "ears": -35, "jaw": 22,
               "tail": -18, "tail_yaw": -20 * side}
        return keys(t, (0, {n: .6 * v for n, v in hit.items()}), (.34, hit), (1, {}))
    return move


def jump(t):
    """Gathers, flies, lands."""
    air = pulse(t, .18, .92)
    tuck = {f"{leg}_z": .34 * air + (.03 if leg[0] == "f" else -.02) * air for leg in LEGS}
    reach = keys(t, (.0, {}), (.25, {"fl_x": .10, "fr_x": .10, "hl_x": -.12, "hr_x": -.12}), (.6, {}),
                 (.8, {"fl_x": .10, "fr_x": .12}), (1, {}))
    body = keys(t, (0, {"z": -.05}), (.16, {"z": -.12, "neck": -10, "ears": -15}),
                (.36, {"pitch": 20, "neck": 8, "ears": -25, "tail": 40}),
                (.60, {"pitch": 2, "ears": -25, "tail": 55}), (.8, {"pitch": -14, "neck": 10, "tail": 20}), (1, {"z": -.08}))
    return add(tuck, reach, body, {"z": .36 * air})


def flip(t):
    """Leaps and turns once over its back; the feet go with the body while it is in the air."""
    air = ease(min(1, max(0, (t - .16) / .68)))
    high = pulse(t, .12, .88)
    body = keys(t, (0, {}), (.14, {"z": -.13, "neck": -10}), (.3, {"neck": 20, "spine": 14}), (.7, {"neck": -10, "spine": -10}),
                (.9, {"z": -.10, "neck": -6}), (1, {}))
    return add(body, {"z": .62 * high, "pitch": 360 * air, "lying": min(1, 6 * high), "tail": 40 * high}, feet(z=.10 * high))


def salute(t):
    """Sits down and lifts the right forefoot to its brow."""
    sit = {"pitch": 36, "z": -.05, "x": -.04, "hl_x": .10, "hr_x": .10, "fl_x": -.10, "fr_x": -.10, "neck": -14, "head": -22,
           "tail": 40}
    foot = {"fr_x": .18, "fr_z": .56, "fr_y": .02, "head": -16, "head_roll": -6}
    return keys(t, (0, {}), (.25, sit), (.42, add(sit, foot)), (.72, add(sit, foot, {"ears": 12})), (.84, sit), (1, {}))


def howl(t):
    """The taunt: throws its head back and howls, three times."""
    cry = {"neck": 22, "head": 34, "jaw": 26, "ears": -38, "tail": 18, "spine": 3}
    rest = {"neck": 8, "head": 10, "ears": -15, "tail": 8}
    return add(keys(t, (0, {}), (.12, cry), (.26, cry), (.34, rest), (.44, cry), (.60, cry), (.68, rest), (.76, cry),
                    (.9, add(cry, {"neck": -5, "jaw": -8})), (1, {})), {"head_yaw": 4 * wave(t, 6), "z": .003 * wave(t, 9)})


def wave_paw(t):
    """Lifts the left forefoot and waves it, wagging its tail."""
    up = {"fl_x": .16, "fl_z": .30, "roll": 3, "neck": 4, "tail": 45, "hl_y": .02}
    return add(keys(t, (0, {}), (.25, up), (.8, up), (1, {})),
               {"fl_z": .07 * wave(t, 4) * pulse(t, .1, .95), "fl_y": .05 * wave(t, 4, .2) * pulse(t, .1, .95),
                "tail_yaw": 30 * wave(t, 5) * pulse(t, 0, 1), "head_roll": 8 * pulse(t, .2, .9)})


def point(t):
    """Freezes like a hunting dog: one forefoot up, nose, back and tail in a line."""
    still = {"neck": -34, "head": 26, "fr_x": .06, "fr_z": .15, "x": .03, "tail": 62, "tail_curl": -9, "ears": 10, "z": -.01}
    return add(keys(t, (0, {}), (.3, still), (.82, still), (1, {})),
               {"tail_yaw": 3 * wave(t, 6) * pulse(t, .3, .9), "neck": 1.2 * wave(t, 4)})


CROUCH = {"z": -.185, "neck": -26, "head": 20, "ears": -12, "tail": 8, "fl_x": .05, "fr_x": .05}


def crouch(t):
    """Lies in wait, close to the ground, and looks about."""
    return add(CROUCH, breathe(t, 2), keys(t, (0, {}), (.25, {"head_yaw": 22, "neck_yaw": 12}), (.45, {"head_yaw": 22}),
                                           (.7, {"head_yaw": -24, "neck_yaw": -12}), (1, {})),
               {"ears": 20 * pulse(t, .5, .62)})


def creep(t):
    legs = gait(t, {"hl": 0, "fr": .05, "hr": .5, "fl": .55}, .20, .05, .6)
    return add(CROUCH, legs, {"z": .008 * wave(t, 2), "bend": 4 * wave(t), "roll": 2 * wave(t)})


def crouched_bite(t):
    return add(CROUCH, keys(t, (0, {}), (.3, {"x": -.07, "head": 10, "ears": -20}),
                            (.55, {"x": .13, "z": .04, "neck": 8, "jaw": 36, "ears": -25, "fl_x": .12, "fr_x": .12}),
                            (.7, {"x": .13, "z": .04, "neck": 6, "head": -8, "jaw": 0, "ears": -25, "fl_x": .12, "fr_x": .12}),
                            (1, {})))


def crouched_flinch(t):
    return add(CROUCH, keys(t, (0, {"head_yaw": 16, "roll": -4, "ears": -22, "jaw": 14}),
                            (.5, {"neck_yaw": 24, "head_yaw": 26, "head_roll": 14, "roll": -8, "ears": -26, "jaw": 24}),
                            (1, {"head_yaw": 6})))


# Lying on the right side (roll 84) with the legs stretched out, as seen from the body: the feet go with it.
def fallen(side):
    return {"roll": 84 * side, "z": -.385, "lying": 1, "neck": -24, "head": 14, "head_yaw": -6 * side, "ears": -30, "tail": 48,
            "jaw": 12, "fl_z": .05, "fr_z": .07, "hl_z": .06, "hr_z": .04, "fl_x": .08, "fr_x": .02, "hl_x": -.06, "hr_x": .02}


def die(first, middle, side=1):
    """From the pose first through middle to the ground."""
    return lambda t: keys(t, (0, first), (.45, middle), (.85, fallen(side)), (1, fallen(side)))


REARING = {"pitch": 34, "z": .04, "x": -.10, "neck": 18, "head": 10, "jaw": 30, "fl_z": .36, "fr_z": .30, "fl_x": .06,
           "fr_x": .0, "ears": -30}
PITCHING = {"pitch": -22, "z": -.13, "x": .10, "neck": -26, "head": -6, "jaw": 22, "fl_x": -.10, "fr_x": -.14, "tail": 50,
            "ears": -30}
SINKING = {"roll": 10, "z": -.16, "neck": -30, "head": -10, "ears": -20, "bend": 10, "tail": -10}
SWAYING = {"roll": -6, "z": -.05, "neck": -24, "neck_yaw": -18, "head": -8, "ears": -15}


def slow_death(t):
    return keys(t, (0, {}), (.2, SWAYING), (.4, {n: -v if n in ("roll", "neck_yaw") else v for n, v in SWAYING.items()}),
                (.62, SINKING), (.9, fallen(1)), (1, fallen(1)))


# Name, first frame, last frame, whether it runs in a circle, movement. First and last are the game's table.
ANIMATIONS = [
    ("stand", 0, 39, True, stand),
    ("run", 40, 45, True, run),
    ("attack", 46, 53, False, bite),
    ("paina", 54, 57, False, flinch(1, .7)),
    ("painb", 58, 61, False, flinch(-1, .7)),
    ("painc", 62, 65, False, flinch(0, 1.3)),
    ("jump", 66, 71, False, jump),
    ("flip", 72, 83, False, flip),
    ("salute", 84, 94, False, salute),
    ("taunt", 95, 111, False, howl),
    ("wave", 112, 122, False, wave_paw),
    ("point", 123, 134, False, point),
    ("crstnd", 135, 153, True, crouch),
    ("crwalk", 154, 158, True, creep),
    ("crattak", 159, 166, False, crouched_bite),
    ("crpain", 167, 169, False, crouched_flinch),
    ("crdeath", 170, 174, False, die(CROUCH, add(CROUCH, {"roll": 30, "neck": -10}))),
    ("deathb", 175, 179, False, die({}, REARING, -1)),
    ("deathf", 180, 184, False, die({}, PITCHING)),
    ("deaths", 185, 192, False, slow_death),
]
FRAMES = 198


def poses():
    """A name and a pose for every frame; the frames after the last animation stay where it ended."""
    result = []
    for name, first, last, circle, move in ANIMATIONS:
        assert first == len(result)
        count = last - first + 1
        for i in range(count):
            pose = shape.rest_pose()
            for key, value in move(i / (count if circle else count - 1)).items():
                pose[key] += value
            result.append((f"{name}{i + 1:02d}", pose))
    while len(result) < FRAMES:
        result.append((f"still{len(result) - 192:02d}", result[-1][1]))
    return result
