#!/usr/bin/env bash
# The whole life of ozADM.ocx in a Wine prefix: regsvr32 registers it, the VBScript and
# JScript sessions and the C++ client drive it, the system's ActiveX host embeds it (and
# ImageMagick's import takes a screenshot of the host window, saved as SCREENSHOT), regsvr32 /u
# removes it, after which CreateObject fails. Runs inside the prefix and display of the calling
# test run (scripts/wine-ctest.sh); every Wine call is bounded by timeout.
#
# Usage: ozADMControlTest.sh WINE OCX CLIENT_EXE EMBEDDING_EXE OZP_LIBRARY SOURCE_DIR SCRATCH_DIR
#                            SCREENSHOT
set -uo pipefail

wine=$1 ocx=$2 client=$3 embedding=$4 ozp=$5 source=$6 scratch=$7 screenshot=$8
here=$(cd "$(dirname "$0")" && pwd)
failures=0

: "${WINEPREFIX:?the Wine prefix of the test run}"
export WINEDEBUG=-all OZADM_NO_MESSAGE_BOXES=1

fail() {
  echo "FAIL $*"
  failures=$((failures + 1))
}

windows_path() {
  timeout 60 "$wine" winepath -w "$1" 2>/dev/null | tr -d '\r'
}

# Runs a script with cscript and checks that it ended with its sentinel, without a script
# error that Wine's script host would otherwise swallow, and with exit code 0.
run_script() {
  local sentinel=$1
  shift
  local out="$scratch/script.out" err="$scratch/script.err" status=0
  WINEDEBUG=-all,fixme+wscript timeout 120 "$wine" cscript //nologo "$@" >"$out" 2>"$err" ||
    status=$?
  tr -d '\r' <"$out"
  # The control's messages (OZADM_NO_MESSAGE_BOXES) are shown for the record.
  grep -v -e OnScriptError -e "fixme:wscript" "$err" | tr -d '\r' || true
  if grep -q OnScriptError "$err"; then
    fail "$1: script error"
    cat "$err"
  fi
  [[ $status -eq 0 ]] || fail "$1: exit code $status"
  [[ $(tr -d '\r' <"$out" | tail -n 1) == "$sentinel" ]] || fail "$1: no sentinel '$sentinel'"
}

rm -rf "$scratch" && mkdir -p "$scratch"
ocx_w=$(windows_path "$ocx")
source_w=$(windows_path "$source")
ozp_w=$(windows_path "$ozp")
scratch_w=$(windows_path "$scratch")

# Registration; the control is loaded by its Windows path, so that the DLLs beside it are found.
status=0
timeout 60 "$wine" regsvr32 /s "$ocx_w" || status=$?
[[ $status -eq 0 ]] && echo "ok   regsvr32 registers the control" ||
  fail "regsvr32 exit code $status"
for key in 'HKCR\ozADM.ozADMCtrl.1' 'HKCR\ozADM.ozADMPropPage.1' \
  'HKCR\CLSID\{9835BD19-39BC-4E74-83FE-F7A6F3AB62AD}\MiscStatus\1' \
  'HKCR\TypeLib\{FA313288-36AE-4805-8EB4-2C888F59A626}\1.0'; do
  timeout 60 "$wine" reg query "$key" >/dev/null 2>&1 && echo "ok   $key registered" ||
    fail "$key not registered"
done

# Keys for AddFromRegistry, written into the prefix's registry as an administrator would.
timeout 60 "$wine" reg add 'HKCU\Software\ozADM-ocx-test\Sub' /v Name /t REG_SZ /d text /f \
  >/dev/null 2>&1 || fail "reg add of the test keys"
timeout 60 "$wine" reg add 'HKCU\Software\ozADM-ocx-test' /v Count /t REG_DWORD /d 7 /f \
  >/dev/null 2>&1 || fail "reg add of the test keys"

run_script "VBSCRIPT SESSION COMPLETE" "$(windows_path "$here/ozADMSession.vbs")" \
  "$source_w" "$ozp_w" "$scratch_w"
run_script "JSCRIPT SESSION COMPLETE" "$(windows_path "$here/ozADMSession.js")" \
  "$source_w" "$ozp_w" "$scratch_w"
timeout 60 "$wine" reg delete 'HKCU\Software\ozADM-ocx-test' /f >/dev/null 2>&1 || true

status=0
timeout 120 "$wine" "$client" 2>"$scratch/client.err" |
  tr -d '\r' || status=$?
[[ $status -eq 0 ]] || { fail "C++ client exit code $status"; cat "$scratch/client.err"; }

# The embedding client signals through a file when its host window is on the screen and waits
# until the file is gone.
take_screenshot() {
  local signal=$1 pid=$2
  for ((i = 0; i < 600; i++)); do
    [[ -f $signal ]] && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
  done
  if [[ ! -f $signal ]]; then
    fail "the embedding client never showed its window for the screenshot"
    return
  fi
  mkdir -p "$(dirname "$screenshot")"
  rm -f "$screenshot"
  timeout 60 import -window "ozADM host" "$screenshot" 2>"$scratch/import.err" ||
    cat "$scratch/import.err"
  rm -f "$signal"
  # Frame, view and title: a picture of the control has more than one colour.
  local colours
  colours=$(identify -format '%k' "$screenshot" 2>/dev/null || echo 0)
  if [[ -s $screenshot && $colours -ge 3 ]]; then
    echo "ok   screenshot of the embedded control in $screenshot ($colours colours)"
  else
    fail "no screenshot of the embedded control ($colours colours)"
  fi
}

if command -v import >/dev/null && command -v identify >/dev/null; then
  signal="$scratch/screenshot.signal"
  timeout 180 "$wine" "$embedding" "$(windows_path "$signal")" >"$scratch/embedding.out" \
    2>"$scratch/embedding.err" &
  embedding_pid=$!
  take_screenshot "$signal" "$embedding_pid"
  status=0
  wait "$embedding_pid" || status=$?
  tr -d '\r' <"$scratch/embedding.out"
  [[ $status -eq 0 ]] || { fail "embedding client exit code $status"; cat "$scratch/embedding.err"; }
else
  fail "ImageMagick's import and identify are missing (scripts/setup.sh installs imagemagick)"
fi

status=0
timeout 60 "$wine" regsvr32 /s /u "$ocx_w" || status=$?
[[ $status -eq 0 ]] && echo "ok   regsvr32 /u unregisters the control" ||
  fail "regsvr32 /u exit code $status"
for key in 'HKCR\ozADM.ozADMCtrl.1' 'HKCR\ozADM.ozADMCtrl' 'HKCR\ozADM.ozADMPropPage.1' \
  'HKCR\CLSID\{9835BD19-39BC-4E74-83FE-F7A6F3AB62AD}' \
  'HKCR\TypeLib\{FA313288-36AE-4805-8EB4-2C888F59A626}\1.0'; do
  timeout 60 "$wine" reg query "$key" >/dev/null 2>&1 && fail "$key still registered" ||
    echo "ok   $key removed"
done
run_script "UNREGISTERED CHECK COMPLETE" "$(windows_path "$here/ozADMUnregistered.vbs")"

if [[ $failures -ne 0 ]]; then
  echo "$failures failure(s)"
  exit 1
fi
echo "all control checks passed"
