#!/usr/bin/env bash
# Cross-builds the Windows half with mingw-w64 and runs its tests under Wine, inside one
# virtual display so that no Wine process ever waits for a screen.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset windows
cmake --build --preset windows
xvfb-run -a scripts/wine-ctest.sh
