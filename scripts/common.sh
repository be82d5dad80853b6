# What all scripts here share. Sourced, never run: gives `root`, and the helpers below.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# Progress goes to standard error, so that results on standard output can be piped.
say() { printf '== %s\n' "$*" >&2; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$1" >&2
  exit "${2:-1}"
}

# The comment block at the top of a script is its help text.
printHelp() { sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"; }

# Tracked and new files, without the ignored ones; all files where there is no git.
# Arguments: patterns of names, such as '*.cpp'. Prints paths from `root`.
sourceFiles() {
  if git -C "$root" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git -C "$root" ls-files --cached --others --exclude-standard -- "$@" | while IFS= read -r file; do
      if [[ -f $root/$file ]]; then printf '%s\n' "$file"; fi
    done
  else
    local pattern matches=()
    for pattern in "$@"; do matches+=(-o -name "${pattern##*/}"); done
    (cd "$root" && find . \( -path ./build -o -path './build-*' -o -path ./out -o -name node_modules \) -prune \
      -o -type f \( "${matches[@]:1}" \) -print | sed 's|^\./||' | sort)
  fi
}

asRoot() {
  if [[ $(id -u) == 0 ]]; then
    "$@"
  elif [[ -t 0 ]]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}

# As many compile jobs as there are cores, but no more than the memory has room for: a file that
# instantiates a parser or an SVD takes well over half a gigabyte.
buildJobs() {
  local cores memory byMemory
  cores=$(nproc)
  memory=$(awk '/^MemAvailable:/ { print int($2 / 1024) }' /proc/meminfo 2>/dev/null || true)
  byMemory=$(( ${memory:-4096} / 1000 ))
  if ((byMemory < 1)); then byMemory=1; fi
  echo $((cores < byMemory ? cores : byMemory))
}
