#!/usr/bin/python3
"""models/jackal.md2 with its tag file jackal.mdw, and its skins textures/jackal.png and jackal_night.png.

--sheet FILE draws one frame of every animation instead, to look at the shapes and the skin.
"""
import os
import sys

import numpy as np

import md2
from jackal import motion, shape, skin


def volume(points, triangles):
    a, b, c = (points[np.array(triangles)[:, i]] for i in range(3))
    return np.einsum("ij,ij->i", a, np.cross(b, c)).sum() / 6


def check(rest):
    """Every part must be closed and turned outwards, or it would vanish where a driver hides back faces."""
    points = np.array(rest.points)
    for part in sorted(set(rest.parts)):
        triangles = [t for t, p in zip(rest.triangles, rest.parts) if p == part]
        centred = points - points[np.array(triangles)].mean((0, 1))
        if volume(centred, triangles) <= 0:
            raise ValueError(f"part {part} is inside out")


def main(out):
    models, textures = (os.path.join(out, folder) for folder in ("models", "textures"))
    os.makedirs(models, exist_ok=True)
    os.makedirs(textures, exist_ok=True)
    rest = shape.build(shape.rest_pose())
    check(rest)
    poses = motion.poses()
    frames = [np.array(shape.build(pose).points) for _, pose in poses]
    # A body that sinks lower than its feet is lifted on to the ground, its load with it.
    lifts = [(0, 0, max(0.0, -points[:, 2].min())) for points in frames]
    frames = [points + lift for points, lift in zip(frames, lifts)]
    md2.write(os.path.join(models, "jackal.md2"), frames, [name for name, _ in poses], rest.triangles, rest.texcoords,
              rest.texture_triangles, (shape.SKIN, shape.SKIN), "textures/jackal.png")
    md2.write_tags(os.path.join(models, "jackal.mdw"),
                   [shape.tag(pose) + lift for (_, pose), lift in zip(poses, lifts)])
    for name, coat in (("jackal.png", "sand"), ("jackal_night.png", "night")):
        md2.save_skin(skin.paint(rest, coat), os.path.join(textures, name))
    print(len(rest.triangles), "triangles,", len(rest.points), "vertices,", len(frames), "frames")


if __name__ == "__main__":
    if sys.argv[1] == "--sheet":
        from jackal import sheet
        sheet.draw(sys.argv[2])
    else:
        main(sys.argv[1])
