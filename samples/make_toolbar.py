#!/usr/bin/python3
"""Makes toolbar.bmp, the strip of images that settings-dialog.xml names in its
icons and cursors (run from this directory; the output is checked in): four
16-by-16 images side by side on magenta, the mask colour of the description."""
from PIL import Image, ImageDraw

SIZE, COUNT = 16, 4
MASK = (255, 0, 255)


def main():
    strip = Image.new("RGB", (SIZE * COUNT, SIZE), MASK)
    draw = ImageDraw.Draw(strip)
    # general: a blue square with a white bar
    draw.rectangle((2, 2, 13, 13), fill=(30, 90, 200))
    draw.rectangle((5, 7, 10, 8), fill=(255, 255, 255))
    # connection: a green ring
    x = SIZE
    draw.ellipse((x + 2, 2, x + 13, 13), outline=(20, 150, 60), width=3)
    # help: an orange arrow pointing right, so that a mirrored list shows it turned round
    x = 2 * SIZE
    draw.polygon([(x + 2, 5), (x + 8, 5), (x + 8, 1), (x + 14, 8), (x + 8, 14), (x + 8, 10), (x + 2, 10)],
                 fill=(240, 140, 20))
    # restart: a red diamond
    x = 3 * SIZE
    draw.polygon([(x + 8, 1), (x + 14, 8), (x + 8, 14), (x + 1, 8)], fill=(200, 30, 40))
    strip.save("toolbar.bmp")


if __name__ == "__main__":
    main()
