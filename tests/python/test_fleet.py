"""The example that inspects an archive with Dask, on a local cluster of two workers."""

import csv
import json
import os
import shutil
import subprocess
import sys
import time

import pytest
from conftest import DEMO, NOW, ROOT

FLEET = ROOT / "examples" / "fleet"
sys.path.insert(0, str(FLEET))

distributed = pytest.importorskip("distributed")

import dask  # noqa: E402

import fleet  # noqa: E402
import inspect_workbook  # noqa: E402
import tables  # noqa: E402
from journal import Journal  # noqa: E402
from make_archive import write_archive  # noqa: E402

OPTIONS = inspect_workbook.Options(seconds=20, grace=5, now=NOW)


@pytest.fixture(scope="module")
def archive(tmp_path_factory):
    """Ten good workbooks, one of them large, and four files that are trouble."""
    folder = tmp_path_factory.mktemp("archive")
    write_archive(folder, 9, 30)
    shutil.copy(DEMO, folder / "demo.xlsx")
    (folder / "damaged.xlsx").write_bytes(DEMO.read_bytes()[:9000])
    (folder / "text.XLSX").write_text("name,value\n")
    (folder / "evil=\n.xlsx").write_text("=1+1")
    (folder / "~$demo.xlsx").write_text("a lock file")
    (folder / "notes.txt").write_text("no workbook")
    return folder


@pytest.fixture(scope="module")
def client():
    with fleet.start_workers(2) as cluster, distributed.Client(cluster) as client:
        client.upload_file(inspect_workbook.__file__)
        yield client


def hang_or_die(path, options):
    """An inspection that some files are trouble for. Sent to the workers as it is here."""
    name = os.path.basename(path)
    if name == "book00001.xlsx":
        os._exit(1)
    if name == "book00002.xlsx":
        time.sleep(600)
    if name == "book00003.xlsx":
        raise ValueError("\udcff odd")
    return {"sheets": 1}, []


hang_or_die.__module__ = "__main__"


def test_a_bad_file_costs_only_itself(client, archive, tmp_path):
    files = fleet.list_files(archive)
    assert len(files) == 13 and all("~$" not in file for file in files)
    with Journal(tmp_path / "journal.jsonl") as journal:
        fleet.run(client, files, journal, OPTIONS)
        results = journal.results(files)
    assert [result["file"] for result in results] == files
    status = {os.path.basename(result["file"]): result["status"] for result in results}
    assert sorted(name for name in status if status[name] == "unreadable") == [
        "damaged.xlsx", "evil=\n.xlsx", "text.XLSX"]
    assert list(status.values()).count("ok") == 10
    demo = next(result for result in results if result["file"].endswith("/demo.xlsx"))
    assert demo["row"]["sheets"] == 5 and demo["row"]["cells_by_rules"] > 100
    good = next(result for result in results if result["file"].endswith("/book00000.xlsx"))
    assert good["row"]["warnings"] == 1
    assert "never-holds" in [finding["code"] for finding in good["findings"]]


def test_a_file_that_hangs_or_kills_its_worker_costs_only_itself(client, archive, tmp_path):
    files = [file for file in fleet.list_files(archive) if "book" in file]
    options = inspect_workbook.Options(seconds=0.5, grace=0.5)
    with Journal(tmp_path / "journal.jsonl") as journal:
        fleet.run(client, files, journal, options, inspect=hang_or_die)
        results = journal.results(files)
    assert [result["status"] for result in results] == (
        ["ok", "lost", "lost", "failed"] + ["ok"] * 5)
    assert "ValueError" in results[3]["error"]


def test_a_worker_that_is_long_in_starting_again_is_not_given_up():
    with dask.config.set({"distributed.deploy.lost-worker-timeout": "1 ms"}), \
            fleet.start_workers(1) as cluster, distributed.Client(cluster) as client:
        assert isinstance(client.submit(os._exit, 1).exception(), distributed.KilledWorker)
        client.wait_for_workers(1, timeout=60)


def test_a_slow_file_is_bounded_by_its_budget(archive):
    options = inspect_workbook.Options(seconds=0.001)
    result = inspect_workbook.work(str(archive / "demo.xlsx"), options)
    assert result["status"] == "over budget" and "seconds" in result["error"]
    assert result["seconds"] < 2


def test_a_run_goes_on_where_it_ended(client, archive, tmp_path):
    files = [file for file in fleet.list_files(archive) if "book" in file]
    path = tmp_path / "journal.jsonl"
    with Journal(path) as journal:
        fleet.run(client, files[:4], journal, OPTIONS)
    lines = path.read_bytes().splitlines(keepends=True)
    path.write_bytes(b"".join(lines[:3]) + lines[3][:20])  # killed while it wrote
    with Journal(path) as journal:
        assert sum(map(journal.has, files)) == 3
        fleet.run(client, files, journal, OPTIONS)
    after = path.read_bytes().splitlines(keepends=True)
    assert after[:3] == lines[:3] and len(after) == len(files)
    assert all(json.loads(line)["status"] == "ok" for line in after)


def test_a_file_that_has_changed_is_inspected_again(archive, tmp_path):
    file = tmp_path / "demo.xlsx"
    shutil.copy(DEMO, file)
    with Journal(tmp_path / "journal.jsonl") as journal:
        journal.add(str(file), inspect_workbook.work(str(file), OPTIONS))
        assert journal.has(str(file))
        file.write_bytes(file.read_bytes() + b" ")
        assert not journal.has(str(file))


def test_a_text_of_a_file_stays_one_field_and_no_formula(tmp_path):
    rows = [{"file": "a,b\n\x1b[2Jc", "error": "=1+1"}, {"file": "\udcff", "more": 2}]
    tables.write_csv(tmp_path / "out.csv", rows)
    with (tmp_path / "out.csv").open(newline="", encoding="utf-8") as file:
        assert list(csv.reader(file)) == [["file", "error", "more"], ["a,b  [2Jc", "'=1+1", ""],
                                          [" ", "", "2"]]


def test_the_program_writes_its_tables(archive, tmp_path):
    command = [sys.executable, str(FLEET / "fleet.py"), str(archive), str(tmp_path), "--now", NOW]
    first = subprocess.run(command, capture_output=True, text=True, timeout=600)
    assert first.returncode == 1, first.stderr
    assert "13 of 13 files, 3 not read" in first.stderr
    assert first.stdout.split() == [str(tmp_path / "files.csv"), str(tmp_path / "findings.csv")]
    with (tmp_path / "files.csv").open(newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    assert len(rows) == 13 and sum(row["status"] == "ok" for row in rows) == 10
    with (tmp_path / "findings.csv").open(newline="", encoding="utf-8") as file:
        assert sum(row["code"] == "never-holds" for row in csv.DictReader(file)) == 9
