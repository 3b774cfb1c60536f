#!/usr/bin/env bash
# The object server is a control in the plug-in's own process and requires all that controls can require: a
# director configures a thermostat, the user changes a value, and the network file contains it.
#
#   control.sh <folder of the programs> in-wine|in-wine32
. "$(dirname "$0")/common.sh"

registry() { local what=$1; shift; "$wine" wine reg "$what" "$@" /reg:32; }
lca='HKLM\SOFTWARE\LonWorks\LCA' control='HKLM\SOFTWARE\Qm5r.TestControl'
text_of() { registry query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_SZ *//p'; }
put() { registry add "$1" /v "$2" /d "$3" /f >/dev/null; }

# While the object server tests a device, it raises events on its own thread.
sed '1s/{/{"latency": {"test": 450},/' "$root/demo/network.json" >"$work/network.json"
cp "$root/demo/network.json" "$work/simulator.json"
"$root/scripts/install-demo" "$programs" "$work/simulator.json" "$2" || fail "install-demo"
before=$(text_of "$lca" 'Object Server')
dll="Z:${programs//\//\\}\\TestControl.dll"
"$wine" wine regsvr32 /s "$dll" || fail "regsvr32"
put "$control" Demands 'licence init site first basic thread'
put "$control" Network "Z:${work//\//\\}\\network.json"
put "$lca" 'Object Server' Qm5r.TestControl
put "$settings" DisplayUnits 0

# Any case that edits, applies and reads again. It checks the simulator, which the plug-in does not use here.
"$wine" "$programs/fault_scenario_tests.exe" --gtest_filter='*.WorksWithoutItsRegistryKey' >"$work/tests.txt" 2>&1
grep -q '\[  PASSED  \] [1-9]' "$work/tests.txt" && ! grep -q FAILED "$work/tests.txt" || { fail "tests"; cat "$work/tests.txt"; }
expect_gone QM5RFcPirConfigure "the tests"
cmp "$work/simulator.json" "$root/demo/network.json" || fail "the simulator has been used"
ended=$(text_of "$control" Ended)
[ "$ended" = 'closed unsited gone' ] || fail "the control ended as '$ended'"
# 20.5 °C in hundredths
python3 - "$work/network.json" <<'PYTHON' || fail "the network file"
import json, sys
def devices(place):
    yield from place.get("devices", [])
    for below in place.get("subsystems", []):
        yield from devices(below)
for network in json.load(open(sys.argv[1]))["networks"]:
    for device in devices(network["system"]):
        if device["name"] == "Thermostat 101":
            print(json.dumps(device, indent=1))
            sys.exit("0802" not in json.dumps(device))
PYTHON

put "$lca" 'Object Server' "$before"
"$wine" wine regsvr32 /s /u "$dll" || fail "regsvr32 /u"
forget_settings
unregister QM5RFcPirConfigure
unregister QM5RFcPirConfigure  # a missing entry is no failure
unregister LnsSimulator
[ $failed = 0 ] && echo "control: ok"
exit $failed
