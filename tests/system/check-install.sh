#!/usr/bin/env bash
# Installs a build tree into a throw-away prefix and checks that every file a desktop needs is
# there and passes the desktop's own validators.
set -euo pipefail
build=${1:?usage: check-install.sh BUILD_DIR}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
fail=0
need() { [ -e "$prefix/$1" ] || { echo "missing: $1"; fail=1; }; }

cmake --build "$build" --target veldor veldor-tag veldor_icons >/dev/null
cmake --install "$build" --prefix "$prefix" >/dev/null

need bin/veldor
need bin/veldor-tag
[ -x "$prefix/bin/veldor" ] && [ -x "$prefix/bin/veldor-tag" ] || { echo "programs not executable"; fail=1; }
need share/applications/veldor.desktop
need share/metainfo/net.veldor.Veldor.metainfo.xml
need share/man/man1/veldor.1
need share/man/man1/veldor-tag.1
need share/icons/hicolor/scalable/apps/veldor.svg
for size in 16 22 24 32 48 64 128 256; do
  png="$prefix/share/icons/hicolor/${size}x${size}/apps/veldor.png"
  need "share/icons/hicolor/${size}x${size}/apps/veldor.png"
  if [ -e "$png" ]; then
    # A PNG header, and the width the folder promises (bytes 16-19, big-endian).
    [ "$(head -c 8 "$png" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] || { echo "not a PNG: $png"; fail=1; }
    w=$(od -An -tu1 -j16 -N4 "$png" | awk '{print $1*16777216+$2*65536+$3*256+$4}')
    [ "$w" = "$size" ] || { echo "$png is $w pixels wide"; fail=1; }
  fi
done

desktop-file-validate "$prefix/share/applications/veldor.desktop" || fail=1
appstreamcli validate --no-net "$prefix/share/metainfo/net.veldor.Veldor.metainfo.xml" >/dev/null || {
  appstreamcli validate --no-net "$prefix/share/metainfo/net.veldor.Veldor.metainfo.xml"; fail=1; }
for page in veldor veldor-tag; do
  out=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$prefix/share/man/man1/$page.1" 2>&1 >/dev/null) || fail=1
  [ -z "$out" ] || { echo "man $page: $out"; fail=1; }
done

# The installed program answers from its new place (no data folder needed for --version).
QT_QPA_PLATFORM=offscreen "$prefix/bin/veldor" --version >/dev/null || { echo "installed veldor does not start"; fail=1; }
exit $fail
