#!/usr/bin/env python3
"""Writes docs/performance.md's table from the benchmark program's JSON, and prints it.

report_benchmarks.py RESULTS.json docs/performance.md
"""
import json
import re
import sys

BEGIN, END = "<!-- measured: begin -->\n", "<!-- measured: end -->\n"
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read(path):
    """The context; and of each benchmark the fastest run, which others disturbed least, and the
    smallest of each of its counters."""
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    times = {}
    counters = {}
    # In the order of the program, not in the random one of the measurements.
    for run in sorted(results["benchmarks"], key=lambda run: run["family_index"]):
        if run.get("run_type") == "aggregate":
            continue
        name = re.sub("/(real_time|iterations:[0-9]+|repeats:[0-9]+)", "", run["name"])
        time = run["real_time"] * NANOSECONDS[run["time_unit"]]
        times[name] = min(time, times.get(name, time))
        known = counters.setdefault(name, {})
        for counter, value in run.items():
            if isinstance(value, (int, float)):
                known[counter] = min(value, known.get(counter, value))
    return results["context"], times, counters


def list_scenarios(times):
    names = [name.split("/") for name in times]
    return [parts[1] for parts in names if parts[0] == "table" and parts[2] == "100000"]


def report_whole_tables(times, counters):
    lines = [
        "| whole table, one format | ns per cell, 100,000 cells | over the hand-written loop | "
        "time at 1,000,000 over 100,000 | two threads over one, visitor | "
        "two threads over one, runs |",
        "|---|---|---|---|---|---|",
    ]
    def ratio(way, scenario):
        measured = counters[f"threads/{way}/{scenario}/1000000"]
        return measured["withOne"] / measured["withTwo"]
    loop = times["loop/greater/100000"]
    for scenario in list_scenarios(times):
        small, large = (times[f"table/{scenario}/{cells}"] for cells in (100000, 1000000))
        lines.append(f"| {scenario} | {small / 1e5:.0f} | {small / loop:.1f} | "
                     f"{large / small:.1f} | {ratio('visitor', scenario):.2f} | "
                     f"{ratio('runs', scenario):.2f} |")
    lines += ["", "Two threads that share nothing, each with one half of the column and a resolver "
              f"of its own, are {ratio('apart', 'greater'):.2f} times as fast as one: what the "
              "cores give at best."]
    return lines


def report_visuals(times, counters):
    lines = ["| one visual format | ns per cell, 100,000 cells | 1,000,000 cells | "
             "thresholds known, 100,000 cells | 1,000,000 cells | two threads over one |",
             "|---|---|---|---|---|---|"]
    for kind in ("scale", "bar", "icons"):
        cells = [times[f"visual/{kind}{which}/{size}"] / size
                 for which in ("", "Again") for size in (100000, 1000000)]
        turns = counters[f"threads/visual/{kind}/1000000"]
        lines.append(f"| {kind} | " + " | ".join(f"{cell:.0f}" for cell in cells) +
                     f" | {turns['withOne'] / turns['withTwo']:.2f} |")
    return lines


def report_live(times):
    lines = ["| 1,000,000 cells, twelve rules, 2,000 cells in sight | ms | by a new resolver, ms | "
             "ratio |", "|---|---|---|---|"]
    kinds = {"edit": "one cell", "editCents": "one cell, where numbers are cents",
             "editFormulas": "one cell, with seven formulas of the column besides",
             "editFormulasCents": "the same, where numbers are cents",
             "editSumsCents": "one of the cells that SUMIF adds up, in cents",
             "editSumsBy": "one of the cells by which SUMIF adds up",
             "pasteSumsBy": "1,000 of these cells",
             "paste": "1,000 cells", "row": "a row is inserted or deleted",
             "moveRow": "a row is moved",
             "column": "a column is inserted or deleted before the range",
             "moveColumn": "the range's column is moved",
             "columnAmid": "a column is inserted or deleted amid ten",
             "moveColumnAmid": "a column is moved amid ten",
             "formats": "formats change", "scroll3": "scroll by three rows",
             "scrollPage": "scroll by a page",
             "editHundreds": "one cell, under 300 rules with formulas besides",
             "scrollPageHundreds": "scroll by a page, under these"}
    for kind, words in kinds.items():
        followed, anew = (times[f"live/{kind}{which}/1000000"] / 1e6 for which in ("", "Anew"))
        lines.append(f"| {words} | {followed:.3f} | {anew:.1f} | {anew / followed:.0f} |")

    def milliseconds(name, columns=""):
        return f"{times[f'{name}/1000000{columns}'] / 1e6:.1f} ms"
    lines += ["", f"The first view of a new resolver takes {milliseconds('view/first')}. "
              f"30,000 pasted cells take {milliseconds('live/pasteMany')}, with the time in which "
              f"the table takes them. A filled column of fifty is deleted in "
              f"{milliseconds('live/deleteFilledColumn')}. Two threads scroll by a page under the "
              f"hundreds of rules in {milliseconds('live/scrollPageHundredsByTwo')}.", "",
              "In the reference table, with 50 columns, a row is inserted and deleted in "
              f"{milliseconds('rows/insertAndDelete')}, and one is moved in "
              f"{milliseconds('rows/move')}; with 10, a column amid them is inserted and deleted in "
              f"{milliseconds('columns/insertAndDelete', '/10')}, and one is moved in "
              f"{milliseconds('columns/move', '/10')}."]
    return lines


