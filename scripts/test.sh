#!/usr/bin/env bash
# Builds and runs every test: the portable core's tests under the sanitizers,
# the publisher's tool over its kept case sets, the fuzz targets for a bounded
# time, the Windows tests under Wine, and the benchmarks (figures only).
# Closes with one "N passed, N failed" line over everything.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
"$root/scripts/setup.sh" || exit 1

fuzz_seconds=${FUZZ_SECONDS:-20}
passed=0
failed=0
logs="$root/build/logs"
mkdir -p "$logs"
steps_failed=()

count_gtest() {  # log file, step name
    local p f
    p=$(grep -E '^\[  PASSED  \] [0-9]+ test' "$1" | tail -1 | grep -oE '[0-9]+' | head -1)
    f=$(grep -E '^\[  FAILED  \] [0-9]+ test' "$1" | tail -1 | grep -oE '[0-9]+' | head -1)
    passed=$((passed + ${p:-0}))
    failed=$((failed + ${f:-0}))
}

count_cases() {  # log file: adds up every "...cases: N passed, N failed" line
    local p f
    while read -r p f; do
        passed=$((passed + p))
        failed=$((failed + f))
    done < <(sed -nE 's/.*cases: ([0-9]+) passed, ([0-9]+) failed.*/\1 \2/p' "$1")
}

step() {  # name, command...: output goes to a log, shown only when it fails
    local name=$1; shift
    local log="$logs/${name//[^a-z]/_}.log"
    echo "== $name"
    if ! "$@" > "$log" 2>&1; then
        tail -60 "$log"
        steps_failed+=("$name")
        return 1
    fi
}


step "native build (sanitizers)" scripts/build.sh asan
if [ -x build/asan/heralder_tests ]; then
    # A reader that loops must fail the run, not stall it.
    timeout --kill-after=10 600 build/asan/heralder_tests 2>&1 | tee "$logs/native.log" | grep -E '^\[  (PASSED|FAILED) |^\[  FAILED  \]|Failure|ERROR|Sanitizer' 
    [ "${PIPESTATUS[0]}" -eq 0 ] || steps_failed+=("native tests")
    count_gtest "$logs/native.log"
else
    steps_failed+=("native tests (not built)")
fi

step "native build (release)" scripts/build.sh native
if [ -x build/native/heralder-tool ]; then
    python3 tests/tool/check.py build/native/heralder-tool | tee "$logs/tool.log"
    [ "${PIPESTATUS[0]}" -eq 0 ] || steps_failed+=("tool cases")
    count_cases "$logs/tool.log"
fi

# The manual pages: structure, links, the anchors the program opens, pictures,
# and a rendering in headless Chromium (build/manual/*.png).
python3 tests/manual/check_manual.py | tee "$logs/manual.log"
[ "${PIPESTATUS[0]}" -eq 0 ] || steps_failed+=("manual pages")
count_cases "$logs/manual.log"

step "fuzz build" scripts/build.sh fuzz
for fuzzer in build/fuzz/fuzz_*; do
    [ -x "$fuzzer" ] || continue
    name=$(basename "$fuzzer")
    corpus="build/fuzz/corpus-$name"
    mkdir -p "$corpus"
    seeds=()
    [ -d "tests/fuzz/seeds/$name" ] && seeds+=("tests/fuzz/seeds/$name")
    echo "== fuzzing $name for ${fuzz_seconds}s"
    if "$fuzzer" -max_total_time="$fuzz_seconds" -max_len=65536 -timeout=10 -rss_limit_mb=4096 \
            "$corpus" "${seeds[@]}" > "$logs/$name.log" 2>&1; then
        passed=$((passed + 1))
        grep -E '^Done [0-9]+ runs' "$logs/$name.log"
    else
        failed=$((failed + 1))
        steps_failed+=("$name")
        tail -40 "$logs/$name.log"
    fi
done

step "windows build" scripts/build.sh windows
# heralder.exe again with throw-away keys, and for an HTTPS server, for the
# whole-process tests of signed documents and of TLS.
step "windows build (signed)" scripts/build.sh windows-signed
step "windows build (https)" scripts/build.sh windows-https
if [ -f build/windows/heralder_win_tests.exe ]; then
    scripts/test_wine.sh 2>&1 | tee "$logs/wine.log" | grep -E '^\[  (PASSED|FAILED) |^\[  FAILED  \]|Failure|cases:|^FAIL'
    [ "${PIPESTATUS[0]}" -eq 0 ] || steps_failed+=("wine tests")
    count_gtest "$logs/wine.log"
    count_cases "$logs/wine.log"
    echo "screenshots: build/windows/screenshots"
fi

# The installer: packaged with a throw-away certificate, then installed, installed
# again, removed and photographed under Wine. Needs no network.
step "installer" tests/install/install_test.sh
grep -E 'cases:' "$logs/installer.log"
count_cases "$logs/installer.log"
echo "screenshots: build/dist/screenshots"

# The Windows benchmarks: the daily run against a minimal program, how fast
# the notification windows open, a document of millions of items and the daily
# fetch's bytes on the wire; then the publisher's load model. Figures only.
if [ -f build/windows/window_timing.exe ]; then
    echo "== wine_update"
    bench/wine_update.sh 2>&1 | tail -6 || true
    echo "== wine_windows"
    bench/wine_windows.sh 2>&1 | tail -12 || true
    echo "== wine_huge_document"
    bench/wine_huge_document.sh 2>&1 | tail -5 || true
    echo "== wine_bytes"
    RUNS=5 bench/wine_bytes.sh 2>&1 | tail -5 || true
fi
echo "== publisher_load"
bench/publisher_load.py 2>&1 || true

for bench in build/native/bench_*; do
    [ -x "$bench" ] || continue
    echo "== $(basename "$bench")"
    "$bench" --benchmark_min_time=0.2 --benchmark_color=false 2>&1 | grep -vE '^\*\*\*|^-+$' || true
done

echo
if [ ${#steps_failed[@]} -gt 0 ]; then
    echo "failed steps: ${steps_failed[*]}"
    [ "$failed" -eq 0 ] && failed=${#steps_failed[@]}
fi
echo "$passed passed, $failed failed"
[ ${#steps_failed[@]} -eq 0 ] && [ "$failed" -eq 0 ]
