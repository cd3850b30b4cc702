#!/usr/bin/env python3
"""Draws the icons of the tree of folders: 16 x 16 pixels, those of shortcuts with an arrow."""

import pathlib
import struct

SIZE = 16
INK, WHITE, BLUE = 0x333333, 0xFFFFFF, 0x0066CC


class Canvas:
    def __init__(self):
        self.pixels = [[None] * SIZE for _ in range(SIZE)]

    def fill(self, left, top, right, bottom, colour):
        """Both corners belong to the area."""
        for y in range(top, bottom + 1):
            for x in range(left, right + 1):
                self.pixels[y][x] = colour

    def box(self, left, top, right, bottom, colour, edge=INK):
        self.fill(left, top, right, bottom, edge)
        self.fill(left + 1, top + 1, right - 1, bottom - 1, colour)

    def disc(self, radius, colour):
        middle = (SIZE - 1) / 2
        for y in range(SIZE):
            for x in range(SIZE):
                if (x - middle) ** 2 + (y - middle) ** 2 <= radius**2:
                    self.pixels[y][x] = colour

    def arrow(self):
        self.box(0, 8, 7, 15, WHITE, 0x999999)
        self.fill(2, 12, 3, 13, BLUE)
        self.fill(2, 11, 4, 12, BLUE)
        self.fill(3, 10, 5, 10, BLUE)
        self.fill(5, 10, 5, 12, BLUE)
        self.fill(4, 11, 5, 11, BLUE)

    def icon(self):
        image, mask = b"", b""
        for row in reversed(self.pixels):
            bits = 0
            for colour in row:
                image += struct.pack("<I", 0 if colour is None else 0xFF000000 | colour)
                bits = bits << 1 | (colour is None)
            mask += struct.pack(">HH", bits, 0)
        header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 32, 0, 0, 0, 0, 0, 0)
        data = header + image + mask
        entry = struct.pack("<BBBBHHII", SIZE, SIZE, 0, 0, 1, 32, len(data), 22)
        return struct.pack("<HHH", 0, 1, 1) + entry + data


def folder(c):
    c.fill(1, 3, 6, 5, 0xCC9933)
    c.box(1, 5, 14, 13, 0xFFCC66, 0xCC9933)


def open_folder(c):
    c.fill(1, 3, 6, 5, 0xCC9933)
    c.box(1, 5, 12, 13, 0xFFFFCC, 0xCC9933)
    for y in range(8, 14):
        shift = (13 - y) // 2
        c.fill(1 + shift, y, 13 + shift, y, 0xFFCC66)
    c.fill(1, 13, 13, 13, 0xCC9933)


def drive(c):
    c.fill(3, 6, 12, 7, 0xCCCCCC)
    c.box(1, 8, 14, 12, 0x999999)
    c.fill(11, 10, 12, 10, 0x00CC00)


def cd(c):
    c.disc(7, 0x999999)
    c.disc(6.2, 0xCCCCFF)
    c.disc(2.5, 0x999999)
    c.disc(1.5, WHITE)


def removable(c):
    c.box(2, 2, 13, 13, 0x3366CC)
    c.fill(5, 3, 10, 6, 0xCCCCCC)
    c.fill(4, 9, 11, 12, WHITE)
    c.fill(6, 10, 9, 10, 0x999999)


def network(c):
    c.fill(3, 2, 12, 3, 0xCCCCCC)
    c.box(1, 4, 14, 8, 0x999999)
    c.fill(11, 6, 12, 6, 0x00CC00)
    c.fill(7, 9, 8, 11, INK)
    c.fill(1, 12, 14, 13, INK)
    c.fill(6, 11, 9, 14, BLUE)


def documents(c):
    c.box(3, 1, 12, 14, WHITE)
    for y in (4, 6, 8, 10):
        c.fill(5, y, 10, y, 0x6699CC)


def pictures(c):
    c.box(1, 3, 14, 12, 0x99CCFF)
    c.fill(10, 5, 11, 6, 0xFFCC00)
    for y in range(7, 12):
        c.fill(max(2, 11 - y), y, y, y, 0x009933)


def desktop(c):
    c.box(1, 2, 14, 11, BLUE)
    c.fill(3, 4, 5, 5, WHITE)
    c.fill(6, 12, 9, 13, 0x999999)
    c.fill(4, 14, 11, 14, INK)


def main():
    place = pathlib.Path(__file__).parent
    for draw in (folder, open_folder, drive, cd, removable, network, documents, pictures, desktop):
        for is_shortcut in (False, True):
            canvas = Canvas()
            draw(canvas)
            if is_shortcut:
                canvas.arrow()
            name = draw.__name__.replace("_", "-") + ("-shortcut" if is_shortcut else "")
            (place / f"{name}.ico").write_bytes(canvas.icon())


main()
