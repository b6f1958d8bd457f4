"""Blender materials of the court. Only their diffuse colour and their bumps matter: shine depends on the eye and cannot be
baked. Runs inside Blender."""
import os

import bpy

# Materials that show a picture by the patch's design coordinates, and how deep their relief is, in units.
PICTURES = {"tower": .16, "portal": .14, "wing": .2, "door": .1, "column": .1, "pillar": .12, "obelisk": .16, "frieze": .12,
            "floor": .12, "post": .04, "head": .02, "collar": .03, "kilt": .05, "relief": .14}
# Cloudy materials: two colours, size of the clouds (per unit), depth and size of the bumps, and masonry (stone length, course,
# joint) or None.
CLOUDS = {"stone": ("#8F6C46", "#CBA877", .18, .06, 1.5, (3.4, 1.6, .05)),
          "slab": ("#6B5240", "#8F7352", .3, .05, 2, (4, 3, .05)), "basalt": ("#2A2A36", "#3E3E50", .6, .03, 4,
                                                                              None), "bronze": ("#3A2413", "#6E4722", 1.2, .03,
                                                                                                5, None),
          "gold": ("#A87A22", "#E9BC4A", .8, .02, 5, None), "cedar": ("#4A2418", "#7A4430", .8, .03, 4, None),
          "dune": ("#4A3438", "#644644", .06, .4, .25, None), "pyramid": ("#4E3A40", "#6A4C48", .05, .3, .4, (5, 2.2, .12)),
          "palm": ("#2A3220", "#4C5634", .4, .1, 2, None), "granite": ("#94694E", "#B4896A", .9, .03, 6, None),
          "sand": ("#8A6644", "#B88F60", .5, .05, 4, None), "lapis": ("#20264A", "#303A66", 1.5, .02, 5, None)}
# Painted bands along the first design coordinate: colours, colour of the lines between them, length of a band in units, how much
# of the paint is left, and the bare stone under it.
BANDS = {"cornice": (("#28A79F", "#B8432E", "#1F3A93", "#B8432E"), "#DDBE8E", .95, .40, "#A67F50"),
         "pennant": (("#B8432E", "#E3B23C", "#B8432E", "#1F3A93"), "#7A2A20", .25, .75, "#7A4A30")}


def linear(code):
    return tuple((int(code[i:i + 2], 16) / 255) ** 2.2 for i in (1, 3, 5)) + (1,)


class Nodes:
    """A new material with a matt surface whose colour, bumps and bake target are still to be linked."""

    def __init__(self, name, target):
        self.material = bpy.data.materials.new(name)
        self.material.use_nodes = True
        self.tree = self.material.node_tree
        self.tree.nodes.clear()
        self.surface = self.new("ShaderNodeBsdfDiffuse")
        self.link(self.surface.outputs[0], self.new("ShaderNodeOutputMaterial").inputs[0])
        image = self.new("ShaderNodeTexImage")
        image.image = target
        self.link(self.coordinates("atlas"), image.inputs[0])
        self.tree.nodes.active = image

    def new(self, kind):
        return self.tree.nodes.new(kind)

    def link(self, output, socket):
        self.tree.links.new(output, socket)

    def coordinates(self, layer):
        node = self.new("ShaderNodeUVMap")
        node.uv_map = layer
        return node.outputs[0]

    def position(self):
        return self.new("ShaderNodeNewGeometry").outputs["Position"]

    def clouds(self, scale, detail=7):
        node = self.new("ShaderNodeTexNoise")
        node.inputs["Scale"].default_value = scale
        node.inputs["Detail"].default_value = detail
        self.link(self.position(), node.inputs["Vector"])
        return node.outputs[0]

    def ramp(self, value, stops, steps=False):
        node = self.new("ShaderNodeValToRGB")
        elements = node.color_ramp.elements
        if steps:
            node.color_ramp.interpolation = "CONSTANT"
        for i, (position, colour) in enumerate(stops):
            element = elements[i] if i < 2 else elements.new(position)
            element.position, element.color = position, colour
        self.link(value, node.inputs[0])
        return node.outputs[0]

    def mix(self, first, second, factor, kind="MIX"):
        node = self.new("ShaderNodeMixRGB")
        node.blend_type = kind
        for socket, value in zip(node.inputs, (factor, first, second)):
            if isinstance(value, (int, float, tuple)):
                socket.default_value = value
            else:
                self.link(value, socket)
        return node.outputs[0]

    def calculate(self, operation, first, second):
        node = self.new("ShaderNodeMath")
        node.operation = operation
        for socket, value in zip(node.inputs, (first, second)):
            if isinstance(value, (int, float)):
                socket.default_value = value
            else:
                self.link(value, socket)
        return node.outputs[0]

    def finish(self, colour, height=None, depth=0.0):
        self.link(colour, self.surface.inputs["Color"])
        if height is not None:
            bump = self.new("ShaderNodeBump")
            bump.inputs["Distance"].default_value = depth
            self.link(height, bump.inputs["Height"])
            self.link(bump.outputs[0], self.surface.inputs["Normal"])
        return self.material


