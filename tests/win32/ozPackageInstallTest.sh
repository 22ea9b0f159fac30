#!/usr/bin/env bash
# The Windows package as a new user meets it: in a fresh Wine prefix the archive is extracted
# into C:\Program Files (as Explorer's Extract All does), the control is registered with the
# notes' own regsvr32 line run by the command prompt, and a VBScript run as the notes say for
# unattended scripts loads and saves a profile through the default library named by its file
# name alone. ozadm.exe then shows a template with ANSI text, which must arrive as UTF-8 on a
# pipe, and its --help must point to a document the package holds. The prefix is removed at
# the end. Meant to run inside a display (scripts/test-windows.sh starts one).
#
# Usage: ozPackageInstallTest.sh ARCHIVE
set -uo pipefail

archive=$(realpath "$1")
examples=$(cd "$(dirname "$0")/../../examples" && pwd)
scratch=$(mktemp -d)
export WINEPREFIX=$scratch/prefix WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
failures=0

cleanup() {
  timeout 60 wineserver -k 2>/dev/null
  timeout 60 wineserver -w 2>/dev/null
  rm -rf "$scratch"
}
trap cleanup EXIT

fail() {
  echo "FAIL $*"
  failures=$((failures + 1))
}

timeout 300 wineboot -i >/dev/null 2>&1 && timeout 300 wineserver -w ||
  { echo "FAIL no Wine prefix"; exit 1; }
timeout 60 wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f \
  >/dev/null 2>&1

drive=$WINEPREFIX/drive_c
unzip -q "$archive" -d "$drive/Program Files" || { echo "FAIL unzip"; exit 1; }
note="$drive/Program Files/ozADM/README.md"

# What the session works on, in a folder of the prefix's drive C.
work=$drive/ozadm-test
mkdir -p "$work"
cp "$examples/example.adm" "$examples/example.ozp" "$work/"
cat >"$work/session.vbs" <<'EOF'
Set ctl = CreateObject("ozADM.ozADMCtrl.1")
If ctl.ozImpExLibrary <> "ozRegOZP.dll" Then WScript.Quit 1
If Not ctl.SetEBNF("C:\Program Files\ozADM\adm.bnf") Then WScript.Quit 1
If Not ctl.SetADM("C:\ozadm-test\example.adm") Then WScript.Quit 1
If Not ctl.Load("C:\ozadm-test\example.ozp", "") Then WScript.Quit 1
If Not ctl.Save("C:\ozadm-test\saved.ozp", "C:\ozadm-test\saved.ozp") Then WScript.Quit 1
WScript.Echo "SESSION COMPLETE"
EOF

# The notes' commands, one per line as a user types them into the command prompt.
register=$(grep -m 1 '^regsvr32 "' "$note")
quiet=$(grep -m 1 '^set OZADM_NO_MESSAGE_BOXES=' "$note")
[[ -n $register && -n $quiet ]] || fail "the notes lack the regsvr32 or the set line"
printf '%s\r\n' "@echo off" "$register" "if errorlevel 1 exit /b 1" "$quiet" \
  'cscript //nologo C:\ozadm-test\session.vbs' >"$work/install.cmd"
WINEDEBUG=-all,fixme+wscript timeout 300 wine cmd /c 'C:\ozadm-test\install.cmd' \
  >"$scratch/out" 2>"$scratch/err"
status=$?
tr -d '\r' <"$scratch/out"
if [[ $status -ne 0 || $(tr -d '\r' <"$scratch/out" | tail -n 1) != "SESSION COMPLETE" ]] ||
  grep -q OnScriptError "$scratch/err"; then
  fail "registering and the session (exit code $status)"
  grep -v "fixme:wscript" "$scratch/err"
fi
grep -q '"Wallpaper"' "$work/saved.ozp" 2>/dev/null ||
  fail "the saved profile lacks what the loaded one holds"

# A template in the ANSI code page ("ä" as the byte E4), shown by ozadm.exe through a pipe.
printf 'CLASS USER\nCATEGORY "Kategorie \xe4"\nKEYNAME "Software\\T"\nPOLICY "P"\nVALUENAME "V"\n%s' \
  $'END POLICY\nEND CATEGORY\n' >"$work/ansi.adm"
ozadm='C:\Program Files\ozADM\ozadm.exe'
timeout 120 wine "$ozadm" show 'C:\ozadm-test\ansi.adm' >"$scratch/show" 2>&1
grep -q "Kategorie ä" "$scratch/show" ||
  fail "template text is not UTF-8 on a pipe: $(cat -v "$scratch/show")"
document=$(timeout 120 wine "$ozadm" --help | sed -n 's/.*; \(docs\\[^ ]*\) beside .*/\1/p')
[[ -n $document && -f "$drive/Program Files/ozADM/${document//\\//}" ]] ||
  fail "ozadm.exe --help points to '$document', which the package lacks"

if [[ $failures -ne 0 ]]; then
  echo "$failures failure(s)"
  exit 1
fi
echo "ok   the package installs as its notes say and works with the default library"
