#!/usr/bin/env bash
# Installs the Debian packages of some lists that are missing; does nothing when none is.
#
#   install_packages.sh LIST...     lists of this folder, such as packages.txt
#
# A command behind a package stands for it: a machine that has the command from elsewhere does not
# get the package, which might not agree with it.
set -euo pipefail
cd "$(dirname "$0")"

missing=()
while read -r package command; do
  [ -z "$command" ] || ! command -v "$command" >/dev/null || continue
  dpkg-query --show --showformat='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
    missing+=("$package")
done < <(grep -hv '^#' "$@")
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing ${#missing[@]} packages: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update --quiet=2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install --yes --quiet=2 --no-install-recommends "${missing[@]}"
