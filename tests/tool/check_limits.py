#!/usr/bin/python3
"""Checks how the tool ends when it may not finish: at its limits, and on signals.

check_limits.py CNDFRMT, from the root of the sources.
"""

import json
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, "benchmarks")
sys.dont_write_bytecode = True
import make_workbook  # noqa: E402

ROWS = 20_000
# Looks at the whole column for each cell: all of it would take minutes.
SLOW = f"SUMPRODUCT(($A$1:$A${ROWS}=A1)*1)>0"
PATIENCE = 60  # seconds; the work of a case takes about one

failed = 0


def expect(condition, what, process=None):
    global failed
    if not condition:
        failed = 1
        detail = f"\n  status {process.returncode}, says: {process.messages[-500:]}" if process else ""
        print(f"check_limits: {what}{detail}", file=sys.stderr)


def run(arguments, stop_with=None):
    """Runs the tool and sends it a signal after some seconds; its output is in `result`."""
    process = subprocess.Popen([cndfrmt, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                               text=True)
    if stop_with:
        time.sleep(3)
        process.send_signal(stop_with)
    process.result, process.messages = process.communicate(timeout=PATIENCE)
    return process


def check_message(process, words, what):
    last = process.messages.splitlines()[-1]
    expect(last.startswith("cndfrmt: ") and words in last and "not complete" in last,
           f"{what}: no clear last message", process)


def check_json(process, what, has_cells=True):
    document = json.loads(process.result)
    expect(document["summary"]["complete"] is False, f"{what}: the JSON claims to be complete")
    expect(document["sheets"][0]["cells"] or not has_cells, f"{what}: the JSON has no cell", process)


def check_lines(process, columns, separator, what):
    lines = process.result.splitlines()
    expect(len(lines) > 1, f"{what}: nothing is printed", process)
    expect(all(line.count(separator) >= columns - 1 for line in lines), f"{what}: a line is cut")


def check_signals(book):
    process = run(["resolve", book, "--format", "json", "--threads", "1"], signal.SIGINT)
    expect(process.returncode == 130, "an interrupted resolve has another status", process)
    check_message(process, "interrupted", "an interrupted resolve")
    check_json(process, "an interrupted resolve")
    process = run(["resolve", book, "--threads", "1"], signal.SIGTERM)
    expect(process.returncode == 143, "a terminated resolve has another status", process)
    check_message(process, "terminated", "a terminated resolve")
    check_lines(process, 5, "  ", "a terminated resolve")


def check_timeout(book):
    for threads in "1", "2":
        process = run(["resolve", book, "--format", "json", "--timeout", "1s", "--threads", threads])
        expect(process.returncode == 1, "resolve out of time has another status", process)
        check_message(process, "--timeout", "resolve out of time")
        # Two threads print when the first block of rows is done, which takes longer.
        check_json(process, "resolve out of time", has_cells=threads == "1")
    process = run(["verdicts", book, "--timeout", "1s"])
    expect(process.returncode == 1, "verdicts out of time have another status", process)
    check_message(process, "--timeout", "verdicts out of time")
    check_lines(process, 5, "\t", "verdicts out of time")


def check_memory(book):
    # Many threads meet the limit while they prepare one condition.
    process = run(["resolve", book, "--max-memory", "24M", "--threads", "64"])
    expect(process.returncode in (0, 1), "many threads end in another way", process)
    for size in "2M", "5M", "8M", "12M", "20M":
        for command in "resolve", "verdicts", "rules":
            process = run([command, book, "--max-memory", size])
            if process.returncode != 0:
                expect(process.returncode == 1, f"{command} with {size} has another status", process)
                check_message(process, "--max-memory", f"{command} with {size}")
            else:
                expect(size != "2M", f"{command} needs no memory", process)


def main():
    with tempfile.TemporaryDirectory() as directory:
        slow = str(pathlib.Path(directory) / "slow.xlsx")
        make_workbook.write_workbook(slow, ROWS, SLOW)
        check_signals(slow)
        check_timeout(slow)
        quick = str(pathlib.Path(directory) / "quick.xlsx")
        make_workbook.write_workbook(quick, ROWS)
        check_memory(quick)
    sys.exit(failed)


cndfrmt = sys.argv[1]
main()
