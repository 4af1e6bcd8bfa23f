#!/usr/bin/env bash
# Runs libFuzzer targets for a fixed time each and fails on any finding (crash, sanitizer
# report, leak, timeout, out-of-memory), printing the input that caused it.
#
#   fuzz/run.sh [SECONDS] [TARGET...]
#
# SECONDS defaults to 60; the targets default to every name in fuzz/targets.txt. Build them
# first: cmake --preset fuzz && cmake --build --preset fuzz. Each target starts from its seeds
# in fuzz/corpus/<target>/; what it adds stays in a scratch directory, the seeds are not
# changed. A reproducer is replayed with build/fuzz/fuzz/<target> <file>.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:-60}
shift || true
if [[ $# -gt 0 ]]; then
    targets=("$@")
else
    mapfile -t targets < <(grep -E '^[a-z0-9_]+$' fuzz/targets.txt)
fi
bin=build/fuzz/fuzz
work=$(mktemp -d /tmp/lkit_fuzz.XXXXXX)
trap 'rm -rf "$work"' EXIT

status=0
for target in "${targets[@]}"; do
    if [[ ! -x "$bin/$target" ]]; then
        echo "fuzz: $bin/$target not built" >&2
        status=1
        continue
    fi
    mkdir -p "$work/$target/new" "$work/$target/artifacts"
    echo "=== fuzz: $target for ${seconds}s"
    if "$bin/$target" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$work/$target/artifacts/" \
        "$work/$target/new" "fuzz/corpus/$target" >"$work/$target/log" 2>&1; then
        grep -E '^stat::(number_of_executed_units|peak_rss_mb)|^Done' "$work/$target/log" || true
    else
        status=1
        echo "fuzz: $target FAILED; the end of its log:" >&2
        tail -n 80 "$work/$target/log" >&2
        for input in "$work/$target/artifacts"/*; do
            [[ -f "$input" ]] || continue
            echo "--- reproducer $(basename "$input") ($(stat -c %s "$input") bytes), base64:" >&2
            base64 "$input" >&2
            echo "--- as hex:" >&2
            od -A d -t x1z -v "$input" | head -n 64 >&2
            echo "--- replay: save it (base64 -d) and run $bin/$target FILE" >&2
        done
    fi
done
exit $status
