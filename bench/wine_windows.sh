#!/usr/bin/env bash
# Window timing benchmark (figures only): under a throw-away Wine prefix, shows
# the sample feed's windows one after another and an alert with the largest
# picture and with several megabytes of text; prints how long each took to be
# fully painted. Expects scripts/build.sh windows to have run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
. "$root/scripts/wine_env.sh"
wine_env_start "$root/build/bench-windows"
wine "$build/window_timing.exe" "$(winpath "$root/examples/update.txt")" \
    "$(winpath "$root/examples/images")"
