"""tesvorutil render: the pictures, read back with Pillow, and its answers to bad input.

    check_render.py WINE_RUN BUILD_DIR TESVORUTIL SOURCE_DIR
"""
import os
import re
import subprocess
import sys
import tempfile

from PIL import Image, ImageChops

wine_run, build_dir, tool, source_dir = sys.argv[1:5]
SAMPLE = os.path.join(source_dir, "samples", "settings-dialog.xml")
REFERENCE = os.path.join(source_dir, "docs", "preview-settings-dialog.png")
OUTLINE = (255, 0, 160)
failures = []


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def render(*args):
    result = subprocess.run([wine_run, "--build-dir", build_dir, tool, "render", *args],
                            capture_output=True, text=True)
    return result.returncode, result.stderr


def check(condition, what):
    print(("ok:   " if condition else "FAIL: ") + what)
    if not condition:
        failures.append(what)


def share_differing(image, box, colour):
    """The share of the pixels in box (left, top, right, bottom) that are not colour."""
    pixels = list(image.crop(box).getdata())
    return sum(1 for pixel in pixels if pixel != colour) / len(pixels)


with tempfile.TemporaryDirectory(dir=build_dir) as scratch:
    picture = os.path.join(scratch, "settings.png")
    code, err = render(windows_path(SAMPLE), "-o", windows_path(picture))
    check(code == 0 and "warning" not in err, f"settings sample renders without warnings ({code}: {err.strip()})")
    image = Image.open(picture).convert("RGB")
    # The help button shows the orange arrow of its icon, btn_help in samples/toolbar.bmp.
    check((240, 140, 20) in image.crop((14, 380, 42, 408)).getdata(), "the image button shows its icon")
    check(image.size == (560, 420), f"picture has the window's size ({image.size})")
    background = image.getpixel((4, 4))
    # OK button, proxy edit, tab bar box, language combo box.
    for box in [(360, 380, 450, 408), (24, 240, 404, 264), (10, 10, 550, 40), (24, 134, 284, 154)]:
        check(share_differing(image, box, background) > 0.05, f"control at {box} is drawn")
    reference = Image.open(REFERENCE).convert("RGB")
    difference = ImageChops.difference(image, reference).convert("L")
    changed = sum(1 for value in difference.getdata() if value > 48) / (560 * 420)
    check(reference.size == image.size and changed < 0.01, f"picture matches {REFERENCE} ({changed:.2%} differ)")

    outlined = os.path.join(scratch, "outlined.png")
    code, _ = render(windows_path(SAMPLE), "-o", windows_path(outlined), "--size", "800x500", "--outline")
    image = Image.open(outlined).convert("RGB")
    check(code == 0 and image.size == (800, 500), f"--size 800x500 gives that size ({image.size})")
    # The OK button, anchored bottom-right, moved by the growth (240, 80).
    check(image.getpixel((600, 460)) == OUTLINE and image.getpixel((360, 380)) != OUTLINE,
          "--outline frames the moved OK button")

    malformed = os.path.join(scratch, "malformed.xml")
    with open(malformed, "w") as out:
        out.write('<root>\n  <window rectex="0,0,10,10">\n</root>\n')
    empty = os.path.join(scratch, "empty.xml")
    with open(empty, "w") as out:
        out.write("<root><fontschema/></root>\n")
    png = windows_path(os.path.join(scratch, "bad.png"))
    for args, want_code, want_text in [
        ([windows_path(malformed), "-o", png], 1, r"malformed\.xml:3:\d+: error:"),
        ([windows_path(empty), "-o", png], 1, "has no window"),
        ([windows_path(SAMPLE), "-o", png, "--size", "0x300"], 1, "must be 1 to 8192"),
        ([windows_path(SAMPLE), "-o", png, "--size", "100000x300"], 1, "must be 1 to 8192"),
        ([windows_path(SAMPLE), "-o", png, "--size", "300x200"], 0, "shown at 420x320"),
        ([windows_path(SAMPLE), "-o", png, "--size", "wide"], 2, "usage: tesvorutil render"),
        ([windows_path(SAMPLE)], 2, "usage: tesvorutil render"),
    ]:
        code, err = render(*args)
        check(code == want_code and re.search(want_text, err) is not None, f"render {' '.join(args[-2:])} -> {code} ({err.strip()})")

print(f"{len(failures)} failed" if failures else "all passed")
sys.exit(1 if failures else 0)
