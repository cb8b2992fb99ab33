"""Lays pictures out on one large picture, row by row."""
import xdisplay

MARGIN = 16  # pixels around each picture
GROUND = b'\x60\x60\x60'  # between them


def rows_of(pictures, width):
    """The pictures in rows that are no wider than this, if they need not be."""
    rows, used = [[]], 0
    for picture in pictures:
        if rows[-1] and used + picture[0] + MARGIN > width:
            rows, used = [*rows, []], 0
        rows[-1].append(picture)
        used += picture[0] + MARGIN
    return rows


def sheet(pictures, width):
    """A PNG file of pictures, each a triple of width, height and lines as xdisplay.png takes them."""
    rows = rows_of(pictures, width)
    full = max(sum(picture[0] + MARGIN for picture in row) for row in rows) + MARGIN
    empty = b'\0' + GROUND * full
    lines = [empty] * MARGIN
    for row in rows:
        for y in range(max(height for _, height, _ in row)):
            line = b'\0' + b''.join(GROUND * MARGIN + (bytes(content[y][1:]) if y < height else GROUND * wide)
                                    for wide, height, content in row)
            lines.append(line + GROUND * (full - (len(line) - 1) // 3))
        lines += [empty] * MARGIN
    return xdisplay.png(full, len(lines), lines)
