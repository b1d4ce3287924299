#!/usr/bin/env bash
# Plants each fault of faults.tsv in turn, builds, runs the tests named for it
# and expects them to fail; the file is restored after each. Slow (a build a
# fault): run it by hand after reshaping tests, not in the test command.
#   tests/mutants/run.sh [PATTERN]   only the faults whose line matches PATTERN
set -uo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root"
caught=0 missed=0
while IFS=$'\t' read -r build file subst filter; do
    [[ -z "$build" || "$build" == \#* ]] && continue
    [[ -n "${1:-}" && "$build $file $subst" != *"$1"* ]] && continue
    cp "$file" "$file.unplanted"
    perl -0pi -e "$subst" "$file"
    if cmp -s "$file" "$file.unplanted"; then
        echo "STALE: $file: $subst changes nothing"; missed=$((missed + 1))
    else
        if [ "$build" = asan ]; then
            scripts/build.sh asan >/dev/null 2>&1 && build/asan/heralder_tests --gtest_filter="$filter" >/dev/null 2>&1
        else
            scripts/build.sh windows >/dev/null 2>&1 &&
                WINE_DPIS= scripts/test_wine.sh --gtest_filter="$filter" >/dev/null 2>&1
        fi
        if [ $? -ne 0 ]; then caught=$((caught + 1)); echo "caught: $file: $subst"
        else missed=$((missed + 1)); echo "MISSED: $file: $subst"; fi
    fi
    # mv keeps the copy's older time, which would leave the planted build in place.
    mv "$file.unplanted" "$file" && touch "$file"
done < tests/mutants/faults.tsv
scripts/build.sh asan >/dev/null 2>&1; scripts/build.sh windows >/dev/null 2>&1
echo "planted faults: $caught caught, $missed missed"
[ "$missed" -eq 0 ]
