# Sourced by scripts/test_wine.sh: fixtures_start BUILD_DIR starts loopback
# servers and exports HERALDER_HTTP_HOST (lighttpd over a copy of
# tests/servers/docroot, HERALDER_HTTP_ROOT, HERALDER_HTTP_LOG: request, status,
# bytes sent), HERALDER_RAW_HOST (tests/servers/raw_http.py) and
# HERALDER_CLOSED_HOST (nothing listens); they end with fixtures_stop or after
# FIXTURES_LIFETIME. It also makes the signed cases and the HTTPS server below.

FIXTURES_LIFETIME=${FIXTURES_LIFETIME:-900}
FIXTURES_PIDS=()

fixtures_free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

# fixtures_serve VAR PORT COMMAND...: runs COMMAND, exports VAR once PORT accepts.
fixtures_serve() {
    local var=$1 port=$2 i
    shift 2
    timeout --kill-after=5 "$FIXTURES_LIFETIME" "$@" >>"$FIXTURES_DIR/servers.log" 2>&1 &
    FIXTURES_PIDS+=($!)
    for i in $(seq 100); do
        python3 -c "import socket; socket.create_connection(('127.0.0.1', $port), 0.2).close()" \
            2>/dev/null && export "$var=127.0.0.1:$port" && return 0
        sleep 0.1
    done
    echo "fixtures: nothing accepts on 127.0.0.1:$port" >&2
}

fixtures_start() {
    local src port previous
    src=$(cd "$(dirname "${BASH_SOURCE[0]}")/../servers" && pwd)
    FIXTURES_DIR="$1/fixtures"
    rm -rf "$FIXTURES_DIR" && mkdir -p "$FIXTURES_DIR"
    # A proxy from the environment would send loopback requests elsewhere.
    unset http_proxy HTTP_PROXY https_proxy HTTPS_PROXY

    local root="$FIXTURES_DIR/docroot"
    cp -r "$src/docroot" "$root" && mkdir -p "$root/update/images"
    # The sample feed's pictures, for the graphic updates it carries.
    cp "$src/../../examples/images/"* "$root/update/images/"
    # Larger than any single network packet, with every byte value.
    python3 -c 'import random, sys; sys.stdout.buffer.write(random.Random(7).randbytes(1048583))' \
        >"$root/update/images/large.bin"
    # A document of the size the conditional fetch is for (about 100 KB of text).
    python3 -c 'import random; r = random.Random(7); w = ["alert", "version", "tip", "notice", "Quenmark", "the", "of", "update"]
print("\r\n".join(" ".join(r.choice(w) for _ in range(12)) for _ in range(1500)))' >"$root/update/large.txt"
    export HERALDER_HTTP_ROOT=$(winpath "$root")
    export HERALDER_HTTP_LOG=$(winpath "$FIXTURES_DIR/access.log")

    port=$(fixtures_free_port)
    sed -e "s|@ROOT@|$root|" -e "s|@PORT@|$port|" "$src/lighttpd.conf.in" >"$FIXTURES_DIR/lighttpd.conf"
    fixtures_serve HERALDER_HTTP_HOST "$port" lighttpd -D -f "$FIXTURES_DIR/lighttpd.conf"
    port=$(fixtures_free_port)
    fixtures_serve HERALDER_RAW_HOST "$port" python3 "$src/raw_http.py" "$port"
    export HERALDER_CLOSED_HOST="127.0.0.1:$(fixtures_free_port)"

    fixtures_signed_cases "$1/../windows-signed" "$src/../.."
    fixtures_https "$root"

    # Also stop them if the run ends early, keeping the exit handler there is.
    previous=$(trap -p EXIT)
    eval "set -- $previous"
    trap "fixtures_stop; ${3:-}" EXIT
}

fixtures_stop() {
    local pid
    for pid in "${FIXTURES_PIDS[@]}"; do kill "$pid" 2>/dev/null; done
    for pid in "${FIXTURES_PIDS[@]}"; do wait "$pid" 2>/dev/null; done
    FIXTURES_PIDS=()
}

