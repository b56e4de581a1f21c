#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""copertura.py BUILD: how many lines of each folder of src/ the tests of a coverage build have run, against
the aims of 90 % for the core and 80 % for the screens, and the longest pieces that they have not."""

import json
import pathlib
import subprocess
import sys

CORE_AIM, SCREENS_AIM = 90, 80
SCREENS = ("widgets", "shell")
LONGEST = 5


def measured(build):
    """{file below src/: {line: times run}}"""
    root = pathlib.Path(__file__).resolve().parent.parent
    command = ["gcovr", "--root", root / "src", "--json", "--exclude-throw-branches",
               "--gcov-ignore-parse-errors", "-j2", build]
    report = json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)
    return {entry["file"]: {line["line_number"]: line["count"] for line in entry["lines"]
                            if not line["gcovr/noncode"]}
            for entry in report["files"]}


def pieces(lines):
    """Runs of measured lines without one that was run, as (length, first, last)."""
    run = []
    for number in sorted(lines):
        if lines[number] == 0:
            run.append(number)
            continue
        if run:
            yield len(run), run[0], run[-1]
        run = []
    if run:
        yield len(run), run[0], run[-1]


def aim_of(folder):
    return SCREENS_AIM if folder.endswith("/ui") or folder in SCREENS else CORE_AIM


def main():
    files = measured(pathlib.Path(sys.argv[1]).resolve())
    folders = {}
    for name, lines in files.items():
        run, total = folders.get(str(pathlib.Path(name).parent), (0, 0))
        ran = sum(count > 0 for count in lines.values())
        folders[str(pathlib.Path(name).parent)] = (run + ran, total + len(lines))
    print(f"{'folder':<18}{'lines':>7}{'run':>9}{'aim':>7}")
    for folder, (run, total) in sorted(folders.items()):
        share, aim = 100 * run / total, aim_of(folder)
        print(f"{folder:<18}{total:>7}{share:>8.1f}%{aim:>6}%{'' if share >= aim else '  missed'}")

    found = [(length, name, first, last) for name, lines in files.items()
             for length, first, last in pieces(lines)]
    print("\nLongest pieces that no test runs:")
    for length, name, first, last in sorted(found, reverse=True)[:LONGEST]:
        print(f"{length:>4} lines  src/{name}:{first}-{last}")
    missed = [folder for folder, (run, total) in folders.items() if 100 * run / total < aim_of(folder)]
    sys.exit(f"below the aim: {', '.join(missed)}" if missed else 0)


main()
