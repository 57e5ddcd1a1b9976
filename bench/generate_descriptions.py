#!/usr/bin/env python3
"""Writes UI descriptions of growing size for the reader benchmark.

    generate_descriptions.py OUTDIR [COUNT...]     (default counts: 100 1000 10000)

Each description OUTDIR/controls-COUNT.xml holds a window with COUNT controls (every
control attribute set, a font child with textstyle and logfont), COUNT font schemas,
COUNT control schemas and a string table of COUNT entries.
"""
import os
import sys

TYPES = ["button", "edit", "static", "checkbox", "combobox", "listview", "slider", "imagebutton"]
STATES = ["normal", "focus", "pressed", "mouseover", "disabled"]
EFFECTS = ["no", "sh", "ssh", "gl"]
FLAGS = ["tl", "tc", "tr", "cl", "c", "cr", "bl", "bc", "br"]
WEIGHTS = ["normal", "bold", "semibold", "light", "550"]


def font(i, indent, schema=""):
    return (
        f'{indent}<font schema="{schema}" schemaonly="0">\n'
        f'{indent}  <textstyle ellipsis="{i % 2}" righttoleft="0" argbeffectcolor="{i % 256},20,30,128" '
        f'rgbtextcolor="10,{i % 256},30" textflags="{FLAGS[i % len(FLAGS)]}" texteffect="{EFFECTS[i % len(EFFECTS)]}"/>\n'
        f'{indent}  <logfont height="-{11 + i % 8}" width="0" escapement="0" orientation="0" italic="{i % 2}" '
        f'underline="0" strikeout="0" facename="Segoe UI" weight="{WEIGHTS[i % len(WEIGHTS)]}" charset="default" '
        f'outprecision="tt" clipprecision="default" quality="antialiased" pitch="variable" family="swiss"/>\n'
        f'{indent}</font>\n')


def control(i, indent, schema=""):
    x, y = (i % 40) * 24, (i // 40) * 20
    anchors = f'anchorsv="0,0,{i % 101},100"' if i % 2 else 'anchorss="lcrc"'
    return (
        f'{indent}<control schema="{schema}" ids="IDC_CONTROL_{i}" idv="{1000 + i}" enabled="1" '
        f'tooltip="Tooltip of control {i}" tooltipid="{20000 + i}" text="Control {i}" textid="{30000 + i}" '
        f'rect="{x},{y},{x + 20},{y + 16}" rectex="{x},{y},20,16" visible="1" st="{i}" stex="{i * 2}" '
        f'skinobjname="skin_{i}" actualsize="{i % 2}" type="{TYPES[i % len(TYPES)]}" '
        f'state="{STATES[i % len(STATES)]}" windowless="{i % 2}" autoskin="1" {anchors} '
        f'cxmin="10" cymin="10" cxmax="800" cymax="600" additional="extra {i}">\n'
        + font(i, indent + "  ") +
        f'{indent}</control>\n')


def write(path, count):
    parts = ['<?xml version="1.0" encoding="utf-8"?>\n<root>\n',
             '  <window type="window" ids="IDD_BENCH" idv="1" skinform="bench" move="xy" resize="wh" '
             'rectex="0,0,1024,768">\n']
    parts += [control(i, "    ") for i in range(count)]
    parts.append('    <footer status="Ready" statusid="1"/>\n  </window>\n  <fontschema>\n')
    parts += [font(i, "    ", f"font{i}") for i in range(count)]
    parts.append('  </fontschema>\n  <controlsschema>\n')
    parts += [control(i, "    ", f"control{i}").replace(f'type="{TYPES[i % len(TYPES)]}"', 'type="button"')
              for i in range(count)]
    parts.append('  </controlsschema>\n  <str_table>\n')
    parts += [f'    <entry id="IDS_STRING_{i}" text="String number {i} of the table"/>\n' for i in range(count)]
    parts.append('  </str_table>\n</root>\n')
    with open(path, "w", encoding="utf-8") as out:
        out.write("".join(parts))


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    outdir = sys.argv[1]
    counts = [int(c) for c in sys.argv[2:]] or [100, 1000, 10000]
    os.makedirs(outdir, exist_ok=True)
    for count in counts:
        write(os.path.join(outdir, f"controls-{count}.xml"), count)


if __name__ == "__main__":
    main()
