#!/usr/bin/env bash
# The delivered control is one self-contained file: at most 1 MB, system libraries and the host's library apart.
set -uo pipefail
. "$(dirname "$0")/../../../tools/env.sh"
control=$MXOV_BUILD/bin/MXOVDocViewCtrl.ocx
system='advapi32|comctl32|comdlg32|gdi32|kernel32|msvcrt|ole32|oleaut32|shell32|shlwapi|user32|uuid'
failures=0

size=$(stat -c %s "$control")
[ "$size" -le 1048576 ] || { echo "FAILED: $size bytes"; failures=$((failures + 1)); }
foreign=$(x86_64-w64-mingw32-objdump -p "$control" | sed -n 's/^\s*DLL Name: //p' | grep -viE "^($system|mxovshare)\.dll$")
[ -z "$foreign" ] || { echo "FAILED: imports $foreign"; failures=$((failures + 1)); }
exports=$(x86_64-w64-mingw32-objdump -p "$control" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | grep -oE 'Dll[A-Za-z]+' | sort | tr '\n' ' ')
[ "$exports" = 'DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer ' ] ||
    { echo "FAILED: exports $exports"; failures=$((failures + 1)); }
# Nothing that is delivered talks to a network by itself.
network='ws2_32|wsock32|mswsock|winhttp|wininet|urlmon|dnsapi|netapi32|websocket'
for file in "$MXOV_BUILD"/bin/*.{ocx,dll,exe}; do
    ! grep -qiE "DLL Name: ($network)\.dll" <<<"$(x86_64-w64-mingw32-objdump -p "$file")" ||
        { echo "FAILED: ${file##*/} imports a network library"; failures=$((failures + 1)); }
done
# A stack guard drawn by a cryptographic provider loads three more libraries at the start of every host.
for file in "$control" "$MXOV_BUILD/bin/mxovshare.dll"; do
    ! grep -q CryptAcquireContext <<<"$(x86_64-w64-mingw32-objdump -p "$file")" ||
        { echo "FAILED: ${file##*/} opens a cryptographic provider"; failures=$((failures + 1)); }
done
echo "$size bytes, $failures failed"
[ "$failures" -eq 0 ]
