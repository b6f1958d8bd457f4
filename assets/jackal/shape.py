"""The shape of the temple jackal: joints, tubes round them, and where each part lies on the skin.

Axes: x forward, y to the animal's left, z up, feet at z = 0. One unit is the animal's length from chest to tail; the
world draws it times four times the size of its object. A pose (see motion.py) is a dictionary of numbers; posed()
turns it into vertices. Every part is a tube: a row of rings with the same number of sides, closed by a point at each end.
"""
import math

import numpy as np

SKIN = 512


def rotation(pitch=0.0, yaw=0.0, roll=0.0):
    """Degrees: pitch lifts the nose, yaw turns it to the left, roll leans to the right."""
    p, y, r = (math.radians(a) for a in (-pitch, yaw, roll))
    about_y = np.array([[math.cos(p), 0, math.sin(p)], [0, 1, 0], [-math.sin(p), 0, math.cos(p)]])
    about_z = np.array([[math.cos(y), -math.sin(y), 0], [math.sin(y), math.cos(y), 0], [0, 0, 1]])
    about_x = np.array([[1, 0, 0], [0, math.cos(r), -math.sin(r)], [0, math.sin(r), math.cos(r)]])
    return about_z @ about_y @ about_x


def turn_about(point, matrix):
    """A 4x4 that turns about a point of the frame it is given in."""
    m = np.eye(4)
    m[:3, :3] = matrix
    m[:3, 3] = np.array(point) - matrix @ np.array(point)
    return m


def apply(m, points):
    points = np.asarray(points, float)
    return points @ m[:3, :3].T + m[:3, 3]


# The trunk from the rump to the nose: centre (x, z), half width, half height, slope of the ring's normal in degrees, and
# the weights of pelvis, chest, neck and head, whose movement it takes on.
TRUNK = [
    ((-0.345, 0.500), 0.045, 0.060, -35, (1, 0, 0, 0)),
    ((-0.315, 0.490), 0.085, 0.105, -15, (1, 0, 0, 0)),
    ((-0.230, 0.490), 0.098, 0.115, 0, (1, 0, 0, 0)),
    ((-0.110, 0.490), 0.080, 0.092, 0, (.65, .35, 0, 0)),
    ((0.020, 0.475), 0.096, 0.115, 0, (.25, .75, 0, 0)),
    ((0.150, 0.462), 0.108, 0.138, 5, (0, 1, 0, 0)),
    ((0.235, 0.482), 0.095, 0.132, 30, (0, .9, .1, 0)),
    ((0.290, 0.550), 0.074, 0.098, 52, (0, .4, .6, 0)),
    ((0.340, 0.640), 0.060, 0.074, 58, (0, 0, 1, 0)),
    ((0.375, 0.710), 0.058, 0.068, 45, (0, 0, .4, .6)),
    ((0.420, 0.748), 0.066, 0.070, 10, (0, 0, 0, 1)),
    ((0.480, 0.745), 0.060, 0.060, -12, (0, 0, 0, 1)),
    ((0.530, 0.722), 0.034, 0.037, -14, (0, 0, 0, 1)),
    ((0.620, 0.700), 0.023, 0.025, -12, (0, 0, 0, 1)),
    ((0.652, 0.696), 0.016, 0.019, -12, (0, 0, 0, 1)),
]
TRUNK_SIDES = 8
TAIL_AT = (-0.335, 0.0, 0.525)
TAIL_STEP = 0.105
TAIL_RADII = (0.024, 0.034, 0.046, 0.044, 0.030)
TAIL_SIDES = 5
WAIST, NECK, NAPE = (-0.08, 0, 0.50), (0.235, 0, 0.53), (0.375, 0, 0.705)
JAW_AT = (0.500, 0.0, 0.715)
# Legs: the upper joint, the length of upper and lower bone, the foot's rest place, and the hock (or wrist) above it.
LEGS = {
    "fl": dict(bone="chest", joint=(0.165, 0.066, 0.435), lengths=(0.185, 0.185), foot=(0.175, 0.066, 0.0),
               ankle=(-0.018, 0.0, 0.088), bend=-1, radii=(0.062, 0.046, 0.031, 0.022, 0.021)),
    "hl": dict(bone="pelvis", joint=(-0.235, 0.066, 0.470), lengths=(0.205, 0.205), foot=(-0.285, 0.066, 0.0),
               ankle=(-0.052, 0.0, 0.150), bend=1, radii=(0.088, 0.064, 0.037, 0.023, 0.021)),
}
for left, right in (("fl", "fr"), ("hl", "hr")):
    LEGS[right] = {k: (v[0], -v[1], v[2]) if k in ("joint", "foot", "ankle") else v for k, v in LEGS[left].items()}
