#!/usr/bin/env bash
# Installs the native build into a fresh prefix and uses it from there: ozadm runs on the
# bundled example with the files installed beside it; and, when the build found Qt 6, the
# example program examples/qt-embed is built against the installed CMake package
# (find_package(ozADM)) and run offscreen, and the installed ozadm-gui answers --help.
# Expects scripts/test.sh (or cmake --build --preset native) to have built build/native.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/native
work=build/install-test
rm -rf "$work"
cmake --install "$build" --prefix "$work/prefix" > "$work.log" 2>&1 || { cat "$work.log"; exit 1; }
prefix=$(cd "$work/prefix" && pwd)

expect() {  # expect WHAT TEXT OUTPUT: fails unless OUTPUT holds TEXT
  if ! grep -qF -- "$2" <<< "$3"; then
    printf 'test-install: %s: expected "%s" in:\n%s\n' "$1" "$2" "$3" >&2
    exit 1
  fi
}

# The installed ozadm, away from the source tree's data: the grammar and string table come
# from PREFIX/share/ozadm, the profile library from PREFIX/lib.
out=$(cd / && "$prefix/bin/ozadm" configured "$OLDPWD/examples/example.adm" \
        --profile "$OLDPWD/examples/example.ozp")
expect "installed ozadm" "+ MACHINE" "$out"

if [[ ! -x "$build/hosts/ozadm-gui/ozadm-gui" ]]; then
  echo "test-install: Qt 6 was not found by the build; ozadm-gui and the widget's package are not tested"
  exit 0
fi

out=$("$prefix/bin/ozadm-gui" --help)
expect "installed ozadm-gui --help" "Usage: ozadm-gui" "$out"

cmake -S examples/qt-embed -B "$work/qt-embed" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
  > "$work/qt-embed.log" 2>&1 || { cat "$work/qt-embed.log"; exit 1; }
cmake --build "$work/qt-embed" >> "$work/qt-embed.log" 2>&1 || { cat "$work/qt-embed.log"; exit 1; }
out=$(QT_QPA_PLATFORM=offscreen "$work/qt-embed/qt-embed" --list examples/example.adm \
        examples/example.ozp)
expect "examples/qt-embed through the installed package" "+ MACHINE" "$out"
echo "test-install: the installed programs and the widget's package work"
