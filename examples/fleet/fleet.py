#!/usr/bin/python3
"""Inspects an archive of workbooks on many machines, with Dask.

  fleet.py ARCHIVE OUT                        two workers on this machine
  fleet.py ARCHIVE OUT --workers 8
  fleet.py ARCHIVE OUT --scheduler tcp://host:8786

ARCHIVE is a folder that the workers see under the same path. OUT gets `files.csv`, one row for each
workbook, `findings.csv`, one row for each finding about its rules, and `journal.jsonl`: a run that
was interrupted goes on where it ended, and a workbook that has changed is inspected again.
"""

import argparse
import os
import pathlib
import sys
import time
from itertools import islice

import dask
import distributed

import inspect_workbook
from inspect_workbook import Options, work
from journal import Journal
from tables import can_write_parquet, write_tables

PATTERNS = (".xlsx", ".xlsm")
LOST = {"status": "lost", "error": "the worker ended while it was at this file: it ran out of memory, "
                                   "hung, or crashed", "seconds": None, "row": {}, "findings": []}


def list_files(archive):
    """The workbooks of a folder, below it too, in a stable order; not the lock files of programs."""
    return sorted(os.path.join(folder, name) for folder, _, names in os.walk(archive)
                  for name in names
                  if name.lower().endswith(PATTERNS) and not name.startswith("~$"))


class Progress:
    """A line on standard error, redrawn in place on a terminal, else every ten seconds."""

    def __init__(self, total, stream=sys.stderr):
        self._total, self._stream = total, stream
        self._done, self._bad = 0, 0
        self._begin = self._shown = time.monotonic()

    def add(self, result):
        self._done += 1
        self._bad += result["status"] != "ok"
        interval = 0.2 if self._stream.isatty() else 10
        if time.monotonic() - self._shown >= interval or self._done == self._total:
            self._shown = time.monotonic()
            self._show()

    def _show(self):
        speed = self._done / max(time.monotonic() - self._begin, 1e-9)
        left = (self._total - self._done) / speed
        line = (f"{self._done} of {self._total} files, {self._bad} not read, {speed:.1f} a second, "
                f"{left:.0f} s left")
        self._stream.write(f"\r{line}\033[K" if self._stream.isatty() else f"{line}\n")
        if self._done == self._total and self._stream.isatty():
            self._stream.write("\n")
        self._stream.flush()


def submit(client, path, options, inspect):
    return client.submit(work, path, options, inspect, pure=False)


def take(future):
    """The result of a file; None if its worker died, which need not be its fault."""
    error = future.exception()
    if error is None:
        return future.result()
    if isinstance(error, distributed.KilledWorker):
        return None
    return {**LOST, "status": "failed", "error": f"{type(error).__name__}: {error}"}


def run(client, files, journal, options, inspect=inspect_workbook.inspect_workbook, window=None):
    """Inspects the files that the journal does not have.

    A few files are on their way for each worker, so that memory does not grow with the archive. When
    a worker dies, all that it had are suspects; each of them is tried again alone at the end, and
    the one that kills its worker again is lost.
    """
    todo = [file for file in files if not journal.has(file)]
    progress = Progress(len(todo))

    def finish(file, result):
        journal.add(file, result)
        progress.add(result)

    window = window or 4 * max(len(client.nthreads()), 1)
    waiting, suspects = iter(todo), []
    names = {submit(client, file, options, inspect): file for file in islice(waiting, window)}
    done = distributed.as_completed(list(names))
    for future in done:
        file, result = names.pop(future), take(future)
        future.release()
        suspects.append(file) if result is None else finish(file, result)
        for following in islice(waiting, 1):
            new = submit(client, following, options, inspect)
            names[new] = following
            done.add(new)
    for file in suspects:
        finish(file, take(submit(client, file, options, inspect)) or LOST)


def start_workers(count, memory=2 << 30):
    """Workers on this machine, each a process with room for a file that takes so much memory."""
    # A file that ended its worker is not given to the next one: run() decides about it. The worker is
    # started again, however long that takes on a busy machine: by default it is given up after 15
    # seconds, and a run whose workers are all given up would wait for ever.
    dask.config.set({"distributed.scheduler.allowed-failures": 0,
                     "distributed.deploy.lost-worker-timeout": "1 day"})
    return distributed.LocalCluster(n_workers=count, threads_per_worker=1, dashboard_address="127.0.0.1:0",
                                    memory_limit=2 * memory)


def connect(arguments):
    """A client of a scheduler that runs, or of workers on this machine."""
    if arguments.scheduler:
        return distributed.Client(arguments.scheduler)
    return distributed.Client(start_workers(arguments.workers, arguments.memory))


def read_arguments():
    parser = argparse.ArgumentParser(description="Inspects an archive of workbooks with Dask.")
    parser.add_argument("archive", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("--scheduler", help="address of a scheduler that runs")
    parser.add_argument("--workers", type=int, default=2, help="on this machine (default 2)")
    parser.add_argument("--seconds", type=float, default=60, help="for one file (default 60)")
    parser.add_argument("--memory", type=int, default=2 << 30, help="bytes for one file")
    parser.add_argument("--now", help="the moment for which conditions are evaluated")
    parser.add_argument("--format", choices=["csv", "parquet"], default="csv")
    arguments = parser.parse_args()
    if arguments.format == "parquet" and not can_write_parquet():
        parser.error("--format parquet needs pyarrow or fastparquet")
    if not arguments.archive.is_dir():
        parser.error(f"{arguments.archive} is no folder")
    return arguments


def main():
    arguments = read_arguments()
    arguments.out.mkdir(parents=True, exist_ok=True)
    options = Options(seconds=arguments.seconds, memory=arguments.memory, now=arguments.now)
    files = list_files(os.path.abspath(arguments.archive))
    with Journal(arguments.out / "journal.jsonl") as journal, connect(arguments) as client:
        client.upload_file(inspect_workbook.__file__)
        try:
            run(client, files, journal, options)
        finally:
            results = journal.results(files)
            for path in write_tables(arguments.out, results, arguments.format):
                print(path)
    return 0 if all(result["status"] == "ok" for result in results) else 1


if __name__ == "__main__":
    sys.exit(main())
