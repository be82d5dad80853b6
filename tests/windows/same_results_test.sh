#!/usr/bin/env bash
# The program for Windows prints and writes what the one of this system does, to the last digit, but
# for the ends of lines. It runs from an installation, in a folder with a Cyrillic name.
#
#   same_results_test.sh PROGRAM CMAKE BUILD-FOLDER-FOR-WINDOWS
set -euo pipefail

program=$1
cmake=$2
build=$3
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT

fail() {
  echo "FAILED: $1" >&2
  exit 1
}

installation=$sandbox/установка
"$cmake" --install "$build" --prefix "$installation" >"$sandbox/log" 2>&1 || { cat "$sandbox/log" >&2; fail "the installation"; }
for file in bin/tiepoint.exe bin/drawing_sdk.dll bin/ZorPointClouds.dll lib/tiepoint/TSL_Registration.dll; do
  [[ -f $installation/$file ]] || fail "the installation has $file"
done
# Once in a thousand times wine itself fails with this status when a program has done its work; what
# the program has written is compared either way.
windowsProgram() { "$root/scripts/under-wine" "$installation/bin/tiepoint.exe" "$@" || [[ $? == 127 ]]; }

hall=(--unit m --base S1 plant_hall/nxyz/S{1,2,3,4,5}.txt --nxyzw plant_hall/nxyzw/S{6,7,8}.txt)
files=(--common-points targets.txt --transforms transforms.json --report report.html --matrices matrices)

# Each run in a folder of its own, with the surveys of the examples and one that bears a Cyrillic name.
runAll() { # PROGRAM...
  cp -r "$root"/examples/{plant_hall,lidar18} .
  cp lidar18/unregistered.txt Станция.txt
  "$@" register "${hall[@]}" >summary.txt
  "$@" register "${hall[@]}" --exclude S4:T13 --json >result.json
  "$@" register "${hall[@]}" --method iterative --max-iterations 500 >iterative.txt 2>warnings.txt
  "$@" register "${hall[@]}" "${files[@]}" --quiet >quiet.txt
  "$@" register "${hall[@]}" --force --matrices polyworks --matrix-format 4x4 --report points.html --report-kind points --quiet
  "$@" register "${hall[@]}" --force --matrices trf --matrix-format trf --report groups.html --report-kind groups --quiet
  "$@" register --unit m --base Станция Станция.txt lidar18/reference.txt --document зал.tiepoint --apply \
    --cloud Станция=plant_hall/clouds/S2.xyz --moved moved --matrices matrices --force >lidar18.txt
  "$@" groups --document зал.tiepoint --points >groups.txt
  "$@" clouds --document зал.tiepoint --json >clouds.json
  printf '%s\n' '{"jsonrpc":"2.0","id":1,"method":"session.begin"}' \
    '{"jsonrpc":"2.0","id":2,"method":"getAvailableGroups"}' | "$@" rpc --document зал.tiepoint >rpc.txt
  rm -r plant_hall lidar18 Станция.txt
}

mkdir "$sandbox/here" "$sandbox/windows"
(cd "$sandbox/here" && runAll "$program")
(cd "$sandbox/windows" && runAll windowsProgram)

# What is in text mode ends its lines there in two characters.
for file in summary.txt targets.txt report.html polyworks/S2.txt trf/S2.txt points.html; do
  lines=$(wc -l <"$sandbox/windows/$file")
  [[ $lines -gt 0 && $(grep -c $'\r$' "$sandbox/windows/$file") == "$lines" ]] || fail "$file is in text mode"
done

# A drawing is a database, whose pages need not be the same; what it holds is told above.
rm "$sandbox"/{here,windows}/зал.tiepoint
# Paths are written in the manner of each side, and full ones begin with the folder of its runs.
find "$sandbox/windows" -type f -exec sed -i -E -e 's/\r$//' -e 's#\\\\?#/#g' -e "s#[A-Z]:$sandbox/windows/##g" {} +
find "$sandbox/here" -type f -exec sed -i "s#$sandbox/here/##g" {} +
diff -r "$sandbox/here" "$sandbox/windows" >&2 || fail "both systems have the same results"
[[ $(find "$sandbox/here" -type f | wc -l) -ge 30 ]] || fail "the runs have written what they were told to"
