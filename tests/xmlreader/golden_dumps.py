#!/usr/bin/python3
"""Golden cases of the UI description reader.

Every NAME.xml in the case directory is dumped with `tesvorutil dump --json` and
compared with NAME.json beside it. The expected files are compact, so that they stay
short and a new member or section of the dump does not touch them:
- a top-level section that the dump leaves empty (null, {} or []) is left out;
- a record (control, window, font, text style, log font, footer) lists only the
  members that differ from its defaults, which defaults.json in the same directory
  holds. An object that has all the members of a record there is taken for one.
Key order counts: the dump keeps document order where the reader does.

Adding a case: write NAME.xml, run with --update and the case's name to write
NAME.json, read it through, and commit both:
    tests/xmlreader/golden_dumps.py --update scripts/wine-run build build/bin/tesvorutil.exe \\
        tests/data/xmlreader/golden NAME
usage: golden_dumps.py [--update] WINE_RUN BUILD_DIR TOOL CASE_DIR [NAME...]
"""
import difflib
import json
import subprocess
import sys
from pathlib import Path


def compact(value, records):
    if isinstance(value, list):
        return [compact(v, records) for v in value]
    if not isinstance(value, dict):
        return value
    defaults = {}
    for record in records:
        if record.keys() <= value.keys():
            defaults.update(record)
    return {k: compact(v, records) for k, v in value.items() if k not in defaults or defaults[k] != v}


def members(value):
    return value.values() if isinstance(value, dict) else value if isinstance(value, list) else ()


def formatted(value, indent=""):
    """JSON one member a line, but a record of plain values and number lists stays on one line."""
    if not any(isinstance(m, dict) or any(isinstance(n, (dict, list)) for n in members(m)) for m in members(value)):
        return json.dumps(value, ensure_ascii=False)
    inner = indent + "  "
    if isinstance(value, dict):
        lines = [f"{inner}{json.dumps(k, ensure_ascii=False)}: {formatted(v, inner)}" for k, v in value.items()]
        return "{\n" + ",\n".join(lines) + "\n" + indent + "}"
    return "[\n" + ",\n".join(inner + formatted(v, inner) for v in value) + "\n" + indent + "]"


def dump(wine_run, build_dir, tool, xml, records):
    windows_path = "Z:" + str(xml.resolve()).replace("/", "\\")
    run = subprocess.run([wine_run, "--build-dir", build_dir, tool, "dump", windows_path, "--json"],
                         capture_output=True)
    if run.returncode != 0:
        raise RuntimeError(f"dump exited with {run.returncode}: {run.stderr.decode('utf-8', 'replace')}")
    sections = json.loads(run.stdout.decode("utf-8"))
    return formatted(compact({k: v for k, v in sections.items() if v not in (None, {}, [])}, records))


def main(args):
    update = args[:1] == ["--update"]
    wine_run, build_dir, tool, case_dir, *names = args[1:] if update else args
    case_dir = Path(case_dir)
    records = list(json.loads((case_dir / "defaults.json").read_text(encoding="utf-8")).values())
    cases = [case_dir / f"{n}.xml" for n in names] or sorted(case_dir.glob("*.xml"))
    failures = 0
    for xml in cases:
        actual = dump(wine_run, build_dir, tool, xml, records)
        expected_file = xml.with_suffix(".json")
        if update:
            expected_file.write_text(actual + "\n", encoding="utf-8")
            print(f"written: {expected_file.name}")
            continue
        expected = formatted(json.loads(expected_file.read_text(encoding="utf-8")))
        if actual == expected:
            print(f"ok:   {xml.name}")
        else:
            failures += 1
            print(f"FAIL: {xml.name}")
            sys.stdout.writelines(difflib.unified_diff(expected.splitlines(True), actual.splitlines(True),
                                                       expected_file.name, "dump"))
            print()
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
