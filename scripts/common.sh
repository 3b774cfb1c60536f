# Shared by the scripts of this project: packages, Wine prefix, display.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '\n== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }
wrong_usage() { printf '%s: %s; try %s --help\n' "$0" "$*" "$0" >&2; exit 2; }

# Answers --help with the comment at the top of the script; refuses other options and too many arguments. Scripts call it
# first.   take_arguments <maximum number> "$@"
take_arguments() {
  local most=$1 argument; shift
  for argument in "$@"; do
    case $argument in
      -h | --help) sed -n '2,${/^#/!q;s/^# \{0,1\}//;p}' "$0"; exit 0 ;;
      -*) wrong_usage "unknown option $argument" ;;
    esac
  done
  [ $# -le "$most" ] || wrong_usage "too many arguments"
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"
  elif command -v sudo >/dev/null; then sudo "$@"
  else die "Missing packages need root or sudo to install: $*"
  fi
}

# Installs missing Debian packages.
need_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && return
  say "Installing ${missing[*]}"
  as_root apt-get update -q
  # The help compiler's package contains the sources of its language, which take longer to install than Wine.
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
    -o Dpkg::Options::='--path-exclude=/usr/share/fpcsrc/*' "${missing[@]}"
}

# What the presets "native" and "windows-x64" need, and Wine.
run_packages=(g++ cmake ninja-build g++-mingw-w64-x86-64-posix mingw-w64-tools python3 libgtest-dev libbenchmark-dev
  nlohmann-json3-dev libcli11-dev wine wine64 libwine xvfb fonts-dejavu-core fonts-wine imagemagick fp-utils)
x86_packages=(g++-mingw-w64-i686-posix)
picture_packages=(xdotool)
installer_packages=(wixl msitools)
check_packages=(g++ clang clang-tidy clang-format cppcheck cmake ninja-build python3 git nlohmann-json3-dev libcli11-dev libgtest-dev)
test_packages=(clang libclang-rt-dev procps chromium poppler-utils)

# Configures a preset if necessary, and builds it or only its named targets. as_layers=ON compiles each layer as one
# source, which takes half the time; as_layers=KEEP keeps the setting of an existing build tree.
build_preset() {
  local tree=$root/build/$1 layers=${as_layers:-OFF} configured
  mkdir -p "$root/build"
  configured=$(sed -n 's/^CMAKE_UNITY_BUILD:[A-Z]*=//p' "$tree/CMakeCache.txt" 2>/dev/null || true)
  [ "$layers" != KEEP ] || layers=${configured:-ON}
  if [ "$layers" != "$configured" ] || [ ! "$tree/build.ninja" -nt "$root/CMakePresets.json" ]; then
    (cd "$root" && cmake --preset "$1" -DCMAKE_UNITY_BUILD="$layers" >"build/$1.configure.log" 2>&1) ||
      { cat "$root/build/$1.configure.log"; exit 1; }
  fi
  cmake --build "$tree" ${2:+--target "${@:2}"}
}

# Creates the project's Wine prefix once: windows with captions on a virtual desktop, no crash dialogs, no offers to
# download components.
make_prefix() {
  local prefix=$1; shift
  [ -e "$prefix/ready" ] && return
  say "Creating the Wine prefix $prefix"
  rm -rf "$prefix"
  mkdir -p "$prefix"
  "$@" wineboot -i >"$prefix.log" 2>&1 || { cat "$prefix.log"; exit 1; }
  # Wine does not find its fonts in Debian's folder: the system's dialog font and the symbols of the caption.
  cp /usr/share/wine/fonts/{marlett,tahoma,tahomabd}.ttf "$prefix/drive_c/windows/Fonts/" 2>/dev/null || true
  "$@" wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d qm5r /f >/dev/null
  "$@" wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v qm5r /d 1280x1024 /f >/dev/null
  "$@" wineserver -w
  touch "$prefix/ready"
}

# Keeps Wine running, because a program started while Wine is starting may not run at all.
start_wine() {
  "$@" wineserver -p >/dev/null 2>&1 || true  # it may already run
  "$@" wine cmd /c exit >/dev/null 2>&1
}
stop_wine() { "$@" wineserver -k >/dev/null 2>&1 || true; }

# Provides a display for the script: the user's, or one in memory that ends with the script.
need_display() {
  [ -n "${DISPLAY:-}" ] && return
  mkdir -p "$root/build"
  start_display "$root/build/display" Xvfb
}
end_display() { [ -z "${xvfb_pid:-}" ] || kill "$xvfb_pid" 2>/dev/null || true; }

# Provides a display for a command in Wine: the user's, or one in memory that later commands share. It ends with the last
# window.   share_display <Wine prefix>
share_display() {
  [ -z "${DISPLAY:-}" ] && [ -d "$1" ] && command -v Xvfb >/dev/null || return 0
  local lock
  exec {lock}>"$1/display.lock"
  flock "$lock"
  if kill -0 "$(cat "$1/display.pid" 2>/dev/null)" 2>/dev/null; then
    use_display "$1/display"
  else
    start_display "$1/display" setsid Xvfb -terminate {lock}>&-
    echo "$xvfb_pid" >"$1/display.pid"
  fi
  exec {lock}>&-
}

# start_display <file for its number> <Xvfb with options>
start_display() {
  local number_file=$1; shift
  rm -f "$number_file"  # left by an earlier display
  "$@" -displayfd 9 -screen 0 1280x1024x24 -nolisten tcp 9>"$number_file" </dev/null >/dev/null 2>&1 &
  xvfb_pid=$!
  for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    sleep 0.1
  done
  [ -s "$number_file" ] || die "Xvfb did not start"
  # Set display resources, as a desktop session does. Without any, Xlib looks for their files at each font selection.
  echo 'qm5r.display: in memory' >"$number_file.resources"
  use_display "$number_file"
}
use_display() { export DISPLAY=:$(cat "$1") XENVIRONMENT=$1.resources; }

# Waits until the screen stays the same for several pictures in a row: settle [how many]
settle() {
  local before= now still=0 enough=${1:-3}
  for _ in $(seq 200); do
    now=$(import -window root rgb:- | md5sum)
    if [ "$now" = "$before" ]; then still=$((still + 1)); else still=0; fi
    [ "$still" -lt "$enough" ] || return 0
    before=$now
    sleep 0.1
  done
  die "The screen keeps changing"
}