LEG_SIDES = 6
PAW = 0.052

# Rectangles of the skin in pixels (left, top, right, bottom) for each part; left and right legs share theirs.
RECTANGLES = {"trunk": (4, 4, 508, 270), "tail": (4, 280, 200, 350), "front": (4, 360, 250, 504),
              "hind": (262, 360, 508, 504), "ear": (212, 280, 340, 350), "jaw": (352, 280, 508, 350)}


def rest_pose():
    pose = dict(x=0, y=0, z=0, pitch=0, yaw=0, roll=0, spine=0, bend=0, neck=0, neck_yaw=0, head=0, head_yaw=0,
                head_roll=0, jaw=0, ears=0, tail=-62, tail_curl=9, tail_yaw=0, lying=0)
    for leg, data in LEGS.items():
        for axis, value in zip("xyz", data["foot"]):
            pose[f"{leg}_{axis}"] = value
    return pose


def bones(p):
    """The matrices of pelvis, chest, neck and head: each carries rest positions to posed ones."""
    root = np.eye(4)
    root[:3, :3] = rotation(p["pitch"], p["yaw"], p["roll"])
    centre = np.array([-0.05, 0, 0.48])
    root[:3, 3] = centre + (p["x"], p["y"], p["z"]) - root[:3, :3] @ centre
    chest = root @ turn_about(WAIST, rotation(p["spine"], p["bend"]))
    neck = chest @ turn_about(NECK, rotation(p["neck"], p["neck_yaw"]))
    head = neck @ turn_about(NAPE, rotation(p["head"], p["head_yaw"], p["head_roll"]))
    return {"pelvis": root, "chest": chest, "neck": neck, "head": head}


def ring(centre, across, up, width, height, sides, start=-90):
    angles = np.radians(start + np.arange(sides) * 360 / sides)
    return np.array(centre) + np.outer(np.cos(angles) * width, across) + np.outer(np.sin(angles) * height, up)


def trunk_rings(b):
    rings = []
    for (x, z), width, height, slope, weights in TRUNK:
        a = math.radians(slope)
        points = ring((x, 0, z), (0, 1, 0), (-math.sin(a), 0, math.cos(a)), width, height, TRUNK_SIDES)
        # The underside is narrower than the back, as ribs and belly are.
        rings.append(sum(w * apply(b[n], points) for n, w in zip(("pelvis", "chest", "neck", "head"), weights) if w))
    return rings


def tail_rings(p, b):
    rings, m, at = [], b["pelvis"], np.array(TAIL_AT)
    for i, radius in enumerate(TAIL_RADII):
        pitch = p["tail"] + p["tail_curl"] * i
        along = rotation(-pitch, p["tail_yaw"] * (i + 1) / 3) @ np.array([-1.0, 0, 0])
        across = np.cross((0, 0, 1), along)
        across /= max(np.linalg.norm(across), 1e-6)
        up = np.cross(along, across)
        rings.append(apply(m, ring(at, -across, up, radius, radius, TAIL_SIDES)))
        at = at + along * TAIL_STEP
    return rings, apply(m, at - along * TAIL_STEP * 0.25)


