# Sourced by the scripts: where things are, and the settings under which programs run in Wine.
MXOV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export MXOV_ROOT
export MXOV_BUILD=${MXOV_BUILD:-$MXOV_ROOT/build}
# The prefix that all others are copied from; a program that runs has one of its own (tools/with-desktop).
export MXOV_TEMPLATE=$MXOV_BUILD/wine-template
export WINEPREFIX=${MXOV_PREFIX:-$MXOV_BUILD/wine}
export WINEARCH=win64
# Errors are kept, since a program that does not start says why in them; a leading "-all" keeps the distribution's
# start script from adding advice of its own.
export WINEDEBUG=${WINEDEBUG:--all,err+all}
export WINEDLLOVERRIDES='mscoree,mshtml='
# Programs find mxovshare.dll here, as they would beside the host.
WINEPATH=$(echo "Z:$MXOV_BUILD/bin" | tr / '\\')
export WINEPATH
