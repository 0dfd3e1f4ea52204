#!/usr/bin/env bash
# Redraws the pictures of docs/images: builds zoevents-screenshots into
# ${ZO_BUILD_DIR:-build} and runs it on a copy of examples/demo under a virtual X display
# of fixed size, so that the pictures come out the same on every machine.
# ZO_LANG=de draws them in German, into docs/images/de.
#   [ZO_LANG=de] scripts/screenshots.sh [cmake arguments]
set -euo pipefail
cd "$(dirname "$0")/.."
"$(pwd)/scripts/deps.sh"
build="${ZO_BUILD_DIR:-build}"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE="${ZO_BUILD_TYPE:-RelWithDebInfo}" -DZO_BUILD_TOOLS=ON "$@" >/dev/null
cmake --build "$build" -j2 --target zoevents-screenshots

# The same look everywhere: the xcb platform with Fusion, no desktop theme, no scaling.
export TMPDIR=/tmp
runtime=$(mktemp -d)
trap 'rm -rf "$runtime"' EXIT
export XDG_RUNTIME_DIR="$runtime"
unset QT_STYLE_OVERRIDE QT_SCALE_FACTOR QT_SCREEN_SCALE_FACTORS QT_FONT_DPI QT_QPA_PLATFORMTHEME
export QT_QPA_PLATFORM=xcb QT_AUTO_SCREEN_SCALE_FACTOR=0 LC_ALL=C.UTF-8
unset LANGUAGE
lang="${ZO_LANG:-en}"
images=docs/images
[ "$lang" = en ] || images="docs/images/$lang"
xvfb-run -a -s "-screen 0 1280x1024x24 -dpi 96 -nolisten tcp" \
  "$build/tools/screenshots/zoevents-screenshots" --lang "$lang" "$images" examples/demo "Pump 1 fault"
