#!/usr/bin/env python3
"""Checks that the folders of src/ include each other one way only, and QtWidgets in ui/ alone."""

import pathlib
import re
import sys

# Each folder may include itself and those before it.
ORDER = [
    "text",
    "store",
    "calc",
    "widgets",
    "print",
    "coefficients",
    "register",
    "reports",
    "shell",
    "cli",
]
# Where windows live: a whole folder, or its ui/ part.
WINDOW_FOLDERS = {"widgets", "shell"}
WIDGETS_HEADERS = re.compile(
    r"^(QtWidgets/|QApplication|QWidget|QDialog|QMainWindow|QMdi|QMessageBox|QFileDialog|QAction"
    r"|QMenu|QToolB|QStatusBar|QLabel|QLineEdit|QTextEdit|QPlainTextEdit|QTable(View|Widget)"
    r"|QTree(View|Widget)|QList(View|Widget)|QAbstract(ItemView|ScrollArea|Button)|QComboBox"
    r"|QCheckBox|QRadioButton|QPushButton|QTab|Q(Box|HBox|VBox|Grid|Form|Stacked)?Layout|QSplitter|QScroll|QStyle|QHeaderView"
    r"|QGroupBox|QFrame|QSpinBox|QProgress|QPrintDialog|QPageSetupDialog)"
)
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')


def faults(root: pathlib.Path, path: pathlib.Path):
    """Yields a message for every include of the file that its folder must not have."""
    parts = path.relative_to(root).parts
    folder = parts[0]
    in_windows = folder in WINDOW_FOLDERS or "ui" in parts[1:-1]
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        kind, name = match.groups()
        where = f"{path.relative_to(root)}:{number}: {name}"
        if kind == "<":
            if not in_windows and WIDGETS_HEADERS.match(name):
                yield f"{where}: windows belong in ui/"
            continue
        target = name.split("/")
        if target[0] not in ORDER:
            yield f"{where}: own headers are named from src/"
        elif ORDER.index(target[0]) > ORDER.index(folder):
            yield f"{where}: {folder} must not include {target[0]}"
        elif (target[0] in WINDOW_FOLDERS or "ui" in target[1:-1]) and not in_windows:
            yield f"{where}: only windows may include windows"


def main() -> int:
    root = pathlib.Path(sys.argv[1])
    sources = sorted(p for p in root.rglob("*") if p.suffix in {".h", ".cpp"})
    unknown = {p.relative_to(root).parts[0] for p in sources} - set(ORDER)
    found = [f"{name}: unknown folder" for name in sorted(unknown)]
    found += [m for p in sources if p.relative_to(root).parts[0] in ORDER for m in faults(root, p)]
    print("\n".join(found) or f"{len(sources)} files, all includes one way")
    return 1 if found or not sources else 0


if __name__ == "__main__":
    sys.exit(main())
