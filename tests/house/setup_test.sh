#!/usr/bin/env bash
# Runs scripts/setup against a pretended system: stand-ins for dpkg-query, apt-get and id that keep
# the list of installed packages in a file.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
mkdir "$sandbox/bin"

cat >"$sandbox/bin/dpkg-query" <<'FAKE'
#!/usr/bin/env bash
shift 2
status=0
for package in "$@"; do
  if grep -qxF "$package" "$SANDBOX/installed"; then echo "installed $package"; else status=1; fi
done
exit $status
FAKE
cat >"$sandbox/bin/apt-get" <<'FAKE'
#!/usr/bin/env bash
echo "apt-get $*" >>"$SANDBOX/calls"
case $1 in
  update) exit "${UPDATE_STATUS:-0}" ;;
  install) for word in "${@:2}"; do
    if [[ $word != -* && $word != "${UNAVAILABLE:-}" ]]; then echo "$word" >>"$SANDBOX/installed"; fi
  done ;;
esac
FAKE
printf '#!/bin/sh\necho "${FAKE_USER_ID:-0}"\n' >"$sandbox/bin/id"
printf '#!/usr/bin/env bash\necho "sudo" >>"$SANDBOX/calls"\nshift\nexec "$@"\n' >"$sandbox/sudo"
chmod +x "$sandbox"/bin/* "$sandbox/sudo"
export SANDBOX=$sandbox

setup() {
  : >"$sandbox/calls"
  PATH="$sandbox/bin:$PATH" "$root/scripts/setup" "$@" >"$sandbox/out" 2>&1 </dev/null
}

fail() {
  echo "FAILED: $1" >&2
  cat "$sandbox/out" "$sandbox/calls" >&2
  exit 1
}

: >"$sandbox/installed"
setup build || fail "a bare system is set up"
grep -qx 'apt-get update -qq' "$sandbox/calls" || fail "the lists are renewed before the installation"
[[ $(sed -n 1p "$sandbox/calls") == 'apt-get update -qq' ]] || fail "the lists are renewed first"
grep -q '^apt-get install .* libeigen3-dev' "$sandbox/calls" || fail "libeigen3-dev is installed"
grep -q '== installing .* libeigen3-dev' "$sandbox/out" || fail "it says what it installs"
if grep -q libbenchmark "$sandbox/calls"; then fail "a group that wasn't asked for is left alone"; fi

setup build || fail "a complete system is left alone"
[[ ! -s $sandbox/calls ]] || fail "nothing is called when nothing is missing"
[[ ! -s $sandbox/out ]] || fail "nothing is said when nothing is missing"

setup build bench || fail "a second group is added"
grep -qx 'apt-get install -y -q --no-install-recommends libbenchmark-dev libnanoflann-dev' "$sandbox/calls" ||
  fail "only what is missing is installed"

setup windows || fail "what the build for Windows needs is added"
grep -q '^apt-get install .* wine64' "$sandbox/calls" || fail "wine is installed for the tests"
if grep -q ' libeigen3-dev' "$sandbox/calls"; then fail "what is there isn't installed again"; fi

sed -i '/^libsqlite3-dev$/d' "$sandbox/installed"
UPDATE_STATUS=100 setup build || fail "lists that can't be renewed are no failure by themselves"
grep -qxF libsqlite3-dev "$sandbox/installed" || fail "the installation is tried with the old lists"

sed -i '/^libsqlite3-dev$/d' "$sandbox/installed"
if UNAVAILABLE=libsqlite3-dev setup build; then fail "a package that didn't come is an error"; fi
grep -q 'still missing after the installation: libsqlite3-dev' "$sandbox/out" || fail "the error names the package"

ln -s "$sandbox/sudo" "$sandbox/bin/sudo"
FAKE_USER_ID=1000 setup build || fail "another user installs by sudo"
grep -qx sudo "$sandbox/calls" || fail "sudo is used"

if setup nonsense; then fail "an unknown group is an error"; fi
grep -q 'no such group: nonsense' "$sandbox/out" || fail "the error names the group"
