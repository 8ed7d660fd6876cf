#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Draws connected.bmp and not_connected.bmp: a field transmitter on its pipe, 32x32 pixels.

The second one also stands for "no symbol". Run without arguments after changing a picture; the
files are written beside this script.
"""

import pathlib
import sys

sys.dont_write_bytecode = True

from canvas import Canvas, bmp_bytes  # noqa: E402

HERE = pathlib.Path(__file__).resolve().parent
SIZE = 32
# Drawn this many times larger and averaged down, which smooths the edges.
SCALE = 8

WHITE = (255, 255, 255)
IN_COLOUR = {
    "outline": (44, 62, 80),
    "body": (74, 134, 190),
    "pipe": (150, 162, 172),
    "display": (214, 240, 214),
    "digits": (24, 90, 40),
}
GREYED = {
    "outline": (150, 150, 150),
    "body": (205, 205, 205),
    "pipe": (222, 222, 222),
    "display": (242, 242, 242),
    "digits": (190, 190, 190),
}
GREEN = (22, 150, 60)
RED = (208, 32, 40)


def box(left, top, right, bottom):
    """Covers a rectangle given in pixels of the finished picture."""
    edges = [edge * SCALE for edge in (left, top, right, bottom)]
    return lambda x, y: edges[0] <= x < edges[2] and edges[1] <= y < edges[3]


def disc(centre_x, centre_y, radius):
    """Covers a circle given in pixels of the finished picture."""
    # Twice the size, so that the middle of a pixel is a whole number.
    middle_x, middle_y = 2 * SCALE * centre_x, 2 * SCALE * centre_y
    limit = (2 * SCALE * radius) ** 2
    return lambda x, y: (2 * x + 1 - middle_x) ** 2 + (2 * y + 1 - middle_y) ** 2 <= limit


def line(start, end, width):
    """Covers a straight line with round ends."""
    steps = SCALE * max(abs(end[0] - start[0]), abs(end[1] - start[1]))
    reach = (SCALE * width) ** 2
    points = [
        tuple(2 * SCALE * a + 2 * SCALE * (b - a) * step // steps for a, b in zip(start, end))
        for step in range(steps + 1)
    ]
    return lambda x, y: any(
        (2 * x + 1 - px) ** 2 + (2 * y + 1 - py) ** 2 <= reach for px, py in points
    )


def transmitter(picture, colours):
    outline = colours["outline"]
    picture.paint(box(1, 23, 27, 30), outline)
    picture.paint(box(0, 22, 4, 31), outline)
    picture.paint(box(24, 22, 28, 31), outline)
    picture.paint(box(4, 24, 24, 29), colours["pipe"])
    picture.paint(box(1, 23, 3, 30), colours["pipe"])
    picture.paint(box(25, 23, 27, 30), colours["pipe"])
    picture.paint(box(11, 18, 17, 24), outline)
    picture.paint(box(12, 18, 16, 24), colours["body"])
    picture.paint(disc(14, 11, 10), outline)
    picture.paint(disc(14, 11, 9), colours["body"])
    picture.paint(box(8, 7, 20, 14), outline)
    picture.paint(box(9, 8, 19, 13), colours["display"])
    for left in (10, 13, 16):
        picture.paint(box(left, 9, left + 2, 12), colours["digits"])


def badge(picture, colour):
    """The round sign at the lower right that carries the state."""
    picture.paint(disc(24, 24, 8), WHITE)
    picture.paint(disc(24, 24, 7), colour)


def connected():
    picture = blank(IN_COLOUR)
    badge(picture, GREEN)
    picture.paint(line((21, 24), (23, 26), 2), WHITE)
    picture.paint(line((23, 26), (27, 22), 2), WHITE)
    return picture


def not_connected():
    picture = blank(GREYED)
    badge(picture, RED)
    picture.paint(disc(24, 24, 5), WHITE)
    picture.paint(line((21, 21), (27, 27), 2), RED)
    return picture


def blank(colours):
    picture = Canvas(SIZE * SCALE, SIZE * SCALE)
    picture.fill(0, 0, picture.width, picture.height, WHITE)
    transmitter(picture, colours)
    return picture


def main():
    for name, picture in {"connected": connected(), "not_connected": not_connected()}.items():
        (HERE / f"{name}.bmp").write_bytes(bmp_bytes(picture.shrunk(SCALE)))


if __name__ == "__main__":
    main()
