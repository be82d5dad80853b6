#!/usr/bin/env bash
# Every relative link in a Markdown file leads to a file or folder of the repository.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
# shellcheck source=scripts/common.sh
source "$root/scripts/common.sh"

# Prints each broken link of FILE as "file: link". Code blocks hold no links.
brokenLinks() {
  local link target
  sed '/^```/,/^```/d; s/`[^`]*`//g' "$1" | grep -oE '\]\([^)]+\)' | sed 's/^](//; s/)$//' | while IFS= read -r link; do
    case $link in
      http://* | https://* | mailto:* | '#'*) continue ;;
    esac
    target=${link%%#*}
    if [[ ! -e $(dirname "$1")/$target ]]; then printf '%s: %s\n' "$1" "$link"; fi
  done || true
}

sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
printf '[here](planted.md) and [nowhere](missing.md#part)\n' >"$sandbox/planted.md"
if [[ $(brokenLinks "$sandbox/planted.md") != "$sandbox/planted.md: missing.md#part" ]]; then
  echo "FAILED: the planted link was not found" >&2
  exit 1
fi

status=0
while IFS= read -r file; do
  broken=$(brokenLinks "$root/$file")
  if [[ -n $broken ]]; then
    echo "${broken//$root\//}" >&2
    status=1
  fi
done < <(sourceFiles '*.md')
exit $status
