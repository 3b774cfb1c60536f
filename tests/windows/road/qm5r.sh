#!/usr/bin/env bash
# Settings of thermostats as files, on the command line: saved, edited, checked and compared, and a snapshot of a network
# in a folder with a long path. Nothing is written to the network.
#
#   qm5r.sh <folder of the programs> in-wine|in-wine32 [strict]
. "$(dirname "$0")/common.sh"
export LC_ALL=C.UTF-8  # Wine takes the arguments in the locale's encoding

use_network network.json
sed -i 's/"Thermostat 102"/"Büro Ä 102"/' "$work/network.json"
cp "$work/network.json" "$work/before.json"
"$root/scripts/install-demo" "$programs" "$work/network.json" "$2" || fail "install-demo"
cd "$work" || exit 1
floor='Demo Tower/Demo Tower.Floor 1'

ends_with 0 'room.qm5r' qm5r save "$floor/Thermostat 101" room.qm5r
cp room.qm5r saved.qm5r
ends_with 2 'room.qm5r exists; --force replaces it' qm5r save "$floor/Büro Ä 102" room.qm5r
cmp room.qm5r saved.qm5r || fail "an existing file was changed"
ends_with 0 'Büro Ä 102.qm5r' qm5r save "$floor/Büro Ä 102"
expect 'Büro Ä 102.qm5r' "path = $floor/Büro Ä 102"

sed -i 's/^HeatMax = 32 C/HeatMax = 30 C/' room.qm5r
ends_with 0 '' qm5r check room.qm5r
[ -s output.txt ] && fail "check found something in a file without errors: $(cat output.txt)"
ends_with 3 'HeatMax                 32 C, standard 30 C' qm5r compare room.qm5r "$floor/Thermostat 101"
sed 's/^CoolMin = .*/CoolMin = 54 F/' room.qm5r >broken.qm5r
line=$(sed -n '/^CoolMin/=' broken.qm5r)
ends_with 2 "broken.qm5r:$line: CoolMin is in C, not in F" qm5r check room.qm5r broken.qm5r
ends_with 2 'broken.qm5r has errors' qm5r compare broken.qm5r "$floor/Thermostat 101"

rooms=("$floor/Thermostat 101" "$floor/Büro Ä 102" "$floor.West Wing/Thermostat 111")
ends_with 3 '3 devices: 2 equal, 1 different' qm5r compare saved.qm5r "${rooms[@]}"
expect output.txt "$floor/Büro Ä 102"
expect output.txt 'nciSetPts.occ_heat      20.5 C, standard 21 C'
ends_with 4 '4 devices: 2 equal, 1 different, 1 not read' qm5r compare saved.qm5r "${rooms[@]}" "$floor.West Wing/Thermostat 110"
expect output.txt 'not read: Failed to communicate with target device.'

# A pattern of devices that the C runtime would replace by the names of these files.
touch 'Demo Tower A.txt' 'Demo Tower B.txt'
deep="Z:${work//\//\\}$(printf '\\a folder with a rather long name%.0s' {1..8})\\Übersicht"
ends_with 4 "$deep\\index.csv: 10 devices: 6 read, 1 incomplete, 2 not read, 1 another type" qm5r snapshot 'Demo T*' "$deep"
find . -path '*/Übersicht/Demo Tower/Demo Tower.Floor 1/Büro Ä 102.qm5r' | grep -q . || fail "a device's file is missing"
cat ./*/*/*/*/*/*/*/*/Übersicht/index.csv >index.csv
[ "$(head -c 3 index.csv)" = $'\xEF\xBB\xBF' ] || fail "the index has no byte-order mark"
expect index.csv "$floor/Büro Ä 102,Demo Tower\\Demo Tower.Floor 1\\Büro Ä 102.qm5r,read,,8000D3550004041D"
ends_with 2 'has a snapshot already' qm5r snapshot 'Demo T*' "$deep"
ends_with 0 '' qm5r check "$deep\\*.qm5r"
ends_with 3 '7 devices: 5 like most, 2 different' qm5r compare --odd "$deep\\*.qm5r"
expect output.txt "$deep\\Demo Tower\\Demo Tower.Floor 1\\Büro Ä 102.qm5r"
expect output.txt 'nciSetPts.occ_heat      20.5 C, most 21 C'

cmp network.json before.json || fail "the network was changed"
ends_with 4 'report.html' qm5r report "$deep" --standard saved.qm5r -o report.html
expect report.html '≠ 20.5'
expect_gone LnsSimulator "its clients"

# Devices with any bytes: whatever they hold, their files load, and nothing in them differs from the devices.
"$root/scripts/make-network" 150 --random >network.json
[ "$demands" != strict ] || sed -i '1s/{/{"strict": {"all": true},/' network.json
ends_with 0 '150 devices: 150 read' qm5r snapshot Hotel odd
ends_with 0 '' qm5r check 'odd\*.qm5r'
ends_with 0 'HeatMax' qm5r show 'odd\*Room 150.qm5r'
for room in 1 50 150; do
  file=$(find odd -name "Room $room.qm5r")
  ends_with 0 '1 device: 1 equal' qm5r compare "$file" "Hotel/*/Room $room"
done
ends_with 1 'a command is required' qm5r
expect_gone LnsSimulator "its clients"
unregister QM5RFcPirConfigure
unregister LnsSimulator
ends_with 2 'Cannot create the object' qm5r show "$floor/Thermostat 101"
ends_with 0 '' qm5r check room.qm5r
[ $failed = 0 ] && echo "qm5r: ok"
exit $failed
