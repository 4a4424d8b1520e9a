#!/usr/bin/python3
"""Compares the time of the Python module's arrays with that of the same pass in C++.

  compare_python.py BUILD [ROWS [ROUNDS]]

BUILD is a build tree with the benchmarks and the module. Writes a workbook of ten columns and ROWS
rows (100,000 unless said otherwise: a million cells) with eight rules over all of it, and measures
Sheet.rule_array() and the program time_rule_pass by turns, both on one thread and by the time of the
processor. The quickest of ROUNDS (5) counts, since other load only adds. The conditions are prepared
before.
"""

import pathlib
import subprocess
import sys
import tempfile
import time

from make_workbook import write_workbook


def quickest(call, rounds):
    """Seconds of the processor that the quickest of some calls takes, on all threads."""
    best = float("inf")
    for _ in range(rounds):
        begin = time.process_time()
        call()
        best = min(best, time.process_time() - begin)
    return best


def main():
    build = pathlib.Path(sys.argv[1])
    rows, rounds = (int(text) for text in (sys.argv[2:] + ["100000", "5"][len(sys.argv) - 2:]))
    sys.path.insert(0, str(build / "lib" / "python3" / "dist-packages"))
    import conditional_formatters as cf

    with tempfile.NamedTemporaryFile(suffix=".xlsx") as file:
        write_workbook(file.name, rows)
        sheet = cf.open(file.name)[0]
        array = sheet.rule_array()
        native = python = float("inf")
        for _ in range(rounds):
            program = [build / "bin" / "time_rule_pass", file.name, "1"]
            native = min(native, float(subprocess.run(program, capture_output=True, text=True,
                                                      check=True).stdout))
            python = min(python, quickest(sheet.rule_array, 1))
        print(f"{array.size} cells: C++ {native:.3f} s, Python {python:.3f} s, "
              f"ratio {python / native:.2f}; a copy of the array {1000 * quickest(array.copy, 5):.1f} ms")
        sets = quickest(sheet.rule_sets, rounds)
        cells = quickest(lambda: sum(1 for _ in sheet.cells()), 1)
        print(f"rule_sets() {sets:.3f} s, cells() {cells:.1f} s")


if __name__ == "__main__":
    main()
