#!/usr/bin/env bash
# Fails when a source is not laid out as .clang-format says; lays it out with --fix.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=(--dry-run --Werror)
[ "${1:-}" = "--fix" ] && mode=(-i)
git ls-files -z '*.h' '*.cpp' | xargs -0 --max-procs="$(nproc)" --max-args=64 clang-format "${mode[@]}"
