#!/usr/bin/env python3
"""Turns the text-art pictures of this folder into Windows bitmaps.

Each picture is a file NUMBER-name.txt of 16 lines of 16 palette characters; NUMBER is the
picture's resource number. The palette below is the only place that says which character is
which colour. Every picture is checked before anything is written: a file of the wrong size, with
an unknown character or with a number another file already has is named with its line, nothing
is written and the exit code is 1.

    make_bitmaps.py [--out DIR] [--rc FILE] [--sheet PNG] [ART ...]

--out writes DIR/NUMBER-name.bmp for each picture (24-bit, uncompressed, bottom-up rows);
--rc writes a resource script fragment, one `NUMBER BITMAP "DIR/NUMBER-name.bmp"` line each
(needs --out); --sheet writes a PNG contact sheet of all pictures, 4 times their size, with
their numbers. Without ART files every *.txt of this folder is read. Without options the
pictures are only checked.
"""

import argparse
import os
import re
import struct
import sys
import tempfile
import zlib

SIZE = 16
MASK = (0xFF, 0x00, 0xFF)

# The palette: one character per colour, (red, green, blue). "." is the mask colour the views
# make transparent; everything else is drawn as it is.
PALETTE = {
    ".": MASK,
    "K": (0x20, 0x20, 0x20),  # outline black
    "D": (0x60, 0x60, 0x60),  # dark grey
    "G": (0x90, 0x90, 0x90),  # grey
    "L": (0xC8, 0xC8, 0xC8),  # light grey
    "l": (0xE8, 0xE8, 0xE8),  # pale grey
    "W": (0xFF, 0xFF, 0xFF),  # white
    "Y": (0xF5, 0xC8, 0x42),  # folder yellow
    "y": (0xFF, 0xE8, 0x9A),  # pale yellow, the lit edge of a folder
    "O": (0xB0, 0x80, 0x18),  # ochre, a folder's outline and shade
    "R": (0xE0, 0x28, 0x28),  # red
    "r": (0x90, 0x10, 0x10),  # dark red
    "N": (0x2C, 0xB0, 0x3C),  # green
    "n": (0x14, 0x6C, 0x1E),  # dark green
    "B": (0x30, 0x70, 0xD8),  # blue
    "b": (0x9C, 0xC8, 0xF4),  # light blue
    "A": (0x18, 0x34, 0x80),  # navy
    "S": (0xF4, 0xC8, 0xA0),  # skin
    "s": (0xC8, 0x90, 0x68),  # skin shade
    "H": (0x6A, 0x40, 0x20),  # hair brown
}

NAME_PATTERN = re.compile(r"^(\d+)-[a-z0-9-]+\.txt$")


class ArtError(Exception):
    pass


class Picture:
    def __init__(self, path, number, rows):
        self.path = path
        self.number = number
        self.rows = rows  # SIZE rows of SIZE (r, g, b), top row first

    @property
    def stem(self):
        return os.path.splitext(os.path.basename(self.path))[0]


def read_picture(path):
    """Reads one text-art file; raises ArtError naming the file (and line) of the first fault."""
    match = NAME_PATTERN.match(os.path.basename(path))
    if not match:
        raise ArtError(f"{path}: the name must be NUMBER-name.txt (lower case, digits, '-')")
    try:
        with open(path, encoding="utf-8", newline="") as art:
            text = art.read()
    except (OSError, UnicodeDecodeError) as error:
        raise ArtError(f"{path}: cannot be read: {error}")
    lines = text.split("\n")
    if lines and lines[-1] == "":
        lines.pop()  # the newline that ends the last line
    rows = []
    for index, line in enumerate(lines, start=1):
        line = line.removesuffix("\r")
        if index > SIZE:
            raise ArtError(f"{path}:{index}: more than {SIZE} lines")
        if len(line) != SIZE:
            raise ArtError(f"{path}:{index}: {len(line)} characters, not {SIZE}")
        for column, char in enumerate(line, start=1):
            if char not in PALETTE:
                raise ArtError(f"{path}:{index}:{column}: '{char}' is not in the palette")
        rows.append([PALETTE[char] for char in line])
    if len(rows) != SIZE:
        raise ArtError(f"{path}:{len(rows) + 1}: {len(rows)} lines, not {SIZE}")
    return Picture(path, int(match.group(1)), rows)


def read_pictures(paths):
    """Reads every file; returns the pictures by number and the messages of all faults."""
    pictures, errors, first_path = [], [], {}
    for path in paths:
        try:
            picture = read_picture(path)
        except ArtError as error:
            errors.append(str(error))
            continue
        if picture.number in first_path:
            taken_by = first_path[picture.number]
            errors.append(f"{path}: number {picture.number} is taken by {taken_by}")
            continue
        first_path[picture.number] = path
        pictures.append(picture)
    return sorted(pictures, key=lambda picture: picture.number), errors


