# Shared by the scenarios, which source it with their arguments.
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../../.." && pwd)
programs=$1
wine=$root/scripts/$2
prefix=$("$wine" printenv WINEPREFIX)
work=$(mktemp -d)
# A window that a failed test left open would keep everybody waiting for its output.
end_leftovers() {
  local process
  for process in $(pgrep -f QM5RFcPirConfigure.exe); do
    grep -qzxF "WINEPREFIX=$prefix" "/proc/$process/environ" 2>/dev/null && kill "$process"
  done
}
trap 'end_leftovers; rm -rf "$work"' EXIT
failed=0

# The object server's network file; a third argument "strict" makes it require all that is documented.
demands=${3:-}
use_network() {  # <demo file>
  cp "$root/demo/$1" "$work/network.json"
  [ "$demands" != strict ] || sed -i '1s/{/{"strict": {"all": true},/' "$work/network.json"
}

fail() { printf 'FAILED: %s\n' "$*"; failed=1; }
expect() { grep -qF -- "$2" "$1" || { fail "'$2' is missing in $(basename "$1"):"; cat "$1"; }; }
ends_with() {  # <exit code> <text> <program without .exe> <arguments>
  timeout 60 "$wine" "$programs/$3.exe" "${@:4}" >"$work/output.txt" 2>&1
  local code=$?
  [ $code = "$1" ] || fail "${*:3} ended with $code instead of $1"
  [ -z "$2" ] || expect "$work/output.txt" "$2"
}
# Finds processes from outside, by the folder and name of the program that COM starts, in this Wine only.
running() {
  local process
  for process in $(pgrep -f "$(basename "$programs")[/\\\\]$1.exe"); do
    grep -qzxF "WINEPREFIX=$prefix" "/proc/$process/environ" 2>/dev/null && return
  done
  return 1
}
unregister() { "$wine" "$programs/$1.exe" /unregserver || fail "$1 /unregserver ended with $?"; }
expect_gone() {  # <program> <after what>
  for _ in $(seq 100); do
    running "$1" || return
    sleep 0.2
  done
  fail "$1 is still running after $2"
}

"$wine" wine cmd /c exit >/dev/null 2>&1
[ $? = 77 ] && { echo "skipped: there is no 32-bit Wine"; exit 77; }

settings='HKLM\SOFTWARE\LonWorks\LCA\Plug-Ins\Korvell QM5R-FC PIR Configure'
forget_settings() { "$wine" wine reg delete "$settings" /f /reg:32 >/dev/null 2>&1; }
forget_settings
# A simulator that still serves another scenario's network file would be used here too.
expect_gone LnsSimulator "another scenario"
