#!/usr/bin/env bash
# fuzz.sh KIND [COUNT [SEED]]: runs one kind of fuzzing, or, as "planted", faults that are put in on purpose and must be
# found. Without a count it takes the short one, or the long one of ./test --long (MXOV_LONG). The program itself ends when
# nothing goes on for a minute; MXOV_FUZZ_SECONDS is the most that a whole run may take.
set -uo pipefail
cd "$(dirname "$0")"
. ../../../tools/env.sh
fuzz=$MXOV_BUILD/tests/control_fuzz.exe

run() { # RUN...: what happened, in one word
    local code limit=${MXOV_FUZZ_SECONDS:-600}
    timeout "$limit" ../../../tools/wine-run "$fuzz" "$@" >"$log" 2>&1
    code=$?
    if [ "$code" -eq 124 ]; then
        echo "hung: no end after $limit s" >>"$log"
        outcome=hang
    elif grep -q '^hung' "$log"; then outcome=hang
    elif grep -q '^crashed' "$log" || [ "$code" -ge 70 ]; then outcome=crash
    elif [ "$code" -ne 0 ]; then outcome=found
    elif grep -q '^done' "$log"; then outcome=well
    else outcome=silent; fi
}
log=$(mktemp)
trap 'rm -f "$log"' EXIT

declare -A short=([invoke]=300000 [messages]=60000 [cycles]=40) long=([invoke]=10000000 [messages]=1000000 [cycles]=400)
if [ $# -eq 1 ] && [ -n "${short[$1]:-}" ]; then
    [ -z "${MXOV_LONG:-}" ] && set -- "$1" "${short[$1]}" || set -- "$1" "${long[$1]}"
fi
if [ "$1" != planted ]; then
    run "$@"
    cat "$log"
    echo "$outcome"
    [ "$outcome" = well ]
    exit
fi
failures=0
tells() { # WORDS: of the run before
    grep -q "^$1" "$log" && return
    echo "FAILED: the log does not tell: $1"
    failures=$((failures + 1))
}
expect() { # OUTCOME RUN...
    local expected=$1
    shift
    run "$@"
    if [ "$outcome" = "$expected" ]; then echo "ok: $*: $outcome"; else
        echo "FAILED: $*: $outcome instead of $expected"
        failures=$((failures + 1))
    fi
}
for kind in 'invoke 1000 1' 'messages 1000 1' 'cycles 40 1'; do
    expect crash $kind crash
    expect found $kind leak
    for leak in 'GDI objects of type 1' 'GDI objects of type 16' 'user objects' 'handles' 'heap bytes'; do
        tells "found:.* $leak: "
    done
done
expect crash allocations 0 1 crash
expect hang invoke 1000 1 hang 3
tells 'hung: nothing for 3 s in step'
[ "$failures" -eq 0 ]
