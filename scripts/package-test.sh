#!/usr/bin/env bash
# Builds the Debian package (cpack -G DEB) and installs it in a fresh Debian root: the
# package's dependencies come from Debian's mirror, then `zoevents check` runs on the
# installed demo and the editor runs under Xvfb for ten seconds. Needs root (debootstrap,
# chroot) and the network. The bare root is made once and cached as a tarball
# (ZO_DEBIAN_ROOT, default ~/.cache/zoevents/bookworm-root.tar.gz); every run unpacks a
# fresh copy. ZO_PACKAGE_BUILD_DIR picks the build folder (default build-deb).
set -euo pipefail
cd "$(dirname "$0")/.."

[ "$(id -u)" -eq 0 ] || { echo "package-test.sh: run as root (debootstrap and chroot need it)" >&2; exit 2; }
./scripts/deps.sh
build="${ZO_PACKAGE_BUILD_DIR:-build-deb}"
cache="${ZO_DEBIAN_ROOT:-${XDG_CACHE_HOME:-$HOME/.cache}/zoevents/bookworm-root.tar.gz}"
mirror="${ZO_DEBIAN_MIRROR:-http://deb.debian.org/debian}"

# The package: a system install under /usr, the programs only.
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DZO_BUILD_TESTS=OFF -DZO_BUILD_BENCH=OFF -DZO_BUILD_TOOLS=OFF "$@" >/dev/null
cmake --build "$build" -j2 --target zoevents-editor zoevents_cli
(cd "$build" && rm -f ./*.deb && cpack -G DEB >/dev/null)
deb=$(ls "$build"/*.deb)
echo "package: $deb"
dpkg-deb --field "$deb" Package Version Depends

# The bare root: Debian's minimal system and Xvfb, nothing of Qt (the package must bring it).
if [ ! -f "$cache" ]; then
  mkdir -p "$(dirname "$cache")"
  fresh=$(mktemp -d)
  debootstrap --variant=minbase --include=xvfb,xauth bookworm "$fresh" "$mirror" >/dev/null
  tar -C "$fresh" -czf "$cache.part" . && mv "$cache.part" "$cache"
  rm -rf "$fresh"
fi

root=$(mktemp -d)
cleanup() {
  umount "$root/proc" 2>/dev/null || true
  rm -rf "$root"
}
trap cleanup EXIT
tar -C "$root" -xzf "$cache"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mount -t proc proc "$root/proc"
cp "$deb" "$root/tmp/"
in_root() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 "$@"; }

in_root apt-get update -qq
in_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "/tmp/$(basename "$deb")" >/dev/null
echo "installed: $(in_root dpkg-query -W -f='${Package} ${Version}' zoevents)"

status=0
# Both programs report the one version of the package.
version=$(dpkg-deb --field "$deb" Version)
for program in zoevents zoevents-editor; do
  reported=$(in_root "$program" --version)
  [ "$reported" = "$program $version" ] || { echo "FAIL: $program --version says '$reported'" >&2; status=1; }
done
in_root man -w zoevents zoevents-editor >/dev/null 2>&1 || in_root test -f /usr/share/man/man1/zoevents-editor.1 \
  || { echo "FAIL: manual pages missing" >&2; status=1; }
in_root test -f /usr/share/applications/zoevents-editor.desktop || { echo "FAIL: desktop entry missing" >&2; status=1; }
in_root test -f /usr/share/icons/hicolor/256x256/apps/zoevents-editor.png || { echo "FAIL: icon missing" >&2; status=1; }

# The check of the installed demo: no error (exit 0).
demo=/usr/share/doc/zoevents/examples/demo
if in_root zoevents check --from 2026-01-05 "$demo" >/dev/null; then
  echo "zoevents check $demo: no error"
else
  echo "FAIL: zoevents check $demo failed" >&2
  status=1
fi

# The editor on the demo, under Xvfb: still running after ten seconds (timeout's 124).
set +e
in_root xvfb-run -a timeout 10 zoevents-editor "$demo" >"$root/tmp/editor.log" 2>&1
editor=$?
set -e
if [ "$editor" -eq 124 ]; then
  echo "zoevents-editor ran for ten seconds"
else
  echo "FAIL: zoevents-editor ended with status $editor:" >&2
  cat "$root/tmp/editor.log" >&2
  status=1
fi
[ "$status" -eq 0 ] && echo "package test passed"
exit "$status"
