#!/usr/bin/python3
"""Measures how much faster two workers are than one.

measure_speedup.py [COUNT [ROWS [ROUNDS]]]

Writes an archive of COUNT workbooks (40) of ROWS rows (3,000) and inspects it with one worker and
with two, by turns, ROUNDS times (3). The workers are started before the clock is. The quickest run
of each counts, since other load on the machine only adds. What two processes gain that share nothing
is measured in the same rounds: no engine can give more.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

import distributed

import inspect_workbook
from fleet import list_files, run, start_workers
from inspect_workbook import Options
from journal import Journal
from make_archive import write_archive


def inspect(client, files, folder):
    """Seconds for some files, without a journal of earlier ones."""
    begin = time.monotonic()
    with Journal(folder / "journal.jsonl") as journal:
        run(client, files, journal, Options())
    (folder / "journal.jsonl").unlink()
    return time.monotonic() - begin


def measure(files, workers, folder):
    """Seconds that some workers take for all files."""
    with start_workers(workers) as cluster, distributed.Client(cluster) as client:
        client.upload_file(inspect_workbook.__file__)
        inspect(client, files[:workers], folder)
        return inspect(client, files, folder)


def measure_limit(processes):
    """Seconds that some processes take for as much work together as one does for all of it."""
    script = f"sum(number * number for number in range({30_000_000 // processes}))"
    begin = time.monotonic()
    running = [subprocess.Popen([sys.executable, "-c", script]) for _ in range(processes)]
    for process in running:
        process.wait()
    return time.monotonic() - begin


def main():
    count, rows, rounds = (int(text) for text in (sys.argv[1:] + ["40", "3000", "3"][len(sys.argv) - 1:]))
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        write_archive(folder / "archive", count, rows)
        files = list_files(folder / "archive")
        best = {1: float("inf"), 2: float("inf")}
        limit = dict(best)
        for _ in range(rounds):
            for workers in best:
                best[workers] = min(best[workers], measure(files, workers, folder))
                limit[workers] = min(limit[workers], measure_limit(workers))
    print(f"{count} workbooks of {rows} rows on {os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}: "
          f"one worker {best[1]:.1f} s, two workers {best[2]:.1f} s, ratio {best[1] / best[2]:.2f}; "
          f"two processes that share nothing: ratio {limit[1] / limit[2]:.2f}")


if __name__ == "__main__":
    main()
