#!/usr/bin/env bash
# Start-up benchmark (figures only): under one Wine prefix and one persistent
# wineserver, runs "heralder.exe /UPDATE" when every item has been seen and
# bench/windows/minimal_get.exe (one WinINet GET of the same document from the
# same loopback server; it owns a hidden window, as every Win32 program does),
# alternating, RUNS times each; prints the medians and their ratio, the ratio
# against the same program without a window for reference, then heralder.exe's
# size and the DLLs it imports.
# Expects scripts/build.sh windows to have run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
runs=${RUNS:-20}
port=47632
# The Windows tests' port: wait for a run of theirs to end, and hold theirs off.
exec 9>/tmp/heralder-wine-tests.lock
flock 9
. "$root/scripts/wine_env.sh"
wine_env_start "$root/build/bench"
serve_examples "$root/build/bench" "$port"

heralder=$(winpath "$build/heralder.exe")
yardstick=$(winpath "$build/minimal_get.exe")
# The first run shows everything (the autopilot answers its windows); the
# measured runs find nothing new.
wine "$(winpath "$build/autopilot.exe")" "$heralder" /UPDATE >/dev/null
wine "$yardstick"

ms() { date +%s%N; }
timed() {  # program args...: prints the wall time in ms, fails with the program
    local start end
    start=$(ms)
    wine "$@"
    end=$(ms)
    echo $(((end - start) / 1000))
}
# A no-news day finds the settings file as the day before left it: a day old,
# with the day before's date as that of the last document.
settings=$(find "$WINEPREFIX/drive_c/users" -name Heralder17.ini | head -n1)
yesterday=$(date -u -d yesterday +%m-%d-%Y)
a=() b=() c=()
for _ in $(seq "$runs"); do
    sed -i "s/^CurrentTransactionDate = .*\r$/CurrentTransactionDate = $yesterday\r/" "$settings"
    touch -d "-1 day" "$settings"
    a+=("$(timed "$heralder" /UPDATE)")
    b+=("$(timed "$yardstick")")
    c+=("$(timed "$yardstick" /NOWINDOW)")
done
python3 - "${a[*]}" "${b[*]}" "${c[*]}" <<'PY'
import statistics, sys
a, b, c = ([int(x) / 1000 for x in arg.split()] for arg in sys.argv[1:4])
ma, mb, mc = statistics.median(a), statistics.median(b), statistics.median(c)
print(f"heralder.exe /UPDATE, nothing new: median {ma:.1f} ms over {len(a)} runs (min {min(a):.1f})")
print(f"minimal Win32 program, one GET:    median {mb:.1f} ms over {len(b)} runs (min {min(b):.1f})")
print(f"ratio: {ma / mb:.2f} (bar 1.5, aim 1.15)")
print(f"for reference, the same GET without a window: median {mc:.1f} ms, ratio {ma / mc:.2f}")
PY
size=$(stat -c %s "$build/heralder.exe")
echo "heralder.exe: $size bytes ($((size / 1024)) KiB; bar 1.2 MB, aim 800 KB), static, stripped"
echo "imports: $(x86_64-w64-mingw32-objdump -p "$build/heralder.exe" | sed -n 's/.*DLL Name: //p' | tr '\n' ' ')"
