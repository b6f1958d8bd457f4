"""The whole court: its patches, their places in the texture, and the triangles of the game's model."""
from dataclasses import dataclass

import numpy as np

from . import courtyard, gate, landscape, packing, statues
from .grid import MIDDLE, Scene

# Materials that are pictures already and are not baked, by the file that holds them; such patches keep their size.
PAINTED = {"sky": "sky.png", "keys": "keys.png"}
# Nothing may stand in the camera's way: x, y, z of the box that its flight needs.
FLIGHT = ((0, 8), (-23, 53), (3, 21))


@dataclass
class Model:
    patches: list
    scale: float        # by how much every patch's wish for texels was multiplied
    sizes: list         # of each patch's rectangle in texels
    places: list        # its lower left corner
    points: np.ndarray  # triangles x 3 x 3, counter-clockwise from outside
    texture: np.ndarray  # triangles x 3 x 2, from the lower left, 0 to 1
    owner: np.ndarray   # the patch of each triangle


def texture_place(size, place, spread):
    """Texture coordinates of points of a patch: from the middle of its first texel to the middle of its last."""
    return (np.array(place) + .5 + spread * (np.array(size) - 1)) / packing.SIDE


def instances(patch):
    """Every place of a patch as (points, whether the faces turn over); the first is the one that is baked."""
    result = []
    for shift in [np.zeros(3)] + [np.asarray(c) for c in patch.copies]:
        result.append((patch.points + shift, False))
        if patch.mirror:
            mirrored = patch.points + shift
            mirrored[..., 0] = 2 * MIDDLE - mirrored[..., 0]
            result.append((mirrored, True))
    if patch.beyond:
        sign, shift = patch.beyond
        result += [(grid * (1, sign, 1) + (0, shift, 0), turned != (sign < 0)) for grid, turned in result]
    return result


def build():
    scene = Scene()
    for part in (gate, courtyard, statues, landscape):
        part.build(scene)
    scale, sizes, places = packing.fit(scene.patches, PAINTED)
    points, texture, owner = [], [], []
    for i, patch in enumerate(scene.patches):
        faces, uv = patch.triangles(), texture_place(sizes[i], places[i], patch.spread).reshape(-1, 2)
        for grid, turned in instances(patch):
            order = faces[:, ::-1] if turned else faces
            points.append(grid.reshape(-1, 3)[order])
            texture.append(uv[order])
            owner += [i] * len(faces)
    model = Model(scene.patches, scale, sizes, places, np.concatenate(points), np.concatenate(texture), np.array(owner))
    check_flight(model)
    return model


def check_flight(model):
    inside = np.ones(len(model.points), bool)
    for axis, (low, high) in enumerate(FLIGHT):
        values = model.points[..., axis]
        inside &= (values.min(1) < high) & (values.max(1) > low)
    if inside.any():
        names = sorted({model.patches[i].name for i in model.owner[inside]})
        raise ValueError("in the camera's way: " + ", ".join(names))


def count_by_name(model):
    total = {}
    for i in model.owner:
        name = model.patches[i].name
        total[name] = total.get(name, 0) + 1
    return total
