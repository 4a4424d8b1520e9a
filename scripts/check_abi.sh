#!/usr/bin/env bash
# Compares the libraries of the working tree with those of the last tag by abidiff. Fails when a
# library keeps its soname although something that the tag's library exports has changed: a function,
# or a type of an installed header. Additions are accepted. Builds both, with debug information.
set -euo pipefail
cd "$(dirname "$0")/.."

if ! tag=$(git describe --tags --abbrev=0 --match 'v[0-9]*' 2>/dev/null); then
  echo "check_abi: there is no tag v... yet, so there is nothing to compare with"
  exit 0
fi
command -v abidiff >/dev/null || {
  echo "check_abi: install the package abigail-tools" >&2
  exit 2
}

work=$PWD/build/abi
# install_libraries SOURCES NAME: into $work/NAME/installed.
install_libraries() {
  local build=$work/$2
  cmake -G Ninja -S "$1" -B "$build" -D CMAKE_BUILD_TYPE=Debug -D CMAKE_UNITY_BUILD=ON \
    -D CNDFRMT_BUILD_TOOL=OFF -D CNDFRMT_BUILD_TESTS=OFF -D CMAKE_INSTALL_LIBDIR=lib >/dev/null
  cmake --build "$build"
  cmake --install "$build" --prefix "$build/installed" >/dev/null
}
rm -rf "$work/sources"
mkdir -p "$work/sources"
git archive "$tag" | tar -x -C "$work/sources"
install_libraries "$work/sources" tag
install_libraries . now

soname_of() { objdump -p "$1" | awk '$1 == "SONAME" { print $2 }'; }
failed=0
for old in "$work"/tag/installed/lib/*.so; do
  new=$work/now/installed/lib/$(basename "$old")
  status=0
  # A type that no installed header has may change.
  abidiff --no-added-syms --headers-dir1 "$work/tag/installed/include" \
    --headers-dir2 "$work/now/installed/include" "$old" "$new" || status=$?
  # The bits of its status: 1 error, 2 wrong usage, 4 a change, 8 one that surely breaks programs.
  if ((status & 3)); then
    exit 2
  fi
  if ((status & 12)) && [ "$(soname_of "$old")" = "$(soname_of "$new")" ]; then
    echo "check_abi: $(basename "$old") has changed since $tag and keeps its soname" >&2
    failed=1
  fi
done
[ $failed = 1 ] || echo "check_abi: no library has changed under the soname that it has in $tag"
exit $failed
