#!/usr/bin/env bash
# Cross-builds the Windows half with mingw-w64 and runs its tests under Wine, inside one
# virtual display so that no Wine process ever waits for a screen.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset windows
cmake --build --preset windows
xvfb-run -a scripts/wine-ctest.sh

# The distribution: build/windows/dist/ozADM-windows.zip, checked as it is made, then installed
# as its notes say into a fresh Wine prefix of its own.
scripts/package-windows.sh
xvfb-run -a tests/win32/ozPackageInstallTest.sh build/windows/dist/ozADM-windows.zip
