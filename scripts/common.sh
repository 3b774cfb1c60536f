# Sourced by the scripts of this project: packages, Wine prefix, display.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '\n== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"
  elif command -v sudo >/dev/null; then sudo "$@"
  else die "Packages are missing and neither root nor sudo is at hand: $*"
  fi
}

# Installs those of the named Debian packages that are missing.
need_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && return
  say "Installing ${missing[*]}"
  as_root apt-get update -q
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

windows_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools python3
  googletest nlohmann-json3-dev libcli11-dev wine wine64 libwine xvfb xauth fonts-dejavu-core fonts-wine imagemagick fp-utils)
picture_packages=(xdotool)
installer_packages=(wixl msitools)
check_packages=(g++ clang clang-tidy clang-format cppcheck cmake ninja-build python3 git nlohmann-json3-dev libcli11-dev libgtest-dev)
test_packages=(g++ clang libclang-rt-dev libgtest-dev libbenchmark-dev procps)

# Configures a preset and builds it, or only the named targets of it. With as_layers=ON each layer is compiled as one
# source, which takes half the time.
build_preset() {
  (cd "$root" && cmake --preset "$1" -DCMAKE_UNITY_BUILD="${as_layers:-OFF}" >"build/$1.configure.log" 2>&1) ||
    { cat "$root/build/$1.configure.log"; exit 1; }
  cmake --build "$root/build/$1" ${2:+--target "${@:2}"}
}

# Makes the project's own Wine prefix once: windows with captions on a desktop of their own, no crash dialogs, no
# offers to download components.
make_prefix() {
  local prefix=$1; shift
  [ -e "$prefix/ready" ] && return
  say "Making the Wine prefix $prefix"
  rm -rf "$prefix"
  mkdir -p "$prefix"
  "$@" wineboot -i >"$prefix.log" 2>&1 || { cat "$prefix.log"; exit 1; }
  # Wine's own fonts, which Debian keeps where Wine does not look: the system's dialog font and the caption's signs.
  cp /usr/share/wine/fonts/{marlett,tahoma,tahomabd}.ttf "$prefix/drive_c/windows/Fonts/" 2>/dev/null || true
  "$@" wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d qm5r /f >/dev/null
  "$@" wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v qm5r /d 1280x1024 /f >/dev/null
  "$@" wineserver -w
  touch "$prefix/ready"
}

# Keeps Wine up from here on: a program that is started while Wine itself is still starting may not run at all.
start_wine() {
  "$@" wineserver -p >/dev/null 2>&1 || true  # it may be up already
  "$@" wine cmd /c exit >/dev/null 2>&1
}
stop_wine() { "$@" wineserver -k >/dev/null 2>&1 || true; }

# Gives the script a display: the user's, or one in memory that ends with the script.
need_display() {
  [ -n "${DISPLAY:-}" ] && return
  local number_file=$root/build/display
  rm -f "$number_file"  # of an earlier display
  Xvfb -displayfd 9 -screen 0 1280x1024x24 -nolisten tcp 9>"$number_file" >/dev/null 2>&1 &
  xvfb_pid=$!
  for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    sleep 0.1
  done
  [ -s "$number_file" ] || die "Xvfb does not start"
  export DISPLAY=:$(cat "$number_file")
  # As a desktop session does, give the display resources. Where there are none, Xlib looks for their files each time Wine selects a font.
  echo 'qm5r.display: in memory' >"$number_file.resources"
  export XENVIRONMENT=$number_file.resources
}
end_display() { [ -z "${xvfb_pid:-}" ] || kill "$xvfb_pid" 2>/dev/null || true; }
