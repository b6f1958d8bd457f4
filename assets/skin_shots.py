"""The skin as data: for each style its text settings and, for each state, the list of shots that draw it.

A shot is one polygon: (mode, vertices), mode FILLED, OUTLINE or TEXTURED. A vertex hangs on one of the nine anchors of
the component's rectangle with an offset; offsets here are pixels of a 640 x 480 screen, x to the right and y down, and
make_skin.py turns them into fractions of the screen. The game draws all polygons of a shot as one fan, so each has a
shot of its own, and it clamps colours at 1: brightening is done with translucent light on top.
"""
import math
from collections import namedtuple

from colour import rgb
from paint import GOLD, GOLD_DARK, GOLD_LIGHT, INK, IVORY, SAND_LIGHT

FILLED, OUTLINE, TEXTURED = 0, 1, 2
TL, TR, BR, BL, TM, BM, LM, RM, CENTRE = range(9)
STATES = ("normal", "hover", "clicked", "disabled")

Vertex = namedtuple("Vertex", "anchor x y colour u v", defaults=(0, 0))
# offset: where children of a container start; margin: what its scissor leaves out at right and bottom; both in
# fractions of the screen, like text, the offset of the caption from the top left.
Style = namedtuple("Style", "name offset margin text colour states")

# The skin picture is divided into 8 x 8 cells: column, row from the top, columns, rows.
CELLS = {"sand": (0, 0, 4, 4), "field": (4, 0, 4, 4), "lapis": (0, 4, 8, 1), "corner": (0, 5, 1, 1), "cross": (1, 5, 1, 1),
         "grip": (2, 5, 1, 1), "arrow": (3, 5, 1, 1), "tick": (4, 5, 1, 1), "ring": (5, 5, 1, 1), "dot": (6, 5, 1, 1),
         "box": (7, 5, 1, 1), "stone": (0, 6, 4, 2)}
# A texel of each cell's edge is left out, so that linear filtering takes nothing from the neighbour.
CELL_INSET = 1 / 512

CAPTION_HEIGHT = 24
WHITE = (1, 1, 1, 1)
# Lines lie a little inside their pixel, or those at the right and the bottom would fall outside the rectangle.
LINE_INSET = 0.4


def tone(colour, alpha=1.0):
    """A colour, as text or as numbers, with an alpha."""
    r, g, b = rgb(colour) if isinstance(colour, str) else colour[:3]
    return (float(r), float(g), float(b), alpha)


def scaled(colour, factor):
    return tuple(min(1.0, float(c) * factor) for c in colour[:3]) + (1.0,)


def cell(name):
    """Texture coordinates (left, bottom, right, top) of a cell, v from the bottom of the picture."""
    column, row, columns, rows = CELLS[name]
    return (column / 8 + CELL_INSET, 1 - (row + rows) / 8 + CELL_INSET, (column + columns) / 8 - CELL_INSET,
            1 - row / 8 - CELL_INSET)


def rectangle(inset, top, bottom=None):
    """A filled rectangle inside the component, with a vertical gradient."""
    bottom = top if bottom is None else bottom
    i = inset
    return (FILLED, [Vertex(TL, i, i, top), Vertex(TR, -i, i, top), Vertex(BR, -i, -i, bottom), Vertex(BL, i, -i, bottom)])


def textured(inset, name, top=WHITE, bottom=None):
    """A cell of the skin picture stretched over the component, tinted with a vertical gradient."""
    bottom = top if bottom is None else bottom
    left, low, right, high = cell(name)
    i = inset
    return (TEXTURED, [Vertex(TL, i, i, top, left, high), Vertex(TR, -i, i, top, right, high),
                       Vertex(BR, -i, -i, bottom, right, low), Vertex(BL, i, -i, bottom, left, low)])


