#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""controlla_fogli.py ZELTO_STAMPA JOB [--soffice]: exports the job's tables and compares workbook
and CSV files, cell by cell, with calcolo.out and scale.out. With --soffice, LibreOffice reads the
workbook as well, and its sheets are compared in the same way."""

import csv
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile
from xml.etree import ElementTree

SPREADSHEET = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATION = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id"
HEAD_ROW = 4
EVERY_SHEET_AS_SHOWN = "csv:Text - txt - csv (StarCalc):9,34,76,1,,0,false,true,true,false,false,-1"


def expected_tables(folder):
    """The rows of each table as the text outputs have them, fields without blanks around them."""
    def rows(name):
        lines = (folder / name).read_text(encoding="utf-8").splitlines()
        return [[field.strip() for field in line.split("\t")] for line in lines]
    tables = {"Millesimi generali": rows("calcolo.out")}
    for row in rows("scale.out"):
        if len(row) == 1:
            current = tables.setdefault(f"Scala {row[0]}", [])
        else:
            current.append(row)
    return tables


def same(field, cell):
    """A number is compared as one: the text outputs have a decimal point and all its places."""
    try:
        return float(field) == float(cell)
    except ValueError:
        return field == cell


def compare(source, name, rows, expected):
    """Units of other staircases are in the sheet, but not in the text output."""
    known = {(row[0], row[1]): row for row in rows}
    if len(rows) < len(expected):
        sys.exit(f"{source}, {name}: {len(rows)} rows, at least {len(expected)} expected")
    for row in expected:
        found = known.get((row[0], row[1]))
        # A unit without floor height has no index and no floor share in the table.
        blank = {4, 5} if len(row) == 7 and float(row[4]) == 0 else set()
        wrong = found is None or any(
            not same(field, cell) for place, (field, cell) in enumerate(zip(row, found))
            if place not in blank)
        if wrong:
            sys.exit(f"{source}, {name}: {found} instead of {row}")


def sheets_of(path):
    """Every sheet of a workbook as rows of (value, formula) from the heading on."""
    with zipfile.ZipFile(path) as archive:
        def tree(name):
            return ElementTree.fromstring(archive.read(name))
        strings = ["".join(t.text or "" for t in item.iter(SPREADSHEET + "t"))
                   for item in tree("xl/sharedStrings.xml")]
        targets = {relation.get("Id"): relation.get("Target")
                   for relation in tree("xl/_rels/workbook.xml.rels")}
        for sheet in tree("xl/workbook.xml").iter(SPREADSHEET + "sheet"):
            rows = []
            for row in tree("xl/" + targets[sheet.get(RELATION)]).iter(SPREADSHEET + "row"):
                if int(row.get("r")) < HEAD_ROW:
                    continue
                rows.append([cell_of(cell, strings) for cell in row])
            yield sheet.get("name"), rows


def cell_of(cell, strings):
    value, formula = cell.find(SPREADSHEET + "v"), cell.find(SPREADSHEET + "f")
    text = "" if value is None else value.text
    if cell.get("t") == "s":
        text = strings[int(text)]
    return text, None if formula is None else formula.text


def check_workbook(path, expected):
    found = {}
    for name, rows in sheets_of(path):
        units, totals = rows[1:-1], rows[-1]
        found[name] = [[value for value, _ in row] for row in units]
        sums = [(value, formula) for value, formula in totals if formula]
        if not sums or any(not re.fullmatch(rf"SUM\([A-Z]{HEAD_ROW + 1}:[A-Z]{HEAD_ROW + len(units)}\)",
                                            formula) for _, formula in sums):
            sys.exit(f"{name}: totals that are no sums: {totals}")
        if any(abs(float(value) - 1000) > 1e-6 for value, _ in sums):
            sys.exit(f"{name}: totals that are not 1000: {totals}")
    for name, rows in expected.items():
        compare("workbook", name, found[name], rows)


def check_csv(folder, expected, delimiter, comma, prefix="", encoding="utf-8-sig", skipped=1):
    for name, rows in expected.items():
        with open(folder / f"{prefix}{name}.csv", encoding=encoding, newline="") as file:
            lines = list(csv.reader(file, delimiter=delimiter))[skipped:]
        cells = [[cell.strip().replace(comma, ".") if re.fullmatch(r"[\d,.]+", cell.strip()) else cell.strip()
                  for cell in line] for line in lines]
        compare("CSV", name, cells, rows)


def main():
    program, job = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        subprocess.run([program, "-u", folder, "--xlsx", folder / "tabelle.xlsx", "--csv", folder / "csv", job],
                       check=True)
        expected = expected_tables(folder)
        check_workbook(folder / "tabelle.xlsx", expected)
        check_csv(folder / "csv", expected, ";", ",")
        if "--soffice" in sys.argv:
            subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profilo", "--headless",
                            "--convert-to", EVERY_SHEET_AS_SHOWN, "--outdir", folder / "letti",
                            folder / "tabelle.xlsx"], check=True, stdout=subprocess.DEVNULL)
            check_csv(folder / "letti", expected, "\t", ",", "tabelle-", "utf-8", HEAD_ROW)
        print(f"{len(expected)} tables compared")


if __name__ == "__main__":
    main()