def report_analysis(times):
    lines = ["| question about a workbook | ms, 10,000 cells | 100,000 cells |", "|---|---|---|"]
    for question in ("explain", "check", "tidy", "diff"):
        small, large = (times[f"analysis/{question}/{size}"] / 1e6 for size in (10000, 100000))
        lines.append(f"| {question} | {small:.1f} | {large:.1f} |")
    return lines


def report_cache(times):
    lines = ["| cell by cell | remembered cell, ns | floor, ns | ratio |", "|---|---|---|---|"]
    for size in (10000, 100000, 1000000):
        hit, floor = times[f"cell/hit/{size}"], times[f"cell/floor/{size}"]
        lines.append(f"| {size:,} cells | {hit:.0f} | {floor:.0f} | {hit / floor:.2f} |")
    return lines


def report_memory(counters):
    def bytes_of(name, which):
        return counters[f"memory/{name}/100000"][which]
    lines = [f"A remembered cell takes {bytes_of('cached', 'keptPerCell'):.0f} bytes of the cache.",
             "", "| whole table, 100,000 cells | bytes per cell that the resolver keeps | "
             "at most during the pass |", "|---|---|---|"]
    for name in counters:
        parts = name.split("/")
        if parts[0] == "memory" and parts[1] not in ("cached", "followed"):
            lines.append(f"| {parts[1]} | {bytes_of(parts[1], 'keptPerCell'):.1f} | "
                         f"{bytes_of(parts[1], 'peakPerCell'):.1f} |")
    lines += ["", "| kept to follow edits, twelve rules | bytes per cell, 1,000,000 cells | "
              "800,000 cells, where tables have just grown |", "|---|---|---|"]
    columns = {"mixed": "numbers and texts", "numbers": "numbers that all differ",
               "texts": "texts that all differ",
               "mixedFormulas": "numbers and texts, with seven formulas of the column besides",
               "textsFormulas": "texts that all differ, with the formulas"}
    for column, title in columns.items():
        kept = [counters[f"memory/followed/{column}/{size}"]["keptPerCell"]
                for size in (1000000, 800000)]
        lines.append(f"| {title} | " + " | ".join(f"{each:.0f}" for each in kept) + " |")
    return lines


def report_pictures(times, counters):
    lines = ["| picture of 100,000 cells | ms | MB |", "|---|---|---|"]
    for writer in ("html", "png", "svg", "pdf", "terminal"):
        name = f"render/{writer}/100000"
        lines.append(f"| {writer} | {times[name] / 1e6:.0f} | {counters[name]['bytes'] / 1e6:.1f} |")
    lines += ["", "Building the picture of 100,000 cells with fills, lines and number formats takes "
              f"{times['render/picture/100000'] / 1e6:.0f} ms."]
    return lines


def report(context, times, counters):
    load = "load/numbers/1000000"
    lines = [f"Measured on {context['date'][:10]}: {context['num_cpus']} cores of "
             f"{context['mhz_per_cpu']} MHz.", ""]
    lines += report_whole_tables(times, counters) + [""] + report_visuals(times, counters) + [""]
    lines += report_live(times) + [""]
    lines += report_analysis(times) + [""]
    lines += report_pictures(times, counters) + [""]
    lines += report_cache(times) + [""]
    lines += report_memory(counters)
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
