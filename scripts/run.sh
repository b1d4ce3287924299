#!/usr/bin/env bash
# The daily job, end to end, as a person runs it: builds heralder.exe asking a
# loopback web server for its feed, serves examples/ (the update document and
# its pictures) on 127.0.0.1:47631, makes a throw-away Wine prefix under
# build/run and runs "heralder.exe /UPDATE" in it.
#   With a display (DISPLAY set) the windows appear there for you to answer.
#   Without one they appear on a virtual display: each is photographed into
#   build/run/screenshots/ and answered as a user pressing Enter would.
# At the end it says what happened.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh" run >/dev/null

out="$root/build/run"
port=47631
shots="$out/screenshots"
rm -rf "$shots" && mkdir -p "$shots"

if python3 -c "import socket; socket.create_connection(('127.0.0.1', $port), 0.5)" 2>/dev/null; then
    echo "run: 127.0.0.1:$port is taken; stop what listens there and try again" >&2
    exit 1
fi

watched=${DISPLAY:+yes}
. "$root/scripts/wine_env.sh"
WINE_ENV_KEEP_DISPLAY=${watched:-} wine_env_start "$out"
serve_examples "$out" "$port"

appdata=$(wine cmd /c echo %APPDATA% 2>/dev/null | tr -d '\r')
data="$(winepath -u "$appdata")/Quenmark"
# Quenmark Ledger 5.2a is installed on this pretend machine (products from
# version 4 on keep their INI file for all users), so the sample's Ledger
# notice finds it out of date; Quenmark Atlas is not installed.
common=$(wine cmd /c echo %ALLUSERSPROFILE% 2>/dev/null | tr -d '\r')
mkdir -p "$(winepath -u "$common")/Quenmark"
printf '[Ledger]\r\nVersionNumber=2208\r\nPatchLevel=0\r\n' \
    >"$(winepath -u "$common")/Quenmark/Ledger5.ini"
echo "Running heralder.exe /UPDATE against http://127.0.0.1:$port/update/update.txt"
rc=0
if [ -n "$watched" ]; then
    wine "$out/heralder.exe" /UPDATE || rc=$?
else
    HERALDER_SHOT_DIR=$(winpath "$shots") wine "$out/autopilot.exe" \
        "$(winpath "$out/heralder.exe")" /UPDATE | tr -d '\r' || rc=$?
    # The same document in the main window, and its second item (Ledger, which
    # is installed here) in the item browser, as Shift+double-click opens it.
    echo "Opening the document in the main window and its second row in the item browser"
    HERALDER_SHOT_DIR=$(winpath "$shots") wine "$out/autopilot.exe" --browse 1 \
        "$(winpath "$out/heralder.exe")" "$(winpath "$root/examples/update.txt")" |
        tr -d '\r' || true
    for bmp in "$shots"/*.bmp; do
        [ -e "$bmp" ] && convert "$bmp" "${bmp%.bmp}.png" && rm -f "$bmp"
    done
fi

# What happened, in a few lines.
items=$(wine "$out/heralder-tool.exe" parse "$(winpath "$root/examples/update.txt")" 2>/dev/null |
    python3 -c 'import collections, json, sys
items = json.load(sys.stdin)
kinds = collections.Counter(i["type"] for i in items)
print(len(items), "(" + ", ".join(f"{n} {k}" for k, n in sorted(kinds.items())) + ")")')
seen=0
[ -f "$data/Heralder/Heralder.lst" ] && seen=$(grep -c . "$data/Heralder/Heralder.lst" || true)
echo "items in the document: $items"
echo "seen-list entries:     $seen"
if [ -f "$data/Heralder17.ini" ]; then
    changed=$(python3 - "$data/Heralder17.ini" "$root/settings/settings.h" <<'PY'
import re, sys
ini = open(sys.argv[1], encoding="latin-1").read()
header = open(sys.argv[2]).read()
defaults = dict(re.findall(r'(\w+) = "?([^";]*)"?;', header))
defaults = {k: defaults.get(v, v) for k, v in defaults.items()}  # named constants
now = dict(re.findall(r'^(\w+) = (.*?)\r?$', ini, re.M))
skip = {"ApplicationPath", "CurrentTransactionDate"}
print(", ".join(f"{k} {defaults.get(k, '')} -> {v}" for k, v in now.items()
                if k not in skip and k in defaults and defaults[k] != v) or "none")
PY
)
    echo "settings changed:      $changed"
fi
pictures=$(cd "$data/Heralder" 2>/dev/null && find . -type f ! -iname '*.lst' | sed 's|^\./||' |
    sort | tr '\n' ' ' || true)
echo "pictures downloaded:   ${pictures:-none}"
[ -z "$watched" ] && echo "screenshots:           $shots ($(ls "$shots" | wc -l) files)"
echo "heralder.exe exit code: $rc"
exit $rc
