#!/usr/bin/env bash
# The life of an installation. Compares the whole state of the computer after each step.
#
#   installer.sh <folder of the programs> in-wine|in-wine32
set -u
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
wine=$root/scripts/$2
drive=$("$wine" printenv WINEPREFIX)/drive_c
folder=$drive/'Program Files/Korvell/QM5R-FC PIR Configure'
program='C:\Program Files\Korvell\QM5R-FC PIR Configure\QM5RFcPirConfigure.exe'
class='HKLM\Software\Classes\CLSID\{C9D4BB38-A29B-4ACF-A6EA-0CE3577CCE6C}'
plug_in='HKLM\SOFTWARE\LonWorks\LCA\Plug-Ins\Korvell QM5R-FC PIR Configure'
"$wine" wine cmd /c exit >/dev/null 2>&1
[ $? = 77 ] && { echo "skipped: there is no 32-bit Wine"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

windows_path() { echo "Z:${1//\//\\}"; }
code() { msiinfo export "$1" Property | sed -n 's/^ProductCode\t\({[^}]*}\).*/\1/p'; }
old=$("$root/scripts/make_package.py" "$1" "$work") || exit 1
# The later version is the same program with another minor version in its resources.
mkdir "$work/later" && cp "$1"/{QM5RFcPirConfigure.exe,qm5r.exe,QM5RInstallerActions.dll,QM5R-FCConfigure.chm} "$work/later"
versions=$(LC_ALL=C grep -obaP '\xbd\x04\xef\xfe' "$1/QM5RFcPirConfigure.exe" | cut -d: -f1)
printf '\143' | dd of="$work/later/QM5RFcPirConfigure.exe" bs=1 seek=$((versions + 8)) conv=notrunc status=none
new=$("$root/scripts/make_package.py" "$work/later" "$work") || exit 1

await() { for _ in $(seq 200); do [ -s "$1" ] && return; sleep 0.1; done; return 1; }
values() {  # <names> <key> [options]
  "$wine" wine reg query "${@:2}" 2>/dev/null | tr -d '\r' | sed -nE "s/^ +($1) +REG_SZ +/\\1: /p" | sort
}
state() {
  find "$drive/Program Files/Korvell" "$drive"/users/*/AppData "$drive/ProgramData" -type f \
    \( -path '*Korvell/*' -o -name 'Korvell*.lnk' \) -printf '%f\n' 2>/dev/null | sort
  for package in "$old" "$new"; do
    values 'DisplayName|DisplayVersion|Publisher' "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\$(code "$package")"
  done
  values '\(Default\)' "$class\\LocalServer32"
  [ "$wine" = "$root/scripts/in-wine32" ] || values '\(Default\)' "$class\\LocalServer32" /reg:32
  values 'Version|DisplayUnits|Debug' "$plug_in" /reg:32
  "$wine" wine cscript //nologo "$(windows_path "$here/object_version.vbs")" | tr -d '\r'
}
installed() {  # <package> [stored settings]
  local version=${1##*Configure-}
  version=${version%-*}
  printf '%s\n' 'Korvell QM5R-FC PIR Registration.lnk' QM5R-FCConfigure.chm QM5RFcPirConfigure.exe notices.txt qm5r.exe \
    readme.txt settings.txt 'DisplayName: Korvell QM5R-FC PIR Configure' \
    "DisplayVersion: $version" 'Publisher: Korvell Inc.' \
    "(Default): \"$program\"" ${2:+"Debug: $2" "DisplayUnits: $2"} "Version: $version" "object: $version"
}
no_object='object: error 429'
refused=67  # 1603 in the eight bits of an exit status
step() {  # <what> <exit status> <state> <arguments of msiexec>
  local status
  "$wine" wine msiexec "${@:4}" /qn
  status=$?
  rm -f "$work/held"
  diff <(echo "$3") <(state) && [ $status = "$2" ] || { echo "FAILED: $1, exit status $status"; failed=1; }
}

for package in "$old" "$new"; do "$wine" wine msiexec /x "$(code "$package")" /qn; done
for key in "$plug_in" "$class"; do "$wine" wine reg delete "$key" /f /reg:32 >/dev/null 2>&1; done
rm -rf "$folder"
step installation 0 "$(installed "$old")" /i "$(windows_path "$old")"
mkfifo "$work/commands"
for name in qm5r QM5RFcPirConfigure; do  # a program of this name counts in any folder
  cp "$drive/windows/system32/cmd.exe" "$work/$name.exe"
  rm -f "$work/running"
  "$wine" "$work/$name.exe" <>"$work/commands" >"$work/running" &
  await "$work/running"
  step "upgrade while $name runs" $refused "$(installed "$old")" /i "$(windows_path "$new")" WAITSECONDS=1
  [ $name = QM5RFcPirConfigure ] || { echo exit >"$work/commands"; wait $!; }
done
(sleep 2; echo exit >"$work/commands") &
step upgrade 0 "$(installed "$new")" /i "$(windows_path "$new")"
for name in Debug DisplayUnits; do "$wine" wine reg add "$plug_in" /v $name /d 1 /f /reg:32 >/dev/null; done
step downgrade $refused "$(installed "$new" 1)" /i "$(windows_path "$old")"
rm "$folder"/* && "$wine" wine reg delete "$class" /f >/dev/null
step repair 0 "$(installed "$new" 1)" /i "$(windows_path "$new")" REINSTALL=ALL REINSTALLMODE=amus
# Wine sometimes cannot start the script beside the service of the installer, which is ending.
for _ in 1 2 3; do
  "$wine" wine cscript //nologo "$(windows_path "$here/hold_file.vbs")" "$program" "$(windows_path "$work/held")" &
  await "$work/held" && break
done
step 'removal while the file is held' $refused "$(installed "$new" 1)" /x "$(code "$new")" WAITSECONDS=1
# Wine does not inform the old version that an upgrade removes it, as Windows does with this property.
step 'removal by an upgrade' 0 "$(installed "$new" 1 | grep -E '^(.Default|Debug|DisplayUnits|Version)'; echo "$no_object")" \
  /x "$(code "$new")" UPGRADINGPRODUCTCODE="$(code "$old")"
# What an upgrade from the 32-bit package leaves. A 32-bit Wine has no second view for it.
[ "$2" = in-wine32 ] || "$wine" wine reg add "$class\\LocalServer32" /ve /d "\"${program/Files/Files (x86)}\"" /f /reg:32 >/dev/null
step 'installation after it' 0 "$(installed "$new" 1)" /i "$(windows_path "$new")"
step removal 0 "$no_object" /x "$(code "$new")"
[ $failed = 0 ] && echo 'installer: ok'
exit $failed
