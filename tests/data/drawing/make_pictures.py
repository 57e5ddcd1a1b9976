#!/usr/bin/python3
"""Makes the small pictures the drawing tests load (run from this directory; the
outputs are checked in). Every picture is 8 by 6 pixels with one colour per
column, except the JPEG, which is lossy and so carries two flat halves, and
truncated.bmp, the first half of picture.bmp."""
import struct

from PIL import Image

WIDTH, HEIGHT = 8, 6


def column_colour(x):
    return (30 * x + 10, 200 - 20 * x, 40 + 25 * x)


def columns_image():
    image = Image.new("RGB", (WIDTH, HEIGHT))
    for x in range(WIDTH):
        for y in range(HEIGHT):
            image.putpixel((x, y), column_colour(x))
    return image


def write_ico(path, image, hotspot=None):
    """A one-image icon (or, with a hot spot, cursor) holding a 32-bit DIB and its
    AND mask (all opaque)."""
    w, h = image.size
    rows = []
    for y in reversed(range(h)):
        row = b"".join(bytes((b, g, r, 255)) for (r, g, b) in (image.getpixel((x, y)) for x in range(w)))
        rows.append(row)
    xor = b"".join(rows)
    mask_stride = ((w + 31) // 32) * 4
    mask = bytes(mask_stride * h)
    dib = struct.pack("<IiiHHIIiiII", 40, w, h * 2, 1, 32, 0, len(xor) + len(mask), 0, 0, 0, 0) + xor + mask
    kind, planes, bits = (1, 1, 32) if hotspot is None else (2, hotspot[0], hotspot[1])
    header = struct.pack("<HHH", 0, kind, 1)
    entry = struct.pack("<BBBBHHII", w, h, 0, 0, planes, bits, len(dib), 6 + 16)
    with open(path, "wb") as f:
        f.write(header + entry + dib)


def main():
    columns = columns_image()
    columns.save("picture.bmp")
    columns.convert("P", palette=Image.ADAPTIVE, colors=8).save("picture.gif")
    halves = Image.new("RGB", (16, 16), (255, 0, 0))
    halves.paste((0, 0, 255), (8, 0, 16, 16))
    halves.save("picture.jpg", quality=95)
    write_ico("picture.ico", columns)
    write_ico("picture.cur", columns, hotspot=(2, 3))
    with open("not-a-picture.bin", "wb") as f:
        f.write(b"These bytes are text, not any picture format at all.\n")
    with open("picture.bmp", "rb") as f:
        whole = f.read()
    with open("truncated.bmp", "wb") as f:
        f.write(whole[: len(whole) // 2])


if __name__ == "__main__":
    main()
