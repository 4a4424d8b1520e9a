"""The journal of a run: one line of JSON for each file that is done."""

import json
import os


def stamp(path):
    """What tells whether a file is the one that was inspected: its size and its time of change."""
    try:
        status = os.stat(path)
        return [status.st_size, status.st_mtime_ns]
    except OSError:
        return None


class Journal:
    """Appends results, and knows those of earlier runs. Every line is complete in itself, so that
    only the last one of a run that was killed can be torn; it is dropped."""

    def __init__(self, path):
        self._path = path
        self._results = {}
        complete = 0
        if path.exists():
            for line in path.read_bytes().splitlines(keepends=True):
                if not line.endswith(b"\n"):
                    break
                result = json.loads(line)
                self._results[result["file"]] = result
                complete += len(line)
            os.truncate(path, complete)
        self._file = path.open("a", encoding="ascii")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._file.close()

    def has(self, file):
        """True for a file that was inspected and has not changed since."""
        return file in self._results and self._results[file]["stamp"] == stamp(file)

    def add(self, file, result):
        entry = {"file": file, "stamp": stamp(file), **result}
        self._results[file] = entry
        self._file.write(json.dumps(entry) + "\n")
        self._file.flush()

    def results(self, files):
        """The results of some files, in their order."""
        return [self._results[file] for file in files if file in self._results]
