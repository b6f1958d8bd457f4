"""Bakes the court's colours, directions and light, one group of lights at a time. Runs inside Blender:

    blender --background --factory-startup --python assets/court/bake.py -- WORK-DIRECTORY SAMPLES

The work directory holds the painted pictures and receives colour.npy, normal.npy and light-GROUP.npy: 2048 x 2048 x 3, the lowest
row first. Sky and keys are no part of this: they are pictures already.
"""
import math
import os
import sys
import time

import bpy
import numpy as np

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

from court import courtyard, gate, materials, model, packing  # noqa: E402
from court.grid import GROUND, MIDDLE, at  # noqa: E402

FIRE = (1.0, .50, .17)
# The evening sky, from below the horizon to the zenith: place between straight down (0) and up (1), light.
HEAVEN = ((.42, (.02, .014, .03, 1)), (.5, (.16, .085, .11, 1)), (.62, (.12, .085, .2, 1)), (1, (.075, .085, .24, 1)))
HEAVEN_STRENGTH = 1.05
# Shades the middle of the gate from braziers and inner fires, so that what lies behind the well stays calm.
SCREEN_OFFSET, SCREEN_Y, SCREEN_DENSITY = 20.5, 61.4, .90


def make_object(name, court, materials_by_name, chosen):
    """One mesh of the instances of all patches that are baked; chosen(i) tells whether instance i of a patch belongs to it."""
    names = sorted(materials_by_name)
    vertices, faces, index, smooth, atlas, design = [], [], [], [], [], []
    for i, patch in enumerate(court.patches):
        if patch.material in model.PAINTED:
            continue
        uv = model.texture_place(court.sizes[i], court.places[i], patch.spread).reshape(-1, 2)
        picture, triangles = patch.design.reshape(-1, 2), patch.triangles()
        for k, (grid, turned) in enumerate(model.instances(patch)):
            if not chosen(k):
                continue
            order = triangles[:, ::-1] if turned else triangles
            base = sum(len(v) for v in vertices)
            vertices.append(grid.reshape(-1, 3))
            faces.append(order + base)
            atlas.append(uv[order].reshape(-1, 2))
            design.append(picture[order].reshape(-1, 2))
            index += [names.index(patch.material)] * len(order)
            smooth += [patch.smooth] * len(order)
    mesh = bpy.data.meshes.new(name)
    mesh.from_pydata(np.concatenate(vertices).tolist(), [], np.concatenate(faces).tolist())
    for layer, values in (("atlas", atlas), ("design", design)):
        mesh.uv_layers.new(name=layer).data.foreach_set("uv", np.concatenate(values).astype(np.float32).ravel())
    for material in names:
        mesh.materials.append(materials_by_name[material])
    mesh.polygons.foreach_set("material_index", index)
    mesh.polygons.foreach_set("use_smooth", smooth)
    mesh.update()
    result = bpy.data.objects.new(name, mesh)
    bpy.context.collection.objects.link(result)
    return result


def lamp(kind, place, colour, energy, size, turn=(0, 0, 0)):
    data = bpy.data.lights.new(kind, kind)
    data.color, data.energy = colour, energy
    if kind == "POINT":
        data.shadow_soft_size = size
    else:
        data.angle = size
    result = bpy.data.objects.new(kind, data)
    result.location, result.rotation_euler = place, [math.radians(a) for a in turn]
    bpy.context.collection.objects.link(result)
    return result


def make_lights():
    """Lights by group. Fires stand on both sides; within the colonnade only the right one is baked, so only it burns."""
    groups = {"torch": [], "brazier": [], "inner": [], "sky": []}
    for side in (1, -1):
        groups["torch"].append(lamp("POINT", (MIDDLE + side * gate.TORCH_OFFSET, 69.0, 20.8), FIRE, 2600, .6))
        groups["brazier"].append(lamp("POINT", (MIDDLE + side * courtyard.BRAZIER_OFFSET, courtyard.BRAZIER_Y - .1, 15.8),
                                      FIRE, 14000, 1.6))
    # The last one burns where wide pictures alone see the colonnade.
    for y, energy in ((60, 1500), (32, 1700), (7.2, 1700)):
        groups["inner"].append(lamp("POINT", (at(42.2), y, 6), FIRE, energy, .9))
    groups["sky"] += [lamp("SUN", (0, 0, 50), (.50, .55, 1.0), .30, .3, (38, 0, 0)),
                      lamp("SUN", (0, 0, 50), (1.0, .42, .2), .55, .08, (0, 84, -28))]
    return groups


