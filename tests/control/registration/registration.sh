#!/usr/bin/env bash
# Registers and unregisters the control with regsvr32 where it never was registered, and compares the whole registry
# before and after. Checks the entries in between, and the error codes of the two exported functions.
set -uo pipefail
. "$(dirname "$0")/../../../tools/env.sh"
work=$MXOV_BUILD/registration${MXOV_PLACE:+-$MXOV_PLACE}
control="Z:${MXOV_BUILD//\//\\}\\bin\\MXOVDocViewCtrl.ocx"
failures=0

check() { # WHAT CONDITION...
    local what=$1
    shift
    if "$@"; then echo "ok: $what"; else echo "FAILED: $what"; failures=$((failures + 1)); fi
}
registry() { # FILE: the whole registry as text, but for what Wine's desktop writes about the display when it comes up
    wine regedit /E "$work/$1.hive" >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$work/$1.hive" | tr -d '\r' |
        sed -E '/^\[HKEY_LOCAL_MACHINE\\System\\(CurrentControlSet|ControlSet[0-9]+)\\Control\\Video\\/,/^$/d' >"$work/$1"
}
value() { # KEY NAME EXPECTED; name "" is the default value
    local name=(/v "$2")
    [ -n "$2" ] || name=(/ve)
    wine reg query "HKCR\\$1" "${name[@]}" 2>/dev/null | tr -d '\r' | grep -qF -- "    $3"
}
regsvr() { wine regsvr32 /s "$@" >/dev/null 2>&1; }
absent() { ! wine reg query "HKCR\\$1" >/dev/null 2>&1; }

rm -rf "$work"
mkdir -p "$work"

clsid='CLSID\{6406FF95-0F04-4382-852B-89E0979EAEE8}'
page='CLSID\{D282CB0E-7C46-48A7-B12A-E3137955F8C1}'
library='TypeLib\{D14D7A76-F727-49FE-ADA4-641D4B61ED73}'
progid='MXOVTREETAB.MXOVDocViewCtrlVS2015.13'

# Brings up Wine's desktop, which writes about the display.
wine rundll32 user32.dll,GetDesktopWindow
registry before
check 'regsvr32 succeeds' regsvr "$control"
check 'type name of the class' value "$clsid" '' 'REG_SZ    MXOVDocView Control'
check 'ProgID of the class' value "$clsid\\ProgID" '' "REG_SZ    $progid"
check 'server of the class' value "$clsid\\InprocServer32" '' "REG_SZ    $control"
check 'apartment threading' value "$clsid\\InprocServer32" ThreadingModel 'REG_SZ    Apartment'
check 'it is a control' wine reg query "HKCR\\$clsid\\Control"
check 'toolbox bitmap 1012' value "$clsid\\ToolboxBitmap32" '' "REG_SZ    $control, 1012"
check 'no misc status for other aspects' value "$clsid\\MiscStatus" '' 'REG_SZ    0'
check 'misc status of the content' value "$clsid\\MiscStatus\\1" '' 'REG_SZ    131473'
check 'type library of the class' value "$clsid\\TypeLib" '' 'REG_SZ    {D14D7A76-F727-49FE-ADA4-641D4B61ED73}'
check 'version of the class' value "$clsid\\Version" '' 'REG_SZ    1.0'
check 'not insertable' absent "$clsid\\Insertable"
check 'type name of the ProgID' value "$progid" '' 'REG_SZ    MXOVDocView Control'
check 'class of the ProgID' value "$progid\\CLSID" '' 'REG_SZ    {6406FF95-0F04-4382-852B-89E0979EAEE8}'
check 'name of the page' value "$page" '' 'REG_SZ    MXOVDocView Property Page'
check 'server of the page' value "$page\\InprocServer32" '' "REG_SZ    $control"
check 'type library file' value "$library\\1.0\\0\\win64" '' "REG_SZ    $control"
check 'registering twice succeeds' regsvr "$control"

check 'unregistering succeeds' regsvr /u "$control"
registry after
check 'nothing stays behind' diff "$work/before" "$work/after"

check 'registering again succeeds' regsvr "$control"
check 'unregistering once' regsvr /u "$control"
regsvr /u "$control"
check 'unregistering twice fails in the function' [ $? -eq 5 ]

echo "$failures failed"
[ "$failures" -eq 0 ]
