# For the scripts that check includes; they read this file.

failed=0
# forbid PATTERN FILES...: none of the files or folders may include a header that matches.
forbid() {
  local pattern=$1
  shift
  if grep -rnE "^#include [\"<]($pattern)" --include='*.h' --include='*.cpp' "$@"; then
    echo "$(basename "$0" .sh): the lines above point the wrong way ($* may not see $pattern)" >&2
    failed=1
  fi
}
