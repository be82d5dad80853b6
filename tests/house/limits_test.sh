#!/usr/bin/env bash
# Fails when a function under src/ has more than 45 lines, or a file more than 400.
#
#   limits_test.sh              checks src/ of this repository
#   limits_test.sh --self-test  plants a long function and a long file, and checks that both are found
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
mostLines=400
mostFunctionLines=45

# The code is laid out by scripts/check-format: a function begins at the indent at which it ends.
longFunctions() { # FILE...
  awk -v most="$mostFunctionLines" '
    function indentOf(line) { match(line, /^ */); return RLENGTH }
    function begins(line) { return line !~ /^ *(\/\/|#|}|public:|private:|protected:)/ && line !~ /^ *$/ }
    FNR == 1 { delete start; delete head }
    {
      indent = indentOf($0)
      if (indent > 2 || $0 ~ /^ *$/) next
      if ($0 ~ /^ *}/) {
        if ((indent in start) && head[indent] ~ /\(/ && head[indent] !~ /^ *(class|struct|enum|union|namespace) /) {
          count = FNR - start[indent] + 1
          if (count > most) print FILENAME ":" start[indent] ": a function of " count " lines; " most " at most"
        }
        delete start[indent]
      } else if (begins($0)) {
        if (!(indent in start)) { start[indent] = FNR; head[indent] = $0 }
        # A declaration, or a function on one line.
        if ($0 ~ /[;}]( *\/\/.*)?$/) delete start[indent]
      } else delete start[indent]
    }' "$@"
}

longFiles() { # FILE...
  awk -v most="$mostLines" '
    FNR == most + 1 { print FILENAME ": more than " most " lines" }' "$@"
}

check() { # FOLDER
  local files found
  mapfile -t files < <(find "$1/src" -type f \( -name '*.h' -o -name '*.cpp' \) | LC_ALL=C sort)
  found=$(longFunctions "${files[@]}"; longFiles "${files[@]}")
  if [[ -z $found ]]; then return 0; fi
  printf '%s\n' "$found"
  return 1
}

fail() { echo "limits_test: $1" >&2; exit 1; }

selfTest() {
  local tree found
  tree=$(mktemp -d)
  # shellcheck disable=SC2064  # the folder of now
  trap "rm -rf '$tree'" EXIT
  mkdir "$tree/src"
  { echo 'void fine() {'; for _ in {1..43}; do echo '  work();'; done; echo '}'; } >"$tree/src/fine.cpp"
  check "$tree" || fail "self-test: a function of 45 lines was refused"
  { echo 'class Long {'; echo '  void tooLong(int a,'; echo '               int b) {'; for _ in {1..43}; do echo '    work();'; done
    echo '  }'; echo '};'; } >"$tree/src/long.cpp"
  for _ in {1..401}; do echo '// a line'; done >"$tree/src/big.h"
  if found=$(check "$tree"); then fail "self-test: the planted ones were let through"; fi
  [[ $found == "$tree/src/long.cpp:2: a function of 46 lines; 45 at most
$tree/src/big.h: more than 400 lines" ]] || fail "self-test: found something else: $found"
}

if [[ ${1:-} == --self-test ]]; then selfTest; exit 0; fi
check "$here/../.." || fail "look at what is longer than it should be"
