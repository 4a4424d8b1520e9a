#!/usr/bin/env python3
"""Runs the tool over hostile files and checks that each run ends well.

check_hostile.py CNDFRMT [OPTION...] [CASE...]

A run ends well with exit status 0, 1 or 2, within the limits of time and memory below, and with
plain text on standard error: no control characters, no marks that turn text around, no line beyond
a sensible length. What is shown on a terminal has no control characters but those of colours. A run
that fails says why and leaves no file behind. With --sanitized there is no limit of memory, and more
time. With --write FOLDER the files are written there, and nothing is run.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import resource
import signal
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # the folder of the sources stays as it is

import cases  # noqa: E402, F401
import picture_cases  # noqa: E402
from registry import ALSO, CASES  # noqa: E402

# Each file is resolved, and goes through one of the other commands in turn; those that are about
# pictures are shown, written as a page, and drawn in one of the formats in turn.
RESOLVE = "resolve FILE"
SHOWING = ["show FILE", "show --colour always --width 80 FILE", "render FILE -o OUT.html"]
DRAWING = ["render FILE -o OUT.svg", "render FILE -o OUT.png", "render FILE -o OUT.pdf"]
OTHERS = ["resolve --format json FILE", "rules FILE", "verdicts FILE", "explain FILE A1:C3",
          "check FILE", "tidy FILE -o OUT.xlsx", "diff FILE FILE", *SHOWING, *DRAWING]
MOMENT = ["--now", "2026-11-21T12:00:00"]
SECONDS = 30  # of processor time for one run
MEMORY = 384 * 1024 * 1024  # bytes in memory at once
LONGEST_LINE = 2_000
COLOURS = re.compile(r"\x1b\[[0-9;]*m")
FORBIDDEN = re.compile(
    "[\x00-\x08\x0b-\x1f\x7f-\x9f\u061c\u200b-\u200f\u202a-\u202e\u2066-\u2069\ufeff]")


def run(tool, arguments, output, limits):
    """Runs the tool; returns its wait status, its use of resources, and its standard error."""
    def restrict():
        resource.setrlimit(resource.RLIMIT_CPU, (limits.seconds, limits.seconds + 1))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 30, 1 << 30))
        if limits.memory is not None:
            # The address space is larger than what is used of it.
            resource.setrlimit(resource.RLIMIT_AS, (4 * limits.memory, 4 * limits.memory))

    with tempfile.TemporaryFile() as errors:
        process = subprocess.Popen([tool, *arguments, *MOMENT], stdout=output, stderr=errors,
                                   stdin=subprocess.DEVNULL, preexec_fn=restrict)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        errors.seek(0)
        return process.returncode, usage, errors.read(10_000_000)


def find_faults(returncode, usage, errors, limits):
    """What is wrong with a run."""
    text = errors.decode("utf-8", "replace")
    if returncode < 0:
        name = signal.Signals(-returncode).name
        yield f"takes more than {limits.seconds} s" if name == "SIGXCPU" else f"ends by {name}"
    elif returncode not in (0, 1, 2):
        yield f"exit status {returncode}: {text[-300:]!r}"
    if limits.memory is not None and usage.ru_maxrss * 1024 > limits.memory:
        yield f"takes {usage.ru_maxrss // 1024} MiB"
    if "bad_alloc" in text:
        yield "runs out of memory"
    if found := FORBIDDEN.search(text):
        yield f"writes {found.group()!r} to standard error"
    if (longest := max(map(len, text.split("\n")))) > LONGEST_LINE:
        yield f"writes a line of {longest} characters to standard error"


def choose_commands(name):
    """The commands that a file goes through."""
    turn = list(CASES).index(name)
    if CASES[name].__module__ == picture_cases.__name__:
        return [RESOLVE, *SHOWING, DRAWING[turn % len(DRAWING)]]
    return [RESOLVE, OTHERS[turn % len(OTHERS)], *ALSO.get(name, ())]


def check_shown(output):
    """What is wrong with a picture on a terminal."""
    output.seek(0)
    text = COLOURS.sub("", output.read(50_000_000).decode("utf-8", "replace"))
    if found := FORBIDDEN.search(text):
        yield f"writes {found.group()!r} to the terminal"


def run_command(tool, command, file, limits):
    """Runs one command over a file; returns its faults and the seconds of processor time."""
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryFile() as output:
        words = [word.replace("FILE", str(file)).replace("OUT", f"{folder}/out")
                 for word in command.split()]
        returncode, usage, errors = run(tool, words, output, limits)
        faults = list(find_faults(returncode, usage, errors, limits))
        # An account tells of its failures itself.
        is_told = errors or (command.startswith("explain") and output.seek(0, os.SEEK_END) > 0)
        if returncode == 1 and not is_told:
            faults.append("fails without a message")
        if command.startswith("show"):
            faults += check_shown(output)
        if returncode != 0 and (left := os.listdir(folder)):
            faults.append(f"leaves {left} behind")
        return faults, usage.ru_utime + usage.ru_stime


def check(tool, name, folder, limits):
    """Runs the commands over one case; returns its faults and the seconds of processor time."""
    file = folder / f"{name}.xlsx"
    file.write_bytes(CASES[name]())
    faults, seconds = [], {}
    for command in choose_commands(name):
        found, seconds[command] = run_command(tool, command, file, limits)
        faults += [f"{command}: {fault}" for fault in found]
    file.unlink()
    return name, faults, seconds


def parse_arguments():
    parser = argparse.ArgumentParser(description="Runs the tool over hostile files.")
    parser.add_argument("tool")
    parser.add_argument("cases", nargs="*", metavar="CASE", help="names, or their beginnings")
    parser.add_argument("--sanitized", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--write", type=pathlib.Path, metavar="FOLDER")
    parser.add_argument("--times", action="store_true", help="print the slowest runs")
    return parser.parse_args()


def main():
    options = parse_arguments()
    options.seconds = SECONDS * (6 if options.sanitized else 1)
    options.memory = None if options.sanitized else MEMORY
    names = [name for name in CASES
             if not options.cases or any(map(name.startswith, options.cases))]
    if options.write:
        for name in names:
            (options.write / f"{name}.xlsx").write_bytes(CASES[name]())
        return 0
    failed = False
    times = {}
    with tempfile.TemporaryDirectory() as folder, \
            concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        runs = [pool.submit(check, options.tool, name, pathlib.Path(folder), options)
                for name in names]
        for name, faults, seconds in (run.result() for run in runs):
            times.update({f"{name}: {command}": took for command, took in seconds.items()})
            if faults:
                failed = True
                print(f"{name}: " + "; ".join(faults))
    if options.times:
        for name in sorted(times, key=times.get, reverse=True)[:25]:
            print(f"{times[name]:8.2f} s  {name}")
    print(f"{len(names)} hostile files took {sum(times.values()):.0f} s of processor time")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
