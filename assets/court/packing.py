"""Places rectangles in the square texture: skyline packing, the largest first, with a margin round each."""

SIDE = 2048
MARGIN = 3


def pack(sizes, order):
    """Positions (left, bottom) by index, or None if they do not fit; order is a sorting key over indices."""
    skyline, places = [(0, 0, SIDE)], {}
    for i in sorted(range(len(sizes)), key=order):
        width, height = sizes[i][0] + 2 * MARGIN, sizes[i][1] + 2 * MARGIN
        best = None
        for s, (x, _, _) in enumerate(skyline):
            if x + width > SIDE:
                continue
            y, k, rest = 0, s, width
            while rest > 0 and k < len(skyline):
                y = max(y, skyline[k][1])
                rest -= skyline[k][2]
                k += 1
            if rest <= 0 and y + height <= SIDE and (best is None or (y + height, x) < best[0]):
                best = ((y + height, x), x, y)
        if best is None:
            return None
        _, x, y = best
        places[i] = (x + MARGIN, y + MARGIN)
        skyline = _raise(skyline, x, width, y + height)
    return places


def _raise(skyline, x, width, height):
    pieces = []
    for left, level, length in skyline:
        if left + length <= x or left >= x + width:
            pieces.append((left, level, length))
            continue
        if left < x:
            pieces.append((left, level, x - left))
        if left + length > x + width:
            pieces.append((x + width, level, left + length - x - width))
    pieces.append((x, height, width))
    pieces.sort()
    merged = pieces[:1]
    for left, level, length in pieces[1:]:
        last = merged[-1]
        if last[1] == level and last[0] + last[2] == left:
            merged[-1] = (last[0], level, last[2] + length)
        else:
            merged.append((left, level, length))
    return merged


def fit(patches, fixed):
    """Packs the patches at the largest scale that fits; fixed holds the materials whose patches keep their size.
    Returns scale, sizes and places, in texels from the lower left."""
    scale = 1.5
    while scale > .3:
        sizes = [p.size if p.material in fixed else tuple(max(4, int(n * scale)) for n in p.size) for p in patches]
        for order in (lambda i: (-sizes[i][1], -sizes[i][0]), lambda i: -max(sizes[i]), lambda i: -sizes[i][0] * sizes[i][1],
                      lambda i: (-sizes[i][0], -sizes[i][1])):
            places = pack(sizes, order)
            if places:
                return scale, sizes, [places[i] for i in range(len(patches))]
        scale *= .985
    raise ValueError("the patches do not fit into the texture")
