#!/usr/bin/env bash
# Start-up benchmark (figures only): under one Wine prefix and one persistent
# wineserver, runs "heralder.exe /UPDATE" when every item has been seen and
# bench/windows/minimal_get.exe (one WinINet GET of the same document from the
# same loopback server), alternating, RUNS times each; prints both medians and
# their ratio, then heralder.exe's size and the DLLs it imports.
# Expects scripts/build.sh windows to have run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
runs=${RUNS:-20}
port=47632
. "$root/scripts/wine_env.sh"
wine_env_start "$root/build/bench"
serve_examples "$root/build/bench" "$port"

heralder=$(winpath "$build/heralder.exe")
yardstick=$(winpath "$build/minimal_get.exe")
# The first run sees everything; the measured runs find nothing new.
wine "$heralder" /UPDATE
wine "$yardstick"

ms() { date +%s%N; }
timed() {  # program args...: prints the wall time in ms, fails with the program
    local start end
    start=$(ms)
    wine "$@"
    end=$(ms)
    echo $(((end - start) / 1000))
}
a=() b=()
for _ in $(seq "$runs"); do
    a+=("$(timed "$heralder" /UPDATE)")
    b+=("$(timed "$yardstick")")
done
python3 - "${a[*]}" "${b[*]}" <<'PY'
import statistics, sys
a = [int(x) / 1000 for x in sys.argv[1].split()]
b = [int(x) / 1000 for x in sys.argv[2].split()]
ma, mb = statistics.median(a), statistics.median(b)
print(f"heralder.exe /UPDATE, nothing new: median {ma:.1f} ms over {len(a)} runs (min {min(a):.1f})")
print(f"minimal WinINet GET:               median {mb:.1f} ms over {len(b)} runs (min {min(b):.1f})")
print(f"ratio: {ma / mb:.2f} (bar 1.5, aim 1.15)")
PY
size=$(stat -c %s "$build/heralder.exe")
echo "heralder.exe: $size bytes ($((size / 1024)) KiB; bar 1.2 MB, aim 800 KB), static, stripped"
echo "imports: $(x86_64-w64-mingw32-objdump -p "$build/heralder.exe" | sed -n 's/.*DLL Name: //p' | tr '\n' ' ')"
