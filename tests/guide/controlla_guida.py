#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""controlla_guida.py DOCS ZELTO_STAMPA ZELTO_BUILD_JOB: the figures of the guide's own building are those
that the program prints, and the guide's links and pictures lead somewhere."""

import pathlib
import re
import subprocess
import sys
import tempfile


def run(*command):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{command[0]}: {result.stderr}")
    return result.stdout


def printed_rows(stampa, job, folder):
    """The rows of the guide's tables, written as it writes them, and the amounts."""
    out = run(stampa, "--mostra", "--riparto", "1200", "--quote", "scala=A", "-u", folder, job)
    amounts = re.findall(r"^Int.* (\d+,\d\d)$", out, re.MULTILINE)
    run(stampa, "-u", folder, job)

    def fields(name):
        text = (folder / name).read_text(encoding="utf-8")
        return [[field.strip() for field in line.split("\t")] for line in text.splitlines()]
    rows = [(unit, total, share) for unit, _, total, share in fields("calcolo.out")]
    for row in fields("scale.out")[1:]:
        rows.append((row[0], row[3], "------" if float(row[5]) == 0 else row[5], row[6]))
    return rows, amounts


def missing_figures(guide, stampa, build):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        job = folder / "BETULLA.ZLT"
        run(build, pathlib.Path(__file__).parent / "palazzina_betulla", job)
        rows, amounts = printed_rows(stampa, job, folder)
        odd = [line for line in run(stampa, "--controllo", job).splitlines() if ": nota: " not in line]
    if len(rows) != 6 or len(amounts) != 3:
        sys.exit(f"{len(rows)} rows and {len(amounts)} amounts printed, 6 and 3 expected")
    if odd:
        sys.exit("something is odd in the building of the guide: " + odd[0])
    lines = ["| " + " | ".join(row) + " |" for row in rows]
    return [text for text in lines + amounts if text not in guide]


def anchor(heading):
    kept = [c for c in heading.lower() if c.isalnum() or c in "- "]
    return "".join(kept).replace(" ", "-")


def broken_links(guide, docs):
    anchors = {anchor(text) for text in re.findall(r"^#+ (.*)$", guide, re.MULTILINE)}
    for target in re.findall(r"\]\(([^)]*)\)", guide):
        found = target[1:] in anchors if target.startswith("#") else (docs / target).exists()
        if not found:
            yield target


def unused_pictures(guide, docs):
    readme = (docs / ".." / "README.md").read_text(encoding="utf-8")
    for picture in (docs / "immagini").iterdir():
        if f"immagini/{picture.name}" not in guide + readme:
            yield picture.name


def main():
    docs, stampa, build = map(pathlib.Path, sys.argv[1:])
    guide = (docs / "guida.md").read_text(encoding="utf-8")
    wrong = [f"not as printed: {text}" for text in missing_figures(guide, stampa, build)]
    wrong += [f"leads nowhere: {target}" for target in broken_links(guide, docs)]
    wrong += [f"shown nowhere: {name}" for name in unused_pictures(guide, docs)]
    if wrong:
        sys.exit("\n".join(wrong))


main()
