#!/usr/bin/env bash
# Several desktops come and go at once: each program finds its own display all the time, and nothing of it is left.
set -uo pipefail
. "$(dirname "$0")/../../tools/env.sh"
unset MXOV_PREFIX
failures=0
runs=2
[ -z "${MXOV_LONG:-}" ] || runs=10

use_one() { # NAME: marks its display and looks for the mark again and again
    "$MXOV_ROOT/tools/with-desktop" bash -c '
        xprop -root -f MXOV_MARK 8s -set MXOV_MARK "$1"
        wine cmd /c exit
        for look in $(seq 10); do
            found=$(xprop -root MXOV_MARK 2>&1)
            [ "$found" = "MXOV_MARK(STRING) = \"$1\"" ] || { echo "$1 finds on $DISPLAY: $found"; exit 1; }
        done
        echo "$WINEPREFIX"' desktop "$1"
}
use_some() { # NAME
    for run in $(seq $runs); do use_one "$1-$run" || echo "FAILED: $1-$run"; done
}

output=$(for user in a b c; do use_some $user & done; wait)
echo "$output"
[ "$(grep -c '/wine$' <<<"$output")" -eq $((3 * runs)) ] || { echo "FAILED: not all desktops worked"; failures=$((failures + 1)); }
for prefix in $(grep '/wine$' <<<"$output"); do
    [ ! -e "$prefix" ] || { echo "FAILED: $prefix is still there"; failures=$((failures + 1)); }
    left=$(grep -lzsxF "WINEPREFIX=$prefix" /proc/[0-9]*/environ | wc -l)
    [ "$left" -eq 0 ] || { echo "FAILED: $left programs are left of $prefix"; failures=$((failures + 1)); }
done
echo "$failures failed"
[ "$failures" -eq 0 ]
