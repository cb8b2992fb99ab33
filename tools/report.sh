# Sourced by the user's commands: one line per step; everything else goes to build/log/, whose end is shown when a step
# fails.
. "$(dirname "${BASH_SOURCE[0]}")/env.sh"
mkdir -p "$MXOV_BUILD/log"

# How many tests run at the same time. Tests of windows wait for half of their time.
tests_at_once=$((2 * $(nproc)))

# A path relative to the current folder.
short() { echo "${1#"$PWD"/}"; }

# fail WHAT ADVICE: ends the command with one line: the failure and what to do.
fail() {
    echo "${0##*/}: $1; $2" >&2
    exit 1
}

# fail_with_log LOG WHAT ADVICE
fail_with_log() {
    tail -n 40 "$1" >&2
    fail "$2 (all of it: $(short "$1"))" "$3"
}

# step NAME ADVICE COMMAND...: runs a command and writes its output to the log of that name.
step() {
    local name=$1 advice=$2 log=$MXOV_BUILD/log/$1.log
    shift 2
    "$@" >"$log" 2>&1 || fail_with_log "$log" "$name ended with $?" "$advice"
}

# count LOG VERB: copies its input to the log and, on a terminal, shows the progress from marks such as "12/173" at the
# start of a line.
count() {
    local log=$1 line in_place=
    [ ! -t 1 ] || in_place=yes
    while IFS= read -r line; do
        printf '%s\n' "$line" >>"$log"
        [[ -n $in_place && $line =~ ^[[:space:]\[]*([0-9]+)/([0-9]+) ]] || continue
        printf '\r\033[K%s %s of %s' "$2" "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
    done
    [ -z "$in_place" ] || printf '\r\033[K'
}

# counted LOG VERB: prints the final line, or nothing if there was nothing to do.
counted() {
    local total
    total=$(sed -nE 's/^[ []*[1-9][0-9]*\/([0-9]+).*/\1/p' "$1" | tail -n 1)
    [ -z "$total" ] || echo "$2 $total of $total"
}
