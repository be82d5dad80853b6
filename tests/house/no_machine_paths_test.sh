#!/usr/bin/env bash
# A path of somebody's machine in a text helps nobody else, and breaks what relies on it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)

# Home folders, and folders that only a machine of one maker has. The brackets keep this file from
# finding itself.
pattern='(^|[^A-Za-z0-9_.$}/])(/(home|root|Users|work|mnt|media|builds|workspace)/[A-Za-z0-9_.-]|[A-Za-z]:\\+Users\\)'

found() { # FOLDER
  if git -C "$1" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git -C "$1" grep -I -n -E -e "$pattern" -- .
  else
    grep -r -I -n -E --exclude-dir=build --exclude-dir='build-*' --exclude-dir=out --exclude-dir=node_modules \
      -e "$pattern" "$1"
  fi
}

# The pattern itself must find what it is for.
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
printf '%s\n' "include \"/ho""me/somebody/project/file.h\"" >"$sandbox/planted.txt"
if ! found "$sandbox" >/dev/null; then
  echo "FAILED: a planted path was not found" >&2
  exit 1
fi

if found "$root"; then
  echo "FAILED: the lines above name a path of one machine" >&2
  exit 1
fi
