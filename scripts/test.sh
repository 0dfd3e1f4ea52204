#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test offscreen.
# ZO_BUILD_DIR picks the build folder; extra arguments go to cmake (the sanitizer pass
# of CI uses -DZO_SANITIZE=ON).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/build.sh "$@"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${ZO_BUILD_DIR:-build}" --output-on-failure -j2 --timeout 600
