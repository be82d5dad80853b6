#!/usr/bin/env bash
# Builds the foreign host against an installation of a build, and plays its cases.
#
#   foreign_host_test.sh build BUILD-FOLDER CMAKE COMPILER FLAGS [TOOLCHAIN-FILE]
#   foreign_host_test.sh play BUILD-FOLDER CASE [SURVEY]...
#
# All of it stands in BUILD-FOLDER/foreign_host: the installation, the host, and what the installed
# workbench has found in the surveys that the host registers.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
root=$(cd "$here/../.." && pwd -P)
step=$1
sandbox=$2/foreign_host
installation=$sandbox/installation
shift 2

fail() {
  echo "FAILED: $1" >&2
  exit 1
}

# A program for Windows runs under wine.
run() { # PROGRAM [argument]...
  if [[ -f $1.exe ]]; then
    "$root/scripts/under-wine" "$1.exe" "${@:2}"
  else
    "$@"
  fi
}

surveys=(lidar18 plant_hall)
lidar18=("$root"/examples/lidar18/{reference,unregistered}.txt)
plant_hall=("$root"/examples/plant_hall/nxyz/S{1,2,3,4,5}.txt)
plant_hall_weighted=("$root"/examples/plant_hall/nxyzw/S{6,7,8}.txt)

workbenchFinds() { # SURVEY
  case $1 in
    lidar18) run "$installation/bin/tiepoint" register --json --method pairwise --base reference "${lidar18[@]}" ;;
    plant_hall) run "$installation/bin/tiepoint" register --json --method pairwise --base S1 "${plant_hall[@]}" --nxyzw "${plant_hall_weighted[@]}" ;;
  esac
}

hostFinds() { # SURVEY CASE
  local program=$sandbox/build/foreign_host module=$installation/lib/tiepoint/TSL_Registration
  if [[ -f $module.dll ]]; then module+=.dll; else module+=.so; fi
  # The workbench has the drawing SDK's allocation operators, this host those of the system. The heap
  # of the C library is behind both, so that memory may cross; the sanitizer sees two names.
  export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}alloc_dealloc_mismatch=0
  local common=("$2" --module "$module" --out "$sandbox/results of $2")
  case $1 in
    lidar18) run "$program" "${common[@]}" --base reference --nxyz "${lidar18[@]}" ;;
    plant_hall) run "$program" "${common[@]}" --base S1 --nxyz "${plant_hall[@]}" --nxyzw "${plant_hall_weighted[@]}" ;;
  esac
}

# JSON, one key or value a line, as "path value": the figures that a host can know.
figuresOfJson() {
  awk '
    function path(   text, i) {
      for (i = 1; i <= depth; i++) text = text (i > 1 ? "." : "") (isList[i] ? count[i] - 1 : key[i])
      return text
    }
    { sub(/\r$/, ""); sub(/^ +/, ""); sub(/,$/, "") }
    /^[]}]$/ { depth--; next }
    {
      if (depth && isList[depth]) count[depth]++
      if (match($0, /^"[^"]*": /)) { key[depth] = substr($0, 2, RLENGTH - 4); $0 = substr($0, RLENGTH + 1) }
      if ($0 == "{" || $0 == "[") { isList[++depth] = $0 == "["; count[depth] = 0; next }
      gsub(/^"|"$/, "")
      print path(), $0
    }' | grep -E '^(import\.messages|groups|points|discrepancies|atBase|spread|commonPoints)[. ]' |
    grep -vE '\.(reason|residual|adjusted|sightings|covariance|transform\.(angleDegrees|axis|shift))[. ]|(discrepancies|atBase)\.mean '
}

# Both sides write a number in their own way; with 17 digits two doubles are the same or they aren't.
comparable() {
  awk '{ sub(/\r$/, "") } $2 ~ /^-?[0-9.]+(e[-+]?[0-9]+)?$/ && NF == 2 { $2 = sprintf("%.17g", $2) } { print }' |
    LC_ALL=C sort
}

build() { # CMAKE COMPILER FLAGS [TOOLCHAIN-FILE]
  local cmake=$1 options=(-DCMAKE_CXX_COMPILER="$2" -DCMAKE_CXX_FLAGS="$3") survey
  if [[ -n ${4:-} ]]; then options=(-DCMAKE_TOOLCHAIN_FILE="$4"); fi
  if command -v ccache >/dev/null; then
    export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  mkdir -p "$sandbox"
  rm -rf "$installation"
  "$cmake" --install "${sandbox%/*}" --prefix "$installation" >"$sandbox/log" 2>&1 ||
    { cat "$sandbox/log" >&2; fail "the installation"; }
  "$cmake" -G Ninja -S "$here/host" -B "$sandbox/build" -Dtiepoint_DIR="$installation/lib/cmake/tiepoint" \
    -DCMAKE_BUILD_TYPE=Debug -DCMAKE_COMPILE_WARNING_AS_ERROR=ON "${options[@]}" >"$sandbox/log" 2>&1 ||
    { cat "$sandbox/log" >&2; fail "the host finds the package"; }
  "$cmake" --build "$sandbox/build" --parallel 2 >"$sandbox/log" 2>&1 ||
    { cat "$sandbox/log" >&2; fail "the host compiles against the package"; }
  # Windows looks for a program's libraries beside it.
  if [[ -f $sandbox/build/foreign_host.exe ]]; then cp "$installation"/bin/*.dll "$sandbox/build/"; fi
  for survey in "${surveys[@]}"; do
    workbenchFinds "$survey" | figuresOfJson | comparable >"$sandbox/$survey.expected"
    [[ $(wc -l <"$sandbox/$survey.expected") -gt 500 ]] || fail "the workbench has figures of $survey"
  done
}

play() { # CASE [SURVEY]...
  local case=$1 survey found
  shift
  if (($# == 0)); then set -- "${surveys[@]}"; fi
  for survey in "$@"; do
    found="$sandbox/$survey of $case"
    hostFinds "$survey" "$case" >"$found.figures" || fail "$case, $survey: status $?"
    comparable <"$found.figures" >"$found.found"
    diff "$sandbox/$survey.expected" "$found.found" >&2 || fail "$case, $survey: the figures of the workbench"
  done
}

"$step" "$@"