def make_heaven():
    world = bpy.data.worlds.new("heaven")
    bpy.context.scene.world = world
    world.use_nodes = True
    world.cycles.sampling_method = "NONE"
    nodes, link = world.node_tree.nodes, world.node_tree.links.new
    separate, scale, ramp = (nodes.new(k) for k in ("ShaderNodeSeparateXYZ", "ShaderNodeMapRange", "ShaderNodeValToRGB"))
    link(nodes.new("ShaderNodeTexCoord").outputs["Generated"], separate.inputs[0])
    scale.inputs[1].default_value, scale.inputs[2].default_value = -1, 1
    link(separate.outputs[2], scale.inputs[0])
    link(scale.outputs[0], ramp.inputs[0])
    for i, (place, colour) in enumerate(HEAVEN):
        element = ramp.color_ramp.elements[i] if i < 2 else ramp.color_ramp.elements.new(place)
        element.position, element.color = place, colour
    link(ramp.outputs[0], nodes["Background"].inputs[0])
    return nodes["Background"].inputs[1]


def make_screen():
    material = bpy.data.materials.new("screen")
    material.use_nodes = True
    nodes, link = material.node_tree.nodes, material.node_tree.links.new
    nodes.clear()
    mix = nodes.new("ShaderNodeMixShader")
    mix.inputs[0].default_value = SCREEN_DENSITY
    dark = nodes.new("ShaderNodeBsdfDiffuse")
    dark.inputs[0].default_value = (0, 0, 0, 1)
    link(nodes.new("ShaderNodeBsdfTransparent").outputs[0], mix.inputs[1])
    link(dark.outputs[0], mix.inputs[2])
    link(mix.outputs[0], nodes.new("ShaderNodeOutputMaterial").inputs[0])
    mesh = bpy.data.meshes.new("screen")
    left, right, low, high = at(-SCREEN_OFFSET), at(SCREEN_OFFSET), GROUND + .05, 60
    mesh.from_pydata([(left, SCREEN_Y, low), (right, SCREEN_Y, low), (right, SCREEN_Y, high), (left, SCREEN_Y, high)], [],
                     [(0, 1, 2, 3)])
    mesh.materials.append(material)
    result = bpy.data.objects.new("screen", mesh)
    bpy.context.collection.objects.link(result)
    result.visible_diffuse = False
    return result


def set_up(samples):
    scene = bpy.context.scene
    scene.render.engine = "CYCLES"
    scene.view_settings.view_transform = "Raw"
    cycles = scene.cycles
    cycles.samples, cycles.use_denoising, cycles.seed = samples, False, 1
    cycles.max_bounces = cycles.diffuse_bounces = 2
    cycles.sample_clamp_indirect = 2.5
    cycles.caustics_reflective = cycles.caustics_refractive = False
    scene.render.bake.margin, scene.render.bake.use_clear = packing.MARGIN, True
    return scene


def main(work, samples):
    bpy.ops.wm.read_factory_settings(use_empty=True)
    scene = set_up(samples)
    target = bpy.data.images.new("target", packing.SIDE, packing.SIDE, float_buffer=True, alpha=True)
    court = model.build()
    surfaces = materials.make({p.material for p in court.patches} - set(model.PAINTED), work, target)
    baked = make_object("court", court, surfaces, lambda i: i == 0)
    make_object("others", court, surfaces, lambda i: i > 0)
    groups, heaven, screen = make_lights(), make_heaven(), make_screen()
    baked.select_set(True)
    bpy.context.view_layer.objects.active = baked

    def store(name, **how):
        start = time.time()
        bpy.ops.object.bake(**how)
        values = np.empty(packing.SIDE * packing.SIDE * 4, np.float32)
        target.pixels.foreach_get(values)
        np.save(os.path.join(work, name + ".npy"), values.reshape(packing.SIDE, packing.SIDE, 4)[..., :3].astype(np.float16))
        print(f"baked {name} in {time.time() - start:.0f} s", flush=True)

    scene.cycles.samples = 4
    store("colour", type="DIFFUSE", pass_filter={"COLOR"})
    store("normal", type="NORMAL", normal_space="OBJECT")
    scene.cycles.samples = samples
    for name in groups:
        screen.hide_render = name not in ("brazier", "inner")
        heaven.default_value = HEAVEN_STRENGTH if name == "sky" else 0
        for key, lamps in groups.items():
            for one in lamps:
                one.hide_render = key != name
        store("light-" + name, type="DIFFUSE", pass_filter={"DIRECT", "INDIRECT"})


if __name__ == "__main__":
    arguments = sys.argv[sys.argv.index("--") + 1:]
    main(arguments[0], int(arguments[1]))
