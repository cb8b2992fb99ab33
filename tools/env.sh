# Sourced by the scripts: where things are, and the settings under which programs run in Wine.
MXOV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export MXOV_ROOT
export MXOV_BUILD=${MXOV_BUILD:-$MXOV_ROOT/build}
export WINEPREFIX=$MXOV_BUILD/wine
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml='
# Programs find mxovshare.dll here, as they would beside the host.
WINEPATH=$(echo "Z:$MXOV_BUILD/bin" | tr / '\\')
export WINEPATH
