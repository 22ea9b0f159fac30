#!/usr/bin/env python3
"""The bitmap generator: every picture of ui/bitmaps comes out as the bitmap its text draws, and
a faulty picture is refused with its file and line, writing nothing."""

import os
import struct
import subprocess
import sys
import tempfile
import unittest

SCRIPT = sys.argv.pop(1)
sys.path.insert(0, os.path.dirname(SCRIPT))
import make_bitmaps  # noqa: E402

ART_DIR = os.path.dirname(SCRIPT)
GOOD_ROW = "." * 16 + "\n"


def run(out, *args):
    return subprocess.run([sys.executable, SCRIPT, "--out", out, "--rc", out + "/all.rc", *args],
                          capture_output=True, text=True)


class MakeBitmapsTest(unittest.TestCase):
    def test_every_picture_becomes_its_bitmap(self):
        with tempfile.TemporaryDirectory() as out:
            self.assertEqual(run(out).returncode, 0)
            arts = sorted(name for name in os.listdir(ART_DIR) if name.endswith(".txt"))
            with open(os.path.join(out, "all.rc")) as rc:
                entries = [line.split() for line in rc if not line.startswith("//")]
            self.assertEqual([number for number, _, _ in entries],
                             [name.split("-")[0] for name in arts])
            for name, (_, kind, path) in zip(arts, entries):
                self.assertEqual(kind, "BITMAP")
                with open(path.strip('"'), "rb") as bmp:
                    data = bmp.read()
                with open(os.path.join(ART_DIR, name)) as art:
                    rows = art.read().split()
                self.assertEqual(data[:2], b"BM")
                size, offset = struct.unpack_from("<I4xI", data, 2)
                header, width, height, planes, bits, compression = struct.unpack_from(
                    "<IiiHHI", data, 14)
                self.assertEqual((size, offset, header, width, height, planes, bits, compression),
                                 (len(data), 54, 40, 16, 16, 1, 24, 0), name)
                for y, row in enumerate(rows):  # the file's last row is the picture's top one
                    start = offset + (15 - y) * 48
                    pixels = [tuple(data[start + 3 * x + 2 - c] for c in range(3))
                              for x in range(16)]
                    self.assertEqual(pixels, [make_bitmaps.PALETTE[char] for char in row], name)

    def test_faulty_pictures_are_refused_naming_file_and_line(self):
        cases = [
            ("1-short-row.txt", GOOD_ROW * 3 + "." * 15 + "\n" + GOOD_ROW * 12,
             ":4: 15 characters"),
            ("2-long-row.txt", GOOD_ROW * 15 + "." * 17 + "\n", ":16: 17 characters"),
            ("3-few-rows.txt", GOOD_ROW * 15, ":16: 15 lines"),
            ("4-many-rows.txt", GOOD_ROW * 17, ":17: more than 16 lines"),
            ("5-unknown.txt", GOOD_ROW * 7 + "......?........." + "\n" + GOOD_ROW * 8,
             ":8:7: '?' is not in the palette"),
            ("no-number.txt", GOOD_ROW * 16, ": the name must be NUMBER-name.txt"),
            ("9-again.txt", GOOD_ROW * 16, ": number 9 is taken by"),
        ]
        for name, text, message in cases:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                good, bad = os.path.join(folder, "9-good.txt"), os.path.join(folder, name)
                for path, content in ((good, GOOD_ROW * 16), (bad, text)):
                    with open(path, "w") as art:
                        art.write(content)
                out = os.path.join(folder, "out")
                result = run(out, good, bad)
                self.assertEqual(result.returncode, 1)
                self.assertIn(name + message, result.stderr)
                self.assertFalse(os.path.exists(out), "nothing is written")


if __name__ == "__main__":
    unittest.main()
