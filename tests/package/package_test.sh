#!/usr/bin/env bash
# Installs a build into a folder, moves that folder, and uses it from there: by hand and from another
# project.
#
#   package_test.sh CMAKE BUILD-FOLDER COMPILER [FLAGS]
set -euo pipefail

cmake=$1
build=$2
compiler=$3
flags=${4:-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
survey=$here/../../examples/lidar18
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT

fail() {
  echo "FAILED: $1" >&2
  exit 1
}

expectEqual() { # WHAT EXPECTED FOUND
  if [[ $2 != "$3" ]]; then
    printf 'expected:\n%s\nfound:\n%s\n' "$2" "$3" >&2
    fail "$1"
  fi
}

# The run path of a binary. It must name no folder of the machine that built it, and hold no empty
# entry, which would be the working directory.
programRunPath='$ORIGIN:$ORIGIN/../lib/tiepoint'
runPath() { objdump -p "$1" | sed -n 's/^ *R[UN]*PATH *//p'; }

registerSurvey() { # PROGRAM
  (cd / && env -i PATH=/usr/bin:/bin "$1" register --unit m --base reference "$survey/reference.txt" "$survey/unregistered.txt")
}

"$cmake" --install "$build" --prefix "$sandbox/first" >"$sandbox/log" 2>&1 || { cat "$sandbox/log" >&2; fail "the installation"; }
mv "$sandbox/first" "$sandbox/moved"

expectEqual "the programs and libraries of an installation" \
  "bin/tiepoint
lib/tiepoint/TSL_Registration.so
lib/tiepoint/ZorPointClouds.so
lib/tiepoint/drawing_sdk.so
lib/tiepoint/libtiepoint_survey.a" \
  "$(cd "$sandbox/moved" && find bin lib/tiepoint -type f | LC_ALL=C sort)"
expectEqual "the program's run path" "$programRunPath" "$(runPath "$sandbox/moved/bin/tiepoint")"
for library in TSL_Registration ZorPointClouds drawing_sdk; do
  expectEqual "the run path of $library" '$ORIGIN' "$(runPath "$sandbox/moved/lib/tiepoint/$library.so")"
done
registerSurvey "$sandbox/moved/bin/tiepoint" | grep -q '50\.525' || fail "the moved installation registers the survey"

mkdir "$sandbox/bin"
cp "$build"/bin/{tiepoint,TSL_Registration.so,ZorPointClouds.so,drawing_sdk.so} "$sandbox/bin/"
expectEqual "the program's run path in the build tree" "$programRunPath" "$(runPath "$sandbox/bin/tiepoint")"
for library in TSL_Registration ZorPointClouds drawing_sdk; do
  expectEqual "the run path of $library in the build tree" '$ORIGIN' "$(runPath "$sandbox/bin/$library.so")"
done
registerSurvey "$sandbox/bin/tiepoint" | grep -q '50\.525' || fail "the moved build tree registers the survey"

# A header that only works after another one is a trap for whoever sorts includes.
headersThatNeedOthers() {
  (cd "$sandbox/moved/include/tiepoint" && find . -name '*.h' -print0 | sort -z |
    xargs -0 -P "$(nproc)" -I HEADER sh -c '
      printf "#include \"HEADER\"\n#include \"HEADER\"\n" |
        "$0" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I. -x c++ - || echo HEADER' "$compiler")
}
expectEqual "the headers that need others before them" '' "$(headersThatNeedOthers)"

"$cmake" -G Ninja -S "$here/consumer" -B "$sandbox/consumer" -DCMAKE_PREFIX_PATH="$sandbox/moved" \
  -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" >"$sandbox/log" 2>&1 ||
  { cat "$sandbox/log" >&2; fail "another project finds the package"; }
"$cmake" --build "$sandbox/consumer" >"$sandbox/log" 2>&1 || { cat "$sandbox/log" >&2; fail "another project compiles against the package"; }
expectEqual "what another project's program prints" '11 22 33 7 1' "$("$sandbox/consumer/consumer")"

# The example of a program that registers by itself, taken along as its reader would take it.
cp -r "$here/../../examples/embedding" "$sandbox/example"
"$cmake" -G Ninja -S "$sandbox/example" -B "$sandbox/embedding" -DCMAKE_PREFIX_PATH="$sandbox/moved" \
  -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" >"$sandbox/log" 2>&1 ||
  { cat "$sandbox/log" >&2; fail "the example finds the package"; }
"$cmake" --build "$sandbox/embedding" >"$sandbox/log" 2>&1 || { cat "$sandbox/log" >&2; fail "the example compiles"; }
# The example keeps the system's allocation operators, so memory crosses from those to the drawing SDK's;
# both take it from the C heap.
export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}alloc_dealloc_mismatch=0
expectEqual "what the example prints" 'hall T1 0.000311
hall T2 0.000035
hall T3 0.000048
hall T4 0.000372
door T1 0.000622
door T2 0.000070
door T3 0.000096
door T4 0.000744
roof T1 0.000311
roof T2 0.000035
roof T3 0.000048
roof T4 0.000372
refused: no-such-group, base cellar' "$("$sandbox/embedding/embedding")"
