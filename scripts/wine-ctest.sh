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
# Wine draws the windows' frames and captions itself, as the virtual display has no window
# manager to draw them, and takes its own fonts (fonts-wine: the dialog font, the caption
# buttons' symbols) from the prefix: the screenshots show the windows as Windows draws them.
if [[ ! -f $WINEPREFIX/drive_c/windows/Fonts/marlett.ttf ]]; then
  timeout 60 wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
fi

# The view tests save their pictures here; a fresh build has no such folder yet.
mkdir -p build/windows/artifacts
status=0
ctest --preset windows --timeout 300 || status=$?
wineserver -k || true
# The tests' pictures (artifacts/*.bmp) as PNG.
for picture in build/windows/artifacts/*.bmp; do
  [[ -f $picture ]] && convert "$picture" "${picture%.bmp}.png" && rm "$picture"
done
exit $status