def outline(inset, colour):
    """A line one screen pixel wide round the component."""
    i = inset + LINE_INSET
    return (OUTLINE, [Vertex(TL, i, i, colour), Vertex(TR, -i, i, colour), Vertex(BR, -i, -i, colour), Vertex(BL, i, -i, colour)])


def bevel(inset, width, top, left, bottom, right):
    """Four mitred trapezia round the component, each in its own colour."""
    i, j = inset, inset + width
    corners = ((TL, 1, 1), (TR, -1, 1), (BR, -1, -1), (BL, 1, -1))
    shots = []
    for k, colour in enumerate((top, right, bottom, left)):
        (a, ax, ay), (b, bx, by) = corners[k], corners[(k + 1) % 4]
        shots.append((FILLED, [Vertex(a, ax * i, ay * i, colour), Vertex(b, bx * i, by * i, colour),
                               Vertex(b, bx * j, by * j, colour), Vertex(a, ax * j, ay * j, colour)]))
    return shots


def band(top, height, inset, upper, lower=None):
    """A horizontal band hung on the upper corners, with a vertical gradient."""
    lower = upper if lower is None else lower
    return (FILLED, [Vertex(TL, inset, top, upper), Vertex(TR, -inset, top, upper),
                     Vertex(TR, -inset, top + height, lower), Vertex(TL, inset, top + height, lower)])


def ornaments(size, tint=WHITE):
    """The corner ornament in all four corners, mirrored."""
    left, low, right, high = cell("corner")
    return [(TEXTURED, [Vertex(anchor, 0, 0, tint, left, high), Vertex(anchor, sx * size, 0, tint, right, high),
                        Vertex(anchor, sx * size, sy * size, tint, right, low), Vertex(anchor, 0, sy * size, tint, left, low)])
            for anchor, sx, sy in ((TL, 1, 1), (TR, -1, 1), (BR, -1, -1), (BL, 1, -1))]


def picture(name, anchor, x, y, size, tint=WHITE, turns=0):
    """A square cell of the skin picture with its upper left corner at (x, y) from an anchor, turned in quarters."""
    left, low, right, high = cell(name)
    uvs = [(left, high), (right, high), (right, low), (left, low)]
    uvs = uvs[turns:] + uvs[:turns]
    corners = ((x, y), (x + size, y), (x + size, y + size), (x, y + size))
    return (TEXTURED, [Vertex(anchor, px, py, tint, u, v) for (px, py), (u, v) in zip(corners, uvs)])


def window_body(gold, light):
    """Windows: a sandstone frame with gold lines round a dark recessed field. gold scales the lines, light the field."""
    field_top = (light, 0.95 * light, 0.92 * light, 1)
    field_bottom = (0.66 * light, 0.62 * light, 0.70 * light, 1)
    sand = (min(1.0, 0.35 + 0.65 * light),) * 3 + (1,)
    return ([rectangle(0, tone(INK)), textured(1, "sand", sand)]
            + bevel(1, 2, tone("#F6E2BA", 0.75), tone("#F6E2BA", 0.5), tone("#2A1A10", 0.75), tone("#2A1A10", 0.6))
            + bevel(5, 1, scaled(GOLD_DARK, gold), scaled(GOLD_DARK, gold), scaled(GOLD_LIGHT, gold), scaled(GOLD_LIGHT, gold))
            + bevel(6, 1, *[scaled(GOLD, gold)] * 4)
            + [textured(7, "field", field_top, field_bottom), band(7, 8, 7, tone("#000000", 0.65), tone("#000000", 0))]
            + ornaments(14, sand))


