#!/usr/bin/env bash
# Installs the build into a directory of its own and uses it as a stranger would:
#   - the programs in examples/ and tests/install/consumer, configured with CMake against the
#     installed package, build and run, and print what they should. They are built in a folder that
#     comes first where headers are looked up, and has a broken file of the name of every header;
#   - a component that is not installed is refused by its name;
#   - the first program builds with what pkg-config says, and runs;
#   - every installed header compiles against the installed tree alone, with the zorv/ before its
#     name and without;
#   - a header that includes one that is not installed cannot be installed.
#
# check_install.sh BUILD_DIRECTORY SOURCE_DIRECTORY COMPILER
set -euo pipefail
build=$1 sources=$2 compiler=$3
work=$build/install-check
prefix=$work/prefix

rm -rf "$work"
cmake --install "$build" --prefix "$prefix" >/dev/null
[ -x "$prefix/bin/cndfrmt" ]
"$prefix/bin/cndfrmt" --help >/dev/null
# The module that draws is where the tool looks for it, finds all that it needs, and is not loaded
# before it is needed.
module=$(find "$prefix" -path '*/cndfrmt/cndfrmt_draw.so')
[ -n "$module" ]
if ldd "$module" | grep 'not found' || ldd "$prefix/bin/cndfrmt" | grep -i cairo; then
  exit 1
fi

# What each installed header is called.
(cd "$prefix/include" && find zorv -name '*.h' | sort) >"$work/headers.txt"
[ "$(wc -l <"$work/headers.txt")" -gt 80 ]

# An application that has a file of the name of each, without the zorv/.
while IFS= read -r header; do
  mkdir -p "$work/application/$(dirname "${header#zorv/}")"
  echo "#error \"the application's own ${header#zorv/}\"" >"$work/application/${header#zorv/}"
done <"$work/headers.txt"

# build_consumer FOLDER NAME: into $work/NAME.
build_consumer() {
  cmake -G Ninja -S "$sources/$1" -B "$work/$2" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror -I$work/application" >/dev/null
  cmake --build "$work/$2"
}

# check_output FILE COMMAND...: the command succeeds, and prints what the file holds.
check_output() {
  "${@:2}" >"$work/output.txt"
  diff "$sources/$1" "$work/output.txt"
}

workbook=$sources/examples/demo.xlsx
build_consumer examples examples
"$work/examples/consumer/whole_table"
check_output examples/consumer/first_program.txt "$work/examples/consumer/first_program"
for example in grid_view export_html sqlite_rows; do
  check_output examples/$example/expected.txt "$work/examples/$example/$example"
done
python3 "$sources/examples/live/test_live_sheet.py" "$work/examples/live/live_sheet" 100000
check_output examples/explain_cell/expected.txt \
  "$work/examples/explain_cell/explain_cell" "$workbook" Invoices E4

build_consumer tests/install/consumer workbook-consumer
diff <("$prefix/bin/cndfrmt" resolve --format csv "$workbook" 2>/dev/null | sed 1d | cut -d, -f1,2) \
  <("$work/workbook-consumer/read_workbook" "$workbook")

# refuse MESSAGE COMMAND...: the command fails, and its standard error has the message.
refuse() {
  local message=$1
  shift
  if "$@" >/dev/null 2>"$work/refusal.txt" || ! grep -qF "$message" "$work/refusal.txt"; then
    echo "check_install: not refused with \"$message\": $*" >&2
    cat "$work/refusal.txt" >&2
    exit 1
  fi
}

refuse 'Its component Charts is not installed' \
  cmake -S "$sources/tests/install/missing_component" -B "$work/missing" \
  -DCMAKE_PREFIX_PATH="$prefix"

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name ConditionalFormatters.pc)")
export PKG_CONFIG_PATH
read -ra compile_flags < <(pkg-config --cflags ConditionalFormatters-Workbook)
read -ra link_flags < <(pkg-config --libs ConditionalFormatters)
libraries=$(pkg-config --variable=libdir ConditionalFormatters)
"$compiler" "${compile_flags[@]}" "$sources/examples/consumer/first_program.cpp" \
  "${link_flags[@]}" -Wl,-rpath,"$libraries" -o "$work/first-program-by-pkg-config"
"$work/first-program-by-pkg-config" >/dev/null

sed -E 's|^zorv/(.*)$|#include <&>\n#include <\1>|' "$work/headers.txt" >"$work/every_header.cpp"
"$compiler" "${compile_flags[@]}" -fsyntax-only "$work/every_header.cpp"

mkdir -p "$work/hidden/zorv"
echo '#include "DOM/Hidden.h"' >"$work/hidden/zorv/Open.h"
refuse 'Open.h includes "DOM/Hidden.h", which is not installed' \
  cmake -D CNDFRMT_HEADER_ROOT="$work/hidden/zorv" \
  -D CMAKE_INSTALL_MANIFEST_FILES="$work/hidden/zorv/Open.h" \
  -P "$sources/cmake/RootIncludes.cmake"
