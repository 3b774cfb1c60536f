#!/usr/bin/env bash
# Processes that end while they work: the object server, directors.
#
#   faults.sh <folder of the programs> in-wine|in-wine32
#
# Unlike Windows, Wine keeps the class of a killed server in its table and never releases the references of a
# killed client, so every case ends its Wine and starts in a new one.
. "$(dirname "$0")/common.sh"
. "$root/scripts/common.sh"

cp "$root/demo/network.json" "$work/network.json"
"$root/scripts/install-demo" "$programs" "$work/network.json" "$2" || fail "install-demo"
new_wine() {
  echo "-- a new Wine"
  stop_wine "$wine"
  start_wine "$wine"
  "$wine" wine reg add "$settings" /v DisplayUnits /d 0 /f /reg:32 >/dev/null
}
new_wine
director() { "$wine" "$programs/director.exe" "$@"; }
floor='Demo Tower/Demo Tower.Floor 1/Thermostat'

for case in AnApplySurvivesTheEndOfTheObjectServer WorksWithoutItsRegistryKey; do
  timeout 60 "$wine" "$programs/fault_scenario_tests.exe" --gtest_filter="*.$case" >"$work/case.txt" 2>&1
  grep -a '^shown: ' "$work/case.txt"
  grep -q '\[  PASSED  \] 1 test' "$work/case.txt" && echo "$case: ok" || { fail "$case"; cat "$work/case.txt"; }
  expect_gone QM5RFcPirConfigure "$case"
  new_wine
done

# Two directors at once share one plug-in; the window shows one device or the other, not both. One of them may
# be refused while the other one opens the network.
director configure "$floor 101" & one=$!
director configure "$floor 102" && second=done
wait $one || [ "${second:-}" ] || fail "both directors were refused"
director screen >"$work/screen.txt"
grep -q 'Thermostat 101)' "$work/screen.txt" && cool=23 status=101 || cool=24 status=102
expect "$work/screen.txt" "Occupied	$cool"
expect "$work/screen.txt" "status	$floor $status"
director close
expect_gone QM5RFcPirConfigure "two directors"

# A director is killed during its command, which continues; another director can show and close the window.
director latency read 300
"$wine" wine "$programs/director.exe" configure "$floor 101" --hidden & one=$!
sleep 2.5
kill -9 $one
wait $one 2>/dev/null
running QM5RFcPirConfigure && echo "note: the plug-in outlives a killed director, whose references Wine keeps"
sleep 3
director latency read 0
director configure "$floor 102" || fail "configure after a killed director"
director screen >"$work/screen.txt"
expect "$work/screen.txt" 'Occupied	24'
new_wine

unregister QM5RFcPirConfigure
unregister LnsSimulator
forget_settings
[ $failed = 0 ] && echo "faults: ok"
exit $failed
