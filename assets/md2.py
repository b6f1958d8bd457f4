"""Writes and reads MD2 files, the published format of animated, key-framed triangle meshes ("IDP2", version 8).

Callers work in the conventions of modelling tools, as with ksm.py: triangles run counter-clockwise as seen from
outside and t counts in pixels from the top of the skin as it is painted. The format stores them clockwise, so write()
and read() turn them round.
The game shows t = 0 at the bottom of the picture file, so save_skin() stores the painted skin upside down.
Positions are stored as one byte an axis with a scale and an offset for each frame.
"""
import struct

import numpy as np

import paint

MAGIC = b"IDP2"
VERSION = 8
HEADER = struct.Struct("<4s16i")
FRAME_HEAD = struct.Struct("<3f3f16s")
TRIANGLE = struct.Struct("<6H")
# Marks a side file with the tag points of a model: two points for each frame.
TAG_MARKER = 0x7A09


def write(path, frames, names, triangles, texcoords, texture_triangles, skin_size, skin_name=""):
    """Writes a model.

    frames: array (frames, vertices, 3); names: one name a frame, at most 15 bytes; triangles and
    texture_triangles: arrays (count, 3) of indices into the vertices and into texcoords, which are (s, t) in
    pixels; skin_size: (width, height); skin_name: the name kept in the file, the game takes its own.
    """
    frames = np.asarray(frames, dtype=np.float64)
    frame_count, vertex_count = frames.shape[:2]
    if not np.isfinite(frames).all() or len(names) != frame_count:
        raise ValueError(f"{path}: damaged frames")
    skins = skin_name.encode().ljust(64, b"\0") if skin_name else b""
    coordinates = b"".join(struct.pack("<2h", round(s), round(t)) for s, t in texcoords)
    faces = b"".join(TRIANGLE.pack(*(int(i) for i in (*v[::-1], *c[::-1])))
                     for v, c in zip(triangles, texture_triangles))
    body = b"".join(_frame(points, name) for points, name in zip(frames, names))
    # The list of drawing commands is empty: a single zero ends it.
    commands = struct.pack("<i", 0)
    offset_skins = HEADER.size
    offset_coordinates = offset_skins + len(skins)
    offset_faces = offset_coordinates + len(coordinates)
    offset_frames = offset_faces + len(faces)
    offset_commands = offset_frames + len(body)
    head = HEADER.pack(MAGIC, VERSION, *skin_size, FRAME_HEAD.size + 4 * vertex_count, len(skins) // 64, vertex_count,
                       len(texcoords), len(triangles), 1, frame_count, offset_skins, offset_coordinates, offset_faces,
                       offset_frames, offset_commands, offset_commands + len(commands))
    with open(path, "wb") as file:
        file.write(head + skins + coordinates + faces + body + commands)


def _frame(points, name):
    low, high = points.min(0), points.max(0)
    scale = np.maximum((high - low) / 255, 1e-6)
    packed = np.zeros((len(points), 4), np.uint8)
    packed[:, :3] = np.clip(np.rint((points - low) / scale), 0, 255)
    return FRAME_HEAD.pack(*scale, *low, name.encode()[:15]) + packed.tobytes()


def read(path):
    """Reads a model back as a dictionary with frames, names, triangles, texcoords, texture_triangles, skin_size."""
    with open(path, "rb") as file:
        data = file.read()
    (magic, version, width, height, frame_size, _, vertex_count, coordinate_count, triangle_count, _, frame_count, _,
     at_coordinates, at_triangles, at_frames, _, end) = HEADER.unpack_from(data)
    if magic != MAGIC or version != VERSION or end != len(data):
        raise ValueError(f"{path}: not an MD2 file")
    frames, names = [], []
    for i in range(frame_count):
        *numbers, name = FRAME_HEAD.unpack_from(data, at_frames + i * frame_size)
        raw = np.frombuffer(data, np.uint8, 4 * vertex_count, at_frames + i * frame_size + FRAME_HEAD.size)
        frames.append(raw.reshape(-1, 4)[:, :3] * np.array(numbers[:3]) + np.array(numbers[3:]))
        names.append(name.split(b"\0")[0].decode())
    faces = np.frombuffer(data, "<u2", 6 * triangle_count, at_triangles).reshape(-1, 6).astype(int)
    coordinates = np.frombuffer(data, "<i2", 2 * coordinate_count, at_coordinates).reshape(-1, 2)
    return {"frames": np.array(frames), "names": names, "triangles": faces[:, 2::-1],
            "texcoords": coordinates.copy(), "texture_triangles": faces[:, :2:-1], "skin_size": (width, height)}


def write_tags(path, tags):
    """Writes the side file of a model: for each frame the points P and Q, an array (frames, 2, 3)."""
    with open(path, "wb") as file:
        file.write(struct.pack("<H", TAG_MARKER) + np.asarray(tags, "<f4").tobytes())


def save_skin(image, path):
    """Stores a skin that was painted with t = 0 at its top the way the game shows it: upside down."""
    paint.save_png(image.transpose(1), path)
