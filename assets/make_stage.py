#!/usr/bin/python3
"""The scenery of the stage: a terrace under an evening sky, and a brazier to stand on it.

    models/terrace.md2, textures/terrace.png              paving, a low wall and pillars
    models/terrace_shade.md2, textures/terrace_shade.png  what the fires leave dark, and the shadows of what stands on the map
    models/dusk.md2, textures/dusk.png                    sky, pyramids and palms, seen round the eye
    models/brazier.md2, textures/brazier.png              a bowl on a stand, for a fire
"""
import os
import re
import sys
import tempfile


from PIL import Image

import md2
from court import sky
from stage import dusk, light, terrace

HERE = os.path.dirname(os.path.abspath(__file__))
MAP = os.path.join(HERE, "../data/maps/firstmap.txt")
# Where the eye stands on the map, in map units; a map unit is two of the scene.
EYE = (-20.0, -20.0)


def standing():
    """What stands on the map, in units of the scene: (name, x, y)."""
    with open(MAP, encoding="ascii") as file:
        text = file.read()
    found = re.findall(r'^\s*entity = "entities/(\w+)\.txt"\s*<custom>\s*posx = (\S+)\s*posy = (\S+)', text, re.M)
    return [(name, 2 * (EYE[0] - float(x)), 2 * (EYE[1] - float(y))) for name, x, y in found]


def make(out, work):
    def store(mesh, picture, name):
        md2.save_skin(picture, os.path.join(out, "textures", name + ".png"))
        count = mesh.write(os.path.join(out, "models", name + ".md2"), name)
        print(name, count, "triangles")
    for folder in ("models", "textures"):
        os.makedirs(os.path.join(out, folder), exist_ok=True)
    things = standing()
    sky.paint(work)
    store(*dusk.make(Image.open(os.path.join(work, "sky.png"))), "dusk")
    store(*terrace.make(work), "terrace")
    store(*light.make(things), "terrace_shade")
    store(*terrace.make_brazier(), "brazier")


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as directory:
        make(sys.argv[1], directory)
