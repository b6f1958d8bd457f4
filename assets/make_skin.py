#!/usr/bin/python3
"""The skin of the windows: gui/ravix.cfg, its picture gui/ravix.png and the pointer gui/cursor.png.

What the styles draw is data in skin_shots.py; this script paints the picture they take their textures from and writes
both in the game's block format. The pointer is drawn with v = 0 on top, so its file is stored upside down.
"""
import os
import sys

import cairo
import numpy as np

import paint
from colour import rgb
from paint import GOLD, GOLD_DARK, GOLD_LIGHT, INK, IVORY, LAPIS, LAPIS_LIGHT, SAND, SAND_LIGHT
from skin_shots import CELLS, FOCUS, STATES, STYLES

SIZE = 512
# One pixel of the 640 x 480 screen in fractions of the screen.
PIXEL_X, PIXEL_Y = 1 / 640, 1 / 480
# The recessed field: dark enough that text printed by adding light reads well on it, red text included.
FIELD = np.array([0.118, 0.088, 0.092])
# Side of the pointer in fractions of the screen, so it is a third wider than high.
POINTER_SIZE = 0.05

GENERAL = """\
; Made by assets/make_skin.py from assets/skin_shots.py: change those and run assets/build skin.
;
; Lengths are fractions of the screen: x and width of its width, y and height of its height. Colours run from 0 to 1.
; A missing key reads as 0; the limits and scroll bar sizes of "general" have defaults instead.

; The pointer and the side of the square it is drawn in.
<cursor>
 image = "gui/cursor.png"
 size = %(pointer)s
</cursor>

; Played when the pointer enters a button and when one is clicked.
<audio>
 hover = "sounds/gui_hover.wav"
 click = "sounds/gui_click.wav"
</audio>

<skin>

; Limits of window sizes, sizes of scroll bar buttons, the picture of textured polygons; then the areas of a window that
; feel the pointer (here the whole window) and what every window's close and resize buttons look like. Corners: 0 top
; left, 1 top right, 2 bottom right, 3 bottom left.
<general>
 win_min_width = 0.355
 win_min_height = 0.22
 win_max_width = 1.1
 win_max_height = 1.1
 scroll_width = 0.034
 scroll_height = 0.045
 image = "gui/ravix.png"
 <border>
  box_num = 1
  <box>
   pos1x = 0
   pos1y = 0
   fixed1 = 0
   pos2x = 0
   pos2y = 0
   fixed2 = 2
  </box>
 </border>
 <close button>
  caption = ""
  width = 0.028
  height = 0.0373
  stid = 10
  left = 0.012
  top = 0.0125
  scissor = 0
  pos_id = 1
 </close button>
 <resize button>
  caption = ""
  width = 0.0275
  height = 0.0367
  stid = 15
  left = 0
  top = 0
  scissor = 0
  pos_id = 2
 </resize button>
</general>
"""


def number(value):
    """A number as short as it can be without losing anything that shows."""
    text = "%.6f" % value
    return text.rstrip("0").rstrip(".") if float(text) else "0"


def write_shot(lines, depth, mode, vertices):
    """One "new shot" block with one polygon; keys that are 0 are left out."""
    def add(level, text):
        lines.append(" " * (depth + level) + text)
    add(0, "<new shot>")
    add(1, "mode = %d" % mode)
    add(1, "polynum = 1")
    add(1, "<polylist>")
    add(2, "<poly>")
    add(3, "vnum = %d" % len(vertices))
    add(3, "<vertlist>")
    for vertex in vertices:
        add(4, "<vert>")
        values = dict(zip("rgba", vertex.colour), u=vertex.u, v=vertex.v, x=vertex.x * PIXEL_X, y=vertex.y * PIXEL_Y)
        for key, value in dict(fixed=vertex.anchor, **values).items():
            if number(value) != "0":
                add(5, "%s = %s" % (key, number(value)))
        add(4, "</vert>")
    add(3, "</vertlist>")
    add(2, "</poly>")
    add(1, "</polylist>")
    add(0, "</new shot>")


