# Sourced by scripts/test_wine.sh: loopback web servers for the fetch tests.
#
#   fixtures_start BUILD_DIR   start both servers, export where they listen
#   fixtures_stop              stop them
#
# The real server (lighttpd) serves tests/servers/docroot plus a generated
# binary file; the raw one (tests/servers/raw_http.py) gives the replies a real
# server will not. The test program finds them through
#   HERALDER_HTTP_HOST    127.0.0.1:PORT of the real server
#   HERALDER_HTTP_ROOT    its document root, as a Windows path
#   HERALDER_RAW_HOST     127.0.0.1:PORT of the raw server
#   HERALDER_CLOSED_HOST  127.0.0.1:PORT on which nothing listens
# Neither server can outlive the run: both have a time limit of their own, the
# raw one also watches this shell, and both are stopped on exit.

FIXTURES_LIFETIME=${FIXTURES_LIFETIME:-900}
FIXTURES_PIDS=()

fixtures_free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

fixtures_wait_port() {
    local port=$1 i
    for i in $(seq 100); do
        python3 -c "import socket; socket.create_connection(('127.0.0.1', $port), 0.2).close()" \
            2>/dev/null && return 0
        sleep 0.1
    done
    echo "fixtures: nothing accepts on 127.0.0.1:$port" >&2
    return 1
}

fixtures_start() {
    local build=$1
    local src
    src=$(cd "$(dirname "${BASH_SOURCE[0]}")/../servers" && pwd)
    local dir="$build/fixtures"
    rm -rf "$dir" && mkdir -p "$dir"

    # A proxy from the environment would send loopback requests elsewhere.
    unset http_proxy HTTP_PROXY https_proxy HTTPS_PROXY

    cp -r "$src/docroot" "$dir/docroot"
    mkdir -p "$dir/docroot/update/images"
    # The sample feed's pictures, for the graphic updates it carries.
    cp "$src/../../examples/images/"* "$dir/docroot/update/images/"
    # Larger than any single network packet, with every byte value.
    python3 -c 'import random, sys; sys.stdout.buffer.write(random.Random(7).randbytes(1048583))' \
        >"$dir/docroot/update/images/large.bin"

    local port
    port=$(fixtures_free_port)
    sed -e "s|@ROOT@|$dir/docroot|" -e "s|@PORT@|$port|" -e "s|@LOG@|$dir/lighttpd.log|" \
        "$src/lighttpd.conf.in" >"$dir/lighttpd.conf"
    timeout --kill-after=5 "$FIXTURES_LIFETIME" lighttpd -D -f "$dir/lighttpd.conf" \
        >>"$dir/lighttpd.log" 2>&1 &
    FIXTURES_PIDS+=($!)
    fixtures_wait_port "$port" && export HERALDER_HTTP_HOST="127.0.0.1:$port"
    export HERALDER_HTTP_ROOT=$(winpath "$dir/docroot")

    python3 "$src/raw_http.py" --port-file "$dir/raw.port" --parent $$ \
        --lifetime "$FIXTURES_LIFETIME" >>"$dir/raw.log" 2>&1 &
    FIXTURES_PIDS+=($!)
    local i
    for i in $(seq 100); do [ -s "$dir/raw.port" ] && break; sleep 0.1; done
    port=$(cat "$dir/raw.port" 2>/dev/null)
    [ -n "$port" ] && fixtures_wait_port "$port" && export HERALDER_RAW_HOST="127.0.0.1:$port"

    export HERALDER_CLOSED_HOST="127.0.0.1:$(fixtures_free_port)"

    # Stop the servers too if the run ends early, keeping the exit handler
    # that is already there.
    local previous
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
