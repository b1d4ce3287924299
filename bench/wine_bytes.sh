#!/usr/bin/env bash
# Bytes on the wire for the daily fetch (figures only): serves a padded copy of
# the sample document with examples/lighttpd.conf on loopback and, for a
# 100 KB and a 1 MB document, prints what the server's access log counted
# (headers included) for the first day, a day with nothing new and a day with
# one new item, beside the unconditional, uncompressed request of older
# agents. Then times "heralder.exe /UPDATE" on a day with nothing new,
# answered "not modified", against the same run without a kept copy (the
# whole document fetched and read, as before), RUNS times each.
# Expects scripts/build.sh windows to have run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build/windows"
work="$root/build/bench_bytes"
runs=${RUNS:-20}
port=47632
# The Windows tests' port: wait for a run of theirs to end, and hold theirs off.
exec 9>/tmp/heralder-wine-tests.lock
flock 9
. "$root/scripts/wine_env.sh"
wine_env_start "$work"

docroot="$work/docroot"
rm -rf "$docroot" "$work/cache" "$work/access.log" && mkdir -p "$docroot/update" "$work/cache"
cp -r "$root/examples/images" "$docroot/update/images"
touch "$work/access.log"
sed -e "s|^server.document-root.*|server.document-root = \"$docroot\"|" \
    -e "s|^server.port.*|server.port = $port\nserver.bind = \"127.0.0.1\"|" \
    -e "s|/var/cache/lighttpd/compress/|$work/cache/|" \
    -e "s|^accesslog.filename.*|accesslog.filename = \"\|/bin/cat >> $work/access.log\"|" \
    "$root/examples/lighttpd.conf" >"$work/lighttpd.conf"
unset http_proxy HTTP_PROXY
timeout 1800 lighttpd -D -f "$work/lighttpd.conf" >"$work/lighttpd.log" 2>&1 &
WINE_ENV_SERVER_PID=$!
for _ in $(seq 50); do
    python3 -c "import socket; socket.create_connection(('127.0.0.1', $port), 0.2)" 2>/dev/null && break
    sleep 0.1
done

# make_document SIZE: the sample document padded with comment lines of
# varied words to SIZE bytes (comments are no items, so the runs stay short).
make_document() {
    python3 - "$root/examples/update.txt" "$1" >"$docroot/update/update.txt" <<'PY'
import random, sys
text = open(sys.argv[1], "rb").read()
words = [w for w in text.split() if w.isalpha()] or [b"update"]
r = random.Random(7)
lines = [text]
size = len(text)
while size < int(sys.argv[2]):
    line = b"; " + b" ".join(r.choice(words) for _ in range(12)) + b"\r\n"
    lines.append(line)
    size += len(line)
sys.stdout.buffer.write(b"".join(lines))
PY
}
new_item() {
    printf ':BEGINNOTICE\r\nNUMBER:%s\r\nTITLE:One more notice\r\nPLAINTEXT:A new item.\r\n:END\r\n' \
        "$1" >>"$docroot/update/update.txt"
}
kept="$work/update.kept"
fetch() {  # agent|plain: prints the bytes the server sent for one fetch
    local lines
    lines=$(wc -l <"$work/access.log")
    wine "$(winpath "$build/fetch_bytes.exe")" "$1" "127.0.0.1:$port" /update/update.txt \
        "$(winpath "$kept")" >/dev/null
    tail_bytes "$lines"
}
tail_bytes() {
    local lines=$1
    for _ in $(seq 100); do
        [ "$(wc -l <"$work/access.log")" -gt "$lines" ] && break
        sleep 0.02
    done
    # "%h %t \"%r\" %s %O \"%{User-Agent}i\"": the bytes are the field after the status.
    tail -n1 "$work/access.log" | sed -E 's/.*" ([0-9]{3}) ([0-9]+) ".*/\2/'
}

echo "| document | first day | no news | one new item | older agents, every day |"
echo "|---|---:|---:|---:|---:|"
number=9000
for size in 100000 1000000; do
    make_document "$size"
    rm -f "$kept"
    first=$(fetch agent)
    same=$(fetch agent)
    new_item $((number += 1))
    sleep 1  # a new modification second, as a real edit would have
    changed=$(fetch agent)
    plain=$(fetch plain)
    echo "| $((size / 1000)) KB | $first | $same | $changed | $plain |"
done

# Whole-process time of a no-news daily run: answered 304 from the kept copy,
# and without the copy (the whole compressed document fetched and read).
make_document 100000
heralder=$(winpath "$build/heralder.exe")
wine "$(winpath "$build/autopilot.exe")" "$heralder" /UPDATE >/dev/null
appdata=$(wine cmd /c echo %APPDATA% 2>/dev/null | tr -d '\r')
keptcopy=$(winepath -u "$appdata\\Quenmark\\Heralder\\Update.kept")
ms() { date +%s%N; }
timed() {
    local start end
    start=$(ms)
    wine "$heralder" /UPDATE
    end=$(ms)
    echo $(((end - start) / 1000))
}
a=() b=()
for _ in $(seq "$runs"); do
    a+=("$(timed)")
    cp "$keptcopy" "$work/kept.save" && rm -f "$keptcopy"
    b+=("$(timed)")
    cp "$work/kept.save" "$keptcopy"
done
python3 - "${a[*]}" "${b[*]}" <<'PY'
import statistics, sys
a, b = ([int(x) / 1000 for x in arg.split()] for arg in sys.argv[1:3])
print(f"heralder.exe /UPDATE, nothing new, 100 KB document: answered 304 median {statistics.median(a):.1f} ms,"
      f" fetched whole {statistics.median(b):.1f} ms ({len(a)} runs each)")
PY
