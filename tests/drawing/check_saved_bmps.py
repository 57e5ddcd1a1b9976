#!/usr/bin/python3
"""Decodes the BMP files that drawing_tests saved, with Pillow, and checks their
size, bit depth, colour table and pixels against the pattern the tests painted:
row 0 green; below it red in columns 0-2 and blue in the rest."""
import struct
import sys
from pathlib import Path

from PIL import Image

RED, GREEN, BLUE = (255, 0, 0), (0, 255, 0), (0, 0, 255)


def expected(x, y):
    if y == 0:
        return GREEN
    return RED if x < 3 else BLUE


def check(path, bits, colours):
    raw = path.read_bytes()
    magic, file_size, _, _, offset = struct.unpack_from("<2sIHHI", raw, 0)
    header_size, width, height, planes, bit_count = struct.unpack_from("<IiiHH", raw, 14)
    errors = []
    if magic != b"BM" or file_size != len(raw):
        errors.append(f"file header {magic!r} size {file_size} of {len(raw)}")
    if (header_size, bit_count, planes) != (40, bits, 1):
        errors.append(f"header {header_size} bits {bit_count} planes {planes}")
    table = (offset - 14 - header_size) // 4
    if table != colours:
        errors.append(f"colour table of {table} entries, expected {colours}")
    with Image.open(path) as image:
        if image.size != (7, 5):
            errors.append(f"size {image.size}")
        if bits == 8:
            if image.mode != "P" or len(image.getpalette()) // 3 != colours:
                errors.append(f"mode {image.mode} palette {len(image.getpalette() or []) // 3}")
        elif image.mode != "RGB":
            errors.append(f"mode {image.mode}")
        rgb = image.convert("RGB")
        for y in range(5):
            for x in range(7):
                if rgb.getpixel((x, y)) != expected(x, y):
                    errors.append(f"pixel {x},{y} is {rgb.getpixel((x, y))}")
    for e in errors:
        print(f"{path.name}: {e}")
    return not errors


def main():
    out = Path(sys.argv[1])
    ok = check(out / "surface32.bmp", 24, 0)
    ok = check(out / "surface8.bmp", 8, 256) and ok
    print("saved BMP files decode as painted" if ok else "saved BMP files differ")
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
