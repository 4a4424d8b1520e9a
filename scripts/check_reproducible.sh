#!/usr/bin/env bash
# Fails when the packages of the last commit, which `make package` has left in build/package/packages,
# differ in a byte from those of a second build in another folder. Takes the time of a whole build;
# nothing runs it but people.
#
#   check_reproducible.sh [FOLDER]     builds in FOLDER, which must not exist, and leaves it there
set -euo pipefail
cd "$(dirname "$0")/.."

if [ -n "$(git status --porcelain)" ]; then
  echo "check_reproducible: commit first, then make package" >&2
  exit 2
fi
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
packages=$PWD/build/package/packages

if [ $# = 1 ]; then
  second=$1
else
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  second=$work/another/folder
fi
mkdir -p "$(dirname "$second")"
mkdir "$second"
git archive HEAD | tar -x -C "$second"
(
  cd "$second"
  cmake --preset package >/dev/null
  cmake --build --preset package --target package >/dev/null
)

# The names tell if one of the builds has left out a package.
diff <(ls "$packages") <(ls "$second/build/package/packages")
for package in "$packages"/*.deb; do
  cmp "$package" "$second/build/package/packages/$(basename "$package")"
  (cd "$packages" && sha256sum "$(basename "$package")")
done