def bmp_bytes(picture):
    """A 24-bit BI_RGB bitmap with a BITMAPINFOHEADER: rows bottom-up, blue-green-red, each
    padded to a multiple of 4 bytes."""
    row_size = (SIZE * 3 + 3) // 4 * 4
    pixels = bytearray()
    for row in reversed(picture.rows):
        for red, green, blue in row:
            pixels += bytes((blue, green, red))
        pixels += bytes(row_size - SIZE * 3)
    header_size = 14 + 40
    file_header = struct.pack("<2sIHHI", b"BM", header_size + len(pixels), 0, 0, header_size)
    # 2835 pixels per metre is 72 dots per inch.
    info_header = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 24, 0, len(pixels), 2835, 2835,
                              0, 0)
    return file_header + info_header + bytes(pixels)


# Digits of the contact sheet's labels, 3 by 5 dots each.
DIGITS = {
    "0": ["###", "#.#", "#.#", "#.#", "###"],
    "1": [".#.", "##.", ".#.", ".#.", "###"],
    "2": ["###", "..#", "###", "#..", "###"],
    "3": ["###", "..#", ".##", "..#", "###"],
    "4": ["#.#", "#.#", "###", "..#", "..#"],
    "5": ["###", "#..", "###", "..#", "###"],
    "6": ["###", "#..", "###", "#.#", "###"],
    "7": ["###", "..#", ".#.", ".#.", ".#."],
    "8": ["###", "#.#", "###", "#.#", "###"],
    "9": ["###", "#.#", "###", "..#", "###"],
}


def sheet_png(pictures, scale=4, columns=8):
    """A PNG of all pictures on white: each scaled, with its real size and its number below."""
    big = SIZE * scale
    cell_width, cell_height = big + 16, big + SIZE + 16
    rows = (len(pictures) + columns - 1) // columns
    width, height = columns * cell_width + 8, rows * cell_height + 8
    canvas = [[(0xFF, 0xFF, 0xFF)] * width for _ in range(height)]

    def put(x, y, colour):
        if colour != MASK:
            canvas[y][x] = colour

    for index, picture in enumerate(pictures):
        left = 8 + index % columns * cell_width
        top = 8 + index // columns * cell_height
        for y in range(big):
            for x in range(big):
                put(left + x, top + y, picture.rows[y // scale][x // scale])
        for y in range(SIZE):
            for x in range(SIZE):
                put(left + x, top + big + 4 + y, picture.rows[y][x])
        for place, digit in enumerate(str(picture.number)):
            for y, line in enumerate(DIGITS[digit]):
                for x, dot in enumerate(line):
                    if dot == "#":
                        for dy in range(2):
                            for dx in range(2):
                                put(left + SIZE + 8 + place * 8 + x * 2 + dx,
                                    top + big + 7 + y * 2 + dy, (0, 0, 0))

    raw = bytearray()
    for line in canvas:
        raw.append(0)  # no filter
        for colour in line:
            raw += bytes(colour)

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)  # 8-bit RGB
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


def write_whole(path, data):
    """Writes a file whole or not at all: a failed write leaves any old file as it was."""
    folder = os.path.dirname(os.path.abspath(path))
    os.makedirs(folder, exist_ok=True)
    handle, temporary = tempfile.mkstemp(dir=folder, prefix=".bitmap-")
    try:
        with os.fdopen(handle, "wb") as out:
            out.write(data)
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise


def rc_text(pictures, out_dir):
    lines = ["// Written by ui/bitmaps/make_bitmaps.py from ui/bitmaps/*.txt; do not edit.\n"]
    for picture in pictures:
        bmp = os.path.abspath(os.path.join(out_dir, picture.stem + ".bmp")).replace("\\", "/")
        lines.append(f'{picture.number} BITMAP "{bmp}"\n')
    return "".join(lines).encode("utf-8")


def main(argv):
    parser = argparse.ArgumentParser(description="Turns text-art pictures into Windows bitmaps.")
    parser.add_argument("--out", help="folder for the .bmp files")
    parser.add_argument("--rc", help="resource script fragment to write (needs --out)")
    parser.add_argument("--sheet", help="PNG contact sheet to write")
    parser.add_argument("art", nargs="*", help="text-art files (default: *.txt of this folder)")
    options = parser.parse_args(argv)
    if options.rc and not options.out:
        parser.error("--rc needs --out")
    paths = options.art
    if not paths:
        here = os.path.dirname(os.path.abspath(__file__))
        paths = sorted(os.path.join(here, name) for name in os.listdir(here)
                       if name.endswith(".txt"))
    pictures, errors = read_pictures(paths)
    if errors:
        for error in errors:
            print(f"make_bitmaps: {error}", file=sys.stderr)
        return 1
    try:
        if options.out:
            for picture in pictures:
                write_whole(os.path.join(options.out, picture.stem + ".bmp"), bmp_bytes(picture))
        if options.rc:
            write_whole(options.rc, rc_text(pictures, options.out))
        if options.sheet:
            write_whole(options.sheet, sheet_png(pictures))
    except OSError as error:
        print(f"make_bitmaps: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
