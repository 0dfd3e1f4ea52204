#!/usr/bin/env bash
# Installs what is missing, builds, and opens the editor on the bundled demo project.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "zoevents-editor needs a graphical display, and none is set (DISPLAY / WAYLAND_DISPLAY)." >&2
  echo "Run this from a desktop session, or under a virtual display: xvfb-run -a $0" >&2
  exit 2
fi
./scripts/build.sh -DZO_BUILD_BENCH=OFF
exec "${ZO_BUILD_DIR:-build}/app/zoevents-editor" examples/demo
