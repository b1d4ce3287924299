#!/usr/bin/env bash
# Installs every Debian package the build, the tests and the demo need.
# Idempotent: when everything is present it only asks dpkg and returns.
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev python3 python3-matplotlib
    googletest libgtest-dev libbenchmark-dev nlohmann-json3-dev
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
    mingw-w64-x86-64-dev
    wine wine64 xvfb xauth x11-utils imagemagick
    lighttpd lighttpd-mod-deflate libimage-exiftool-perl
    # The tool's keys and signatures (OpenSSL); lighttpd's TLS for the HTTPS tests.
    libssl-dev lighttpd-mod-openssl openssl
    # Wine's own fonts (caption glyphs, "MS Sans Serif") and metric-compatible
    # faces, so that screenshots show what Windows users see.
    fonts-wine fonts-liberation
    # Rebuilds of several work trees share one compiler cache.
    ccache
    # Shipping: the installer, Authenticode signing, the manual in a real browser.
    nsis osslsigncode chromium
    # The install test presses the installer's keys like a person would.
    xdotool
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO=sudo
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