def write_style(lines, style):
    lines += ["", "; " + style.name, "<New style>"]
    for key, value in zip(("leftx", "lefty", "rightx", "righty", "textx", "texty", "textr", "textg", "textb", "texta"),
                          (*style.offset, *style.margin, *style.text, *style.colour, 1)):
        lines.append(" %s = %s" % (key, number(float(value))))
    for state in STATES:
        lines += [" <mode>", '  state = "%s"' % state]
        for mode, vertices in style.states[state]:
            write_shot(lines, 2, mode, vertices)
        if not style.states[state]:
            # A state without any shot would get the built-in white rectangle; an empty one draws nothing.
            lines += ["  <new shot>", "   mode = 0", "   polynum = 0", "   <polylist>", "   </polylist>", "  </new shot>"]
        lines.append(" </mode>")
    lines.append("</New style>")


def skin_text():
    lines = ["", "; Drawn round the component that receives the keys.", "<focus style>"]
    for mode, vertices in FOCUS:
        write_shot(lines, 1, mode, vertices)
    lines += ["</focus style>", "",
              "; The styles; the first is number 1. leftx and lefty shift the children of a container, rightx and righty are left",
              "; out of its clipping; textx and texty place the caption. For each state a list of shots: mode 0 is filled, 1 a",
              "; line, 2 filled with the picture. A vertex hangs on a fixed point: 0 top left, 1 top right, 2 bottom right, 3",
              "; bottom left, 4 top middle, 5 bottom middle, 6 left middle, 7 right middle, 8 centre."]
    for style in STYLES:
        write_style(lines, style)
    return GENERAL % dict(pointer=number(POINTER_SIZE)) + "\n".join(lines + ["", "</skin>", ""])


def in_cell(c, name):
    """Sets the context up so that the cell is the unit square."""
    column, row, _, _ = CELLS[name]
    c.identity_matrix()
    c.translate(column * SIZE / 8 * PAINT_MULTIPLE, row * SIZE / 8 * PAINT_MULTIPLE)
    c.scale(SIZE / 8 * PAINT_MULTIPLE, SIZE / 8 * PAINT_MULTIPLE)
    c.new_path()


PAINT_MULTIPLE = 4


def corner_ornament(c):
    """A quarter of a lotus: gold rim, lapis ground, three golden petals."""
    in_cell(c, "corner")
    for start, reach, bend, colour in ((0, 0.98, 0.16, GOLD_DARK), (0.03, 0.86, 0.16, GOLD), (0.09, 0.62, 0.18, LAPIS)):
        c.move_to(start, start)
        c.line_to(reach, start)
        c.curve_to(reach * 0.64, bend, bend, reach * 0.64, start, reach)
        c.close_path()
        c.set_source_rgb(*colour)
        c.fill()
    c.set_source_rgb(*GOLD_LIGHT)
    for angle in (0.25, 0.785, 1.32):
        c.save()
        c.translate(0.12, 0.12)
        c.rotate(angle)
        c.move_to(0, 0)
        c.curve_to(0.1, 0.06, 0.2, 0.05, 0.30, 0)
        c.curve_to(0.2, -0.05, 0.1, -0.06, 0, 0)
        c.fill()
        c.restore()


def strokes(c, name, points, colour, width, dark):
    """Round-ended lines with a dark rim; points is a list of polylines."""
    in_cell(c, name)
    c.set_line_cap(cairo.LINE_CAP_ROUND)
    c.set_line_join(cairo.LINE_JOIN_ROUND)
    for w, paint_colour in ((width + 0.09, dark), (width, colour)):
        for line in points:
            c.new_sub_path()
            for x, y in line:
                c.line_to(x, y)
        c.set_source_rgb(*paint_colour)
        c.set_line_width(w)
        c.stroke()


def discs(c, name, *rings):
    in_cell(c, name)
    for radius, colour in rings:
        c.new_path()
        c.arc(0.5, 0.5, radius, 0, 7)
        c.set_source_rgb(*colour)
        c.fill()


def squares(c, name, *rings):
    in_cell(c, name)
    for edge, colour in rings:
        c.rectangle(edge, edge, 1 - 2 * edge, 1 - 2 * edge)
        c.set_source_rgb(*colour)
        c.fill()


