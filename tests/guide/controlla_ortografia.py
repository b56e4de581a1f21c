#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""controlla_ortografia.py ROOT: spells what the user can read: the texts in src/, the delivered data, the
guide, the manual pages. Words that the Italian dictionary does not have are in parole.txt."""

import pathlib
import re
import subprocess
import sys

LITERAL = r'(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*"'
NEIGHBOURS = re.compile(rf"{LITERAL}(?:\s*{LITERAL})*")
NO_TEXT = re.compile(r"\b(SELECT|IS|INSERT|UPDATE|DELETE|CREATE|DROP|PRAGMA|VACUUM|WHERE|ORDER BY|VALUES|BETWEEN|CHECK|"
                     r"NULL|COLLATE|TEXT|WITHOUT ROWID|LIMIT|WHEN|AND|PRIMARY|instr|typeof|length|replace|startxref|yyyy|no such table)\b")
CAPTION = re.compile(r"[A-ZÀ-Ú&][a-zà-ú&]+\Z")


def texts_of_source(path):
    """The string literals that read like Italian: several words, or one like a caption."""
    # What never gets to a user says in English what is wrong with some bytes.
    source = re.sub(r"//[^\n]*|^\s*#[^\n]*|BadBytes\([^)]*\)", "", path.read_text(encoding="utf-8"), flags=re.MULTILINE)
    for found in NEIGHBOURS.finditer(source):
        pieces = re.findall(r'"((?:[^"\\\n]|\\.)*)"', found.group())
        text = "".join(pieces).replace('\\"', '"').replace("\\n", "\n").replace("\\t", " ")
        if not NO_TEXT.search(text) and (" " in text.strip() or CAPTION.match(text)):
            yield re.sub(r"%L?\d+|<[^>]*>|\\x..|https?://\S+", " ", text.replace("&&", " ").replace("&", ""))


def texts_of_markdown(text):
    text = re.sub(r"```.*?```|^    .*$", "", text, flags=re.DOTALL | re.MULTILINE)
    return re.sub(r"`[^`]*`|\]\([^)]*\)|<[^>]*>", " ", text)


def texts_of_manual(text):
    text = re.sub(r'^\.\\".*$|^\.TH.*$|\\f.', "", text, flags=re.MULTILINE)
    text = re.sub(r"^\.[A-Z]{1,2}\b", "", text, flags=re.MULTILINE).replace("\\-", "-")
    return re.sub(r"--?[a-z-]+|\S*[/.~]\S*\w", " ", text)


def texts(root):
    for path in sorted((root / "src").rglob("*")):
        if path.suffix in (".cpp", ".h"):
            yield path, "\n".join(texts_of_source(path))
    for path in sorted([root / "data/coefficenti.txt", *(root / "data").glob("*/*.txt")]):
        lines = path.read_text(encoding="utf-8").splitlines()
        yield path, "\n".join(line for line in lines if not line.startswith("#"))
    yield root / "docs/guida.md", texts_of_markdown((root / "docs/guida.md").read_text(encoding="utf-8"))
    for path in sorted((root / "docs/man").glob("*.1")):
        yield path, texts_of_manual(path.read_text(encoding="utf-8"))


def unknown(text, words):
    checked = subprocess.run(["hunspell", "-d", "it_IT", "-p", words, "-i", "utf-8", "-l"],
                             input=text.replace("’", "'"), capture_output=True, text=True, check=True)
    return sorted(set(checked.stdout.split()))


def main():
    root = pathlib.Path(sys.argv[1])
    words = pathlib.Path(__file__).parent / "parole.txt"
    if "millesimmo" not in unknown("millesimmo", words):
        sys.exit("the dictionary knows everything")
    read = list(texts(root))
    if len(read) < 50:
        sys.exit(f"only {len(read)} files found")
    wrong = set(unknown("\n".join(text for _, text in read), words))
    for path, text in read:
        if found := wrong.intersection(re.findall(r"\w+", text)):
            print(f"{path.relative_to(root)}: {' '.join(sorted(found))}")
    sys.exit(f"unknown: {' '.join(sorted(wrong))}" if wrong else 0)


main()
