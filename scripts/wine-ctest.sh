#!/usr/bin/env bash
# Runs the Windows test suite under Wine in a prefix of its own, creating the prefix on first
# use. Meant to run inside a display (scripts/test-windows.sh starts one).
set -euo pipefail
cd "$(dirname "$0")/.."

export WINEPREFIX=$PWD/build/windows/wineprefix WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="

if [[ ! -f $WINEPREFIX/system.reg ]]; then
  timeout 300 wineboot -i
  timeout 300 wineserver -w
  # A crash must end the program, never open a dialog that waits for a click.
  timeout 60 wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
fi

status=0
ctest --preset windows --timeout 300 || status=$?
wineserver -k || true
exit $status
