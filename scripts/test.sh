#!/usr/bin/env bash
# Sets up, builds and runs the test suite natively. The README's test command.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset native
cmake --build --preset native
ctest --preset native -j"$(nproc)"
# The installed programs, and the Qt widget's package used by examples/qt-embed.
scripts/test-install.sh