def leg_joints(p, b, leg):
    """Hip, knee, hock, foot: two bones bend so that the hock is where foot and ankle want it."""
    data = LEGS[leg]
    bone = b[data["bone"]]
    hip = apply(bone, [data["joint"]])[0]
    target = np.array([p[f"{leg}_{a}"] for a in "xyz"])
    # A lying animal's feet go with its body, a standing one's stay where they are on the ground.
    lying = p["lying"]
    foot = (1 - lying) * target + lying * apply(bone, [target])[0]
    forward = bone[:3, :3] @ np.array([1.0, 0, 0])
    lift = max(0.0, foot[2]) * (1 - lying)
    tilt = rotation(-min(70, 260 * lift) * (1 if data["bend"] > 0 else 1.2))
    ankle = tilt @ np.array(data["ankle"])
    hock = foot + (1 - lying) * ankle + lying * (bone[:3, :3] @ np.array(data["ankle"]))
    upper, lower = data["lengths"]
    reach = hock - hip
    distance = np.linalg.norm(reach)
    if distance > (upper + lower) * 0.995:
        hock = hip + reach / distance * (upper + lower) * 0.995
        foot = hock - ((1 - lying) * ankle + lying * (bone[:3, :3] @ np.array(data["ankle"])))
        reach, distance = hock - hip, (upper + lower) * 0.995
    along = reach / distance
    side = np.cross(np.cross(along, forward), along)
    side /= max(np.linalg.norm(side), 1e-6)
    part = (upper ** 2 - lower ** 2 + distance ** 2) / (2 * distance)
    knee = hip + along * part + side * data["bend"] * math.sqrt(max(0.0, upper ** 2 - part ** 2))
    return hip, knee, hock, foot, side


def leg_rings(p, b, leg):
    hip, knee, hock, foot, forward = leg_joints(p, b, leg)
    radii = LEGS[leg]["radii"]
    toe = forward - np.dot(forward, (foot - hock)) * (foot - hock) / max(np.dot(foot - hock, foot - hock), 1e-6)
    toe /= max(np.linalg.norm(toe), 1e-6)
    path = [hip, hip * 0.5 + knee * 0.5, knee, hock, hock * 0.25 + foot * 0.75]
    ends = [knee - hip, knee - hip, hock - hip, foot - knee, foot - hock]
    rings = []
    for centre, along, radius in zip(path, ends, radii):
        along = along / max(np.linalg.norm(along), 1e-6)
        front = forward - np.dot(forward, along) * along
        front /= max(np.linalg.norm(front), 1e-6)
        rings.append(ring(centre, np.cross(along, front) * 0.8, front, radius, radius, LEG_SIDES))
    # The paw: a flat ring that reaches forward, on the ground.
    sole = (foot - hock) / max(np.linalg.norm(foot - hock), 1e-6)
    rings.append(ring(foot - sole * 0.030 + toe * PAW * 0.45, np.cross(sole, toe) * 0.8, toe, 0.034, PAW, LEG_SIDES))
    rings.append(ring(foot + toe * PAW * 0.45, np.cross(sole, toe) * 0.8, toe, 0.036, PAW * 1.1, LEG_SIDES))
    # The leg's upper end lies inside the body, so that no edge shows where it joins.
    data = LEGS[leg]
    joint = np.array(data["joint"])
    return rings, apply(b[data["bone"]], joint * (1, 0.3, 1) + (0, 0, 0.065)), foot + toe * PAW * 0.45


def ear(p, b, sign):
    """Six points: the foot of the ear (three), its belly (two) and its tip; drawn from both sides."""
    lean = rotation(-p["ears"], 0, -sign * 14)
    base = np.array([0.405, sign * 0.040, 0.800])
    points = np.array([(0.020, 0.030 * sign, -.012), (-0.022, 0.034 * sign, -.03), (0.000, -0.026 * sign, 0.004),
                       (0.014, 0.034 * sign, 0.080), (0.008, -0.020 * sign, 0.090), (-0.006, 0.012 * sign, 0.185)])
    return apply(b["head"], base + points @ lean.T)


def jaw_rings(p, b):
    m = b["head"] @ turn_about(JAW_AT, rotation(-p["jaw"]))
    rings = [ring((x, 0, z), (0, 1, 0), (0, 0, 1), w, h, 4) for x, z, w, h in
             ((0.500, 0.694, 0.030, 0.020), (0.560, 0.684, 0.022, 0.014), (0.622, 0.676, 0.015, 0.009))]
    return [apply(m, r) for r in rings], apply(m, (0.47, 0, 0.70)), apply(m, (0.638, 0, 0.678))


