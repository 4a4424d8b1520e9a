#!/usr/bin/env bash
# Lets fuzz targets look for inputs that break something; fails when one finds any.
#
#   run_fuzzers.sh SECONDS [TARGET...]     targets such as formula_text; all of them by default
#
# A target searches for some seconds without checks of memory, which is ten times as quick. All
# inputs that lead it to new code then run under the sanitizers, which search on from there for a
# fifth of the time.
#
# A run begins with the stored inputs in fuzz/corpus/ and with those of earlier runs, which are kept
# in build/fuzz/inputs/. What breaks something is written to build/fuzz/findings/.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=$1
shift
targets=("$@")
if [ $# -eq 0 ]; then
  for program in build/fuzz/bin/fuzz_*; do
    targets+=("${program##*/fuzz_}")
  done
fi

# Memory is checked as by default; less of it is remembered, which makes targets twice as fast.
export ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=8${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export TZ=UTC # or the C library looks for a change of the time zone with each archive

# search BUILD TARGET SECONDS: false if the target found something.
search() {
  local build=$1 target=$2 seconds=$3
  local inputs=build/fuzz/inputs/$target dictionary=fuzz/dictionaries/$target.dict
  local log=build/fuzz/$target-$build.log
  local longest=4096 # bytes of an input: longer ones take more time and find nothing more
  mkdir -p "$inputs" build/fuzz/findings
  case $target in
    number_text) longest=256 ;;
    formula_* | whole_table) dictionary=fuzz/dictionaries/formula.dict longest=1024 ;;
    *_part | render_workbook) dictionary=fuzz/dictionaries/xml.dict ;;
    container) longest=16384 ;;
  esac
  # The entropic schedule takes most of the time once some hundred inputs are kept.
  local options=(-entropic=0 -print_funcs=0 -max_total_time="$seconds" -max_len="$longest"
    -timeout=10 -rss_limit_mb=2560 -print_final_stats=1
    -artifact_prefix="build/fuzz/findings/$target-")
  [ ! -e "$dictionary" ] || options+=(-dict="$dictionary")
  if "build/$build/bin/fuzz_$target" "${options[@]}" "$inputs" "fuzz/corpus/$target" >"$log" 2>&1; then
    echo "$target ($build): $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs, nothing found"
  else
    tail -n 40 "$log"
    echo "$target ($build): found an input, see build/fuzz/findings/ and $log"
    return 1
  fi
}

failed=0
for target in "${targets[@]}"; do
  if ! search fuzz-quick "$target" "$seconds" || ! search fuzz "$target" $((seconds / 5 + 1)); then
    failed=1
  fi
done
exit $failed
