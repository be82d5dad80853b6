#!/usr/bin/env bash
# Each script can be run, stops at the first error, and tells with --help what it does.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
status=0

complain() {
  echo "FAILED: scripts/$1 $2" >&2
  status=1
}

elsewhere=$(mktemp -d)
trap 'rm -rf "$elsewhere"' EXIT
cd "$elsewhere"

for script in "$root"/scripts/*; do
  name=$(basename "$script")
  bash -n "$script" || complain "$name" "is no valid script"
  if [[ $name == common.sh ]]; then continue; fi
  [[ -x $script ]] || complain "$name" "can't be run"
  grep -qx 'set -euo pipefail' "$script" || complain "$name" "doesn't stop at errors"
  help=$("$script" --help </dev/null 2>&1) || complain "$name" "has no --help"
  [[ $help == *"scripts/$name"* ]] || complain "$name" "doesn't say in its help how it is called"
done
exit $status
