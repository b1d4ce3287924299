# Sourced by scripts/test_wine.sh: fixtures_start BUILD_DIR starts loopback web
# servers for the fetch tests and exports HERALDER_HTTP_HOST (lighttpd over a
# copy of tests/servers/docroot, HERALDER_HTTP_ROOT as a Windows path,
# HERALDER_HTTP_LOG its access log: request, status, bytes sent),
# HERALDER_RAW_HOST (tests/servers/raw_http.py) and HERALDER_CLOSED_HOST (where
# nothing listens). Both servers end with fixtures_stop or FIXTURES_LIFETIME.

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
