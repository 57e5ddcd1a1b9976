#!/usr/bin/python3
"""Checks docs/format.md against the format description (`tesvorutil format
--json`, run by the command given after the document's path).

Every element needs a section whose heading names one of its paths in
backticks (`root/window/control`); its table lists exactly the element's own
attributes (a base element's come from the base's section) with their syntax
(`keyword NAME` for keywords) and default ("(empty)" for none). Every keyword
table needs a section headed "`NAME` keywords" listing exactly its keywords with
their values. A path in a heading that the format does not have is an error too."""
import json
import re
import subprocess
import sys


def sections(text):
    """(heading, rows) in document order; rows are the cells of table lines whose
    first cell is in backticks, so header and separator lines drop out."""
    found = []
    for line in text.splitlines():
        if line.startswith("#"):
            found.append((line, []))
        elif line.startswith("|") and found:
            cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
            if cells[0].startswith("`"):
                found[-1][1].append([cell.replace("`", "") for cell in cells])
    return found


def elements(element, path, out):
    out.append((path, element))
    for child in element["children"]:
        elements(child, path + "/" + child["name"], out)


def main():
    doc = sections(open(sys.argv[1], encoding="utf-8").read())
    described = json.loads(subprocess.run(sys.argv[2:] + ["format", "--json"], check=True,
                                          capture_output=True).stdout.decode("utf-8"))
    found = []
    elements(described["root"], "root", found)
    errors = []

    by_name = {element["name"]: element for _, element in found}
    for path, element in found:
        rows = next((r for h, r in doc if "`%s`" % path in h), None)
        if rows is None and all("`%s`" % p not in h for h, _ in doc for p, e in found if e == element):
            errors.append("%s: no section" % path)
            continue
        if rows is None:
            continue  # described under another of its paths
        own = element["attributes"][len(by_name[element["base"]]["attributes"]) if "base" in element else 0:]
        documented = {row[0]: row for row in rows}
        for attribute in own:
            row = documented.pop(attribute["name"], None)
            syntax = attribute["syntax"] + (" " + attribute["keywords"] if "keywords" in attribute else "")
            default = attribute["default"] or "(empty)"
            if row is None:
                errors.append("%s: attribute %s is not documented" % (path, attribute["name"]))
            elif row[1:3] != [syntax, default]:
                errors.append("%s: %s documented as %s, described as %s" % (path, row[0], row[1:3], [syntax, default]))
        errors += ["%s: %s is documented but not read" % (path, name) for name in documented]

    for name, table in described["keywordTables"].items():
        rows = next((r for h, r in doc if "`%s` keywords" % name in h), None)
        documented = {row[0]: row[1] for row in rows or []}
        expected = {keyword: str(value) for keyword, value in table["keywords"].items()}
        if documented != expected:
            errors.append("keywords %s: documented %s, described %s" % (name, documented, expected))

    paths = {path for path, _ in found}
    for heading, _ in doc:
        errors += ["heading names %s, which the format does not have" % p
                   for p in re.findall(r"`(root(?:/\w+)*)`", heading) if p not in paths]
    for error in errors:
        print(error)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
