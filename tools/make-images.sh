#!/bin/sh
# Redraws the module's icons into resources/images (the PNGs are committed).
#   tools/make-images.sh [build folder]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
build=${1:-${TMPDIR:-/tmp}/zoevents-make-images}
cmake -S "$here/make-images" -B "$build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" -j2 >/dev/null
"$build/make_images" "$root/resources/images"
