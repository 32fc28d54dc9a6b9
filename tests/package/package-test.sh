#!/usr/bin/env bash
# package-test.sh <build folder> <source folder>
#
# Builds the Debian package of a build folder, unpacks it into a scratch root
# with dpkg -x and runs what it installed from there: the program, offscreen,
# until its main window has been painted (every window is loaded before
# that), and each converter the package carries, with --help and on the
# sample files. Checks the layout on the way: everything beside the program,
# links on the command path, the desktop entry with its icon, the package's
# dependencies on the Qt runtime.
set -euo pipefail

build=$(cd "$1" && pwd)
source=$(cd "$2" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/quenby-package.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

fail() {
  echo "FAIL: $*" >&2
  exit 1
}
step() { echo "-- $*"; }

step "building the package"
if ! cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch/out" >"$scratch/cpack.log" 2>&1; then
  cat "$scratch/cpack.log" >&2
  fail "cpack could not build the package"
fi
debs=("$scratch"/out/*.deb)
[ ${#debs[@]} -eq 1 ] && [ -f "${debs[0]}" ] || fail "expected one .deb, found: ${debs[*]}"
deb=${debs[0]}
echo "   $(basename "$deb"), $(($(stat -c %s "$deb") / 1024)) KiB"

step "package fields"
[ "$(dpkg-deb -f "$deb" Package)" = quenby ] || fail "the package is not named quenby"
depends=$(dpkg-deb -f "$deb" Depends)
for lib in libqt6core6 libqt6gui6 libqt6widgets6 libqt6charts6 libqt6printsupport6 libqt6serialport6 \
  qt6-qpa-plugins; do
  [[ $depends == *"$lib"* ]] || fail "Depends lacks $lib: $depends"
done

step "unpacking"
root=$scratch/root
dpkg -x "$deb" "$root"
dir=$root/usr/lib/quenby
[ -x "$dir/quenby" ] || fail "no program in /usr/lib/quenby"
for lang in en.lng fr.lng polish.lng; do
  cmp -s "$source/lang/$lang" "$dir/$lang" || fail "$lang is not beside the program"
done
for template in "$source"/templates/*.xlsx; do
  [ -e "$template" ] || continue
  cmp -s "$template" "$dir/$(basename "$template")" || fail "$(basename "$template") is not beside the program"
done
[ -x "$dir/quenby-instrument-sim" ] || fail "no instrument simulator beside the program"
for program in quenby quenby-instrument-sim; do
  [ "$(readlink -f "$root/usr/bin/$program")" = "$(readlink -f "$dir/$program")" ] ||
    fail "/usr/bin/$program does not lead to the program's folder"
done
desktop=$root/usr/share/applications/quenby.desktop
grep -qx 'Exec=quenby' "$desktop" || fail "the desktop entry does not start quenby"
grep -qx 'Icon=quenby' "$desktop" || fail "the desktop entry has no icon"
icon=$root/usr/share/icons/hicolor/256x256/apps/quenby.png
[ "$(head -c 8 "$icon" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] || fail "the icon is not a PNG picture"
if command -v identify >/dev/null; then
  [ "$(identify -format '%wx%h' "$icon")" = 256x256 ] || fail "the icon is not 256 x 256"
fi

# A user who has run the program before: the data folder is known, so the
# start asks nothing.
home=$scratch/home
mkdir -p "$home/.config" "$scratch/data/KVX/Files" "$scratch/data/ZBL/Files"
mkdir -m 700 "$scratch/runtime"
printf '[UserFileTransfert]\nKVX=%s\n' "$scratch/data" >"$home/.config/Quenby.ini"
run() {
  (cd "$scratch" && env -u DISPLAY -u WAYLAND_DISPLAY HOME="$home" XDG_CONFIG_HOME="$home/.config" \
    XDG_DATA_HOME="$home/.local/share" XDG_RUNTIME_DIR="$scratch/runtime" QT_QPA_PLATFORM=offscreen \
    "$@")
}

step "starting the installed program through /usr/bin/quenby"
# Started through the link, the program must find its language files beside
# itself: without them it would stop at a message box and time out.
if ! shown=$(run env QUENBY_STARTUP_PROBE=1 timeout 60 "$root/usr/bin/quenby" 2>"$scratch/quenby.err"); then
  cat "$scratch/quenby.err" >&2
  fail "the installed program did not show its main window"
fi
[[ $shown == "shown "* ]] || fail "the installed program said: $shown"

converted=0
for converter in kvx_report_converter zbl_report_converter; do
  exe=$dir/$converter
  if [ ! -e "$exe" ]; then
    echo "-- $converter is not in the package: not run"
    continue
  fi
  step "$converter --help"
  [ -x "$exe" ] || fail "$converter is not executable"
  run timeout 30 "$exe" --help >"$scratch/$converter.help" 2>&1 || {
    cat "$scratch/$converter.help" >&2
    fail "$converter --help"
  }
  [ -s "$scratch/$converter.help" ] || fail "$converter --help printed nothing"
  step "$converter on the samples"
  out=$scratch/converted-$converter
  mkdir -p "$out"
  run timeout 90 "$exe" "$source/samples" -o "$out" >"$scratch/$converter.log" 2>&1 || {
    cat "$scratch/$converter.log" >&2
    fail "$converter did not convert every sample"
  }
  files=$(find "$out" -type f | wc -l)
  [ "$files" -gt 0 ] || fail "$converter wrote nothing"
  echo "   $files files written"
  converted=$((converted + 1))
done

echo "PASS: the package installs and runs ($converted converters run)"