class Builder:
    """Collects the vertices of one pose and, the first time, the faces and skin places that all poses share."""

    def __init__(self):
        self.points, self.triangles, self.texcoords, self.texture_triangles, self.parts = [], [], [], [], []

    def tube(self, part, rectangle, rings, first, last, flip=False, mirrored=False):
        """Rings run from first to last; seen against that way their points run clockwise, with flip the other way round.
        A mirrored tube takes its skin the other way round, so that left and right limbs can share theirs."""
        left, top, right, bottom = RECTANGLES[rectangle]
        sides, base = len(rings[0]), len(self.points)
        texture_base = len(self.texcoords)
        rows = [np.repeat([first], sides, 0)] + list(rings) + [np.repeat([last], sides, 0)]
        self.points += [first] + [q for r in rings for q in r] + [last]
        count = len(rings)
        centres = np.array([np.mean(r, 0) for r in rows])
        run = np.concatenate([[0], np.cumsum(np.linalg.norm(np.diff(centres, axis=0), axis=1) + 0.004)])
        for row in range(count + 2):
            for i in range(sides + 1):
                self.texcoords.append((left + (right - left) * run[row] / run[-1],
                                       top + (bottom - top) * abs(mirrored - i / sides)))

        def vertex(row, i):
            if row == 0:
                return base
            if row == count + 1:
                return base + 1 + count * sides
            return base + 1 + (row - 1) * sides + i % sides

        for row in range(count + 1):
            for i in range(sides):
                corners = [(row, i), (row, i + 1), (row + 1, i + 1), (row + 1, i)]
                for a, c, d in ((0, 1, 2), (0, 2, 3)):
                    chosen = [corners[k] for k in (a, c, d)]
                    ids = [vertex(*q) for q in chosen]
                    if len(set(ids)) < 3:
                        continue
                    texture = [texture_base + q[0] * (sides + 1) + q[1] for q in chosen]
                    self.face(part, ids[::-1] if flip else ids, texture[::-1] if flip else texture)

    def face(self, part, ids, texture):
        self.triangles.append(ids)
        self.texture_triangles.append(texture)
        self.parts.append(part)

    def sheet(self, part, rectangle, points, sign):
        """An ear: its outside and its hollow, which faces forward and away from the middle."""
        left, top, right, bottom = RECTANGLES[rectangle]
        base, texture_base = len(self.points), len(self.texcoords)
        self.points += list(points)
        middle = (left + right) / 2
        places = [(0.0, 0.95), (0.3, 1.0), (1.0, 0.95), (0.15, 0.5), (0.85, 0.45), (0.55, 0.0)]
        for shift, width in ((left, middle - left - 3), (middle + 3, right - middle - 3)):
            self.texcoords += [(shift + s * width, top + t * (bottom - top)) for s, t in places]
        for i, face in enumerate([(0, 2, 4), (0, 4, 3), (3, 4, 5), (1, 0, 3), (1, 3, 5), (2, 1, 5), (2, 5, 4)]):
            # The first three are the hollow, the others the back, on the second half of the rectangle.
            shift = 0 if i < 3 else 6
            ids, texture = [base + k for k in face], [texture_base + shift + k for k in face]
            self.face(part, ids[::-1] if sign > 0 else ids, texture[::-1] if sign > 0 else texture)


def build(p):
    """The mesh in pose p: a Builder with vertices, triangles, skin places, and the part of each triangle."""
    b, out = bones(p), Builder()
    rings = trunk_rings(b)
    rump = rings[0].mean(0) + b["pelvis"][:3, :3] @ np.array([-0.02, 0, 0.0])
    nose = rings[-1].mean(0) + b["head"][:3, :3] @ np.array([0.010, 0, -0.002])
    out.tube("trunk", "trunk", rings, rump, nose)
    rings, tip = tail_rings(p, b)
    out.tube("tail", "tail", rings, apply(b["pelvis"], TAIL_AT), tip, flip=True)
    for leg, rectangle in (("fl", "front"), ("fr", "front"), ("hl", "hind"), ("hr", "hind")):
        rings, first, last = leg_rings(p, b, leg)
        out.tube(leg, rectangle, rings, first, last, flip=True, mirrored=leg[1] == "r")
    rings, first, last = jaw_rings(p, b)
    out.tube("jaw", "jaw", rings, first, last)
    for sign in (1, -1):
        out.sheet("ear", "ear", ear(p, b, sign), sign)
    return out


def tag(p):
    """Where something can be carried: P on the withers, Q to the right of it, so that an unturned load has the animal's axes."""
    m = bones(p)["chest"]
    return apply(m, [(0.10, 0.0, 0.600), (0.10, -0.20, 0.600)])
