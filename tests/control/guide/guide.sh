#!/usr/bin/env bash
# guide.sh registered|unregistered: runs the samples of the host guide and compares what they print. Those that need no
# registration run where the control was never registered.
set -uo pipefail
cd "$(dirname "$0")"
. ../../../tools/env.sh
samples=$MXOV_BUILD/guide
work=$MXOV_BUILD/guide-$1${MXOV_PLACE:+-$MXOV_PLACE}
failures=0
windows() { echo "Z:${1//\//\\}"; }

expect() { # WHAT EXIT-CODE COMMAND...; expected lines on standard input
    local what=$1 expected=$2 printed code
    shift 2
    printed=$("$@" 2>/dev/null | tr -d '\r'; exit "${PIPESTATUS[0]}")
    code=$?
    if [ "$code" -eq "$expected" ] && diff <(cat) <(printf "%s${printed:+\n}" "$printed"); then echo "ok: $what"; else
        echo "FAILED: $what (exit code $code)"
        failures=$((failures + 1))
    fi
}

registered() {
    mkdir -p "$work/package"
    printf '[FILEINFO]\r\nCADFilePath=Q:\\part.sldprt\r\n' >"$work/package/mxinfo.ini"
    folder="$(windows "$work/package")\\"

    expect script 7 wine cscript //nologo "$(windows "$samples/script.vbs")" "$folder" <<'LINES'
_DMXOVDocView
kept
done
LINES
    echo 'LoadFile 0, Close 0' | expect 'ATL host' 0 wine "$samples/AtlHost.exe" "$folder" "${folder}none.mxov"
    echo 'DoVerb 0, LoadFile 0, SetObjectRects 0' |
        expect 'C++ host' 0 wine "$samples/SiteHost.exe" "$folder" "${folder}none.mxov"
    echo '1 Datum' | expect 'host in German' 0 wine "$samples/LanguageHost.exe" German
    echo '0 Date' | expect 'host in a language that there is not' 0 wine "$samples/LanguageHost.exe" Martian
}

unregistered() {
    mkdir -p "$work/host"
    cp "$MXOV_BUILD"/bin/{MXOVDocViewCtrl.ocx,MXOVDocViewCtrl.manifest,mxovshare.dll} "$work/host"
    cp "$samples/SideBySideHost.exe" "$work/host"
    cp "$samples/SideBySideHost.exe" "$work/host/ManifestHost.exe"
    cp "$samples/ManifestHost.exe.manifest" "$work/host"
    unset WINEPATH
    if wine reg query 'HKCR\CLSID\{6406FF95-0F04-4382-852B-89E0979EAEE8}' >/dev/null 2>&1; then
        echo 'FAILED: the control is registered here'
        failures=$((failures + 1))
    fi
    expect 'no description, no control' 2 wine "$work/host/SideBySideHost.exe" </dev/null
    expect 'a context of the host' 0 wine "$work/host/SideBySideHost.exe" \
        "$(windows "$work/host/MXOVDocViewCtrl.manifest")" <<'LINES'
ProgID 0
type library 0
themed
LINES
    expect 'a manifest of the host' 0 wine "$work/host/ManifestHost.exe" <<'LINES'
ProgID 0
type library 0
themed
LINES
}

rm -rf "$work"
"$1"
echo "$failures failed"
[ "$failures" -eq 0 ]
