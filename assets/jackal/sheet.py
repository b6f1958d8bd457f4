"""A sheet of small pictures of the jackal, drawn in software from the finished mesh: to look at, not for the game."""
import numpy as np
from PIL import Image, ImageDraw

from . import motion, shape, skin


def view(mesh, texture, azimuth=62, elevation=14, size=300, zoom=0.78, centre=(0.05, 0, 0.42)):
    """One picture, far away camera; azimuth 90 looks at the animal's right side."""
    a, e = np.radians(azimuth), np.radians(elevation)
    toward = np.array([np.cos(e) * np.cos(a), -np.cos(e) * np.sin(a), np.sin(e)])
    right = np.cross((0, 0, 1), toward)
    right /= np.linalg.norm(right)
    up = np.cross(toward, right)
    points = np.array(mesh.points) - centre
    sx, sy, depth = points @ right * size * zoom + size / 2, size / 2 - points @ up * size * zoom, points @ toward
    picture, zbuffer = np.full((size, size, 3), 40, np.uint8), np.full((size, size), -1e9)
    places = np.array(mesh.texcoords)
    for ids, texture_ids in zip(mesh.triangles, mesh.texture_triangles):
        x, y, d = sx[ids], sy[ids], depth[ids]
        area = (x[1] - x[0]) * (y[2] - y[0]) - (y[1] - y[0]) * (x[2] - x[0])
        # Back faces are left out: counter-clockwise triangles turn the other way with y downwards.
        if area >= -1e-9:
            continue
        x0, x1 = int(max(0, x.min())), int(min(size - 1, x.max() + 1))
        y0, y1 = int(max(0, y.min())), int(min(size - 1, y.max() + 1))
        if x1 <= x0 or y1 <= y0:
            continue
        gx, gy = np.meshgrid(np.arange(x0, x1 + 1) + .5, np.arange(y0, y1 + 1) + .5)
        v = ((gx - x[0]) * (y[2] - y[0]) - (gy - y[0]) * (x[2] - x[0])) / area
        w = ((x[1] - x[0]) * (gy - y[0]) - (y[1] - y[0]) * (gx - x[0])) / area
        u = 1 - v - w
        z = u * d[0] + v * d[1] + w * d[2]
        window = zbuffer[y0:y1 + 1, x0:x1 + 1]
        hit = (u >= 0) & (v >= 0) & (w >= 0) & (z > window)
        window[hit] = z[hit]
        at = u[..., None] * places[texture_ids[0]] + v[..., None] * places[texture_ids[1]] + w[...,
                                                                                               None] * places[texture_ids[2]]
        at = np.clip(at, 0, shape.SKIN - 1).astype(int)
        picture[y0:y1 + 1, x0:x1 + 1][hit] = texture[at[..., 1], at[..., 0]][hit]
    return Image.fromarray(picture)


def draw(path):
    rest = shape.build(shape.rest_pose())
    coats = {coat: np.array(skin.paint(rest, coat)) for coat in skin.COATS}
    poses = motion.poses()
    cells = [("rest, right", view(rest, coats["sand"], 90, 5)), ("rest, front", view(rest, coats["sand"], 15, 10)),
             ("rest, left back", view(rest, coats["sand"], -130, 25)), ("night", view(rest, coats["night"], 50, 14))]
    for name, first, last, _, _ in motion.ANIMATIONS:
        for frame in (first + (last - first) // 3, first + 2 * (last - first + 1) // 3):
            cells.append((f"{name} {frame}", view(shape.build(poses[frame][1]), coats["sand"])))
    columns, side = 8, 300
    rows = -(-len(cells) // columns)
    sheet = Image.new("RGB", (columns * side, rows * side))
    for i, (label, picture) in enumerate(cells):
        ImageDraw.Draw(picture).text((6, 4), label, fill=(255, 255, 255))
        sheet.paste(picture, (i % columns * side, i // columns * side))
    sheet.save(path)