def panel(alpha, gold, light):
    """Windows without a caption bar: a narrow stone bevel round a translucent field, warm enough to set off the darkest of the
    next pieces, whichever side it shows."""
    stone = [scaled(SAND_LIGHT, k * light) for k in (1.03, 0.86, 0.52, 0.62)]
    return ([textured(4, "field", (1, 0.95, 0.92, alpha), (0.60, 0.57, 0.66, alpha)), rectangle(4, tone("#BC9646", 0.07 * light)),
             band(4, 6, 4, tone("#000000", 0.5), tone("#000000", 0))]
            + bevel(0, 1, *[tone(INK)] * 4) + bevel(1, 2, *stone)
            + bevel(3, 1, scaled(GOLD, gold), scaled(GOLD, gold), scaled(GOLD_LIGHT, gold), scaled(GOLD_LIGHT, gold))
            + bevel(4, 1, scaled(GOLD_DARK, gold), scaled(GOLD_DARK, gold), scaled(GOLD, gold), scaled(GOLD, gold))
            + ornaments(12, (light, light, light, 1)))


def caption_bar(light):
    """The lapis bar with the title, hung on the upper corners of the window."""
    top, bottom = (min(1.0, 1.0 * light),) * 3 + (1,), (0.60 * light,) * 3 + (1,)
    left, low, right, high = cell("lapis")
    end = 3 + CAPTION_HEIGHT
    shots = [(TEXTURED, [Vertex(TL, 3, 3, top, left, high), Vertex(TR, -3, 3, top, right, high),
                         Vertex(TR, -3, end, bottom, right, low), Vertex(TL, 3, end, bottom, left, low)]),
             band(3, 9, 3, tone("#FFFFFF", 0.24 * light), tone("#FFFFFF", 0.03))]
    for y, colour in ((3, GOLD_LIGHT), (4, GOLD), (end - 1, GOLD), (end, GOLD_DARK)):
        shots.append(band(y, 1, 3, scaled(colour, light)))
    for anchor, sx in ((TL, 1), (TR, -1)):
        for x, colour in ((3, GOLD), (4, GOLD_DARK)):
            c = scaled(colour, light)
            shots.append((FILLED, [Vertex(anchor, sx * x, 3, c), Vertex(anchor, sx * (x + 1), 3, c),
                                   Vertex(anchor, sx * (x + 1), end + 1, c), Vertex(anchor, sx * x, end + 1, c)]))
    return shots


def dusk(inset, alpha):
    """The right half of a component sinks into shade. Captions begin at the left of their button, as far from its edge as the
    longest ends from the other; light from the left lets the short ones stand where the eye looks for them."""
    i, clear, dark = inset, tone("#0A0604", 0), tone("#0A0604", alpha)
    return (FILLED, [Vertex(TM, 0, i, clear), Vertex(TR, -i, i, dark), Vertex(BR, -i, -i, dark), Vertex(BM, 0, -i, clear)])


def corners(length, width, colour):
    """Angles in the four corners of a component."""
    shots = []
    for anchor, sx, sy in ((TL, 1, 1), (TR, -1, 1), (BR, -1, -1), (BL, 1, -1)):
        for across, down in ((length, width), (width, length)):
            shots.append((FILLED, [Vertex(anchor, sx * x, sy * y, colour)
                                   for x, y in ((0, 0), (across, 0), (across, down), (0, down))]))
    return shots


def button(fill_top, fill_bottom, edge, lit, shaded, stone=1.0, glow=None, shade=0.0):
    """A stone key: a gold edge round a texture, a translucent fill that gives the state its colour, and a bevel. Edges are
    nested rectangles, not lines, so that they grow with the screen."""
    shots = [rectangle(0, tone(INK)), rectangle(1, edge),
             textured(2, "stone", (stone, stone, 0.98 * stone, 1), (0.76 * stone, 0.74 * stone, 0.72 * stone, 1)),
             rectangle(2, fill_top, fill_bottom)]
    if shade:
        shots.append(dusk(2, shade))
    shots += bevel(2, 2, lit, lit, shaded, shaded)
    if glow:
        shots += bevel(-1, 1, glow, glow, glow, glow)
    return shots


