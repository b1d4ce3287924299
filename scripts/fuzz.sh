#!/usr/bin/env bash
# A long fuzzing run of one target, for a night rather than the test command's
# bounded minutes:  scripts/fuzz.sh TARGET HOURS   (e.g. fuzz_parser 8)
# Builds the fuzz tree, then runs TARGET on both cores (FUZZ_JOBS, default the
# machine's core count) over its kept corpus build/fuzz/corpus-TARGET and its
# seeds, for HOURS hours. Inputs are capped at FUZZ_MAX_LEN bytes (default
# 4096): every rule of the reader and the check shows within a few kilobytes,
# and the work per input grows with its length, so longer inputs would only
# slow the run. Crashes land in build/fuzz/crashes-TARGET/, the workers' logs
# in build/fuzz/logs-TARGET/; the script ends by counting the inputs run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:?usage: fuzz.sh TARGET HOURS}
hours=${2:?usage: fuzz.sh TARGET HOURS}
jobs=${FUZZ_JOBS:-$(nproc)}
max_len=${FUZZ_MAX_LEN:-4096}

"$root/scripts/build.sh" fuzz >/dev/null
fuzzer="$root/build/fuzz/$target"
[ -x "$fuzzer" ] || { echo "fuzz.sh: no fuzz target $target in build/fuzz" >&2; exit 2; }
corpus="$root/build/fuzz/corpus-$target"
crashes="$root/build/fuzz/crashes-$target"
logs="$root/build/fuzz/logs-$target"
mkdir -p "$corpus" "$crashes" "$logs"
seeds=()
[ -d "$root/tests/fuzz/seeds/$target" ] && seeds+=("$root/tests/fuzz/seeds/$target")
seconds=$(python3 -c "print(int(float('$hours') * 3600))")

echo "fuzzing $target for $hours h on $jobs cores, inputs up to $max_len bytes"
cd "$logs" && rm -f fuzz-*.log
# One long-lived worker per core, sharing the corpus (each writes fuzz-N.log
# here); a worker that finds a crash stops and keeps the input.
status=0
"$fuzzer" -jobs="$jobs" -workers="$jobs" -max_total_time="$seconds" -max_len="$max_len" \
    -len_control=0 -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$crashes/" \
    "$corpus" "${seeds[@]}" >/dev/null 2>&1 || status=$?
runs=0
for log in fuzz-*.log; do
    last=$(grep -E '^#[0-9]+' "$log" | tail -1)
    echo "$log: $last"
    runs=$((runs + $(echo "$last" | sed -E 's/^#([0-9]+).*/\1/')))
done
echo "inputs run: $runs in $seconds s ($((runs / (seconds > 0 ? seconds : 1))) a second)"
found=$(find "$crashes" -type f | wc -l)
echo "crashes kept: $found (in $crashes)"
[ "$found" -eq 0 ] && [ "$status" -eq 0 ]
