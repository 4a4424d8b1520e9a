"""The results of a run as tables: CSV, or Parquet where a library for it is installed."""

import csv
import importlib.util


def file_rows(results):
    """One row for each file."""
    return [{"file": result["file"], "status": result["status"], "error": result["error"],
             "seconds": result["seconds"], **result["row"]} for result in results]


def finding_rows(results):
    """One row for each finding."""
    return [{"file": result["file"], **finding}
            for result in results for finding in result["findings"]]


def can_write_parquet():
    return any(importlib.util.find_spec(name) for name in ("pyarrow", "fastparquet"))


def _printable(value):
    """A text of a hostile file as one field: without line ends, escapes and bytes that are no text.

    A program for spreadsheets takes a text that begins with `=` for a formula, so it gets an
    apostrophe before it.
    """
    if not isinstance(value, str):
        return value
    text = "".join(c if c.isprintable() else " " for c in value)
    return f"'{text}" if text[:1] in ("=", "+", "-", "@") else text


def _columns(rows):
    return list(dict.fromkeys(name for row in rows for name in row))


def write_csv(path, rows):
    with path.open("w", newline="", encoding="utf-8", errors="backslashreplace") as file:
        writer = csv.DictWriter(file, _columns(rows), lineterminator="\n")
        writer.writeheader()
        writer.writerows({name: _printable(value) for name, value in row.items()} for row in rows)


def write_parquet(path, rows):
    import pandas

    texts = [{name: _printable(value) for name, value in row.items()} for row in rows]
    pandas.DataFrame(texts, columns=_columns(rows)).to_parquet(path)


def write_tables(folder, results, format):
    """Writes `files` and `findings`; returns their paths."""
    write = {"csv": write_csv, "parquet": write_parquet}[format]
    paths = []
    for name, rows in (("files", file_rows(results)), ("findings", finding_rows(results))):
        paths.append(folder / f"{name}.{format}")
        write(paths[-1], rows)
    return paths
