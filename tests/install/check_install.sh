#!/usr/bin/env bash
# Installs the build into a directory of its own and uses it as a stranger would:
#   - the programs in examples/consumer, configured with CMake against the installed package, build
#     and run, and the first prints what its text file holds;
#   - the first program builds with what pkg-config says, and runs;
#   - every installed header compiles against the installed tree alone.
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

cmake -G Ninja -S "$sources/examples/consumer" -B "$work/consumer" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" >/dev/null
cmake --build "$work/consumer"
"$work/consumer/whole_table"
diff "$sources/examples/consumer/first_program.txt" <("$work/consumer/first_program")

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name ConditionalFormatters.pc)")
export PKG_CONFIG_PATH
read -ra compile_flags < <(pkg-config --cflags ConditionalFormatters)
read -ra link_flags < <(pkg-config --libs ConditionalFormatters)
libraries=$(pkg-config --variable=libdir ConditionalFormatters)
"$compiler" "${compile_flags[@]}" "$sources/examples/consumer/first_program.cpp" \
  "${link_flags[@]}" -Wl,-rpath,"$libraries" -o "$work/first-program-by-pkg-config"
"$work/first-program-by-pkg-config" >/dev/null

(cd "$prefix/include/zorv" && find . -name '*.h' | sort | sed -E 's|^\./(.*)$|#include <\1>|') \
  >"$work/every_header.cpp"
[ "$(wc -l <"$work/every_header.cpp")" -gt 40 ]
"$compiler" "${compile_flags[@]}" -fsyntax-only "$work/every_header.cpp"