def skin_picture():
    """Sandstone, dark field, lapis band and light stone as opaque textures; the signs on a clear ground."""
    pixels = np.zeros((SIZE, SIZE, 4))
    half = SIZE // 2
    grain, swirl = paint.noise(half, 5), paint.noise(half, 9, ((2, 0.5), (3, 0.6)))
    y = np.mgrid[0:half, 0:half][0] / half
    strata = 0.5 * np.sin(46 * y + 2.2 * swirl) + 0.6 * np.sin(17 * y + swirl)

    def lay(name, colour, shade):
        column, row, columns, rows = (v * SIZE // 8 for v in CELLS[name])
        part = pixels[row:row + rows, column:column + columns]
        part[..., :3] = np.clip(colour * shade[:rows, :columns, None], 0, 1)
        part[..., 3] = 1
    lay("sand", 0.5 * SAND_LIGHT + 0.5 * SAND, 1 + 0.045 * grain + 0.035 * strata)
    lay("field", FIELD, 1 + 0.08 * grain + 0.05 * strata)
    lay("stone", SAND_LIGHT, 1.05 + 0.045 * grain + 0.03 * strata)
    lay("lapis", 1.25 * LAPIS, 1 + 0.15 * paint.noise(SIZE, 21)[:SIZE // 8])
    random = np.random.RandomState(4)
    for _ in range(34):
        # Specks of pyrite.
        pixels[random.randint(half + 2, half + 62), random.randint(0, SIZE - 1), :3] = (0.62, 0.55, 0.42)

    canvas = paint.Canvas(SIZE, SIZE, PAINT_MULTIPLE)
    c = canvas.context
    dark = rgb("#2A1E18")
    corner_ornament(c)
    strokes(c, "cross", [((0.24, 0.24), (0.76, 0.76)), ((0.76, 0.24), (0.24, 0.76))], IVORY, 0.14, INK)
    strokes(c, "grip", [((0.92, k), (k, 0.92)) for k in (0.36, 0.58, 0.80)], GOLD, 0.06, INK)
    strokes(c, "arrow", [((0.2, 0.64), (0.5, 0.34), (0.8, 0.64))], INK, 0.14, SAND_LIGHT)
    strokes(c, "tick", [((0.22, 0.54), (0.43, 0.76), (0.82, 0.24))], GOLD_LIGHT, 0.15, GOLD_DARK)
    discs(c, "ring", (0.48, INK), (0.455, GOLD_DARK), (0.43, GOLD), (0.35, GOLD_DARK), (0.32, dark))
    discs(c, "dot", (0.24, GOLD_DARK), (0.21, GOLD_LIGHT), (0.13, rgb("#FFF6D8")))
    squares(c, "box", (0.02, INK), (0.05, GOLD), (0.12, GOLD_DARK), (0.15, dark))
    signs = canvas.pixels()
    pixels = np.where(pixels[..., 3:] > 0, pixels, signs)
    return paint.to_image(paint.bleed(pixels))


def pointer():
    """A golden arrow with a lapis inlay. The square it is drawn in is 4 wide to 3 high, so the picture is drawn on a
    64 x 48 canvas stretched to 64 x 64."""
    canvas = paint.Canvas(64, 64, 8)
    c = canvas.context
    # Textures repeat: a rim of clear texels keeps the left edge from shining through at the right.
    c.translate(2.5, 2.5)
    c.scale(0.78, 0.78 * 64 / 48)

    def arrow():
        c.new_path()
        for x, y in ((3, 3), (3, 46), (14, 36), (22, 54), (31, 50), (23, 32), (38, 31)):
            c.line_to(x, y)
        c.close_path()
    c.set_line_join(cairo.LINE_JOIN_ROUND)
    arrow()
    c.set_source_rgb(*INK)
    c.set_line_width(5)
    c.stroke()
    arrow()
    gradient = cairo.LinearGradient(0, 0, 38, 48)
    for place, colour in ((0, GOLD_LIGHT), (0.6, GOLD), (1, GOLD_DARK)):
        gradient.add_color_stop_rgb(place, *colour)
    c.set_source(gradient)
    c.fill()
    c.new_path()
    for x, y in ((8, 14), (8, 36), (15, 29), (27, 28)):
        c.line_to(x, y)
    c.close_path()
    c.set_source_rgb(*LAPIS)
    c.fill_preserve()
    c.set_source_rgb(*LAPIS_LIGHT)
    c.set_line_width(2)
    c.stroke()
    return paint.to_image(paint.bleed(canvas.pixels()))


if __name__ == "__main__":
    data = sys.argv[1]
    os.makedirs(os.path.join(data, "gui"), exist_ok=True)
    with open(os.path.join(data, "gui/ravix.cfg"), "w", encoding="ascii") as file:
        file.write(skin_text())
    paint.save(skin_picture(), data, "gui/ravix.png")
    paint.save(pointer(), data, "gui/cursor.png", flipped=True)
