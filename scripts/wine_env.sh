# Sourced by the scripts that run Windows programs under Wine. Gives them a
# throw-away prefix under the build folder (never the user's own), a virtual
# display, and one persistent wineserver so that each program start is cheap.
#
#   wine_env_start BUILD_DIR   make the prefix, start Xvfb and the wineserver
#   wine_env_stop              stop both (also run on exit)
#   wine_env_dpi DPI           set the prefix's display scale and restart the
#                              wineserver so that new programs see it
#   winpath UNIX_PATH          the same path as the Windows programs see it
#   serve_examples DIR PORT    serve examples/ as the publisher's "/update/"
#                              folder with lighttpd on 127.0.0.1:PORT (stopped
#                              by wine_env_stop)

wine_env_start() {
    local build_dir=$1
    export WINEPREFIX="$build_dir/wineprefix"
    export WINEDEBUG=-all
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"

    # A display of our own: dialogs cannot be created without one. With
    # WINE_ENV_KEEP_DISPLAY set and a display present, windows go there instead.
    if [ -n "${WINE_ENV_KEEP_DISPLAY:-}" ] && [ -n "${DISPLAY:-}" ]; then
        trap wine_env_stop EXIT
        wine_env_prefix
        return
    fi
    local fdfile
    fdfile=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${WINE_ENV_SCREEN:-1280x1024}x24" -nolisten tcp 3>"$fdfile" >/dev/null 2>&1 &
    WINE_ENV_XVFB_PID=$!
    local i
    # A busy machine can take many seconds to start the server.
    for i in $(seq 600); do [ -s "$fdfile" ] && break; sleep 0.1; done
    if [ ! -s "$fdfile" ]; then
        echo "wine_env_start: Xvfb did not start" >&2
        rm -f "$fdfile"
        return 1
    fi
    export DISPLAY=":$(head -n1 "$fdfile")"
    rm -f "$fdfile"
    trap wine_env_stop EXIT
    wine_env_prefix
}

wine_env_prefix() {
    wineserver -p
    wineboot -i >/dev/null 2>&1
    # Wine does not always find its own fonts in its data folder (the caption
    # buttons' Marlett then shows as letters): give the prefix its own copies.
    cp -n /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
    # Wine draws the captions itself: windows are destroyed in 1 ms, not 2 s.
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    # A crashing program exits at once instead of starting the debugger.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' \
        /v Debugger /d '' /f >/dev/null 2>&1
}

wine_env_dpi() {
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f \
        >/dev/null 2>&1
    wineserver -k
    wineserver -w
    wineserver -p
}

serve_examples() {
    local dir=$1 port=$2 i
    local root
    root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
    rm -rf "$dir/docroot" && mkdir -p "$dir/docroot/update"
    cp "$root/examples/update.txt" "$dir/docroot/update/"
    cp -r "$root/examples/images" "$dir/docroot/update/images"
    sed -e "s|@ROOT@|$dir/docroot|" -e "s|@PORT@|$port|" "$root/tests/servers/lighttpd.conf.in" \
        >"$dir/lighttpd.conf"
    unset http_proxy HTTP_PROXY https_proxy HTTPS_PROXY
    timeout 1800 lighttpd -D -f "$dir/lighttpd.conf" >"$dir/lighttpd.log" 2>&1 &
    WINE_ENV_SERVER_PID=$!
    for i in $(seq 50); do
        python3 -c "import socket; socket.create_connection(('127.0.0.1', $port), 0.2)" \
            2>/dev/null && return 0
        sleep 0.1
    done
    echo "serve_examples: nothing accepts on 127.0.0.1:$port" >&2
    return 1
}

wine_env_stop() {
    if [ -n "${WINE_ENV_SERVER_PID:-}" ]; then
        kill "$WINE_ENV_SERVER_PID" 2>/dev/null || true
        WINE_ENV_SERVER_PID=
    fi
    [ -n "${WINEPREFIX:-}" ] && wineserver -k 2>/dev/null || true
    if [ -n "${WINE_ENV_XVFB_PID:-}" ]; then
        kill "$WINE_ENV_XVFB_PID" 2>/dev/null || true
        WINE_ENV_XVFB_PID=
    fi
}

winpath() {
    winepath -w "$1" 2>/dev/null
}