# fixtures_signed_cases SIGNED_BUILD SOURCE: with the windows-signed build and
# the native tool, the sample signed in each way the tests need, a folder per
# case (HERALDER_SIGNED_CASES) served as "/update/", and HERALDER_SIGNED_EXE.
fixtures_signed_cases() {
    local build=$1 source=$2 tool="$2/build/native/heralder-tool" cases="$FIXTURES_DIR/signed"
    [ -f "$build/heralder.exe" ] && [ -x "$tool" ] || return 0
    local first="$build/keys/first/feed-private.pem" second="$build/keys/second/feed-private.pem"
    mkdir -p "$cases/keys" && "$tool" keygen "$cases/keys" >/dev/null
    local name
    for name in valid second_key other_key expired older changed unsigned twice; do
        mkdir -p "$cases/$name/images" && cp "$source/examples/images/"* "$cases/$name/images/"
    done
    local doc="$source/examples/update.txt" sign=("$tool" sign --serial)
    "${sign[@]}" 10 --key "$first" "$doc" "$cases/valid/update.txt" >/dev/null
    "${sign[@]}" 11 --key "$second" "$doc" "$cases/second_key/update.txt" >/dev/null
    "${sign[@]}" 10 --key "$cases/keys/feed-private.pem" "$doc" "$cases/other_key/update.txt" >/dev/null
    "${sign[@]}" 10 --key "$first" --expires 2020-01-01 "$doc" "$cases/expired/update.txt" 2>/dev/null >&2
    "${sign[@]}" 9 --key "$first" "$doc" "$cases/older/update.txt" >/dev/null
    # One byte of the first item's title line.
    python3 -c 'import sys; d = bytearray(open(sys.argv[1], "rb").read()); d[d.index(b"TITLE ") + 6] ^= 1; open(sys.argv[2], "wb").write(d)' \
        "$cases/valid/update.txt" "$cases/changed/update.txt"
    cp "$doc" "$cases/unsigned/update.txt"
    { cat "$cases/valid/update.txt"; tail -n 1 "$cases/valid/update.txt"; } >"$cases/twice/update.txt"
    export HERALDER_SIGNED_EXE=$(winpath "$build/heralder.exe")
    export HERALDER_SIGNED_CASES=$(winpath "$cases")
}

# fixtures_https DOCROOT: lighttpd with TLS over the sample and its pictures
# (and DOCROOT's large.bin) as "/update/", a port for each certificate of
# tests/servers/make_tls.sh (the good one on 47633, which the windows-https
# build asks): HERALDER_HTTPS_GOOD, _EXPIRED, _WRONG_HOST, _UNTRUSTED, _CA (DER),
# _LOG ("PORT PATH" lines) and, with that build, HERALDER_HTTPS_EXE.
fixtures_https() {
    local docroot=$1 src tls="$FIXTURES_DIR/tls" name port
    [ -f /usr/lib/lighttpd/mod_openssl.so ] || return 0
    src=$(cd "$(dirname "${BASH_SOURCE[0]}")/../servers" && pwd)
    "$src/make_tls.sh" "$tls" || return 0
    local root="$tls/root"
    mkdir -p "$root/update/images"
    cp "$src/../../examples/update.txt" "$root/update/"
    cp "$src/../../examples/images/"* "$docroot/update/images/large.bin" "$root/update/images/"
    local conf
    conf=$(sed -e "s|@ROOT@|$root|" -e "s|@DIR@|$tls|g" "$src/lighttpd_tls.conf.in")
    for name in GOOD EXPIRED WRONG_HOST UNTRUSTED; do
        if [ $name = GOOD ]; then port=47633; else port=$(fixtures_free_port); fi
        conf=${conf//@$name@/$port}
        export "HERALDER_HTTPS_$name=https://localhost:$port"
    done
    printf '%s\n' "$conf" >"$tls/lighttpd.conf"
    : >"$tls/access.log"
    fixtures_serve HERALDER_HTTPS_LISTENING 47633 lighttpd -D -f "$tls/lighttpd.conf"
    export HERALDER_HTTPS_CA=$(winpath "$tls/ca.der")
    export HERALDER_HTTPS_LOG=$(winpath "$tls/access.log")
    local exe="$FIXTURES_DIR/../../windows-https/heralder.exe"
    [ -f "$exe" ] && export HERALDER_HTTPS_EXE=$(winpath "$exe")
}
