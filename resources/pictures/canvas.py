# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""A small picture in memory and the Windows file formats it is stored in.

Integer arithmetic only, so that a rerun on any machine gives the same bytes.
"""

import struct

OPAQUE = 255


class Canvas:
    """RGBA pixels, row 0 at the top; a new canvas is transparent black."""

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self.rows = [[(0, 0, 0, 0)] * width for _ in range(height)]

    def fill(self, left, top, right, bottom, colour):
        """Fills columns left..right-1 of rows top..bottom-1."""
        self.paint(lambda x, y: left <= x < right and top <= y < bottom, colour)

    def paint(self, covers, colour):
        """Colours every pixel for which covers(x, y) holds."""
        for y, row in enumerate(self.rows):
            for x in range(self.width):
                if covers(x, y):
                    row[x] = (*colour, OPAQUE)

    def place(self, other, left, top):
        """Copies another canvas, transparency included."""
        for y, row in enumerate(other.rows):
            self.rows[top + y][left : left + other.width] = row

    def shrunk(self, factor):
        """A copy in 1/factor of the size, every pixel the average of its square."""
        small = Canvas(self.width // factor, self.height // factor)
        count = factor * factor
        for y in range(small.height):
            for x in range(small.width):
                square = [
                    pixel
                    for row in self.rows[y * factor : (y + 1) * factor]
                    for pixel in row[x * factor : (x + 1) * factor]
                ]
                sums = [sum(channel) for channel in zip(*square)]
                small.rows[y][x] = tuple((total + count // 2) // count for total in sums)
        return small


def info_header(width, height, bits, size):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, size, 2835, 2835, 0, 0)


def bmp_bytes(canvas):
    """A 24-bit bitmap file; transparency is not kept."""
    padding = b"\0" * (-canvas.width * 3 % 4)
    pixels = b"".join(
        b"".join(bytes((b, g, r)) for r, g, b, _ in row) + padding
        for row in reversed(canvas.rows)
    )
    headers = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    return headers + info_header(canvas.width, canvas.height, 24, len(pixels)) + pixels


def icon_image(canvas):
    """One image of an icon file: 32-bit colours with alpha, then the mask of transparent pixels."""
    colours = b"".join(
        bytes((b, g, r, a)) for row in reversed(canvas.rows) for r, g, b, a in row
    )
    mask_width = (canvas.width + 31) // 32 * 32
    mask = b""
    for row in reversed(canvas.rows):
        bits = "".join("1" if a == 0 else "0" for _, _, _, a in row).ljust(mask_width, "0")
        mask += int(bits, 2).to_bytes(mask_width // 8, "big")
    # The header counts the rows of colours and mask together.
    header = info_header(canvas.width, canvas.height * 2, 32, len(colours) + len(mask))
    return header + colours + mask


def ico_bytes(canvases):
    """An icon file with one image for each canvas."""
    images = [icon_image(canvas) for canvas in canvases]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for canvas, image in zip(canvases, images):
        directory += struct.pack(
            "<BBBBHHII", canvas.width, canvas.height, 0, 0, 1, 32, len(image), offset
        )
        offset += len(image)
    return directory + b"".join(images)
