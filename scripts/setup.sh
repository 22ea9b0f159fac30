#!/usr/bin/env bash
# Installs with apt every Debian package that building and testing ozADM needs.
# Does nothing when they are all present. Run as root (or with sudo available).
set -euo pipefail

packages=(
  # native build and tests
  cmake ninja-build pkg-config g++ clang libclang-rt-14-dev clang-format
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  # ADMX and ADML templates (XML) on POSIX
  libpugixml-dev
  # the Linux desktop widget and editor, and their offscreen tests
  qt6-base-dev qt6-qpa-plugins
  # offline registry hives on POSIX
  libhivex-dev libhivex-bin
  # the Windows half: cross-build, and tests under Wine
  g++-mingw-w64-x86-64 mingw-w64-tools wine wine64 libwine-dev xvfb xauth
  # Wine's own fonts, for the window captions and controls in the screenshots
  fonts-wine
  # the screenshot of the embedded control, and the Windows distribution's archive
  imagemagick zip unzip
  # the generator of the views' bitmaps (ui/bitmaps)
  python3
  # Samba's Registry.pol parser, for the interoperability test and the profile benchmark
  python3-samba
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "setup: installing ${missing[*]}"
sudo_cmd=()
[[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
