#!/usr/bin/env bash
# The rooms of the workbench below report and cli decide and compute; what people read stands in those
# two. Fails where one of the lower rooms holds a sentence, an option's name or an exit status, or
# writes to standard error.
#
#   rooms_test.sh              checks src/ of this repository
#   rooms_test.sh --self-test  plants one of each, and checks that all are found
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
rooms=(io values geometry session naming survey)

# Texts with blanks that are no sentences for people, with the reason: FILE, a bar, the text, a bar.
allowed='values/session_state.cpp|no group of that id in the session|a mistake of the caller
values/registration.cpp|no group of that id|a mistake of the caller
session/iteration_course.cpp|<p>Registration settings</p>|read from a report
session/iteration_course.cpp|<p>actual/preset number iterations: |read from a report
session/iteration_course.cpp|<p>actual/preset maximum discrepancy: |read from a report
io/text_encoding.cpp|the byte 0x%02X at offset %zu isn|the encoding names the byte; every face passes it on
io/text_encoding.cpp|the character |the same
io/text_encoding.cpp|) isn|the same
io/durable_file.cpp|The file |the system names the reason; every face passes it on
io/durable_file.cpp|can|the system names the reason; every face passes it on
values/layouts.h|x y z|the form of a line'

# Prints FILE:LINE: what is wrong, for each wrong place in the rooms under FOLDER.
wrongPlaces() {
  local room
  for room in "${rooms[@]}"; do
    if [[ ! -d $1/src/workbench/$room ]]; then continue; fi
    find "$1/src/workbench/$room" -type f \( -name '*.h' -o -name '*.cpp' \) -print0 | LC_ALL=C sort -z |
      (cd "$1/src/workbench" && xargs -0 -r awk -v root="$1/src/workbench/" -v allowed="$allowed" '
        function isAllowed(file, text,   i, part) {
          for (i = 1; i <= rows; i++) {
            split(row[i], part, "|")
            if (part[1] == file && index(text, part[2]) > 0) return 1
          }
          return 0
        }
        BEGIN { rows = split(allowed, row, "\n") }
        {
          file = substr(FILENAME, length(root) + 1)
          line = $0
          if (line ~ /^[ \t]*#[ \t]*include|static_assert/) next
          place = "src/workbench/" file ":" FNR
          rest = line
          code = ""
          while (match(rest, /"([^"\\]|\\.)*"/)) {
            before = substr(rest, 1, RSTART - 1)
            if (before ~ /\/\//) break
            code = code before
            text = substr(rest, RSTART + 1, RLENGTH - 2)
            rest = substr(rest, RSTART + RLENGTH)
            if (isAllowed(file, text)) continue
            if (text ~ /[A-Za-z,;:]+ [A-Za-z]/) print place ": a sentence: \"" text "\""
            else if (text ~ /^--[a-z]/) print place ": the name of an option: \"" text "\""
          }
          code = code rest
          sub(/\/\/.*/, "", code)
          if (code ~ /ExitStatus|[^a-zA-Z_]exit\(/) print place ": an exit status"
          if (code ~ /stderr|std::cerr|std::clog/) print place ": writes to standard error"
        }')
  done
}

fail() { echo "rooms_test: $1" >&2; exit 1; }

selfTest() {
  local tree
  tree=$(mktemp -d)
  # shellcheck disable=SC2064  # the folder of now
  trap "rm -rf '$tree'" EXIT
  mkdir -p "$tree/src/workbench"/{survey,report}
  cat >"$tree/src/workbench/survey/a.cpp" <<'CODE'
#include "no sentence.h"
// "A comment is none" either; return ExitStatus::file
throw Error("the file is missing");
const char* option = "--exclude";
return ExitStatus::file;
std::cerr << 'x';
const char* key = "no-such-group";
constexpr const char* separators = " \t,;\r";
CODE
  cp "$tree/src/workbench/survey/a.cpp" "$tree/src/workbench/report/a.cpp"
  [[ $(wrongPlaces "$tree") == 'src/workbench/survey/a.cpp:3: a sentence: "the file is missing"
src/workbench/survey/a.cpp:4: the name of an option: "--exclude"
src/workbench/survey/a.cpp:5: an exit status
src/workbench/survey/a.cpp:6: writes to standard error' ]] || fail "self-test: found something else: $(wrongPlaces "$tree")"
}

if [[ ${1:-} == --self-test ]]; then selfTest; exit 0; fi
root=$(cd "$here/../.." && pwd -P)
found=$(wrongPlaces "$root")
if [[ -z $found ]]; then exit 0; fi
printf '%s\n' "$found"
fail "these belong into report or cli"