# Buttons and tabs are brown stone with light captions: the letters' soft dark outline would clog ink on light stone.
SHADE = 0.5
BUTTON = {
    "normal": button(tone("#3A2616", 0.30), tone("#1E120A", 0.42), tone(GOLD), tone("#FFE9B8", 0.50), tone("#1A0E06", 0.70), 0.56,
                     shade=SHADE),
    "hover": button(tone("#986A1E", 0.44), tone("#46290C", 0.48), tone(GOLD_LIGHT), tone("#FFF3D0", 0.85), tone("#2A1808", 0.7),
                    0.50, tone("#F8E2A0", 0.8), SHADE),
    "clicked": button(tone("#2A1A0E", 0.50), tone("#6A4A1C", 0.40), tone(GOLD), tone("#140A04", 0.8), tone("#F0CE80", 0.55),
                      0.52, shade=SHADE),
    "disabled": button(tone("#6A6258", 0.50), tone("#4A443E", 0.55), tone("#8A7A58"), tone("#C8BCA0", 0.25), tone("#1A140E", 0.4),
                       0.55, shade=SHADE),
}
TAB = {
    "normal": button(tone("#2E1E12", 0.45), tone("#1A100A", 0.55), tone("#B88A30"), tone("#FFE9B8", 0.30), tone("#120A04", 0.6), 0.50),
    "hover": BUTTON["hover"],
    "clicked": button(tone("#8A5F1A", 0.54), tone("#4E3207", 0.52), tone(GOLD_LIGHT), tone("#FFF3D0", 0.85), tone("#3A2208", 0.5),
                      0.56),
    "disabled": BUTTON["disabled"],
}
# Arrow keys carry a sign in ink, which asks for light stone.
ARROW_KEY = {
    "normal": button(tone("#FFF4D8", 0.10), tone("#5A4330", 0.06), tone(GOLD), tone("#FFF3D0", 0.75), tone("#4A3018", 0.65)),
    "hover": button(tone("#FFE9A8", 0.45), tone("#E3B23C", 0.30), tone(GOLD_LIGHT), tone("#FFF8E0", 0.95),
                    tone("#7A5418", 0.7), 1.0, tone("#F8E2A0", 0.8)),
    "clicked": button(tone("#6A4A22", 0.30), tone("#E3B23C", 0.14), tone(GOLD), tone("#3A2410", 0.75), tone("#FFE9B0", 0.6), 0.94),
    "disabled": button(tone("#A09888", 0.60), tone("#8C8478", 0.60), tone("#8A7A58"), tone("#D8CCB0", 0.35), tone("#3A3028", 0.4), 0.95),
}


def inset(fill, edge, shade=0.6):
    """A field sunk into the stone: edit boxes, scroll bars, the frame of the progress bar."""
    return ([rectangle(0, tone(fill)), band(1, 5, 1, tone("#000000", shade), tone("#000000", 0))]
            + bevel(0, 1, tone(GOLD_DARK), tone(GOLD_DARK), tone(edge), tone(edge))
            + bevel(1, 1, tone("#000000", 0.5), tone("#000000", 0.5), tone(edge), tone(edge)))


INSET = {"normal": inset("#18110E", GOLD), "hover": inset("#221812", GOLD_LIGHT), "clicked": inset("#2A1D12", GOLD_LIGHT),
         "disabled": inset("#1A1310", rgb("#A8823A"))}


def arrow_key(turns):
    """A button with an arrow in its middle."""
    size = 14
    arrow = ("arrow", CENTRE, -size / 2, -size / 2, size)
    return {state: ARROW_KEY[state] + [picture(*arrow, (1, 1, 1, 0.45 if state == "disabled" else 1), turns)]
            for state in STATES}


