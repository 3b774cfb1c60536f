#!/usr/bin/env bash
# The program's own registration, on the demo file of many networks: afterwards the network file is the same
# as before, except for the interfaces of the visited systems.
#
#   registration.sh <folder of the programs> in-wine|in-wine32 [strict]
. "$(dirname "$0")/common.sh"

use_network many-networks.json
"$root/scripts/install-demo" "$programs" "$work/network.json" "$2" || fail "install-demo"
unregister QM5RFcPirConfigure
printf 'File: demo\r\n\r\n\r\n\r\n80:00:D3:55:00:04:04:1D\r\n' >"$work/QM5R.XIF"
"$wine" wine cmd /c 'mkdir C:\LonWorks\bin & mkdir C:\LonWorks\Import\Korvell & del C:\LonWorks\Import\Korvell\QM5R.XFB C:\LonWorks\Types\ldrf.cat' >/dev/null 2>&1
from() { printf 'Z:%s' "${1//\//\\}"; }
for tool in XIF32BIN LDRFCAT; do
  "$wine" wine cmd /c copy /y "$(from "$programs")\\$tool.exe" 'C:\LonWorks\bin\' >/dev/null
done
"$wine" wine cmd /c copy /y "$(from "$work")\\QM5R.XIF" 'C:\LonWorks\Import\Korvell\' >/dev/null

"$wine" "$programs/QM5RFcPirConfigure.exe" /regplugin || fail "regplugin"
"$wine" wine reg query "$settings" /reg:32 >"$work/key.txt" 2>&1
for text in 'REG_SZ    QM5RFcPirConfigure.LNSPlugInAPI' 'SingleInstance    REG_SZ    1' 'Prelaunch    REG_SZ    -1'; do
  expect "$work/key.txt" "$text"
done
version=$(for _ in $(seq 20); do
  "$wine" wine cscript //nologo "Z:${here//\//\\}\\..\\installer\\object_version.vbs" 2>/dev/null |
    tr -d '\r' | sed -n 's/^object: \([0-9]\)/\1/p' | grep . && break
  sleep 0.5
done)
expect "$work/key.txt" "Version    REG_SZ    ${version:-(a script cannot create the object)}"
"$wine" "$programs/QM5RFcPirConfigure.exe" /deregplugin /deregmode:-1 || fail "deregplugin"

env -u DISPLAY "$wine" "$programs/QM5RFcPirConfigure.exe" && fail "a program that has no display for its window ended with 0"
env -u DISPLAY "$wine" "$programs/QM5RFcPirConfigure.exe" /deregplugin || fail "deregplugin without a display"

"$wine" "$programs/registration_scenario_tests.exe" >"$work/tests.txt" 2>&1
grep -q '\[  PASSED  \] [1-9]' "$work/tests.txt" && ! grep -q FAILED "$work/tests.txt" || { fail "tests"; cat "$work/tests.txt"; }
"$wine" wine cmd /c 'if not exist C:\LonWorks\Import\Korvell\QM5R.XFB exit 1' || fail "the converter made no binary form"
"$wine" wine cmd /c 'type C:\LonWorks\Types\ldrf.cat' >"$work/catalogue.txt"
expect "$work/catalogue.txt" QM5R.fmt

python3 - "$root/demo/many-networks.json" "$work/network.json" <<'PYTHON' || fail "the network file"
import json, sys
before, after = (json.load(open(path)) for path in sys.argv[1:])
after.pop("strict", None)
for network in before["networks"]:
    system = network["system"]
    if network["name"] in ("Demo Empty Shell", "Demo Harbour", "Demo Quarry", "Demo Orchard", "Demo Islands"):
        del system["interface"]  # opened in engineered mode
for one, other in zip(before["networks"], after["networks"]):
    if one != other:
        print("expected", json.dumps(one, indent=1), "found", json.dumps(other, indent=1), sep="\n")
sys.exit(before != after)
PYTHON
expect_gone QM5RFcPirConfigure "registration"
unregister LnsSimulator
[ $failed = 0 ] && echo "registration: ok"
exit $failed
