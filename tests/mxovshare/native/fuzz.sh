#!/usr/bin/env bash
# fuzz.sh PROGRAM LARGEST CORPUS SEEDS: a short run of a fuzzer, or a longer one in ./test --long (MXOV_LONG). What it
# finds is written into the corpus folder's parent.
set -euo pipefail
program=$1 largest=$2 corpus=$3 seeds=$4
seconds=2
[ -z "${MXOV_LONG:-}" ] || seconds=20
mkdir -p "$corpus"
exec "$program" -max_total_time="$seconds" -max_len="$largest" -seed=1 -print_final_stats=1 \
    -artifact_prefix="$(dirname "$corpus")/" "$corpus" "$seeds"
