# Sourced by the scripts: where things are, and the settings under which programs run in Wine.
MXOV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export MXOV_ROOT
export MXOV_BUILD=${MXOV_BUILD:-$MXOV_ROOT/build}
# The prefix from which all others are copied; each program runs in its own copy (tools/with-desktop).
export MXOV_TEMPLATE=$MXOV_BUILD/wine-template
export WINEPREFIX=${MXOV_PREFIX:-$MXOV_BUILD/wine}
export WINEARCH=win64
# Wine's errors stay on, since they explain why a program does not start; the leading "-all" keeps the distribution's
# start script from adding its own hints.
export WINEDEBUG=${WINEDEBUG:--all,err+all}
export WINEDLLOVERRIDES='mscoree,mshtml='
# Keeps Python from writing compiled modules beside the sources.
export PYTHONDONTWRITEBYTECODE=1
# Where tests find what they share: the drivers of programs, and of the viewer.
export PYTHONPATH=$MXOV_ROOT/tools:$MXOV_ROOT/tests/e2e
# Where programs find mxovshare.dll, which is normally beside the host.
WINEPATH=$(echo "Z:$MXOV_BUILD/bin" | tr / '\\')
export WINEPATH
# How to start Wine programs. Debian's Wine has no preloader that reserves addresses: its loader is at 0x7d000000 and its
# heap starts at a random address in the gigabyte after it. About once in 8000 starts the heap covers 0x7ffe0000, where
# Wine has to map its shared data, and the program ends with code 1 before its first instruction.
at_fixed_addresses=()
! setarch -R true 2>/dev/null || at_fixed_addresses=(setarch -R)
