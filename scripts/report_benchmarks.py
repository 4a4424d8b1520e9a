#!/usr/bin/env python3
"""Writes docs/performance.md's table from the benchmark program's JSON, and prints it.

report_benchmarks.py RESULTS.json docs/performance.md
"""
import json
import sys

BEGIN, END = "<!-- measured: begin -->\n", "<!-- measured: end -->\n"
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read(path):
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    times = {}
    counters = {}
    for run in results["benchmarks"]:
        name = run["name"].replace("/real_time", "").replace("/iterations:1", "")
        times[name] = run["real_time"] * NANOSECONDS[run["time_unit"]]
        counters[name] = run
    return results["context"], times, counters


def report(context, times, counters):
    lines = [
        f"Measured on {context['date'][:10]}: {context['num_cpus']} cores of "
        f"{context['mhz_per_cpu']} MHz.",
        "",
        "| whole table, one format | ns per cell, 100,000 cells | over the hand-written loop | "
        "time at 1,000,000 over 100,000 | two threads over one, 1,000,000 |",
        "|---|---|---|---|---|",
    ]
    loop = times["loop/greater/100000"] / 1e5
    for name, time in times.items():
        parts = name.split("/")
        if parts[0] != "table" or parts[2] != "threads:1" or parts[3] != "100000":
            continue
        scenario = parts[1]
        large = times[f"table/{scenario}/threads:1/1000000"]
        parallel = times[f"table/{scenario}/threads:2/1000000"]
        lines.append(f"| {scenario} | {time / 1e5:.0f} | {time / 1e5 / loop:.1f} | "
                     f"{large / time:.1f} | {large / parallel:.2f} |")
    lines += ["", "| cell by cell | remembered cell, ns | floor, ns | ratio |", "|---|---|---|---|"]
    for size in (10000, 100000, 1000000):
        hit, floor = times[f"cell/hit/{size}"], times[f"cell/floor/{size}"]
        lines.append(f"| {size:,} cells | {hit:.0f} | {floor:.0f} | {hit / floor:.2f} |")
    load = "load/numbers/1000000"
    lines += ["", f"Loading a workbook of 1,000,000 numbers takes {times[load] / 1e9:.2f} s and "
              f"{counters[load]['residentBytesPerCell']:.0f} resident bytes per cell."]
    return "\n".join(lines) + "\n"


def main():
    results, page = sys.argv[1:]
    text = report(*read(results))
    with open(page, encoding="utf-8") as file:
        old = file.read()
    head, rest = old.split(BEGIN)
    tail = rest.split(END)[1]
    with open(page, "w", encoding="utf-8") as file:
        file.write(head + BEGIN + text + END + tail)
    print(text, end="")


if __name__ == "__main__":
    main()
