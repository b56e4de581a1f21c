#!/bin/sh
# esegui.sh PROGRAM SCRATCH MAX_LEN SEEDS...: fuzzes for ZELTO_FUZZ_SECONDS (15) or a million inputs,
# whichever ends first. New inputs and those that fail go to the folder SCRATCH.
set -eu
program=$1
scratch=$2
max_len=$3
shift 3
mkdir -p "$scratch" "$scratch.faults"
export ASAN_OPTIONS=malloc_context_size=2 LSAN_OPTIONS="suppressions=$(dirname "$0")/leaks.txt"
exec "$program" -max_total_time="${ZELTO_FUZZ_SECONDS:-15}" -runs=1000000 -max_len="$max_len" \
    -timeout=5 -rss_limit_mb=2048 -close_fd_mask=0 -print_final_stats=1 \
    -artifact_prefix="$scratch.faults/" "$scratch" "$@"
