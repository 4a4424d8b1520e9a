#!/usr/bin/env python3
"""Compares the time of pictures with that of LibreOffice for the same workbook.

  compare_render.py CNDFRMT [ROUNDS [ROWS]]

Writes a workbook of ten columns and ROWS rows (10,000 unless said otherwise: 100,000 cells) with
eight rules over all of it, and has both programs turn it into HTML, PDF and PNG, by turns, ROUNDS
times (3). The quickest run of each counts, since other load only adds. Needs the package
libreoffice-calc-nogui. Run it on a machine with nothing else to do.

LibreOffice is measured as it is started from a command line, and less the time that it takes for a
workbook of one row. Its PNG shows the first page alone; that of cndfrmt the whole sheet.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

from make_workbook import write_workbook

FORMATS = {"html": "html:HTML (StarCalc)", "pdf": "pdf:calc_pdf_Export", "png": "png:calc_png_Export"}


def measure(command):
    """Seconds from start to end, and of processor time."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"compare_render: {' '.join(map(str, command))}: status {process.returncode}")
    return time.monotonic() - start, usage.ru_utime + usage.ru_stime


class Programs:
    """Both programs, and a folder for what they write."""

    def __init__(self, tool, folder):
        self.tool, self.folder = tool, pathlib.Path(folder)

    def run_own(self, book, ending):
        target = self.folder / f"own.{ending}"
        return measure([self.tool, "render", book, "-o", target])

    def run_other(self, book, ending):
        (self.folder / "out").mkdir(exist_ok=True)
        return measure(["soffice", "--headless", "--norestore",
                        f"-env:UserInstallation=file://{self.folder}/profile",
                        "--convert-to", FORMATS[ending], "--outdir", self.folder / "out", book])


def compare(programs, book, small, ending, rounds):
    """The quickest run of each: own, LibreOffice, LibreOffice for a workbook of one row."""
    own, other, start = [], [], []
    for _ in range(rounds):
        own.append(programs.run_own(book, ending))
        other.append(programs.run_other(book, ending))
        start.append(programs.run_other(small, ending))
    return min(own), min(other), min(start)


def main():
    if len(sys.argv) not in (2, 3, 4):
        sys.exit(__doc__)
    rounds, rows = (list(map(int, sys.argv[2:])) + [3, 10_000][len(sys.argv) - 2:])[:2]
    with tempfile.TemporaryDirectory() as folder:
        book, small = pathlib.Path(folder) / "book.xlsx", pathlib.Path(folder) / "small.xlsx"
        write_workbook(book, rows)
        write_workbook(small, 1)
        programs = Programs(sys.argv[1], folder)
        programs.run_other(small, "html")  # makes the profile of a user
        print(f"{rows * 10:,} cells: seconds from start to end, the quickest of {rounds}\n")
        print("| | cndfrmt | LibreOffice | ratio | LibreOffice less its start | ratio |")
        print("|---|---|---|---|---|---|")
        for ending in FORMATS:
            (own, _), (other, _), (start, _) = compare(programs, book, small, ending, rounds)
            print(f"| {ending} | {own:.2f} | {other:.2f} | {other / own:.1f} | "
                  f"{other - start:.2f} | {(other - start) / own:.1f} |", flush=True)


if __name__ == "__main__":
    main()
