#!/usr/bin/env bash
# Sets up, builds and runs the test suite natively. The README's test command.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset native
cmake --build --preset native
ctest --preset native -j"$(nproc)"
