#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""rapporti.py BUILD_FOLDER [--scrivi FILE]: runs the benchmarks and prints each beside its baseline; the
table also goes into a file, with the date and the machine.

Figures are reported, never asserted: a missed target shows in the table and nowhere else."""

import datetime
import json
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

HEAD = ("che cosa (300 unità, 15 000 vani)", "Zelto", "base", "rapporto", "obiettivo", "esito")
REPETITIONS = 9
PEAK_TARGET_MB = 150

# Benchmark, what it measures, most that it may take as a multiple of its baseline, if told.
RATIOS = [
    ("caricamento", "caricare il lavoro / scorrere le sue tabelle", 2.0),
    ("conversione", "convertire un lavoro di Windows / scriverne le righe", 3.0),
    ("quota", "arrotondare una quota / snprintf", 2.0),
    ("registrazione", "registrare la relazione / scriverne i byte", 2.0),
    ("pdf", "stampare in PDF / QPainter nudo", 1.0),
    ("avvio", "avviare la finestra / finestra vuota", 3.0),
    ("sguardo", "elencare 1000 lavori / aprirli e leggerli nudi", 2.0),
    ("variabili", "aprire «Variabili» / QTableWidget nudo", 2.0),
    ("dati_generali", "aprire «Dati generali» / QTableWidget nudo", 2.0),
    ("parametri", "aprire «Parametri» / albero e tabelle nudi", 1.6),
    ("pagina", "voltare una pagina ingrandita / QPainter nudo", 1.5),
    ("anteprima", "anteprima di tutta la relazione / di una pagina", None),
    ("cella", "memorizzare una cella / UPDATE nudo", 1.5),
    ("copia", "conservare e rileggere una copia / copiarne i byte", None),
    ("unita", "mostrare un'altra unità / leggerla", None),
    ("controllo", "seguire una cella nel controllo / caricare il lavoro", None),  # 16 ms here too
    ("tasto", "un tasto in una cella / in un QLineEdit", None),  # a frame of the screen is 16 ms
]
TO_MILLISECONDS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}
SHARES_IN_A_TURN = 4096


def environment(folder):
    """No display; temporary files in the folder."""
    return dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", TMPDIR=folder,
                XDG_RUNTIME_DIR=folder)


def medians(bench, variables, clock="cpu_time"):
    """Median time of every benchmark in milliseconds, by the clock named. Repetitions of all are
    mixed, so that a disturbance of the machine hits both sides of a ratio."""
    output = subprocess.run(
        [bench, f"--benchmark_repetitions={REPETITIONS}", "--benchmark_format=json",
         "--benchmark_enable_random_interleaving=true",
         "--benchmark_report_aggregates_only=true"],
        env=variables, check=True, stdout=subprocess.PIPE).stdout
    # Behind the second slash stands how it was measured.
    return {"/".join(run["run_name"].split("/")[:2]):
            run[clock] * TO_MILLISECONDS[run["time_unit"]]
            for run in json.loads(output)["benchmarks"] if run.get("aggregate_name") == "median"}


def peak_memory(binaries, folder, variables):
    """Peak resident memory in MB of printing the large job in PDF."""
    job, pdf = f"{folder}/GRANDE.ZLT", f"{folder}/grande.pdf"
    subprocess.run([binaries / "zelto_bench", "--crea", job], env=variables, check=True)
    command = ["zelto-stampa", "-o", pdf, "-u", folder, job]
    child = os.posix_spawn(binaries / "zelto-stampa", command, variables)
    _, status, usage = os.wait4(child, 0)
    if status != 0 or not os.path.exists(pdf):
        sys.exit("zelto-stampa non ha stampato il lavoro")
    return usage.ru_maxrss / 1024


def duration(name, milliseconds):
    if name == "quota":
        return f"{milliseconds / SHARES_IN_A_TURN * 1e6:.1f} ns"
    return f"{milliseconds:.2f} ms"


def verdict(met):
    return "raggiunto" if met else "MANCATO"


def measure(binaries, folder):
    """The rows of the table: what, Zelto, baseline, ratio, target, verdict."""
    variables = environment(folder)
    times = medians(binaries / "zelto_bench", variables)
    for program in ("zelto_startup_bench", "zelto_survey_bench", "zelto_screens_bench",
                    "zelto_preview_bench"):
        times |= medians(binaries / program, variables, "real_time")
    # Storing a cell is as durable as it costs, which only a disk shows.
    with tempfile.TemporaryDirectory(dir=binaries) as disk:
        times |= medians(binaries / "zelto_register_bench", dict(variables, TMPDIR=disk),
                         "real_time")
    rows = []
    for name, what, target in RATIOS:
        ours, base = times[f"{name}/zelto"], times[f"{name}/base"]
        ratio = ours / base
        rows.append((what, duration(name, ours), duration(name, base), f"{ratio:.2f}",
                     f"≤ {target:.1f}" if target else "", verdict(ratio <= target) if target else ""))
    peak = peak_memory(binaries, folder, variables)
    rows.append(("memoria massima della stampa in PDF", f"{peak:.0f} MB", "", "",
                 f"≤ {PEAK_TARGET_MB} MB", verdict(peak <= PEAK_TARGET_MB)))
    return rows


def show(rows):
    for what, ours, base, ratio, target, met in [HEAD] + rows:
        print(f"{what:<50} {ours:>11} {base:>11} {ratio:>9} {target:>9}  {met}")


def machine():
    processors = re.findall(r"^model name\s*:\s*(.*)$", pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8"),
                            re.MULTILINE)
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    return (f"{len(os.sched_getaffinity(0))} × {processors[0] if processors else platform.machine()}, "
            f"{memory:.0f} GB, {platform.freedesktop_os_release()['PRETTY_NAME']}")


def write(rows, path):
    lines = ["# Prestazioni", "",
             "Scritto da `./test --bench`: i tempi dipendono dalla macchina, i rapporti con una base misurata nello",
             "stesso momento assai meno. Ogni tempo è la mediana di più esecuzioni alternate.", "",
             f"{datetime.date.today():%d/%m/%Y} — {machine()}", ""]
    for number, row in enumerate([HEAD] + rows):
        lines.append("| " + " | ".join(row) + " |")
        if number == 0:
            lines.append("|---|---:|---:|---:|---:|---|")
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def main():
    if len(sys.argv) not in (2, 4) or sys.argv[2:3] not in ([], ["--scrivi"]):
        sys.exit("Uso: rapporti.py CARTELLA_DI_COMPILAZIONE [--scrivi FILE]")
    binaries = pathlib.Path(sys.argv[1]).resolve() / "bin"
    # In memory where there is such a folder: the disk is not what is measured.
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(dir=memory) as folder:
        rows = measure(binaries, folder)
    show(rows)
    if len(sys.argv) == 4:
        write(rows, pathlib.Path(sys.argv[3]))


if __name__ == "__main__":
    main()
