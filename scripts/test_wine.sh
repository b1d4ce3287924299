#!/usr/bin/env bash
# Runs the Windows test program under Wine in a throw-away prefix and turns the
# screenshots that the dialog tests save into PNG files for people to look at.
# Loopback servers and other fixtures come from tests/win/fixtures.sh.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
# The loopback servers listen on fixed ports: a second run on this machine (in
# another clone) waits for this one instead of answering its requests.
exec 9>/tmp/heralder-wine-tests.lock
flock 9
. "$root/scripts/wine_env.sh"

wine_env_start "$build"
shots="$build/screenshots"
rm -rf "$shots" && mkdir -p "$shots"
export HERALDER_SHOT_DIR=$(winpath "$shots")
export HERALDER_TEST_DATA=$(winpath "$root/tests/data")
export HERALDER_SOURCE_DIR=$(winpath "$root")

if [ -f "$root/tests/win/fixtures.sh" ]; then
    . "$root/tests/win/fixtures.sh"
    fixtures_start "$build"
fi

# A dialog that nobody closes must fail the run, not stall it.
timeout --kill-after=10 "${WINE_TEST_TIMEOUT:-900}" wine "$build/heralder_win_tests.exe" "$@"
rc=$?

# The publisher's tool as a Windows console program over the same kept cases
# as the native one: both builds must read files alike.
if [ $# -eq 0 ] && [ -f "$build/heralder-tool.exe" ]; then
    other=(); [ -x "$root/build/native/heralder-tool" ] && other=(--other "$root/build/native/heralder-tool")
    python3 "$root/tests/tool/check.py" --wine "$build/heralder-tool.exe" "${other[@]}" || rc=1
fi

declare -F fixtures_stop >/dev/null && fixtures_stop

# Every window again at each display scale, each on a screen that a user at
# that scale typically has (1366 x 768 up to 150 %, 2560 x 1440 at 200 %) and
# in a fresh prefix, since the scale is a setting of the whole prefix. The run
# at 96 records the sizes that the run at 192 compares with. With arguments,
# only when WINE_DPIS names the scales.
dpis=${WINE_DPIS:-}
[ $# -eq 0 ] && dpis=${WINE_DPIS:-96 120 144 192}
# Now and then a fresh prefix measures its dialog font one pixel shorter (every
# template-sized window at 96 DPI 13/14 as tall, widths alike), and the run at
# 192 then finds nothing doubled: the loop is run once more before it counts,
# and says so. A real layout fault fails both times.
every_scale() {
    local dpi screen failed=0
    for dpi in $dpis; do
        wine_env_stop
        screen=1366x768
        [ "$dpi" -gt 144 ] && screen=2560x1440
        WINE_ENV_SCREEN=$screen wine_env_start "$build"
        wine_env_dpi "$dpi"
        echo "== every window at $dpi DPI on $screen"
        HERALDER_DPI=$dpi timeout --kill-after=10 300 \
            wine "$build/heralder_win_tests.exe" --gtest_filter='DisplayScale.*' || failed=1
    done
    return $failed
}
first="$build/display_scale_first_try.log"
if [ -n "$dpis" ] && ! every_scale >"$first" 2>&1; then
    echo "note: the display-scale loop failed once (kept in $first):"
    grep -E 'Failure|Which is|evaluates to' "$first" | sed 's/^/note:   /'
    every_scale || rc=1
elif [ -n "$dpis" ]; then
    cat "$first"
fi
for bmp in "$shots"/*.bmp; do
    [ -e "$bmp" ] || continue
    convert "$bmp" "${bmp%.bmp}.png" && rm -f "$bmp"
done
exit $rc
