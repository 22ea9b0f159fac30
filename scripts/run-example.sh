#!/usr/bin/env bash
# Builds ozadm on a fresh Debian 12 machine and runs it on the bundled example: the policy
# tree with its states, one policy configured, the profile saved (into the build folder, never
# over examples/example.ozp), the configured policies with their registry entries, and the
# policy view as a user sees it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
mkdir -p build
build=build/example
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOZ_BUILD_BENCHMARKS=OFF \
  > "$build.configure.log" 2>&1 || { cat "$build.configure.log"; exit 1; }
cmake --build "$build" -j2 --target ozadm

ozadm=$build/hosts/ozadm/ozadm
template=examples/example.adm
saved=$build/example-saved.ozp
proxy='MACHINE\Browser\Proxy server'

step() { printf '\n== %s\n' "$*"; }

step "The example template with the bundled profile (examples/example.ozp)"
"$ozadm" show "$template" --profile examples/example.ozp --parts

step "Enabling \"$proxy\" with server proxy.corp.example, port 3128; saving to $saved"
"$ozadm" set "$template" --profile examples/example.ozp --save-profile "$saved" \
  --state "$proxy" enabled \
  --part "$proxy" "Server name" proxy.corp.example \
  --part "$proxy" Port 3128

step "The policy tree with the saved profile"
"$ozadm" show "$template" --profile "$saved"

step "The configured policies and the registry entries each configures"
"$ozadm" configured "$template" --profile "$saved" --entries

step "The policy view as a user sees it, with the saved profile (ozadm script, docs/cli.md)"
printf '%s\n' "SetADM \"$template\"" "Load \"$saved\" \"\"" 'DisplayMode = 0' 'Refresh' \
  "Select \"$proxy\"" 'View' | "$ozadm" script -
