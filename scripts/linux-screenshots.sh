#!/usr/bin/env bash
# Takes the pictures of ozadm-gui in docs/images/linux-*.png: the program under Xvfb on the xcb
# platform, on Google Chrome's template from the corpus with a real machine Registry.pol (the
# policy view, the registry view, the grid with the search sheet, the legend dialog).
# Needs the native build (with Qt 6) and the corpus beside the repository.
set -euo pipefail
cd "$(dirname "$0")/.."

corpus=${OZ_CORPUS_DIR:-../shared/corpus}
cmake --build --preset native --target ozadm-gui-screenshots
xvfb-run -a -s "-screen 0 1180x760x24" env QT_QPA_PLATFORM=xcb \
  build/native/hosts/ozadm-gui/ozadm-gui-screenshots docs/images \
  "$corpus/adm/chrome73/chrome.adm" "$corpus/pol/shb_chrome_machine.pol" \
  'MACHINE\Google\Google Chrome\Content Settings\Default popups setting'
ls -l docs/images/linux-*.png
