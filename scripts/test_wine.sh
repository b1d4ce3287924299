#!/usr/bin/env bash
# Runs the Windows test program under Wine in a throw-away prefix and turns the
# screenshots that the dialog tests save into PNG files for people to look at.
# Loopback servers and other fixtures come from tests/win/fixtures.sh.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
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
for bmp in "$shots"/*.bmp; do
    [ -e "$bmp" ] || continue
    convert "$bmp" "${bmp%.bmp}.png" && rm -f "$bmp"
done
exit $rc
