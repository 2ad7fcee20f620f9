#!/usr/bin/env bash
# The project's main job on a fresh Debian 12 machine, as root: installs what
# both builds need, builds the native and the win64 trees, and runs an example
# task through qmhost, natively and (with the product DLL) under Wine.
#
#   bash scripts/demo.sh [examples/<task>.qmt]
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$repo"
task=${1:-examples/sort-and-number.qmt}

bash scripts/setup.sh
for preset in native win64; do
  cmake --preset "$preset"
  cmake --build --preset "$preset" -j "${QMCSV_JOBS:-2}"
done

echo "=== $task with build/native/bin/qmhost (libqmcsv.so)"
build/native/bin/qmhost run "$task"

echo "=== $task with build/win64/bin/qmhost.exe (qmcsv.dll) under Wine"
export WINEPREFIX="$repo/build/win64/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wine=(wine)
[[ -n ${DISPLAY:-} ]] || wine=(xvfb-run -a wine)
"${wine[@]}" build/win64/bin/qmhost.exe run "$task"