def mark(frame, sign):
    """A check box or radio button: a square of 17 pixels hung on the left middle, so that it stays square on a screen
    that is wider than high. The clicked state is the ticked one."""
    def square(name, tint=WHITE):
        return picture(name, LM, 1, -8.5, 17, tint)
    centre_x, radius_x, radius_y = 9.5, 15, 14
    inner, outer = tone("#F8D070", 0.60), tone("#F8D070", 0.0)
    glow = (FILLED, [Vertex(LM, centre_x, 0, inner)]
            + [Vertex(LM, centre_x + radius_x * math.cos(k * math.pi / 8), radius_y * math.sin(k * math.pi / 8), outer)
               for k in range(17)])
    return {"normal": [square(frame, (0.85, 0.85, 0.85, 1))], "hover": [glow, square(frame)],
            "clicked": [square(frame), square(sign)], "disabled": [square(frame, (0.5, 0.5, 0.5, 1))]}


def whole(name, **tints):
    """One cell over the whole component, tinted by state; a state without a tint draws nothing."""
    return {state: [textured(0, name, tints[state])] if state in tints else [] for state in STATES}


NOTHING = dict.fromkeys(STATES, [])
GOLDEN_TEXT = rgb("#F8E2A0")
CAPTION = rgb("#FFF2D2")

STYLES = [
    Style("1: plain component, label, memo", (0, 0), (0, 0), (0, 0.021), IVORY, NOTHING),
    Style("2: edit box, panel, scroll bar, frame of the progress bar", (0, 0), (0, 0), (0.010, 0.024), rgb("#F6E7B8"), INSET),
    Style("3: button, thumb, fill of the progress bar", (0, 0), (0, 0), (0.021, 0.022), CAPTION, BUTTON),
    Style("4: arrow up", (0, 0), (0, 0), (0, 0), INK, arrow_key(0)),
    Style("5: arrow down", (0, 0), (0, 0), (0, 0), INK, arrow_key(2)),
    Style("6: arrow left", (0, 0), (0, 0), (0, 0), INK, arrow_key(1)),
    Style("7: arrow right", (0, 0), (0, 0), (0, 0), INK, arrow_key(3)),
    Style("8: window", (0.020, 0.085), (0.0115, 0.02), (0.01, 0.02), IVORY,
          {"normal": window_body(1.0, 1.0), "hover": window_body(1.06, 1.0), "clicked": window_body(1.15, 1.0),
           "disabled": window_body(0.72, 0.80)}),
    Style("9: caption bar", (0, 0), (0.045, 0), (0.02, 0.0305), GOLDEN_TEXT,
          {"normal": caption_bar(1.0), "hover": caption_bar(1.05), "clicked": caption_bar(1.08), "disabled": caption_bar(0.62)}),
    Style("10: close button", (0, 0), (0, 0), (0, 0), INK,
          whole("cross", normal=WHITE, hover=(1, 0.85, 0.4, 1), clicked=(1, 0.55, 0.35, 1))),
    Style("11: check box", (0, 0), (0, 0), (0.012, 0.0195), IVORY, mark("box", "tick")),
    Style("12: radio button", (0, 0), (0, 0), (0.012, 0.0195), IVORY, mark("ring", "dot")),
    Style("13: window without caption bar, page control", (0.024, 0.022), (0.02, 0.012), (0.01, 0.02), IVORY,
          {"normal": panel(0.90, 1.0, 1.0), "hover": panel(0.90, 1.08, 1.0), "clicked": panel(0.93, 1.15, 1.0),
           "disabled": panel(0.84, 0.75, 0.80)}),
    Style("14: item list, tab page", (0, 0), (0, 0), (0.022, 0.022), CAPTION, TAB),
    Style("15: resize button", (0, 0), (0, 0), (0, 0), INK,
          whole("grip", normal=(0.8, 0.8, 0.8, 1), hover=WHITE, clicked=(1, 0.8, 0.5, 1))),
]

# What marks the component that receives the keys: angles in its corners. At the start of each game they stand round a panel that
# waits for nothing, and pass there for a part of its ornaments; an edit box shows its cursor besides.
FOCUS = corners(7, 1.5, tone("#7FE0D8"))
