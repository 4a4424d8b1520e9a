#!/usr/bin/env bash
# Installs the Debian packages of scripts/packages.txt that are missing; does nothing when none is.
set -euo pipefail
cd "$(dirname "$0")"

missing=()
while read -r package; do
  dpkg-query --show --showformat='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
    missing+=("$package")
done < <(grep -v '^#' packages.txt)
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update --quiet=2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install --yes --quiet=2 --no-install-recommends "${missing[@]}"
