#!/usr/bin/env bash
# Assembles the Windows distribution from a finished Windows build: the folder dist/ozADM/ of
# the build tree with the control, the grammar engine, the three profile libraries, the
# command-line host with its bundled files, the documents a user of them reads and the
# installation notes, and the archive
# dist/ozADM-windows.zip of that folder. Then checks the archive: every file is in it, and no
# program in it needs a DLL that is neither in the package nor part of Windows.
#
# Usage: scripts/package-windows.sh [BUILD_DIR]     (default: build/windows)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/windows}
bin=$build/bin
dist=$build/dist
package=$dist/ozADM
archive=$dist/ozADM-windows.zip

binaries=(ozADM.ocx ozEBNF.dll ozRegOZP.dll ozRegPOL.dll ozRegREG.dll ozadm.exe)
# The command-line host finds its grammar and string tables in ozadm-data beside it; hosts of
# the control pass the grammar's path to SetEBNF, so it stands beside the control as well.
host_data=(grammar/adm.bnf hosts/ozadm/data/strings-*.txt hosts/ozadm/data/empty.adm)
# What ozadm.exe --help and the notes point to: the commands, the profile formats and what a
# profile library provides.
documents=(docs/cli.md docs/ozp-format.md docs/pol-mapping.md docs/reg-format.md
  docs/profile-libraries.md)

for binary in "${binaries[@]}"; do
  if [[ ! -f $bin/$binary ]]; then
    echo "package-windows: $bin/$binary is missing; build the Windows half first" >&2
    exit 1
  fi
done

rm -rf "$package" "$archive"
mkdir -p "$package/ozadm-data" "$package/docs"
# The build keeps debugging information; the package does without it.
strip=$(command -v x86_64-w64-mingw32-strip || true)
for binary in "${binaries[@]}"; do
  cp "$bin/$binary" "$package/"
  [[ -z $strip ]] || "$strip" --strip-debug "$package/$binary"
done
cp grammar/adm.bnf dist/windows/README.md "$package/"
cp "${host_data[@]}" "$package/ozadm-data/"
cp "${documents[@]}" "$package/docs/"
(cd "$dist" && zip -q -r -X "$(basename "$archive")" ozADM)

failures=0
fail() {
  echo "package-windows: $*" >&2
  failures=$((failures + 1))
}

expected=(README.md adm.bnf "${binaries[@]}")
for file in "${host_data[@]}"; do
  expected+=("ozadm-data/$(basename "$file")")
done
expected+=("${documents[@]}")
listing=$(zip -sf "$archive" | sed -n 's/^  //p')
for file in "${expected[@]}"; do
  grep -qxF "ozADM/$file" <<<"$listing" || fail "$archive lacks ozADM/$file"
done

# The runtime of the compiler must be linked in: the package carries no DLLs of its own but
# ours, and Windows has none of the mingw-w64 runtime.
objdump=$(command -v x86_64-w64-mingw32-objdump || true)
if [[ -z $objdump ]]; then
  fail "x86_64-w64-mingw32-objdump is missing (scripts/setup.sh installs the cross tools)"
else
  for binary in "${binaries[@]}"; do
    while read -r dll; do
      [[ -f $package/$dll ]] && continue
      [[ ${dll,,} =~ ^(lib|mingw|cyg) ]] && fail "$binary needs $dll, which is not in the package"
    done < <("$objdump" -p "$package/$binary" | sed -n 's/^\s*DLL Name: //p')
  done
fi

if [[ $failures -ne 0 ]]; then
  exit 1
fi
echo "package-windows: $archive ($(grep -c . <<<"$listing") entries) holds the distribution"
