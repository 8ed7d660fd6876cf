#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Draws the flags of the six languages: flag_<name>.bmp (24x16) and flag_<name>.ico (32x32, 16x16).

Run without arguments after changing a flag; the files are written beside this script.
"""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(HERE.parent / "pictures"))

from canvas import Canvas, bmp_bytes, ico_bytes  # noqa: E402

WHITE = (255, 255, 255)
OUTLINE = (96, 96, 96)


def bands(length):
    """Three bands of a length, the outer two alike: their start and end positions."""
    outer = (length + 1) // 3
    return [(0, outer), (outer, length - outer), (length - outer, length)]


def horizontal(*colours):
    def draw(flag):
        for colour, (top, bottom) in zip(colours, bands(flag.height)):
            flag.fill(0, top, flag.width, bottom, colour)

    return draw


def vertical(*colours):
    def draw(flag):
        for colour, (left, right) in zip(colours, bands(flag.width)):
            flag.fill(left, 0, right, flag.height, colour)

    return draw


def stars_and_stripes(flag):
    red, blue = (191, 30, 46), (38, 48, 110)
    # Thirteen stripes would blur at these sizes: as many as keep all of them equally high.
    stripe = max(1, flag.height // 7)
    for top in range(0, flag.height, stripe):
        flag.fill(0, top, flag.width, top + stripe, WHITE if top // stripe % 2 else red)
    canton_width = flag.width * 9 // 20 | 1
    canton_height = (flag.height // stripe // 2 + 1) * stripe
    flag.fill(0, 0, canton_width, canton_height, blue)
    flag.paint(
        # A dot for a star, every other row shifted by half the distance.
        lambda x, y: x < canton_width - 1 and y < canton_height - 1 and y % 2 and x % 4 == y % 4,
        WHITE,
    )


FLAGS = {
    "us": stars_and_stripes,
    "hu": horizontal((206, 41, 57), WHITE, (71, 112, 80)),
    "de": horizontal((0, 0, 0), (221, 0, 0), (255, 206, 0)),
    "it": vertical((0, 146, 70), WHITE, (206, 43, 55)),
    "fr": vertical((0, 85, 164), WHITE, (239, 65, 53)),
    "nl": horizontal((174, 28, 40), WHITE, (33, 70, 139)),
}


def outlined(draw, width, height):
    """The flag in a thin outline, without which white bands are lost on a white window."""
    cloth = Canvas(width - 2, height - 2)
    draw(cloth)
    flag = Canvas(width, height)
    flag.fill(0, 0, width, height, OUTLINE)
    flag.place(cloth, 1, 1)
    return flag


def centred(flag, size):
    """The flag on a transparent square."""
    square = Canvas(size, size)
    square.place(flag, (size - flag.width) // 2, (size - flag.height) // 2)
    return square


def main():
    for name, draw in FLAGS.items():
        (HERE / f"flag_{name}.bmp").write_bytes(bmp_bytes(outlined(draw, 24, 16)))
        large = centred(outlined(draw, 32, 23), 32)
        small = centred(outlined(draw, 16, 11), 16)
        (HERE / f"flag_{name}.ico").write_bytes(ico_bytes([large, small]))


if __name__ == "__main__":
    main()
