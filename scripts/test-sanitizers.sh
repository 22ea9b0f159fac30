#!/usr/bin/env bash
# Builds the whole suite with AddressSanitizer and UndefinedBehaviorSanitizer and runs it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset asan
cmake --build --preset asan
ctest --preset asan -j"$(nproc)"
