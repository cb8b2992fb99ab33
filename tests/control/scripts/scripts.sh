#!/usr/bin/env bash
# Runs both scripts and compares every line they print; a script that stops early ends silently with 0.
set -uo pipefail
cd "$(dirname "$0")"
. ../../../tools/env.sh
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
printf '[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\nCADFilePath=Q:\\part.sldprt\r\n' >"$folder/mxinfo.ini"
argument="Z:${folder//\//\\}\\"
failures=0

run() { # SCRIPT; expected lines on standard input
    local printed code
    printed=$(wine cscript //nologo "$1" "$argument" 2>/dev/null | tr -d '\r'; exit "${PIPESTATUS[0]}")
    code=$?
    if [ "$code" -ne 7 ] || ! diff <(cat) <(echo "$printed"); then
        echo "FAILED: $1 (exit code $code)"
        failures=$((failures + 1))
    fi
}

run members.vbs <<'LINES'
type: _DMXOVDocView
InputParameter: -1
emptied: -1
called
one argument missing: 1C2
no number: D
no member: 1B6
LINES
run members.js <<'LINES'
InputParameter: true
called
one argument missing: true
LINES
echo "$failures failed"
[ "$failures" -eq 0 ]
