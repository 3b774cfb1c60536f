#!/usr/bin/env bash
# A configure command in the real programs: registered, driven by a script and by director.exe, shown on the
# screen, and edited. Afterwards nothing is left running.
#
#   configure.sh <folder of the programs> in-wine|in-wine32 [strict]
. "$(dirname "$0")/common.sh"

use_network network.json
cp "$work/network.json" "$work/before.json"
"$root/scripts/install-demo" "$programs" "$work/network.json" "$2" || fail "install-demo"

for script in director.vbs director.js; do
  # The script host treats a path that begins with "/" as a switch.
  "$wine" wine cscript //nologo "Z:${here//\//\\}\\$script" >"$work/director.txt" 2>&1 || fail "$script ended with $?"
  expect "$work/director.txt" "checks passed"
  grep FAILED "$work/director.txt" && failed=1
  expect_gone QM5RFcPirConfigure "$script"
done

"$wine" "$programs/director.exe" configure 'Demo Tower/Demo Tower.Floor 1/Thermostat 102' --left 20 --top 30 \
  >"$work/configure.txt" 2>&1 || { fail "configure"; cat "$work/configure.txt"; }
"$wine" "$programs/director.exe" screen >"$work/screen.txt" 2>&1 || fail "screen"
for text in 'Korvell QM5R-FC PIR Configure [Korvell QM5R-FC PIR  (Thermostat 102)]' 'Cnfg Online' \
  'Demo Tower/Demo Tower.Floor 1/Thermostat 102' '+20+30' 'Occupied	69	ºF' 'Reading nciSetPts' 'Reading nciSccModel (Raw)'; do
  expect "$work/screen.txt" "$text"
done
"$wine" "$programs/director.exe" journal >"$work/journal.txt" 2>&1
reads=$(grep -cE 'Thermostat 102/nci[A-Za-z]+ (SourceOptions=0|DsFormatType=|Value)' "$work/journal.txt")
[ "$reads" = 33 ] || [ "$demands" = strict ] || { fail "$reads operations on variables instead of 33"; cat "$work/journal.txt"; }
[ "$demands" != strict ] || expect "$work/screen.txt" 'no access option; unit system after the type'
"$wine" "$programs/director.exe" close || fail "close"
expect_gone QM5RFcPirConfigure "closing the window"

"$wine" wine reg add "$settings" /v DisplayUnits /d 0 /f /reg:32 >/dev/null
"$wine" "$programs/editing_scenario_tests.exe" >"$work/editing.txt" 2>&1
grep -q '\[  PASSED  \] [1-9]' "$work/editing.txt" && ! grep -q FAILED "$work/editing.txt" ||
  { fail "editing"; cat "$work/editing.txt"; }
forget_settings
expect_gone QM5RFcPirConfigure "editing"

for refused in "Nowhere/System.Sub/Device" "Demo Tower/Demo Tower.Floor 1/Nobody" "Demo Tower"; do
  "$wine" "$programs/director.exe" configure "$refused" --hidden >"$work/refused.txt" 2>&1
  [ $? = 2 ] || fail "configure $refused did not fail"
  expect "$work/refused.txt" "(Korvell QM5R-FC PIR Configure)"
done
expect_gone QM5RFcPirConfigure "refused commands"

ends_with 2 'shows no window' director screen
ends_with 0 '' director fault vanish 'Thermostat 102'
ends_with 3 'Failed to communicate' director configure 'Demo Tower/Demo Tower.Floor 1/Thermostat 102' --hidden
ends_with 0 '' director fault restore 'Thermostat 102'
expect_gone QM5RFcPirConfigure "a device that cannot be read"

cmp -s "$work/network.json" "$work/before.json" || echo "note: the network file was saved (LonMark object modes)"
unregister QM5RFcPirConfigure
"$wine" wine reg query 'HKLM\Software\Classes\QM5RFcPirConfigure.LNSPlugInAPI' >/dev/null 2>&1 && fail "the class is still registered"
expect_gone LnsSimulator "its clients"
cp "$work/network.json" "$work/whole.json"
sed -i '0,/"Thermostat 101"/s//"Thermostat 101", "colour": 1/' "$work/network.json"
ends_with 2 'devices[0].colour: unknown key' director networks
ends_with 2 'devices[0].colour: unknown key' director journal
cp "$work/whole.json" "$work/network.json"
ends_with 0 'Demo Annex' director networks
ends_with 1 'no network file is given' LnsSimulator /regserver
expect_gone LnsSimulator "a network file that was mended"
unregister LnsSimulator
[ $failed = 0 ] && echo "configure: ok"
exit $failed
