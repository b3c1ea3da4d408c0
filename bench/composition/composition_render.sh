#!/usr/bin/env bash
# Renders the reference scene on one core (taskset -c 0) and prints median
# frame times with the drawImage and memcpy anchors. Fails when 1080p takes
# more than 3.5 ms, or 5 ms with blur mode on.
# Usage: bench/composition/composition_render.sh BUILD_DIR
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
bin="$build/bench/composition/composition_render_bench"
[ -x "$bin" ] || { echo "composition_render: $bin is missing (build bench_all)"; exit 1; }
QT_QPA_PLATFORM=offscreen taskset -c 0 "$bin"
