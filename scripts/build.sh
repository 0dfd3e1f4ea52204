#!/usr/bin/env bash
# Configures and builds into ${ZO_BUILD_DIR:-build}; extra arguments go to cmake.
set -euo pipefail
cd "$(dirname "$0")/.."
"$(pwd)/scripts/deps.sh"
build="${ZO_BUILD_DIR:-build}"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE="${ZO_BUILD_TYPE:-RelWithDebInfo}" "$@" >/dev/null
cmake --build "$build" -j2
