#!/usr/bin/env bash
# Checks the types of the Python package, and that the stub of its extension is as the extension is.
#
# check_types.sh PYTHON CACHE, from the root of the sources, with the built package in PYTHONPATH.
set -euo pipefail
python=$1 cache=$2

MYPYPATH=python "$python" -m mypy --config-file tests/python/mypy.ini --cache-dir "$cache" \
  -p conditional_formatters
MYPYPATH=python "$python" -m mypy.stubtest --mypy-config-file tests/python/mypy.ini \
  --allowlist tests/python/stubtest_allowed.txt conditional_formatters._core
