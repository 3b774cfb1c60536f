#!/usr/bin/env bash
# The road of the program's own registration, on the demo database of many networks: what the network file holds
# afterwards is what it held before, but for the template that was made and the interfaces of the visited systems.
#
#   registration.sh <folder of the programs> in-wine|in-wine32
set -u
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
programs=$1
wine=$root/scripts/$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
fail() { printf 'FAILED: %s\n' "$*"; failed=1; }

"$wine" wine cmd /c exit >/dev/null 2>&1
[ $? = 77 ] && { echo "skipped: there is no 32-bit Wine"; exit 77; }

cp "$root/demo/many-networks.json" "$work/network.json"
"$root/scripts/install-demo" "$programs" "$work/network.json" "$2" || fail "install-demo"
"$wine" "$programs/QM5RFcPirConfigure.exe" /unregserver || fail "unregserver"
"$wine" wine reg delete 'HKLM\SOFTWARE\LonWorks\LCA\Plug-Ins\Korvell QM5R-FC PIR Configure' /f /reg:32 >/dev/null 2>&1
printf 'File: demo\r\n\r\n\r\n\r\n80:00:D3:55:00:04:04:1D\r\n' >"$work/QM5R.XIF"
"$wine" wine cmd /c 'mkdir C:\LonWorks\bin & mkdir C:\LonWorks\Import\Korvell & del C:\LonWorks\Import\Korvell\QM5R.XFB' >/dev/null 2>&1
from() { printf 'Z:%s' "${1//\//\\}"; }
"$wine" wine cmd /c copy /y "$(from "$programs")\\XIF32BIN.exe" 'C:\LonWorks\bin\' >/dev/null
"$wine" wine cmd /c copy /y "$(from "$work")\\QM5R.XIF" 'C:\LonWorks\Import\Korvell\' >/dev/null

"$wine" "$programs/registration_road_tests.exe" >"$work/tests.txt" 2>&1
grep -q '\[  PASSED  \] [1-9]' "$work/tests.txt" && ! grep -q FAILED "$work/tests.txt" || { fail "tests"; cat "$work/tests.txt"; }
"$wine" wine cmd /c 'if not exist C:\LonWorks\Import\Korvell\QM5R.XFB exit 1' || fail "the converter made no binary form"

python3 - "$root/demo/many-networks.json" "$work/network.json" <<'PYTHON' || fail "the network file"
import json, sys
before, after = (json.load(open(path)) for path in sys.argv[1:])
for network in before["networks"]:
    system = network["system"]
    if network["name"] in ("Demo Empty Shell", "Demo Harbour", "Demo Quarry", "Demo Orchard", "Demo Islands"):
        del system["interface"]  # opened in engineered mode
    if network["name"] == "Demo Quarry":
        system["templates"].append({"name": "Korvell QM5R-FC PIR", "programId": "8000D3550004041D",
                                    "xifPath": "C:\\LonWorks\\Import\\Korvell\\QM5R.XIF"})
for one, other in zip(before["networks"], after["networks"]):
    if one != other:
        print("expected", json.dumps(one, indent=1), "found", json.dumps(other, indent=1), sep="\n")
sys.exit(before != after)
PYTHON
for _ in $(seq 50); do
  pgrep -f "$(basename "$programs")[/\\\\]QM5RFcPirConfigure.exe" >/dev/null || break
  sleep 0.2
done
pgrep -af "$(basename "$programs")[/\\\\]QM5RFcPirConfigure.exe" && fail "the plug-in is still running"
"$wine" "$programs/LnsSimulator.exe" /unregserver || fail "unregserver of the simulator"
[ $failed = 0 ] && echo "registration road: ok"
exit $failed