def picture(name, depth, folder, target):
    nodes = Nodes(name, target)
    outputs = []
    for suffix in ("", "-height"):
        image = nodes.new("ShaderNodeTexImage")
        image.image = bpy.data.images.load(os.path.join(folder, name + suffix + ".png"))
        if suffix:
            image.image.colorspace_settings.name = "Non-Color"
        nodes.link(nodes.coordinates("design"), image.inputs[0])
        outputs.append(image.outputs[0])
    return nodes.finish(*outputs, depth)


def cloudy(name, dark, bright, scale, depth, bump_scale, masonry, target):
    nodes = Nodes(name, target)
    colour = nodes.ramp(nodes.clouds(scale), [(.32, linear(dark)), (.68, linear(bright))])
    height = nodes.clouds(bump_scale, 6)
    if masonry:
        brick = nodes.new("ShaderNodeTexBrick")
        brick.inputs["Scale"].default_value = 1
        for key, value in zip(("Brick Width", "Row Height", "Mortar Size"), masonry):
            brick.inputs[key].default_value = value
        brick.inputs["Mortar Smooth"].default_value = .6
        for key, value in (("Color1", (1, 1, 1, 1)), ("Color2", (.78, .78, .8, 1)), ("Mortar", (.5, .47, .47, 1))):
            brick.inputs[key].default_value = value
        nodes.link(nodes.coordinates("design"), brick.inputs[0])
        colour = nodes.mix(colour, brick.outputs[0], 1, "MULTIPLY")
        height = nodes.calculate("SUBTRACT", height, brick.outputs["Fac"])
    return nodes.finish(colour, height, depth)


def banded(name, colours, line, length, paint, stone, target):
    nodes = Nodes(name, target)
    separate = nodes.new("ShaderNodeSeparateXYZ")
    nodes.link(nodes.coordinates("design"), separate.inputs[0])
    turn = nodes.calculate("FRACT", nodes.calculate("DIVIDE", separate.outputs[0], length * len(colours)), 0)
    stops = []
    for i, colour in enumerate(colours):
        stops += [(i / len(colours), linear(line)), ((i + .14) / len(colours), linear(colour))]
    bands = nodes.ramp(turn, stops, steps=True)
    worn = nodes.ramp(nodes.clouds(.6, 8), [(.22, (0, 0, 0, 1)), (.5, (1, 1, 1, 1))])
    return nodes.finish(nodes.mix(linear(stone), nodes.mix(linear("#C49E6A"), bands, worn), paint))


def make(names, folder, target):
    """The materials of these names, in a dictionary; folder holds the pictures, target is the image that is baked into."""
    result = {}
    for name in names:
        if name in PICTURES:
            result[name] = picture(name, PICTURES[name], folder, target)
        elif name in CLOUDS:
            result[name] = cloudy(name, *CLOUDS[name], target)
        else:
            result[name] = banded(name, *BANDS[name], target)
    return result
