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
# Python's compiled modules would be left beside the sources.
export PYTHONDONTWRITEBYTECODE=1
# Programs find mxovshare.dll here, as they would beside the host.
WINEPATH=$(echo "Z:$MXOV_BUILD/bin" | tr / '\\')
export WINEPATH
# How to start Wine programs. Debian's Wine has no preloader that keeps addresses free: its loader lies at 0x7d000000 and
# its heap begins at a random place in the gigabyte behind it. About once in 8000 starts the heap covers 0x7ffe0000,
# where Wine has to map its shared data, and the program ends with code 1 before its first instruction.
at_fixed_addresses=()
! setarch -R true 2>/dev/null || at_fixed_addresses=(setarch -R)
